bodies = [
  {x = 0.0, y = 0.0, z = 0.0, vx = 0.0, vy = 0.0, vz = 0.0, mass = 39.47},
  {x = 4.84, y = -1.16, z = -0.10, vx = 0.606, vy = 2.81, vz = -0.02, mass = 0.037},
  {x = 8.34, y = 4.12, z = -0.4, vx = -1.01, vy = 1.82, vz = 0.008, mass = 0.011},
  {x = 12.89, y = -15.11, z = -0.22, vx = 1.08, vy = 0.868, vz = -0.01, mass = 0.0017},
  {x = 15.37, y = -25.9, z = 0.179, vx = 0.979, vy = 0.594, vz = -0.034, mass = 0.002}]
function advance(bodies, dt)
  local count = #bodies
  for i = 1, count
    local b = bodies[i]
    for j = i + 1, count
      local o = bodies[j]
      local dx = b["x"] - o["x"]
      local dy = b["y"] - o["y"]
      local dz = b["z"] - o["z"]
      local d2 = dx * dx + dy * dy + dz * dz
      local mag = dt / (d2 * math["sqrt"](d2))
      b["vx"] = b["vx"] - dx * o["mass"] * mag
      b["vy"] = b["vy"] - dy * o["mass"] * mag
      b["vz"] = b["vz"] - dz * o["mass"] * mag
      o["vx"] = o["vx"] + dx * b["mass"] * mag
      o["vy"] = o["vy"] + dy * b["mass"] * mag
      o["vz"] = o["vz"] + dz * b["mass"] * mag
    end
  end
  for i = 1, count
    local b = bodies[i]
    b["x"] = b["x"] + dt * b["vx"]
    b["y"] = b["y"] + dt * b["vy"]
    b["z"] = b["z"] + dt * b["vz"]
  end
end
for step = 1, 12000
  advance(bodies, 0.001)
end
print(bodies[1]["x"] < 1.0)

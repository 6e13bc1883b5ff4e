@@ A few lines can ask for more text than any machine holds. Beyond 1 GiB they get an error instead.
wide = [string["rep"]("x", 1048576)]
for i = 1, 11
  wide = [wide, wide]
end
function tries(name, f)
  local ok, message = pcall(f)
  local line = gsub(message, "re:^OstrelScript error: ([^\n]*)[\\s\\S]*", "\\1")
  print(name, ok, line)
end
function converts()
  local text = toString(wide)
  return text
end
tries("toString:", converts)
grown = "a"
function grows()
  grown += wide
end
tries("grow:", grows)
print("the variable is as it was:", grown)
leaf = wide
for i = 1, 11
  leaf = leaf[1]
end
function multiplies()
  local text = gsub(leaf[1], "x", "\\`\\'")
  return text
end
tries("gsub:", multiplies)
function exports()
  local image = exportState()
  return image
end
tries("exportState:", exports)
print("and goes on:", len(toString(wide[1][1][1][1][1][1][1])))

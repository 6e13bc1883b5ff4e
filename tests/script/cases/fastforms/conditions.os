@@ in a condition a computed number is false when it is 0; what only values can give is true
zero = 0
floatZero = 0.0
list = [0, 1]
map = {k = 0}
empty = []
function none()
  return 0
end
function same(x)
  return x
end
function guarded(x)
  if x == 9
    error("nine")
  end
  return x
end
function longer(x)
  local y = x
  return y
end
function yes(number)
  taken = taken + number + " "
end
taken = ""
if 0
  yes(1)
elseif 0.0
  yes(2)
elseif zero
  yes(3)
elseif floatZero
  yes(4)
elseif list[1]
  yes(5)
elseif map["k"]
  yes(6)
elseif 1 - 1
  yes(7)
elseif -zero
  yes(8)
elseif none()
  yes(9)
elseif same(0)
  yes(10)
elseif guarded(0)
  yes(11)
elseif len("")
  yes(12)
elseif math["floor"](0.5)
  yes(13)
elseif 0 or 5
  yes(14)
elseif 1 and 0
  yes(15)
elseif (0)
  yes(16)
elseif none() + same(0)
  yes(17)
elseif not
  yes(18)
elseif nobody
  yes(19)
else
  yes(20)
end
print(taken)
taken = ""
if [0][1]
  yes(1)
end
if {k = 0}["k"]
  yes(2)
end
if longer(0)
  yes(3)
end
if longer(0) + 0
  yes(4)
end
if false or longer(0)
  yes(5)
end
if toNumber("0")
  yes(6)
end
if ""
  yes(7)
end
if empty
  yes(8)
end
if !zero
  yes(9)
end
if not zero
  yes(10)
end
if not not zero
  yes(11)
end
if zero == 0
  yes(12)
end
if list[2]
  yes(13)
end
if 0.5
  yes(14)
end
if $0
  yes(15)
end
if zero and 5
  yes(16)
end
print(taken)
n = 3
rounds = 0
while n
  n -= 1
  rounds += 1
end
print(rounds)
n = -2
repeat
  n += 1
until n
print(n)
n = -1
rounds = 0
repeat
  n += 1
  rounds += 1
until n or rounds == 5
print(n, rounds)
ok, why = pcall(guarded, 9)
print(ok, why)
print(0 or "kept", 0 and "kept", !0, not 0)
@@ what was joined, called for or chosen gives values, and so do functions with `...`
function open(...)
  return 0
end
function list1()
  local made = [0]
  return made
end
flags = {room1 = 0, sub1 = {z = 0}}
key = "room1"
taken = ""
if flags["room" + 1]
  yes(1)
end
if flags["sub" + 1]["z"]
  yes(2)
end
if list[longer(1)]
  yes(3)
end
if open()
  yes(4)
end
if #longer([])
  yes(5)
end
if (nobody or flags)["room1"]
  yes(6)
end
if list1()[1]
  yes(7)
end
if flags[key] or flags["sub1"]["z"] or list[same(1)] or #empty
  yes(8)
end
print(taken)

@@ What belongs to a scene goes; the images of weather, which entries share, stay.
function image()
    return Plush["createImage"](1, 1, 0, 0, 0, 0)
end
plain = {type = OSTREL_IMAGE, surface = image()}
weather = {type = OSTREL_WEATHER, surface = image()}
parallax = {type = OSTREL_PARALLAX, surface = image(), surface1 = image(), surface2 = image(), surface4 = image()}
other = {type = OSTREL_IMAGE, surface1 = image()}
bare = {type = OSTREL_TEXT}
function alive()
    local list = []
    push(list, Plush["checkImage"](plain["surface"]))
    push(list, Plush["checkImage"](weather["surface"]))
    push(list, Plush["checkImage"](parallax["surface"]))
    push(list, Plush["checkImage"](parallax["surface1"]))
    push(list, Plush["checkImage"](parallax["surface2"]))
    push(list, Plush["checkImage"](parallax["surface4"]))
    push(list, Plush["checkImage"](other["surface1"]))
    return list
end
renderQueue = {plain, weather, not, parallax, other, bare}
OSTREL_SLIDE_PROGRESS["k"] = 1
OSTREL_SLIDE_TEXT["k"] = "t"
Ostrel["pushButton"](0, 10, 0, 10, 5)
drawFrame = true
buffer = image()
prevBuffer = buffer
print("before:", alive(), Ostrel["checkButton"](5, 5))
Ostrel["cleanup"](true)
print("after:", alive(), Ostrel["checkButton"](5, 5), drawFrame)
print("state:", typeOf(renderQueue), #renderQueue, #keys(OSTREL_SLIDE_PROGRESS), #keys(OSTREL_SLIDE_TEXT))
print("input:", typeOf(input["mouse"]["position"]), input["mouse"]["postion"], typeOf(input["keyboard"]), input["key"]["a"])
print("buffer-kept:", Plush["checkImage"](buffer), prevBuffer == buffer)
Ostrel["cleanup"](false)
print("buffer-freed:", Plush["checkImage"](buffer), prevBuffer)
Ostrel["cleanup"]()
print("nothing-left:", #renderQueue)

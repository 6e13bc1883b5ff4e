local hidden = "hidden"
native atTop = "native of the file"
globalFromFile = "global"
function fromFile()
  return toString(hidden) + " " + toString(atTop)
end
return hidden

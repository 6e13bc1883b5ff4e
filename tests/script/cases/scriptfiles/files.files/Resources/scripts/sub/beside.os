inFile = runFile("below.os")
function later()
  return runFile("below.os")
end
return inFile

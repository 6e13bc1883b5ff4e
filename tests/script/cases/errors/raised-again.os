@@ Caught and raised again, the message is what was caught.
function fails()
  return 1 + not
end
ok, fault = pcall(fails)
error("again: " + string["sub"](fault, 1, 20))

@@ An error that nothing catches ends the script at the statement behind the turn.
decay function failing()
  print("in the coroutine")
  error("from the side")
end
failing()
print("one more statement")
print("never")

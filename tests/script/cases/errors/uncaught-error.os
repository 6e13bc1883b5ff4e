@@ An error that nothing catches ends the game with its bare text.
print("before")
function fails()
  error("the text alone")
end
fails()
print("never")

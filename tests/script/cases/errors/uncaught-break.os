@@ A break that leaves the whole text is noticed by whoever ran it.
print("before")
if true
  break
end
print("never")

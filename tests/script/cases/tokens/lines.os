function firstLine(text)
  text = toString(text)
  local stop = string["find"](text, "\n", 1, true)
  if stop == not
    return text
  end
  return string["sub"](text, 1, stop - 1)
end

@@ the value of a chunk, or the first line of what is wrong with it
function attempt(text)
  local chunk, why = load(text)
  if chunk == not
    return "rejected: " + firstLine(why)
  end
  local ok, value = pcall(chunk)
  if ok
    return value
  end
  return firstLine(value)
end

a = 1 ; b = 2; print(a, b) ;; print("third")
list = [1,
  2, @@ a comment ends here ]
  3 @@ and here

]
print(list)
text = "one
    two"
print(text, #text)
text = 'x

y'
print(text, #text)
sum = (1 +
  2) * 3
print(sum)
map = {
  a = 1, @@ first
  b = [2,
    3],
}
print(map["a"], map["b"])
print("@@ no comment", '@@', #"@@") @@ a comment
print("; no end", [1, 2][1]) ; print("next")
@@ print("not this")
   @@ nor this ; print("no")
print(
)
if a == 1 ; print("yes") ; else ; print("no") ; end
print(attempt("return 1 @@ + 1"), attempt("return 1 ; return 2"), attempt("x9 = [1,\n2\nreturn 5"))
print(attempt("return \"open"), attempt("return 'a\nb"), attempt("x9 = (1"), attempt("return )"))
print(attempt("return [1, 2)\n]"), attempt("return @ "), attempt("return a@b"))
print(attempt("\treturn\t1\t+\t2\t"), attempt("return 1\r"), attempt("\r\n\r\nreturn 3\r\n"))
print("a\\" + "b", "a\"" + 'b\'', "say \"hi\"" + 'x')

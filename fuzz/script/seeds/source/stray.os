end
else
until x
elseif y
x = ((((((((1))))))))
print(x)

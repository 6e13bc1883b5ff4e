if if if
for = = =
end
for x y z
end
nest(x)

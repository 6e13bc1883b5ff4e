counted = counted + 1
return counted

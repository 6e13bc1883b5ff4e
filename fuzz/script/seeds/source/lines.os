x = [1, @@ comment
  2,
  3]
s = "ab
   cd" ; y = {a = 1,

 b = 2}
@@ only a comment
;;; z = 1;

@@ without a window the mouse is nowhere and nothing is pressed
print("mouse:", OSTREL_MOUSE_X, OSTREL_MOUSE_Y, OSTREL_MOUSE_1, OSTREL_MOUSE_2, OSTREL_MOUSE_3)
print("types:", typeOf(OSTREL_MOUSE_X), typeOf(OSTREL_MOUSE_1), typeOf(OSTREL_KEY_A))
print("named:", OSTREL_KEY_RETURN, OSTREL_KEY_UP, OSTREL_KEY_DOWN, OSTREL_KEY_LEFT, OSTREL_KEY_RIGHT, OSTREL_KEY_BACK, OSTREL_KEY_DELETE, OSTREL_KEY_SPACE)
names = "ABCDEFGHIJKLMNOPQRSTUVWXYZ1234567890"
for i = 1, len(names)
  if Ostrel["getVar"]("OSTREL_KEY_" + names[i]) != false
    print("pressed or missing:", names[i])
  end
end
print("touch bar:", OSTREL_TOUCHBAR_1, OSTREL_TOUCHBAR_2, OSTREL_TOUCHBAR_3, OSTREL_TOUCHBAR_4, OSTREL_TOUCHBAR_5)
OSTREL_MOUSE_X = 7
OSTREL_MOUSE_1 = true
OSTREL_KEY_Z = true
print("changed:", OSTREL_MOUSE_X, OSTREL_MOUSE_1, OSTREL_KEY_Z)
print("update:", Metal["updateInput"]())
print("restored:", OSTREL_MOUSE_X, OSTREL_MOUSE_1, OSTREL_KEY_Z)

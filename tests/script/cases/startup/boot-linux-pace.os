@@ On Linux three quarters of every row's frames are asked for.
print("row:", OSTREL_PROCESSOR, threads)
print("pace:", maxFramerate == 1000 / 45, OSTREL_FRAMERATE == maxFramerate)
print("others:", OSTREL_TMP1[1], OSTREL_TMP1[4])

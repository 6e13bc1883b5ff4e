@@ Without a row: six workers and 24 frames, on Linux, too.
print("row:", OSTREL_PROCESSOR, threads)
print("pace:", maxFramerate == 1000 / 24, OSTREL_FRAMERATE == maxFramerate)
print("in-table:", contains(OSTREL_TMP1, OSTREL_PROCESSOR))

@@ A maker's full name counts for less than its row says.
print(OSTREL_PROCESSOR_NAME, OSTREL_PROCESSOR, threads, OSTREL_FRAMERATE)

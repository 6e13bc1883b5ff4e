@@ Of several rows that match the processor the last one counts; until then the constant sets the pace.
print(OSTREL_PROCESSOR, threads, OSTREL_FRAMERATE, maxFramerate, paceBefore)

@@ On the engine's own operating system the hardware answers, and the table of processors is not asked.
print(OSTREL_PROCESSOR_NAME, OSTREL_OS_PLATFORM, OSTREL_OS_VERSION)
print(ostrelBootHardwareThreads, OSTREL_PROCESSOR, maxFramerate == 1000 / 24, OSTREL_FRAMERATE == maxFramerate)

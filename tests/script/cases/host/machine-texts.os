@@ what the machine answers is text, and the constants that it overwrites are no longer the placeholders
print("platform:", typeOf(OSTREL_OS_PLATFORM), len(OSTREL_OS_PLATFORM) > 0)
print("version:", typeOf(OSTREL_OS_VERSION), len(OSTREL_OS_VERSION) > 0)
print("processor:", typeOf(OSTREL_PROCESSOR_NAME), len(OSTREL_PROCESSOR_NAME) > 0)
print("user:", typeOf(OSTREL_USER_NAME))
print("directory:", typeOf(OSTREL_TEMP_DIRECTORY), string["sub"](OSTREL_TEMP_DIRECTORY, len(OSTREL_TEMP_DIRECTORY)), string["find"](OSTREL_TEMP_DIRECTORY, "\\", 1, true))

@@ The first of the library's calls: nothing of the boot but `skipwarning` is there.
print("selftest:", skipwarning, framebufferScale, typeOf(ostrelLoadChunkOrError), typeOf(registerAnglish), typeOf(Ostrel["cleanup"]))
selftestRan = true

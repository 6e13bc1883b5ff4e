print("[" + OstrelIndex + "]", oshandle["close"]())

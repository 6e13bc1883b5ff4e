
@@ --- Boot: the machine ---------------------------------------------------------------------------------------------

if OSTRELBOOT_ENABLED
    local processor = hardware('cpu')
    OSTREL_PROCESSOR_NAME = "Greyrime"
    if typeOf(processor) == "table"
        if processor["name"] ~= not
            OSTREL_PROCESSOR_NAME = processor["name"]
        end
        if processor["threads"] ~= not and processor["threads"] > 0
            ostrelBootHardwareThreads = processor["threads"]
        end
    end
    OSTREL_OS_PLATFORM = "TessunOS Greyrime"
    OSTREL_OS_VERSION = "Greyrime"
elseif not OSTREL_WINDOWS_ENABLED
    OSTREL_PROCESSOR_NAME = Ostrel["capture"]("sysctl -n machdep.cpu.brand_string")
    OSTREL_OS_PLATFORM = Ostrel["capture"]("uname -s") + " " + Ostrel["capture"]("uname -m")
    OSTREL_OS_VERSION = Ostrel["capture"]("sw_vers -productVersion")
end

maxFramerate = OSTREL_FRAMERATE

@@ Old machines don't say their processor's name, but their profiler does.
if not OSTRELBOOT_ENABLED and OSTREL_PROCESSOR_NAME == "machdep: class is not implemented"
    local profile = Ostrel["capture"]("system_profiler SPHardwareDataType | grep \"Processor Name\"")
    if string["find"](profile, "G3", 1, true) ~= not
        OSTREL_PROCESSOR_NAME = "PowerPC G3"
    elseif string["find"](profile, "G4", 1, true) ~= not
        OSTREL_PROCESSOR_NAME = "PowerPC G4"
    elseif string["find"](profile, "G5", 1, true) ~= not
        OSTREL_PROCESSOR_NAME = "PowerPC G5"
    end
end

if (string["find"](toString(OSTREL_PROCESSOR_NAME), "Intel", 1, true) ~= not or
        string["find"](toString(OSTREL_PROCESSOR_NAME), "Unknown", 1, true) ~= not)
    OSTREL_PROCESSOR_NAME = "Unknown Intel"
end

@@ Linux on the machines of a maker whose processors it does not name in full.
if not OSTRELBOOT_ENABLED and not OSTREL_WINDOWS_ENABLED
    if (Ostrel["capture"]("uname -s") == "Linux" and
            string["find"](Ostrel["capture"]("lscpu | grep 'Vendor ID'"), "Apple", 1, true) ~= not)
        OSTREL_PROCESSOR_NAME = Ostrel["capture"]("lscpu | grep 'Model name'")
        OSTREL_OS_VERSION = Ostrel["capture"]("uname -r")
        local models = [
            "M1 Ultra", "M1 Max", "M1 Pro", "M1", "M2 Ultra", "M2 Max", "M2 Pro", "M2", "M3 Ultra", "M3 Max", "M3 Pro",
            "M3", "M4 Ultra", "M4 Max", "M4 Pro", "M4", "M5 Max", "M5 Pro", "M5", "12", "18"
        ]
        local names = {"12" = "A12Z Bionic", "18" = "A18 Pro"}
        local described = OSTREL_PROCESSOR_NAME
        OSTREL_PROCESSOR_NAME = "Apple processor"
        for index = 1, #models
            if string["find"](described, models[index], 1, true) ~= not
                OSTREL_PROCESSOR_NAME = "Apple " + (names[models[index]] or models[index])
                break
            end
        end
    end
end

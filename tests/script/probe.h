#pragma once

// An engine that remembers what its scripts say, for tests that look at it from outside and from inside at once.

#include "script/ostrel_script.h"

#include <functional>
#include <string>
#include <vector>

/// What `call` fails with, or "no fault".
inline std::string faultOf(const std::function<void()>& call) {
    try {
        call();
    } catch (const std::exception& fault) {
        return fault.what();
    }
    return "no fault";
}

inline std::string firstLine(const std::string& text) { return text.substr(0, text.find('\n')); }

/// An engine with a function `say`, which appends the texts of its arguments and a blank each to `said`.
class Probe {
public:
    Probe() {
        addFunction("say", [this](const std::vector<Variable>& arguments) {
            for (const Variable& argument : arguments) said += argument.toString() + " ";
            return Variable();
        });
    }

    void addFunction(const std::string& name, HostFunction function) {
        engine.pushVariable(name, engine.makeNativeCallable(std::move(function), name));
    }

    /// Runs a text as a script of its own; gives the text of what it returns, or the fault's first line.
    std::string run(const std::string& text) {
        try {
            return engine.runScript(text).toString();
        } catch (const std::exception& fault) {
            return firstLine(fault.what());
        }
    }

    /// What a text says while it runs.
    std::string hear(const std::string& text) {
        said.clear();
        run(text);
        return said;
    }

    OstrelScript engine;
    std::string said;
};

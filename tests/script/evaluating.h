#pragma once

// What the tests of the interpreter ask of an engine all the time: the value of an expression, and the fault of one.

#include "script/ostrel_script.h"

#include <exception>
#include <string>

/// What a text returns.
inline Variable resultOf(OstrelScript& engine, const std::string& text) { return engine.runScript(text); }

/// The value of an expression as text.
inline std::string textOf(OstrelScript& engine, const std::string& expression) {
    return engine.runScript("return " + expression).toString();
}

/// The value of an expression as its type's name, a blank and its text, as in "int 5".
inline std::string typedTextOf(OstrelScript& engine, const std::string& expression) {
    const Variable value = engine.runScript("return " + expression);
    return engine.typeName(value.type) + " " + value.toString();
}

/// The message of whatever `action` throws; empty if it throws nothing.
template <typename Action> std::string messageOf(const Action& action) {
    try {
        action();
    } catch (const std::exception& error) {
        return error.what();
    }
    return {};
}

/// The whole report of running a text; empty if it runs.
inline std::string reportOf(OstrelScript& engine, const std::string& text) {
    return messageOf([&] { engine.runScript(text); });
}

/// A report's first line without its opening words.
inline std::string firstLineOf(const std::string& report) {
    constexpr std::string_view opening = "OstrelScript error: ";
    const std::string line = report.substr(0, report.find('\n'));
    return line.compare(0, opening.size(), opening) == 0 ? line.substr(opening.size()) : line;
}

/// The fault of running a text, without its position; empty if it runs.
inline std::string faultOf(OstrelScript& engine, const std::string& text) {
    return firstLineOf(reportOf(engine, text));
}

/// The token that a report stands near; empty if it names none.
inline std::string tokenOf(const std::string& report) {
    constexpr std::string_view opening = ", near token '";
    const std::size_t start = report.find(opening);
    if (start == std::string::npos) return {};
    const std::size_t first = start + opening.size();
    return report.substr(first, report.find("'\n", first) - first);
}

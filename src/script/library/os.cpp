// The table `os`: the clock, the time and the removal of files.

#include "script/library/functions.h"

#include <chrono>
#include <cstdio>

namespace {

Variable clockFunction(OstrelScript& engine, const Variable*, std::size_t count) {
    if (count != 0) fail("os['clock']() takes no arguments");
    constexpr double microsecondsPerSecond = 1e6;
    const auto passed =
        std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - engine.startTime());
    return static_cast<float>(static_cast<double>(passed.count()) / microsecondsPerSecond);
}

/// Whole seconds since 1970 in 32 bits, which will run out in 2038.
Variable timeFunction(OstrelScript&, const Variable*, std::size_t count) {
    if (count != 0) fail("os['time']() takes no arguments");
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return static_cast<int>(std::chrono::duration_cast<std::chrono::seconds>(now).count());
}

Variable removeFunction(OstrelScript& engine, const Variable* arguments, std::size_t count) {
    if (count != 1 || !arguments[0].isString()) fail("os['remove'](path) requires exactly one path string");
    if (std::remove(engine.resolvePath(arguments[0].asString()).c_str()) != 0) return {};
    return true;
}

} // namespace

void registerOsTable(OstrelScript& engine) {
    registerLibraryTable(engine, "os", {{"clock", clockFunction}, {"time", timeFunction}, {"remove", removeFunction}});
}

// Functions that change the course of the script: jumps to labels, and the end of a coroutine.

#include "script/library/functions.h"

Variable jumpToFunction(OstrelScript& engine, const Variable* arguments, std::size_t count) {
    if (count != 1 || !arguments[0].isString()) fail("jumpTo(label) expects exactly one string argument");
    if (arguments[0].asString().empty()) fail("jumpTo(label) expects a non-empty label");
    engine.requestJump(arguments[0].asString());
    return {};
}

Variable killFunction(OstrelScript& engine, const Variable*, std::size_t count) {
    if (count != 0) fail("kill() takes no arguments");
    engine.endScheduledCoroutine();
    return {};
}

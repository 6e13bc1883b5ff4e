#pragma once

// How a `for` of either kind goes round. The walkers differ only in how they run a body, so that is a parameter.

#include "script/ostrel_script.h"
#include "script/scope_guard.h"

template <typename RunBody>
void OstrelScript::runNumericFor(const ParsedScriptLine& line, BlockSignal& signal, const RunBody& runBody) {
    signal.kind = SignalKind::None;
    if (line.plan->loopNames.empty()) reportLoopHeader(line);
    NumericLoop loop = readNumericLoop(line);
    if (shouldAbortForSoftRaisedError()) return;
    const ScopeGuard scopes(*this);
    Binding& variable = bindInFrame(line.plan->loopNames[0]);
    for (; !loop.isOver(); loop.current += loop.step) {
        countStep();
        variable.value.setInt(static_cast<int>(loop.current));
        runBody();
        if (endsLoop(signal)) return;
    }
}

template <typename RunBody>
void OstrelScript::runGenericFor(const ParsedScriptLine& line, BlockSignal& signal, const RunBody& runBody) {
    signal.kind = SignalKind::None;
    const GenericLoop loop = readGenericLoop(line);
    if (shouldAbortForSoftRaisedError()) return;
    const ScopeGuard scopes(*this);
    std::vector<Binding*> variables;
    for (Name* name : line.plan->loopNames) variables.push_back(&bindInFrame(name));
    for (std::size_t round = 0; round < loop.entries.size(); ++round) {
        countStep();
        assignLoopNames(variables, loop, round);
        runBody();
        if (endsLoop(signal)) return;
    }
}

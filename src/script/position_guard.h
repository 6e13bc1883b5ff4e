#pragma once

#include "script/ostrel_script.h"

/// Remembers where the script stands and puts it back, so that whatever runs in between (another function, the parsing
/// of a text) leaves no trace in the error reports of the line that asked for it.
class PositionGuard {
public:
    explicit PositionGuard(OstrelScript& engine) : engine_(engine), saved_(engine.position_) {}
    PositionGuard(const PositionGuard&) = delete;
    PositionGuard& operator=(const PositionGuard&) = delete;
    ~PositionGuard() { engine_.position_ = saved_; }

private:
    OstrelScript& engine_;
    ScriptPosition saved_;
};

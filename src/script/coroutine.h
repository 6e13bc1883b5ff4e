#pragma once

// What is kept of a coroutine between its turns.
//
// A decay function's call makes one of these instead of running the body. The body then advances by one statement after
// each statement of the main line, so it can't live on the native stack: its blocks and loops are frames of a stack of
// its own, and its scopes an execution state of its own.

#include "script/callable.h"
#include "script/execution_state.h"
#include "script/loop_state.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

/// A block or a loop that a coroutine stands in. Lines are counted from the body's first.
struct CoroutineFrame {
    enum class Kind : std::uint8_t { Block = 0, While = 1, Repeat = 2, NumericFor = 3, GenericFor = 4 };

    Kind kind = Kind::Block;
    std::size_t position = 0;  // next line to run, of a Block
    std::size_t end = 0;       // one past the last line of the Block
    std::size_t line = 0;      // the loop's header, or its `until`
    std::size_t bodyStart = 0; // lines of the loop's body
    std::size_t bodyEnd = 0;
    std::size_t bindings = 0, blocks = 0; // sizes to return to when the frame is popped
    std::size_t scopeBase = 0;
    std::size_t savedBlockDepth = 0; // the block depth while this frame runs
    bool started = false;            // the header was evaluated, or the body has run
    NumericLoop numeric;
    GenericLoop generic;
    std::vector<Binding*> variables; // the loop's names
    std::size_t cursor = 0;          // next entry of a generic `for`
};

struct CoroutineState {
    Ref<ScriptCallable> callable;
    ExecutionState execution; // not linked to the names while the main line runs
    std::vector<CoroutineFrame> frames;
};

/// Ends a coroutine that calls a decay function, at that very statement. No std::exception, so that no script can
/// catch it.
struct CoroutineTerminated {};

/// Where `jumpTo` finds a label outside of the active chunks. The function may be gone.
struct JumpTarget {
    ScriptCallable* callable = nullptr;
    std::weak_ptr<const bool> alive; // expires with the function
    std::weak_ptr<BytecodeProgram> program;
    std::uint32_t chunk = 0; // the chunk in which the `nest` block stands
    std::uint32_t nest = 0;  // index into nestBlocks
};

#pragma once

// What belongs to a line of execution: its scopes, its protected calls, its place in the source. The main line has one
// and so has a coroutine; when a coroutine's turn comes, the two change places.

#include "script/name.h"
#include "script/parsed_line.h"
#include "script/variable.h"

#include <cstddef>
#include <string>
#include <vector>

/// Where the script stands, for error reports.
struct ScriptPosition {
    const ParsedScriptLine* line = nullptr;
    const std::string* text = nullptr;                // a line that is being parsed; wins over `line`
    std::size_t lineNumber = 0;                       // from 0
    const std::vector<std::string>* tokens = nullptr; // of the expression under evaluation
    std::size_t token = noLine;                       // last token that was read, or noLine
};

struct ExecutionState {
    BindingStack bindings_;          // of all block scopes and call frames
    std::size_t blockScopes_ = 0;    // how many block scopes stand; a binding in one knows its number
    std::size_t blockScopeBase_ = 0; // block scopes below belong to callers and are hidden
    std::size_t blockDepth_ = 0;     // the current native scope's index
    std::vector<std::vector<Variable>> varargs_;

    std::size_t callDepth_ = 0;
    std::size_t runDepth_ = 0;                 // nested script executions
    std::vector<std::size_t> protectedDepths_; // the call depth at each active pcall
    bool softErrorPending_ = false;
    std::size_t softErrorDepth_ = 0;
    std::string softErrorMessage_;

    ScriptPosition position_;
    // Source of the running code, null while nothing runs; the strings belong to callables and programs that run
    const std::string* sourcePath_ = nullptr;
    const std::string* sourceDirectory_ = nullptr;
};

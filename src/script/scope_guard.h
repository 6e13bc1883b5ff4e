#pragma once

// What the engine holds of the running function, saved where a block, a loop or a call begins and put back where it
// ends, on exceptions too. A caught error therefore finds every stack as it was at the `pcall`.

#include "script/ostrel_script.h"

#include <utility>

/// Takes off every block scope and binding that was pushed since it was made.
class ScopeGuard {
public:
    explicit ScopeGuard(OstrelScript& engine)
        : engine_(engine), bindings_(engine.bindings_.size()), blocks_(engine.blockScopes_) {}
    ScopeGuard(const ScopeGuard&) = delete;
    ScopeGuard& operator=(const ScopeGuard&) = delete;
    ~ScopeGuard() {
        if (engine_.bindings_.size() != bindings_) engine_.bindings_.popTo(bindings_);
        engine_.blockScopes_ = blocks_;
    }

private:
    OstrelScript& engine_;
    std::size_t bindings_, blocks_; // sizes to return to
};

/// Takes off every binding that was pushed since it was made.
class BindingsGuard {
public:
    explicit BindingsGuard(BindingStack& bindings) : bindings_(bindings), size_(bindings.size()) {}
    BindingsGuard(const BindingsGuard&) = delete;
    BindingsGuard& operator=(const BindingsGuard&) = delete;
    ~BindingsGuard() {
        if (bindings_.size() != size_) bindings_.popTo(size_);
    }
    std::size_t size() const { return size_; }

private:
    BindingStack& bindings_;
    std::size_t size_;
};

/// Makes a path and a directory the source of what runs, each only if it isn't empty. The strings must outlive it.
class SourceGuard {
public:
    SourceGuard(OstrelScript& engine, const std::string& path, const std::string& directory)
        : engine_(engine), path_(engine.sourcePath_), directory_(engine.sourceDirectory_) {
        if (!path.empty()) engine.sourcePath_ = &path;
        if (!directory.empty()) engine.sourceDirectory_ = &directory;
    }
    SourceGuard(const SourceGuard&) = delete;
    SourceGuard& operator=(const SourceGuard&) = delete;
    ~SourceGuard() {
        engine_.sourcePath_ = path_;
        engine_.sourceDirectory_ = directory_;
    }

private:
    OstrelScript& engine_;
    const std::string* path_;
    const std::string* directory_;
};

/// Counts a nesting level up for as long as it stands.
class DepthGuard {
public:
    explicit DepthGuard(std::size_t& depth) : depth_(depth) { ++depth_; }
    DepthGuard(const DepthGuard&) = delete;
    DepthGuard& operator=(const DepthGuard&) = delete;
    ~DepthGuard() { --depth_; }

private:
    std::size_t& depth_;
};

/// Raises the block depth for as long as it stands.
class BlockDepthGuard {
public:
    BlockDepthGuard(OstrelScript& engine, std::size_t levels) : engine_(engine), depth_(engine.blockDepth_) {
        engine.blockDepth_ += levels;
    }
    BlockDepthGuard(const BlockDepthGuard&) = delete;
    BlockDepthGuard& operator=(const BlockDepthGuard&) = delete;
    ~BlockDepthGuard() { engine_.blockDepth_ = depth_; }

private:
    OstrelScript& engine_;
    std::size_t depth_;
};

/// Puts a chunk on the list of those that run.
class ActiveChunkGuard {
public:
    ActiveChunkGuard(OstrelScript& engine, const BytecodeProgram& program, unsigned chunk)
        : engine_(engine), active_{&program, chunk, engine.activeChunk_} {
        engine.activeChunk_ = &active_;
    }
    ActiveChunkGuard(const ActiveChunkGuard&) = delete;
    ActiveChunkGuard& operator=(const ActiveChunkGuard&) = delete;
    ~ActiveChunkGuard() { engine_.activeChunk_ = active_.outer; }

private:
    OstrelScript& engine_;
    ActiveChunk active_;
};

/// Lets another execution state change places with the engine's. The names know only the bindings of the one that is in
/// the engine.
class ExecutionExchange {
public:
    ExecutionExchange(OstrelScript& engine, ExecutionState& other) : engine_(engine), other_(other) { exchange(); }
    ExecutionExchange(const ExecutionExchange&) = delete;
    ExecutionExchange& operator=(const ExecutionExchange&) = delete;
    ~ExecutionExchange() { exchange(); }

private:
    void exchange() {
        engine_.bindings_.unlink();
        std::swap(static_cast<ExecutionState&>(engine_), other_);
        engine_.bindings_.link();
    }

    OstrelScript& engine_;
    ExecutionState& other_;
};

/// Everything that a call of a script function changes. The caller's block scopes are hidden from the start on.
class CallGuard {
public:
    CallGuard(OstrelScript& engine, const ScriptCallable& callable)
        : CallGuard(engine, callable, engine.bindings_.size()) {}
    /// @param bindings  how many bindings there were before those of the arguments
    CallGuard(OstrelScript& engine, const ScriptCallable& callable, std::size_t bindings)
        : engine_(engine), bindings_(bindings), base_(engine.blockScopeBase_), depth_(engine.blockDepth_),
          varargs_(callable.isVariadic ? engine.varargs_.size() : noVarargs), position_(engine.position_),
          source_(engine, callable.sourcePath, callable.sourceDirectory) {
        engine.blockScopeBase_ = engine.blockScopes_;
        engine.blockDepth_ = callable.nativeScopeIndex;
    }
    CallGuard(const CallGuard&) = delete;
    CallGuard& operator=(const CallGuard&) = delete;
    ~CallGuard() {
        if (engine_.bindings_.size() != bindings_) engine_.bindings_.popTo(bindings_);
        engine_.blockScopes_ = engine_.blockScopeBase_; // where the call began
        engine_.blockScopeBase_ = base_;
        engine_.blockDepth_ = depth_;
        if (varargs_ != noVarargs) engine_.varargs_.resize(varargs_);
        engine_.position_ = position_;
    }

private:
    static constexpr std::size_t noVarargs = ~std::size_t{0};

    OstrelScript& engine_;
    std::size_t bindings_, base_, depth_;
    std::size_t varargs_; // size to return to, if the function takes `...`
    ScriptPosition position_;
    SourceGuard source_;
};

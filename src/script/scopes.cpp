// Variables: where a name is looked for, and where an assignment puts it.
//
// The order of the lookup is fixed: block scopes of the running function from the newest to the oldest, then every
// call frame from the newest to the oldest, the callers' included, then the current native scope, then the globals.
// The first two steps are one pointer each, because a name knows its newest bindings (see name.h). A block scope below
// the base belongs to a caller and is hidden; since bindings are linked from new to old, testing the newest is enough.

#include "script/ostrel_script.h"
#include "script/scope_guard.h"

Variable* OstrelScript::findInScope(Scope& scope, const Name* name) {
    for (auto& [entryName, value] : scope)
        if (entryName == name) return &value;
    return nullptr;
}

void OstrelScript::setScopeValue(Scope& scope, Name* name, Variable value) {
    if (Variable* entry = findInScope(scope, name))
        *entry = std::move(value);
    else
        scope.emplace_back(name, std::move(value));
}

OstrelScript::Scope* OstrelScript::currentNativeScope() const {
    return blockDepth_ < nativeScopes_.size() ? &nativeScopes_[blockDepth_] : nullptr;
}

OstrelScript::Scope& OstrelScript::currentNativeScopeForWrite() {
    if (blockDepth_ >= nativeScopes_.size()) nativeScopes_.resize(blockDepth_ + 1);
    return nativeScopes_[blockDepth_];
}

// ---------------------------------------------------------------------------------------------------------------------
// Lookup
// ---------------------------------------------------------------------------------------------------------------------

Variable* OstrelScript::resolveExplicitScopeVariable(Name* name, ExplicitScope scope) {
    switch (scope) {
    case ExplicitScope::External: return findInScope(externalScope_, name);
    case ExplicitScope::Global: return name->global;
    case ExplicitScope::Native: {
        Scope* native = currentNativeScope();
        return native == nullptr ? nullptr : findInScope(*native, name);
    }
    case ExplicitScope::Block: {
        Binding* newest = name->newestInBlocks;
        return newest != nullptr && newest->block >= blockScopeBase_ ? &newest->value : nullptr;
    }
    case ExplicitScope::None: break;
    }
    return resolveVariablePtr(name);
}

Variable* OstrelScript::resolveToken(const TokenAnalysis& token) {
    return resolveExplicitScopeVariable(token.name, token.explicitScope);
}

// ---------------------------------------------------------------------------------------------------------------------
// Assignment
// ---------------------------------------------------------------------------------------------------------------------

void OstrelScript::assignVariable(Name* name, Variable value, ScopeTarget target) {
    switch (target) {
    case ScopeTarget::Native: setScopeValue(currentNativeScopeForWrite(), name, std::move(value)); return;
    case ScopeTarget::Local: setLocal(name, std::move(value)); return;
    case ScopeTarget::External: setScopeValue(externalScope_, name, std::move(value)); return;
    case ScopeTarget::None: break;
    }
    if (Variable* existing = resolveVariablePtr(name))
        *existing = std::move(value);
    else
        setGlobal(name, std::move(value));
}

void OstrelScript::assignExplicitScopeVariable(Name* name, ExplicitScope scope, Variable value) {
    switch (scope) {
    case ExplicitScope::External: setScopeValue(externalScope_, name, std::move(value)); return;
    case ExplicitScope::Global: setGlobal(name, std::move(value)); return;
    case ExplicitScope::Native: setScopeValue(currentNativeScopeForWrite(), name, std::move(value)); return;
    case ExplicitScope::Block:
        if (Variable* existing = resolveExplicitScopeVariable(name, scope))
            *existing = std::move(value);
        else
            setLocal(name, std::move(value));
        return;
    case ExplicitScope::None: assignVariable(name, std::move(value), ScopeTarget::None); return;
    }
}

void OstrelScript::assignToken(const TokenAnalysis& token, Variable value, ScopeTarget target) {
    if (token.explicitScope != ExplicitScope::None)
        assignExplicitScopeVariable(token.name, token.explicitScope, std::move(value));
    else
        assignVariable(token.name, std::move(value), target);
}

void OstrelScript::setGlobal(Name* name, Variable value) { globalPlace(name) = std::move(value); }

Variable& OstrelScript::globalPlace(Name* name) {
    if (name->global == nullptr) {
        Global& global = globals_.emplace_back();
        global.name = name;
        name->global = &global.value;
        name->globalSlot = static_cast<std::uint32_t>(globals_.size());
    }
    return *name->global;
}

Variable& OstrelScript::localPlace(Name* name) {
    if (blockScopes_ <= blockScopeBase_) pushBlockScope();
    const auto top = static_cast<std::uint32_t>(blockScopes_ - 1);
    Binding* newest = name->newestInBlocks;
    if (newest != nullptr && newest->block == top) return newest->value;
    Binding& binding = bindings_.push();
    binding.name = name;
    binding.shadowed = newest;
    binding.block = top;
    binding.inFrame = false;
    name->newestInBlocks = &binding;
    return binding.value;
}

void OstrelScript::pushVariable(std::string_view name, Variable value) {
    setGlobal(names_.intern(name), std::move(value));
}

Variable OstrelScript::pullVariable(std::string_view name) const {
    const Name* known = names_.find(name);
    return known == nullptr || known->global == nullptr ? Variable() : *known->global;
}

void OstrelScript::commitExternalScopeToGlobal() {
    for (const auto& [name, value] : externalScope_) setGlobal(name, value);
}

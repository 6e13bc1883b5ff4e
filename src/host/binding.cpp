// Reading arguments, failing, returning, and making tables of native functions.

#include "host/binding.h"

#include "host/index.h"

#include <stdexcept>
#include <utility>

namespace {

/// The arguments of a call whose last one is a multi value, with that one's values in its place.
std::vector<Variable> withLastTakenApart(const std::vector<Variable>& values) {
    std::vector<Variable> all(values.begin(), values.end() - 1);
    if (const Ref<MultiResult>& multi = values.back().asMulti()) {
        all.insert(all.end(), multi->values.begin(), multi->values.end());
    }
    return all;
}

/// Puts a native function for each entry into a table.
void addEntries(Table& table, std::string_view name, std::span<const ModuleEntry> entries) {
    for (const ModuleEntry& entry : entries) {
        std::string qualifiedName = std::string(name) + "." + entry.key;
        const auto call = [function = entry.function, anyValuePosition = entry.anyValuePosition,
                           qualifiedName](const std::vector<Variable>& values) {
            if (!values.empty() && values.back().isMulti() && values.size() - 1 != anyValuePosition) {
                return function(Arguments(qualifiedName, withLastTakenApart(values)));
            }
            return function(Arguments(qualifiedName, values));
        };
        table.findOrAdd(engine.internText(entry.key)) = engine.makeNativeCallable(call, std::move(qualifiedName));
    }
}

} // namespace

void bindingError(std::string_view function, const std::string& message) {
    throw std::runtime_error(std::string(function) + ": " + message);
}

double numericValue(const Variable& value, std::string_view function, std::string_view argument) {
    if (!value.isNumeric()) bindingError(function, std::string(argument) + " must be numeric");
    return toDouble(value);
}

std::string stringValue(const Variable& value, std::string_view function, std::string_view argument) {
    if (!value.isString()) bindingError(function, std::string(argument) + " must be a string");
    return value.asString();
}

void* pointerValue(const Variable& value, std::string_view function, std::string_view argument) {
    if (value.isNil()) return nullptr;
    if (value.type != VarType::Pointer) bindingError(function, std::string(argument) + " must be a pointer");
    return value.asPointer();
}

bool flagValue(const Variable& value) {
    if (value.type == VarType::Boolean) return value.asBool();
    return !value.isNil();
}

Variable returnValues(std::initializer_list<Variable> values) { return makeMulti(std::vector<Variable>(values)); }

const Variable& Arguments::at(std::size_t index) const {
    if (index >= values_.size()) fail("missing argument " + std::to_string(index + 1));
    return values_[index];
}

Variable makeModule(std::string_view name, std::span<const ModuleEntry> entries) {
    auto table = makeRef<Table>();
    table->reserve(entries.size());
    addEntries(*table, name, entries);
    return table;
}

void extendModule(const std::string& name, std::span<const ModuleEntry> entries) {
    const Variable known = engine.pullVariable(name);
    if (known.isTable()) {
        addEntries(*known.asTable(), name, entries);
    } else {
        engine.pushVariable(name, makeModule(name, entries));
    }
}

// Reading and writing the elements of arrays, tables and strings.

#include "script/ostrel_script.h"

#include <algorithm>

namespace {

// An assignment past the end fills the gap with nil. Scripts may be generous, but not so generous that one statement
// uses up the machine: 64 Mi elements take 3 GiB.
constexpr int largestArray = 1 << 26;

/// The elements grow to hold `index`, counted from 1.
void growArray(Elements& elements, int index) {
    if (index > largestArray) throw std::runtime_error("Array index out of range");
    const auto size = static_cast<std::size_t>(index);
    if (size > elements.capacity()) elements.reserve(std::max(size, elements.capacity() * 2));
    elements.resize(size);
}

[[noreturn]] void failArrayKey(const Variable& key) {
    int index = 0;
    if (tryGetArrayIndex(key, index) && index < 1) throw std::runtime_error("Array index must be >= 1");
    throw std::runtime_error("Array index must be an int");
}

void setStringByte(Variable& container, const Variable& key, const Variable& value) {
    if (key.type != VarType::Integer) throw std::runtime_error("String index must be an int");
    if (!value.isString()) throw std::runtime_error("String element assignment requires a string value");
    if (value.asString().size() != 1)
        throw std::runtime_error("String element assignment requires a single-character string");
    std::string& text = container.editString();
    const int index = key.asInt();
    if (index < 1 || static_cast<std::size_t>(index) > text.size())
        throw std::runtime_error("String index out of range");
    text[static_cast<std::size_t>(index) - 1] = value.asString()[0];
}

} // namespace

std::string OstrelScript::keyToString(const Variable& key) const {
    switch (key.type) {
    case VarType::Integer:
    case VarType::Float:
    case VarType::String:
    case VarType::Boolean: return key.toString();
    default: throw std::runtime_error("Table key must be string, number, or bool");
    }
}

Variable* OstrelScript::findElement(const Variable& container, const Variable& key) const {
    if (container.isArray()) {
        int index = 0;
        Elements& elements = *container.asArray();
        if (!tryGetArrayIndex(key, index) || index < 1 || static_cast<std::size_t>(index) > elements.size())
            return nullptr;
        return &elements[static_cast<std::size_t>(index) - 1];
    }
    Table& table = *container.asTable();
    if (key.isString()) return table.find(std::string_view(key.asString()));
    if (key.type == VarType::Integer) return table.find(key.asInt());
    return table.find(std::string_view(keyToString(key)));
}

Variable OstrelScript::getIndexedValue(const Variable& container, const Variable& key) {
    switch (container.type) {
    case VarType::Array:
    case VarType::Table: {
        const Variable* element = findElement(container, key);
        return element == nullptr ? Variable() : *element;
    }
    case VarType::String: {
        const std::string& text = container.asString();
        if (key.type == VarType::Integer) {
            const int index = key.asInt();
            if (index < 1 || static_cast<std::size_t>(index) > text.size()) return {};
            return Variable(std::string(1, text[static_cast<std::size_t>(index) - 1]));
        }
        if (key.isString()) return stringMethod(container, key.asString());
        throw std::runtime_error("String index must be an int or string method name");
    }
    default: throw std::runtime_error("Indexing requires an array, table, or string");
    }
}

/// The function of that name in the global table `string`, with the string already in first place; else nil.
Variable OstrelScript::stringMethod(const Variable& text, const std::string& name) {
    const Variable* methods = stringName_->global;
    if (methods == nullptr || !methods->isTable()) return {};
    const Variable* method = methods->asTable()->find(std::string_view(name));
    if (method == nullptr || !method->isFunction()) return {};
    // Both are held in an array, because a script may go on to bind the bound: deep data that is let go of without
    // recursion, as a chain of functions would not be.
    return makeNativeCallable(
        [this, bound = makeArray({text, *method})](const std::vector<Variable>& arguments) {
            const Elements& parts = *bound.asArray();
            std::vector<Variable> all;
            all.reserve(arguments.size() + 1);
            all.push_back(parts[0]);
            all.insert(all.end(), arguments.begin(), arguments.end());
            return invokeCallableFast(parts[1], all.data(), all.size());
        },
        name);
}

void OstrelScript::setIndexedValue(Variable& container, const Variable& key, const Variable& value,
                                   bool createMissing) {
    if (container.isString()) {
        setStringByte(container, key, value);
        return;
    }
    if (!container.isArray() && !container.isTable())
        throw std::runtime_error("Indexing requires an array, table, or string");
    // The element's place may be all that keeps `value` alive, so the value is copied first.
    Variable copy = value;
    *getIndexedValueMutable(container, key, createMissing) = std::move(copy);
}

Variable* OstrelScript::getIndexedValueMutable(Variable& container, const Variable& key, bool createMissing) {
    if (container.isArray()) {
        int index = 0;
        if (tryGetArrayIndex(key, index) && index >= 1) {
            Elements& elements = *container.asArray();
            if (static_cast<std::size_t>(index) > elements.size()) {
                if (!createMissing) throw std::runtime_error("Array index out of range");
                growArray(elements, index);
            }
            return &elements[static_cast<std::size_t>(index) - 1];
        }
        if (!createMissing) failArrayKey(key);
        const std::string text = keyToString(key); // fails before anything is changed
        promoteArrayVariableToTable(container);
        return &container.asTable()->findOrAdd(text);
    }
    if (!container.isTable()) throw std::runtime_error("Indexing requires an array or table");
    if (Variable* element = findElement(container, key)) return element;
    const std::string text = keyToString(key);
    if (!createMissing) throw std::runtime_error("Table key not found: " + text);
    return &container.asTable()->findOrAdd(text);
}

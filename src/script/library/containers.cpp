// The global functions on arrays and tables.
//
// An array or table is shared by everyone who holds it, so these functions change it in place and every holder sees
// the change. `set` is the one exception: it works on a copy of the value that shares the container, and where the
// assignment has to replace the container itself (a string, or an array that must become a table) only the copy has
// the new one.

#include "script/library/functions.h"

namespace {

/// The element's place behind a 1-based index, or null if there is none.
Variable* elementAt(Elements& elements, int index) {
    if (index < 1 || static_cast<std::size_t>(index) > elements.size()) return nullptr;
    return &elements[static_cast<std::size_t>(index) - 1];
}

} // namespace

Variable arrayFunction(OstrelScript&, const Variable*, std::size_t count) {
    if (count != 0) fail("array() takes no arguments");
    return makeArray({});
}

Variable lenFunction(OstrelScript& engine, const Variable* arguments, std::size_t count) {
    if (count != 1) fail("len(x) requires exactly 1 argument");
    if (!arguments[0].isArray() && !arguments[0].isTable() && !arguments[0].isString())
        fail("len(x) expects an array, table, or string");
    return engine.arrayLength(arguments[0]);
}

Variable pushFunction(OstrelScript&, const Variable* arguments, std::size_t count) {
    if (count != 2) fail("push(array, value) requires exactly 2 arguments");
    if (!arguments[0].isArray()) fail("push(array, value): first argument must be an array");
    Elements& elements = *arguments[0].asArray();
    elements.push_back(arguments[1]);
    return static_cast<int>(elements.size());
}

Variable popFunction(OstrelScript&, const Variable* arguments, std::size_t count) {
    if (count != 1) fail("pop(array) requires exactly 1 argument");
    if (!arguments[0].isArray()) fail("pop(array): argument must be an array");
    Elements& elements = *arguments[0].asArray();
    if (elements.empty()) fail("pop(array): array is empty");
    Variable removed = std::move(elements.back());
    elements.pop_back();
    return removed;
}

Variable reserveFunction(OstrelScript&, const Variable* arguments, std::size_t count) {
    if (count != 2) fail("reserve(array, capacity) requires exactly 2 arguments");
    if (!arguments[0].isArray() || arguments[1].type != VarType::Integer)
        fail("reserve(array, capacity) expects (array, int)");
    if (arguments[1].asInt() < 0) fail("reserve(array, capacity): capacity must be >= 0");
    const auto capacity = static_cast<std::size_t>(arguments[1].asInt());
    if (capacity > maximumResultElements) fail("reserve(array, capacity): capacity is too large");
    Elements& elements = *arguments[0].asArray();
    elements.reserve(capacity);
    return static_cast<int>(elements.capacity());
}

Variable getFunction(OstrelScript& engine, const Variable* arguments, std::size_t count) {
    if (count != 2 && count != 3) fail("get(container, keyOrIndex[, defaultValue]) requires 2 or 3 arguments");
    Variable found = engine.getIndexedValue(arguments[0], arguments[1]);
    if (found.isNil() && count == 3) return arguments[2];
    return found;
}

Variable setFunction(OstrelScript& engine, const Variable* arguments, std::size_t count) {
    if (count != 3) fail("set(container, keyOrIndex, value) requires exactly 3 arguments");
    Variable container = arguments[0];
    if (!container.isArray() && !container.isTable() && !container.isString())
        fail("set(container, keyOrIndex, value): container must be an array, table, or string");
    engine.setIndexedValue(container, arguments[1], arguments[2], true);
    return container.isString() ? container : arguments[2];
}

Variable clearFunction(OstrelScript&, const Variable* arguments, std::size_t count) {
    if (count != 1) fail("clear(container) requires exactly 1 argument");
    if (arguments[0].isArray())
        arguments[0].asArray()->clear();
    else if (arguments[0].isTable())
        arguments[0].asTable()->clear();
    else
        fail("clear(container): container must be an array or table");
    return {};
}

Variable eraseFunction(OstrelScript& engine, const Variable* arguments, std::size_t count) {
    if (count != 2) fail("erase(container, keyOrIndex) requires exactly 2 arguments");
    if (arguments[0].isArray()) {
        if (arguments[1].type != VarType::Integer) fail("erase(array, index): index must be an int");
        Elements& elements = *arguments[0].asArray();
        const Variable* const place = elementAt(elements, arguments[1].asInt());
        if (place == nullptr) return false;
        elements.erase(elements.begin() + (place - elements.data()));
        return true;
    }
    if (arguments[0].isTable()) return arguments[0].asTable()->erase(engine.keyToString(arguments[1]));
    fail("erase(container, keyOrIndex): container must be an array or table");
}

Variable containsFunction(OstrelScript& engine, const Variable* arguments, std::size_t count) {
    if (count != 2) fail("contains(container, valueOrKey) requires exactly 2 arguments");
    if (arguments[0].isArray()) {
        for (const Variable& element : *arguments[0].asArray())
            if (engine.variablesEqual(element, arguments[1])) return true;
        return false;
    }
    if (arguments[0].isTable()) return arguments[0].asTable()->contains(engine.keyToString(arguments[1]));
    fail("contains(container, valueOrKey): container must be an array or table");
}

Variable keysFunction(OstrelScript&, const Variable* arguments, std::size_t count) {
    if (count != 1 || !arguments[0].isTable()) fail("keys(table) requires exactly 1 table argument");
    return makeArray(arguments[0].asTable()->sortedKeyValues());
}

Variable valuesFunction(OstrelScript&, const Variable* arguments, std::size_t count) {
    if (count != 1) fail("values(container) requires exactly 1 argument");
    if (arguments[0].isArray()) return makeArray(*arguments[0].asArray());
    if (!arguments[0].isTable()) fail("values(container): container must be an array or table");
    const Table& table = *arguments[0].asTable();
    Elements values;
    values.reserve(table.size());
    for (const std::string& key : table.sortedKeys()) values.push_back(*table.find(key));
    return makeArray(std::move(values));
}

// Walking containers: pairs, ipairs and next.
//
// All three follow one order: an array's elements by index, a table's keys as bytes compare, so that "10" comes before
// "9". A table remembers that order while its set of keys stays the same. `pairs` and `ipairs` make a list of entries
// at the call; whatever happens to the container afterwards doesn't show in it.

#include "script/library/functions.h"

namespace {

Variable makeEntry(Variable key, const Variable& value) {
    Elements entry;
    entry.reserve(2);
    entry.push_back(std::move(key));
    entry.push_back(value);
    return makeArray(std::move(entry));
}

Variable makeNextResult(Variable key, const Variable& value) {
    std::vector<Variable> pair;
    pair.reserve(2);
    pair.push_back(std::move(key));
    pair.push_back(value);
    return makeMulti(std::move(pair));
}

Variable nextOfArray(const Elements& elements, const Variable& key) {
    int index = 0;
    if (!key.isNil() && !tryGetArrayIndex(key, index)) return {};
    if (index < 0 || static_cast<std::size_t>(index) >= elements.size()) return {};
    return makeNextResult(index + 1, elements[static_cast<std::size_t>(index)]);
}

Variable nextOfTable(const OstrelScript& engine, const Table& table, const Variable& key) {
    std::size_t place = 0;
    if (!key.isNil()) {
        place = table.placeOf(engine.keyToString(key));
        if (place == Table::noPlace) return {};
        ++place;
    }
    const std::vector<std::string>& keys = table.sortedKeys();
    if (place >= keys.size()) return {};
    return makeNextResult(table.sortedKeyValues()[place], *table.find(keys[place]));
}

} // namespace

Variable pairsFunction(OstrelScript&, const Variable* arguments, std::size_t count) {
    if (count != 1) fail("pairs(container) requires exactly 1 argument");
    Elements entries;
    if (arguments[0].isArray()) {
        const Elements& elements = *arguments[0].asArray();
        entries.reserve(elements.size());
        int index = 0;
        for (const Variable& element : elements) entries.push_back(makeEntry(++index, element));
    } else if (arguments[0].isTable()) {
        const Table& table = *arguments[0].asTable();
        const std::vector<std::string>& keys = table.sortedKeys();
        const std::vector<Variable>& readings = table.sortedKeyValues();
        entries.reserve(keys.size());
        for (std::size_t i = 0; i < keys.size(); ++i) entries.push_back(makeEntry(readings[i], *table.find(keys[i])));
    } else {
        fail("pairs(container) expects an array or table");
    }
    return makeArray(std::move(entries));
}

Variable ipairsFunction(OstrelScript&, const Variable* arguments, std::size_t count) {
    if (count != 1) fail("ipairs(container) requires exactly 1 argument");
    Elements entries;
    int index = 0;
    if (arguments[0].isArray()) {
        for (const Variable& element : *arguments[0].asArray()) {
            if (element.isNil()) break;
            entries.push_back(makeEntry(++index, element));
        }
    } else if (arguments[0].isTable()) {
        Table& table = *arguments[0].asTable();
        for (const Variable* value = table.find(1); value != nullptr && !value->isNil(); value = table.find(index + 1))
            entries.push_back(makeEntry(++index, *value));
    } else {
        fail("ipairs(container) expects an array or table");
    }
    return makeArray(std::move(entries));
}

Variable nextFunction(OstrelScript& engine, const Variable* arguments, std::size_t count) {
    if (count != 1 && count != 2) fail("next(container[, key]) requires 1 or 2 arguments");
    const Variable key = count == 2 ? arguments[1] : Variable();
    if (arguments[0].isArray()) return nextOfArray(*arguments[0].asArray(), key);
    if (arguments[0].isTable()) return nextOfTable(engine, *arguments[0].asTable(), key);
    fail("next(container[, key]) expects an array or table");
}

// The table `table`: lists in arrays and in the numeric keys of tables.
//
// A table's list is what stands under "1", "2" and so on up to the first key that is missing; other keys are not
// touched. Positions outside the list are held to its ends by `insert` and refused by `remove`.

#include "script/library/library.h"

#include "script/library/functions.h"

#include <algorithm>

namespace {

bool isList(const Variable& value) { return value.isArray() || value.isTable(); }

int listLength(const Variable& list) {
    return list.isArray() ? static_cast<int>(list.asArray()->size())
                          : static_cast<int>(list.asTable()->numericLength());
}

Variable insertFunction(OstrelScript&, const Variable* arguments, std::size_t count) {
    if (count < 2 || count > 3 || !isList(arguments[0]) || (count == 3 && !arguments[1].isNumeric()))
        fail("table['insert'](table[, pos], value) requires an array or table");
    const int length = listLength(arguments[0]);
    const int position = count == 3 ? std::clamp(toInt(arguments[1]), 1, length + 1) : length + 1;
    const Variable& value = arguments[count - 1];
    if (arguments[0].isArray()) {
        Elements& elements = *arguments[0].asArray();
        elements.insert(elements.begin() + (position - 1), value);
        return {};
    }
    Table& table = *arguments[0].asTable();
    for (int key = length; key >= position; --key) table.set(key + 1, std::move(*table.find(key)));
    table.set(position, value);
    return {};
}

Variable removeFunction(OstrelScript&, const Variable* arguments, std::size_t count) {
    const bool hasPosition = count == 2 && !arguments[1].isNil();
    if (count < 1 || count > 2 || !isList(arguments[0]) || (hasPosition && !arguments[1].isNumeric()))
        fail("table['remove'](table[, pos]) requires an array or table");
    const int length = listLength(arguments[0]);
    const int position = hasPosition ? toInt(arguments[1]) : length;
    if (position < 1 || position > length) return {};
    if (arguments[0].isArray()) {
        Elements& elements = *arguments[0].asArray();
        Variable removed = std::move(elements[static_cast<std::size_t>(position) - 1]);
        elements.erase(elements.begin() + (position - 1));
        return removed;
    }
    Table& table = *arguments[0].asTable();
    Variable removed = std::move(*table.find(position));
    for (int key = position; key < length; ++key) *table.find(key) = std::move(*table.find(key + 1));
    table.erase(length);
    return removed;
}

/// The least length of a value's text: exact for a string, which is what makes long texts.
std::size_t estimateVariableStringSize(const Variable& value) { return value.isString() ? value.asString().size() : 1; }

Variable concatFunction(OstrelScript&, const Variable* arguments, std::size_t count) {
    constexpr const char* message = "table['concat'](table[, sep[, i[, j]]]) requires an array or table";
    if (count < 1 || count > 4 || !isList(arguments[0])) fail(message);
    const auto position = [&](std::size_t place, int otherwise) {
        if (place >= count || arguments[place].isNil()) return otherwise;
        if (!arguments[place].isNumeric()) fail(message);
        return toInt(arguments[place]);
    };
    const std::string separator = count > 1 && !arguments[1].isNil() ? arguments[1].toString() : std::string();
    const int length = listLength(arguments[0]);
    const int first = std::max(position(2, 1), 1);
    const int last = std::min(position(3, length), length);
    const auto elementAt = [&list = arguments[0]](int place) -> const Variable& {
        return list.isArray() ? (*list.asArray())[static_cast<std::size_t>(place) - 1] : *list.asTable()->find(place);
    };

    constexpr const char* function = "table['concat']";
    std::size_t expected = 0;
    for (int place = first; place <= last; ++place) {
        expected += estimateVariableStringSize(elementAt(place)) + (place < last ? separator.size() : 0);
        requireResultSize(expected, function);
    }
    std::string text;
    text.reserve(expected);
    for (int place = first; place <= last; ++place) {
        elementAt(place).appendTo(text);
        if (place < last) text += separator;
        requireResultSize(text.size(), function);
    }
    return text;
}

} // namespace

void registerTableLibrary(OstrelScript& engine) {
    registerLibraryTable(
        engine, "table",
        {{"insert", insertFunction}, {"remove", removeFunction}, {"concat", concatFunction}, {"sort", sortFunction}});
}

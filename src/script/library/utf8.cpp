// The table `utf8`: counting the characters of a byte string.
//
// A character begins at every byte that is not a continuation (10xxxxxx). Nothing is validated: broken text has a
// count like any other, so measuring it never fails.

#include "script/library/library.h"

#include "script/library/functions.h"

#include <algorithm>

namespace {

constexpr unsigned topTwoBits = 0xC0;
constexpr unsigned continuation = 0x80;

bool beginsCharacter(char byte) { return (static_cast<unsigned char>(byte) & topTwoBits) != continuation; }

Variable lengthFunction(OstrelScript&, const Variable* arguments, std::size_t count) {
    if (count != 1 || !arguments[0].isString()) fail("utf8['len'](s) requires exactly 1 string argument");
    return countCharacters(arguments[0].asString());
}

Variable offsetFunction(OstrelScript&, const Variable* arguments, std::size_t count) {
    const bool hasStart = count == 3 && !arguments[2].isNil();
    if (count < 2 || count > 3 || !arguments[0].isString() || !arguments[1].isNumeric() ||
        (hasStart && !arguments[2].isNumeric()))
        fail("utf8['offset'](s, n[, i]) requires a string and a codepoint index");
    int missing = toInt(arguments[1]);
    if (missing < 1) return {};
    const std::string& text = arguments[0].asString();
    const auto start = static_cast<std::size_t>(hasStart ? std::max(toInt(arguments[2]), 1) : 1);
    for (std::size_t place = start; place <= text.size(); ++place)
        if (beginsCharacter(text[place - 1]) && --missing == 0) return static_cast<int>(place);
    return {};
}

} // namespace

int countCharacters(std::string_view text) {
    return static_cast<int>(std::count_if(text.begin(), text.end(), beginsCharacter));
}

void registerUtf8Library(OstrelScript& engine) {
    registerLibraryTable(engine, "utf8", {{"len", lengthFunction}, {"offset", offsetFunction}});
}

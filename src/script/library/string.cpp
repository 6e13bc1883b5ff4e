// The table `string`: what works on bytes. The functions that search with patterns stand in a file of their own.
//
// A string is a row of bytes, positions count from 1, and letters are the 26 of ASCII: nothing here knows a character
// set. Formatting, too, stands in a file of its own.

#include "script/library/library.h"

#include "script/library/functions.h"

#include <algorithm>
#include <optional>

namespace {

constexpr unsigned letterCaseBit = 'a' - 'A';

char upperLetter(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - letterCaseBit) : c; }
char lowerLetter(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + letterCaseBit) : c; }

Variable lengthFunction(OstrelScript&, const Variable* arguments, std::size_t count) {
    if (count != 1) fail("string['len'](s) requires exactly 1 argument");
    if (!arguments[0].isString()) fail("string['len'](s) expects a string");
    return static_cast<int>(arguments[0].asString().size());
}

Variable upperFunction(OstrelScript&, const Variable* arguments, std::size_t count) {
    if (count != 1 || !arguments[0].isString()) fail("string['upper'](s) requires exactly 1 string argument");
    std::string text = arguments[0].asString();
    std::transform(text.begin(), text.end(), text.begin(), upperLetter);
    return text;
}

Variable lowerFunction(OstrelScript&, const Variable* arguments, std::size_t count) {
    if (count != 1 || !arguments[0].isString()) fail("string['lower'](s) requires exactly 1 string argument");
    std::string text = arguments[0].asString();
    std::transform(text.begin(), text.end(), text.begin(), lowerLetter);
    return text;
}

Variable subFunction(OstrelScript&, const Variable* arguments, std::size_t count) {
    if (count < 2 || count > 3 || !arguments[0].isString() || !arguments[1].isNumeric() ||
        (count == 3 && !arguments[2].isNumeric()))
        fail("string['sub'](s, i[, j]) requires a string and 1-2 numeric indices");
    const std::string& text = arguments[0].asString();
    constexpr int lastByte = -1;
    const ByteRange range = selectBytes(text.size(), toInt(arguments[1]), count == 3 ? toInt(arguments[2]) : lastByte);
    return range.isEmpty() ? std::string() : text.substr(range.first, range.size());
}

/// Reads an optional position: nil and a missing argument give nothing.
std::optional<int> optionalPosition(const Variable* arguments, std::size_t count, std::size_t place,
                                    const char* message) {
    if (place >= count || arguments[place].isNil()) return std::nullopt;
    if (!arguments[place].isNumeric()) fail(message);
    return toInt(arguments[place]);
}

Variable byteFunctionImpl(OstrelScript&, const Variable* arguments, std::size_t count) {
    constexpr const char* message = "string['byte'](s[, i[, j]]) requires a string";
    if (count == 0 || !arguments[0].isString()) fail(message);
    const std::string& text = arguments[0].asString();
    const int from = optionalPosition(arguments, count, 1, message).value_or(1);
    const int to = optionalPosition(arguments, count, 2, message).value_or(from);
    const ByteRange range = selectBytes(text.size(), from, to);
    if (range.isEmpty()) return {};
    const auto byteAt = [&text](std::size_t place) {
        return static_cast<int>(static_cast<unsigned char>(text[place]));
    };
    if (range.size() == 1) return byteAt(range.first);
    requireResultElements(range.size(), "string['byte']");
    std::vector<Variable> bytes;
    bytes.reserve(range.size());
    for (std::size_t place = range.first; place < range.last; ++place) bytes.emplace_back(byteAt(place));
    return makeMulti(std::move(bytes));
}

Variable charFunction(OstrelScript&, const Variable* arguments, std::size_t count) {
    requireResultSize(count, "string['char']");
    std::string text;
    text.reserve(count);
    for (std::size_t i = 0; i < count; ++i) text += static_cast<char>(static_cast<unsigned char>(toInt(arguments[i])));
    return text;
}

Variable repFunction(OstrelScript&, const Variable* arguments, std::size_t count) {
    const bool hasSeparator = count == 3 && !arguments[2].isNil();
    if (count < 2 || count > 3 || !arguments[0].isString() || !arguments[1].isNumeric() ||
        (hasSeparator && !arguments[2].isString()))
        fail("string['rep'](s, n[, sep]) requires a string, count, and optional separator");
    const int copies = toInt(arguments[1]);
    if (copies < 1) return "";
    const std::string& text = arguments[0].asString();
    const std::string_view separator = hasSeparator ? std::string_view(arguments[2].asString()) : std::string_view();

    // Both texts are held to the limit first, so that the product of size and count can't wrap.
    constexpr const char* function = "string['rep']";
    requireResultSize(text.size(), function);
    requireResultSize(separator.size(), function);
    const std::size_t between = static_cast<std::size_t>(copies) - 1;
    const std::size_t size = text.size() * (between + 1) + separator.size() * between;
    requireResultSize(size, function);
    if (size == 0) return ""; // however many times
    std::string result;
    result.reserve(size);
    if (text.size() == 1 && separator.empty()) return result.assign(between + 1, text[0]);
    for (std::size_t i = 0; i < between; ++i) result.append(text).append(separator);
    return result.append(text);
}

} // namespace

ByteRange selectBytes(std::size_t length, int from, int to) {
    const auto size = static_cast<std::int64_t>(length);
    const std::int64_t first = std::max<std::int64_t>(from < 0 ? from + size + 1 : from, 1);
    const std::int64_t last = std::min<std::int64_t>(to < 0 ? to + size + 1 : to, size);
    if (first > size || last < first) return {};
    return {static_cast<std::size_t>(first) - 1, static_cast<std::size_t>(last)};
}

void registerStringLibrary(OstrelScript& engine) {
    registerLibraryTable(engine, "string",
                         {{"gsub", gsubImpl},
                          {"len", lengthFunction},
                          {"upper", upperFunction},
                          {"lower", lowerFunction},
                          {"sub", subFunction},
                          {"find", findFunctionImpl},
                          {"match", matchFunctionImpl},
                          {"gmatch", gmatchFunctionImpl},
                          {"byte", byteFunctionImpl},
                          {"char", charFunction},
                          {"format", formatFunctionImpl},
                          {"rep", repFunction}});
}

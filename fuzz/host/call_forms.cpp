#include "call_forms.h"

#include "host/index.h"

#include <bit>
#include <charconv>
#include <cstdint>
#include <limits>
#include <optional>
#include <utility>

namespace {

using Values = std::vector<Variable>;

constexpr std::size_t mostArguments = 16;    // of one call
constexpr std::size_t mostInMulti = 3;       // values
constexpr int somewhere = 1 << 20;           // not the address of any image
constexpr std::size_t longTextSize = 100000; // bytes
constexpr int smallestNumber = -4;           // of those that images of a few pixels like
constexpr int largestNumber = 40;
constexpr int deepest = 3; // tables within tables

constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float oddNumbers[] = {
    std::numeric_limits<float>::quiet_NaN(),
    infinity,
    -infinity,
    std::numeric_limits<float>::max(),
    std::numeric_limits<float>::lowest(),
    std::numeric_limits<float>::denorm_min(),
    2147483648.0F,
    -2147483648.0F,
    1e9F,
    1e-9F,
    -0.0F,
    0.5F,
    1.0000001F,
    359.9995F,
    -360.0F,
    32768.0F,
};

Variable wildHandle() { return reinterpret_cast<void*>(static_cast<std::uintptr_t>(somewhere)); }

Variable givenFunction() {
    return engine.makeNativeCallable([](const Values&) { return Variable(1); }, "given");
}

std::optional<Variable> numberOf(const std::string& word) {
    int whole = 0;
    const char* end = word.data() + word.size();
    if (const auto read = std::from_chars(word.data(), end, whole); read.ec == std::errc() && read.ptr == end) {
        return whole;
    }
    float number = 0;
    if (const auto read = std::from_chars(word.data(), end, number); read.ec == std::errc() && read.ptr == end) {
        return number; // "nan" and "-inf" too
    }
    return std::nullopt;
}

} // namespace

std::string WordCall::entryName() {
    std::string word;
    words_ >> word;
    return word;
}

Values WordCall::arguments() {
    Values values;
    std::string word;
    while (values.size() < mostArguments && words_ >> word) values.push_back(valueOf(word));
    return values;
}

Variable WordCall::valueOf(const std::string& word) {
    if (word == "nil") return {};
    if (word == "true" || word == "false") return word == "true";
    if (word == "raw") return std::vector<char>{'r', '\0', '\x7F'};
    if (word == "array") return makeArray({1, "two", 3.5F});
    if (word == "table") {
        Variable table = makeTable();
        table.asTable()->set("x", 1);
        table.asTable()->set(1, "one");
        return table;
    }
    if (word == "wild") return wildHandle();
    if (word == "long") return std::string(longTextSize, 'l');
    if (word == "function") return givenFunction();
    if (word == "many") return manyOf();
    if (word.size() > 1 && word[0] == '$') return earlierResult(word.substr(1));
    if (const std::optional<Variable> number = numberOf(word)) return *number;
    return word;
}

Variable WordCall::manyOf() {
    std::string word;
    Values values;
    while (values.size() < mostInMulti && words_ >> word) {
        if (word == "many") break; // no deep nesting; this is about arguments
        values.push_back(valueOf(word));
    }
    return makeMulti(std::move(values));
}

Variable WordCall::earlierResult(const std::string& place) const {
    const std::optional<Variable> number = numberOf(place);
    if (!number || number->type != VarType::Integer || number->asInt() < 0) return {};
    const auto index = static_cast<std::size_t>(number->asInt());
    return index < results_.size() ? results_[index] : Variable();
}

const Entry& ByteCalls::entry(const std::vector<Entry>& entries) {
    return entries[bytes_.ConsumeIntegralInRange<std::size_t>(0, entries.size() - 1)];
}

Values ByteCalls::arguments(const Entry& entry) {
    constexpr std::uint8_t oneTooFew = 0;
    constexpr std::uint8_t oneTooMany = 1;
    constexpr std::uint8_t asOneMulti = 2;
    constexpr std::uint8_t lastWays = 15;
    Values values;
    for (const Want want : entry.wants) values.push_back(wanted(want));
    const auto way = bytes_.ConsumeIntegralInRange<std::uint8_t>(0, lastWays);
    if (way == oneTooFew && !values.empty()) values.pop_back();
    // Flags at the end may be left out, so that nobody asked for them when the entry was looked at.
    if (way == oneTooMany || (way % 2 == 0 && way != oneTooFew)) values.push_back(anything(0));
    if (way == asOneMulti) values = {makeMulti(std::move(values))};
    return values;
}

Variable ByteCalls::wanted(Want want) {
    constexpr std::uint8_t oneIn = 12; // a value of any type
    if (bytes_.ConsumeIntegralInRange<std::uint8_t>(0, oneIn) == 0) return anything(0);
    switch (want) {
    case Want::Number: return number();
    case Want::Text: return text();
    case Want::Image: return image();
    case Want::Anything: break;
    }
    return anything(0);
}

Variable ByteCalls::number() {
    switch (bytes_.ConsumeIntegralInRange<int>(0, 9)) {
    case 0: return bytes_.ConsumeIntegral<std::int32_t>();
    case 1: return std::bit_cast<float>(bytes_.ConsumeIntegral<std::uint32_t>());
    case 2:
    case 3: return bytes_.PickValueInArray(oddNumbers);
    case 4: return bytes_.ConsumeBool();
    case 5: return static_cast<float>(bytes_.ConsumeIntegral<std::int16_t>()) / static_cast<float>(largestNumber);
    default: return bytes_.ConsumeIntegralInRange<int>(smallestNumber, largestNumber);
    }
}

Variable ByteCalls::text() {
    constexpr std::uint8_t oneIn = 40;
    if (bytes_.ConsumeIntegralInRange<std::uint8_t>(0, oneIn) == 0) return std::string(longTextSize, 'l');
    return bytes_.ConsumeRandomLengthString(largestNumber);
}

Variable ByteCalls::image() {
    constexpr std::uint8_t oneIn = 20;
    switch (bytes_.ConsumeIntegralInRange<std::uint8_t>(0, oneIn)) {
    case 0: return {};
    case 1: return wildHandle();
    default: break;
    }
    return images_.empty() ? Variable() : images_[bytes_.ConsumeIntegralInRange<std::size_t>(0, images_.size() - 1)];
}

Variable ByteCalls::anything(int depth) {
    switch (bytes_.ConsumeIntegralInRange<int>(0, depth < deepest ? 10 : 6)) {
    case 0: return {};
    case 1: return bytes_.ConsumeBool();
    case 2: return number();
    case 3: return text();
    case 4: return image();
    case 5: return givenFunction();
    case 6: {
        const std::string bytes = bytes_.ConsumeRandomLengthString(largestNumber);
        return std::vector<char>(bytes.begin(), bytes.end());
    }
    case 7: return makeTable();
    case 8: {
        Variable table = makeTable();
        table.asTable()->set(bytes_.ConsumeRandomLengthString(smallestNumber * -1), anything(depth + 1));
        table.asTable()->set(1, anything(depth + 1));
        return table;
    }
    default: {
        const bool several = bytes_.ConsumeBool();
        Values values;
        const auto count = bytes_.ConsumeIntegralInRange<std::size_t>(0, mostInMulti);
        while (values.size() < count) values.push_back(anything(depth + 1));
        return several ? makeMulti(std::move(values)) : makeArray(std::move(values));
    }
    }
}

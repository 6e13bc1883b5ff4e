// `string.format`: the C library's conversions on script values.
//
// The C library is asked for one thing only, the digits of a float; signs, widths, zeros and integers are written here.
// So the text is the same on every platform, a string may hold zero bytes, and a width of any size is a plain append
// that can be refused before it takes memory. A float has no more than about 150 digits behind its dot: asking the C
// library for more would only make it write zeros, which is done here as well.

#include "script/library/functions.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstdio>

namespace {

constexpr const char* functionName = "string['format']";
constexpr std::string_view flagBytes = "-+ #0";
constexpr std::string_view lengthModifiers = "hlLzjt";
constexpr std::size_t defaultFloatPrecision = 6;
constexpr std::size_t exactFloatPrecision = 200; // more than any float has; what is asked for beyond it is zeros
constexpr std::size_t floatBufferSize = exactFloatPrecision + 64;

[[noreturn]] void failFormat(const std::string& what) { fail(functionName + (": " + what)); }

/// What stands between a percent sign and its conversion character.
struct Specifier {
    bool left = false;      // "-"
    bool plus = false;      // "+"
    bool blank = false;     // " "
    bool alternate = false; // "#"
    bool zero = false;      // "0"
    bool hasPrecision = false;
    std::size_t width = 0; // held to a little above the largest result
    std::size_t precision = 0;
    char conversion = 0;

    std::size_t precisionOr(std::size_t otherwise) const { return hasPrecision ? precision : otherwise; }
};

class Formatter {
public:
    Formatter(std::string_view format, const Variable* arguments, std::size_t count)
        : format_(format), arguments_(arguments), count_(count) {}

    std::string run() {
        while (position_ < format_.size()) {
            const std::size_t percent = std::min(format_.find('%', position_), format_.size());
            append(format_.substr(position_, percent - position_));
            position_ = percent;
            if (percent == format_.size()) break;
            ++position_;
            if (position_ < format_.size() && format_[position_] == '%') {
                append("%");
                ++position_;
            } else {
                convert(readSpecifier());
            }
        }
        return std::move(out_);
    }

private:
    char current() const {
        if (position_ >= format_.size()) failFormat("incomplete format specifier");
        return format_[position_];
    }

    std::size_t readNumber() {
        std::size_t number = 0;
        for (; current() >= '0' && current() <= '9'; ++position_)
            number = std::min(number * 10 + static_cast<std::size_t>(current() - '0'), maximumResultBytes + 1);
        return number;
    }

    Specifier readSpecifier() {
        Specifier specifier;
        for (; flagBytes.find(current()) != std::string_view::npos; ++position_) {
            switch (current()) {
            case '-': specifier.left = true; break;
            case '+': specifier.plus = true; break;
            case ' ': specifier.blank = true; break;
            case '#': specifier.alternate = true; break;
            default: specifier.zero = true; break;
            }
        }
        specifier.width = readNumber();
        if (current() == '.') {
            ++position_;
            specifier.hasPrecision = true;
            specifier.precision = readNumber();
        }
        while (lengthModifiers.find(current()) != std::string_view::npos) ++position_;
        specifier.conversion = current();
        ++position_;
        return specifier;
    }

    const Variable& nextArgument(char conversion) {
        if (argument_ >= count_) failFormat(std::string("missing argument for format specifier %") + conversion);
        return arguments_[argument_++];
    }

    void convert(const Specifier& specifier) {
        const Variable& value = nextArgument(specifier.conversion);
        switch (specifier.conversion) {
        case 'd':
        case 'i': convertSigned(specifier, toInt(value)); break;
        case 'u':
        case 'o':
        case 'x':
        case 'X': convertUnsigned(specifier, static_cast<std::uint32_t>(toInt(value))); break;
        case 'c': convertText(specifier, std::string(1, static_cast<char>(toInt(value)))); break;
        case 'e':
        case 'E':
        case 'f':
        case 'F':
        case 'g':
        case 'G': convertFloat(specifier, toDouble(value)); break;
        case 's': {
            const std::string text = value.toString();
            convertText(specifier, std::string_view(text).substr(0, specifier.precisionOr(text.size())));
            break;
        }
        case 'q': appendQuoted(value.toString()); break;
        default: failFormat(std::string("unsupported specifier %") + specifier.conversion);
        }
    }

    void convertSigned(const Specifier& specifier, int number) {
        const auto bits = static_cast<std::uint32_t>(number);
        appendInteger(specifier, number < 0 ? "-" : signOf(specifier), number < 0 ? 0U - bits : bits, 10);
    }

    void convertUnsigned(const Specifier& specifier, std::uint32_t number) {
        if (specifier.conversion == 'u') return appendInteger(specifier, "", number, 10);
        if (specifier.conversion == 'o') return appendInteger(specifier, "", number, 8);
        const char* const prefix = specifier.conversion == 'x' ? "0x" : "0X";
        appendInteger(specifier, specifier.alternate && number != 0 ? prefix : "", number, 16);
    }

    /// A precision is a least number of digits and takes the meaning of the zero flag away.
    void appendInteger(const Specifier& specifier, std::string_view prefix, std::uint32_t number, int base) {
        char buffer[16];
        char* const end = std::to_chars(buffer, buffer + sizeof buffer, number, base).ptr;
        if (specifier.conversion == 'X')
            std::transform(buffer, end, buffer, [](char c) { return c >= 'a' ? static_cast<char>(c - 'a' + 'A') : c; });
        std::string_view digits(buffer, static_cast<std::size_t>(end - buffer));
        if (number == 0 && specifier.hasPrecision && specifier.precision == 0) digits = {};
        std::size_t zeros = specifier.precision > digits.size() ? specifier.precision - digits.size() : 0;
        const bool startsWithZero = zeros > 0 || (!digits.empty() && digits[0] == '0');
        if (specifier.conversion == 'o' && specifier.alternate && !startsWithZero) zeros = 1;
        appendField(specifier, {prefix, zeros, digits, 0, {}}, specifier.zero && !specifier.hasPrecision);
    }

    void convertFloat(const Specifier& specifier, double number) {
        const bool isUpper = specifier.conversion < 'a';
        const std::string_view sign = std::signbit(number) ? "-" : signOf(specifier);
        if (!std::isfinite(number)) {
            const std::string_view word = std::isnan(number) ? (isUpper ? "NAN" : "nan") : (isUpper ? "INF" : "inf");
            return appendField(specifier, {sign, 0, word, 0, {}}, false);
        }
        const std::size_t precision = specifier.precisionOr(defaultFloatPrecision);
        const std::size_t exact = std::min(precision, exactFloatPrecision);
        const char plainForm[] = {'%', '.', '*', specifier.conversion, '\0'};
        const char alternateForm[] = {'%', '#', '.', '*', specifier.conversion, '\0'};
        char buffer[floatBufferSize];
        const int length = std::snprintf(buffer, sizeof buffer, specifier.alternate ? alternateForm : plainForm,
                                         static_cast<int>(exact), std::fabs(number));
        if (length < 0 || static_cast<std::size_t>(length) >= sizeof buffer) failFormat("failed to format value");
        const std::string_view text(buffer, static_cast<std::size_t>(length));

        // The zeros beyond the exact digits stand behind these and before an exponent. The shortest form has none.
        const bool isShortest = specifier.conversion == 'g' || specifier.conversion == 'G';
        const std::size_t zeros = isShortest && !specifier.alternate ? 0 : precision - exact;
        const std::size_t digits = std::min(text.find(isUpper ? 'E' : 'e'), text.size());
        appendField(specifier, {sign, 0, text.substr(0, digits), zeros, text.substr(digits)}, specifier.zero);
    }

    void convertText(const Specifier& specifier, std::string_view text) {
        appendField(specifier, {{}, 0, text, 0, {}}, false);
    }

    static std::string_view signOf(const Specifier& specifier) {
        return specifier.plus ? "+" : specifier.blank ? " " : "";
    }

    /// A converted value before it is padded, in the order of its parts.
    struct Field {
        std::string_view prefix;
        std::size_t leadingZeros = 0;
        std::string_view digits;
        std::size_t trailingZeros = 0;
        std::string_view exponent;

        std::size_t size() const {
            return prefix.size() + leadingZeros + digits.size() + trailingZeros + exponent.size();
        }
    };

    void appendField(const Specifier& specifier, const Field& field, bool padWithZeros) {
        const std::size_t size = std::max(field.size(), specifier.width);
        if (size > maximumResultBytes)
            failFormat(specifier.conversion == 's' ? "failed to format string" : "failed to format value");
        requireResultSize(out_.size() + size, functionName);
        const std::size_t padding = size - field.size();
        const bool zerosInside = padWithZeros && !specifier.left;
        if (!specifier.left && !zerosInside) out_.append(padding, ' ');
        out_.append(field.prefix);
        out_.append(field.leadingZeros + (zerosInside ? padding : 0), '0');
        out_.append(field.digits);
        out_.append(field.trailingZeros, '0');
        out_.append(field.exponent);
        if (specifier.left) out_.append(padding, ' ');
    }

    void appendQuoted(std::string_view text) {
        append("\"");
        for (const char c : text) {
            switch (c) {
            case '\\': append("\\\\"); break;
            case '"': append("\\\""); break;
            case '\n': append("\\n"); break;
            case '\r': append("\\r"); break;
            case '\t': append("\\t"); break;
            default: append({&c, 1}); break;
            }
        }
        append("\"");
    }

    void append(std::string_view text) {
        requireResultSize(out_.size() + text.size(), functionName);
        out_.append(text);
    }

    std::string_view format_;
    std::size_t position_ = 0;
    const Variable* arguments_;
    std::size_t count_;
    std::size_t argument_ = 0;
    std::string out_;
};

} // namespace

Variable formatFunctionImpl(OstrelScript&, const Variable* arguments, std::size_t count) {
    if (count == 0 || !arguments[0].isString()) fail("string['format'](format, ...) requires a format string");
    return Formatter(arguments[0].asString(), arguments + 1, count - 1).run();
}

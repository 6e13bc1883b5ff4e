// `string.format` beside the C library's own formatting: the same text for every conversion, flag, width and precision.

#include "script/library/functions.h"
#include "script/ostrel_script.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <cstdio>
#include <random>

namespace {

class RandomNumbers {
public:
    explicit RandomNumbers(unsigned seed) : generator_(seed) {}

    unsigned upTo(unsigned limit) { return static_cast<unsigned>(generator_()) % limit; }
    std::uint32_t bits() { return static_cast<std::uint32_t>(generator_()); }

private:
    std::mt19937 generator_;
};

class Formatting : public testing::Test {
protected:
    std::string format(const std::string& text, Variable value) {
        const Variable arguments[] = {text, std::move(value)};
        return formatFunctionImpl(engine_, arguments, 2).asString();
    }

    template <typename Value> static std::string expected(const std::string& text, Value value) {
        char buffer[2048];
        const int length = std::snprintf(buffer, sizeof buffer, text.c_str(), value);
        return std::string(buffer, static_cast<std::size_t>(length));
    }

    static std::string randomSpecifier(RandomNumbers& values, const std::string& flags, unsigned largestPrecision) {
        std::string specifier = "%";
        for (const char flag : flags)
            if (values.upTo(4) == 0) specifier += flag;
        if (values.upTo(2) == 0) specifier += std::to_string(1 + values.upTo(30));
        if (values.upTo(2) == 0) specifier += "." + std::to_string(values.upTo(largestPrecision));
        return specifier;
    }

    OstrelScript engine_;
};

TEST_F(Formatting, WritesIntegersAsTheCLibraryDoes) {
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    RandomNumbers values(seed);
    for (int round = 0; round < 100000; ++round) {
        const char conversion = "diuoxX"[values.upTo(6)];
        const bool isSigned = conversion == 'd' || conversion == 'i';
        const std::string specifier = randomSpecifier(values, isSigned ? "-+ 0" : "-0", 30) + conversion;
        const std::string alternate =
            conversion == 'o' || conversion == 'x' || conversion == 'X' ? "%#" + specifier.substr(1) : specifier;
        const int number = values.upTo(3) == 0   ? static_cast<int>(values.upTo(3)) - 1
                           : values.upTo(2) == 0 ? static_cast<int>(values.upTo(0x7FFFFFFFU) * 2U + values.upTo(2))
                                                 : static_cast<int>(values.upTo(2000)) - 1000;
        ASSERT_EQ(format(specifier, number), expected(specifier, number)) << specifier << " of " << number;
        ASSERT_EQ(format(alternate, number), expected(alternate, number)) << alternate << " of " << number;
    }
}

TEST_F(Formatting, WritesFloatsAsTheCLibraryDoes) {
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    RandomNumbers values(seed);
    for (int round = 0; round < 100000; ++round) {
        const std::string specifier = randomSpecifier(values, "-+ #0", 40) + "eEfFgG"[values.upTo(6)];
        float number = std::bit_cast<float>(values.bits());
        if (values.upTo(2) == 0) number = static_cast<float>(static_cast<int>(values.upTo(4001)) - 2000) / 8.0F;
        ASSERT_EQ(format(specifier, number), expected(specifier, static_cast<double>(number)))
            << specifier << " of " << number;
    }
}

TEST_F(Formatting, WritesLongPrecisionsAsTheCLibraryDoes) {
    for (const char* specifier : {"%.201f", "%.1000f", "%.1000e", "%#.1000g", "%.1000g", "%-1500.999E|", "%01500.999f"})
        for (const float number : {1.0F, -0.1F, 1e-45F, 3.4e38F, 1e-5F, 123456.0F})
            EXPECT_EQ(format(specifier, number), expected(specifier, static_cast<double>(number))) << specifier;
}

TEST_F(Formatting, CutsAndPadsStringsAsTheCLibraryDoes) {
    for (const char* specifier : {"%s", "%10s", "%-10s|", "%.2s", "%10.2s", "%-10.0s|", "%.100s"})
        EXPECT_EQ(format(specifier, "hello"), expected(specifier, "hello")) << specifier;
}

} // namespace

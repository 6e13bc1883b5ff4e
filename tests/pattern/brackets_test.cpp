// Brackets: ranges, classes, names, and the many meanings of the hyphen.

#include "found.h"

#include <gtest/gtest.h>

#include <array>

namespace pattern {

namespace {

TEST(Bracket, HoldsBytesAndRanges) {
    EXPECT_EQ(matchedBytes("[abx]"), "a-b x");
    EXPECT_EQ(matchedBytes("[a-c5-7]"), "5-7 a-c");
    EXPECT_EQ(matchedBytes("[.*$|()?{}]"), "$ (-* . ? {-}");
    EXPECT_EQ(matchedBytes("[\\x41-\\x43]"), "A-C");
    EXPECT_EQ(matchedBytes("[\\n-\\r]"), "\\x0A-\\x0D");
    EXPECT_EQ(matchedBytes("[\\0-\\x20]"), "\\x00- ");
}

TEST(Bracket, IsNegatedByAFirstCaret) {
    EXPECT_EQ(matchedBytes("[^\\x01-\\xFE]"), "\\x00 \\xFF");
    EXPECT_EQ(matchedBytes("[a^]"), "^ a");
    EXPECT_EQ(matchedBytes("[\\^a]"), "^ a");
    EXPECT_EQ(found("[^a]", "a\n"), "1-2");
}

TEST(Bracket, MayBeEmpty) {
    EXPECT_EQ(matchedBytes("[]"), "");
    EXPECT_EQ(matchedBytes("[^]"), "\\x00-\\xFF");
    EXPECT_EQ(found("[]a]", "]a]"), "none");
    EXPECT_EQ(found("[]|a", "]a]"), "1-2");
    EXPECT_EQ(found("[a]]", "aa]"), "1-3");
}

TEST(Bracket, RangesGoByTheUnsignedCode) {
    EXPECT_EQ(matchedBytes("[a-\xFF]"), "a-\\xFF");
    EXPECT_EQ(matchedBytes("[\\x00-\\xFF]"), "\\x00-\\xFF");
    EXPECT_EQ(matchedBytes("[\x80-\xBF]"), "\\x80-\\xBF");
    EXPECT_EQ(faultOf("[\xFF-a]"), "a range between brackets has its ends the wrong way round");
}

TEST(Bracket, AHyphenAtAnEndIsAByte) {
    EXPECT_EQ(matchedBytes("[-a]"), "- a");
    EXPECT_EQ(matchedBytes("[a-]"), "- a");
    EXPECT_EQ(matchedBytes("[-]"), "-");
    EXPECT_EQ(matchedBytes("[--]"), "-");
    EXPECT_EQ(matchedBytes("[^\\x00-,.-\\xFF-]"), "");
    EXPECT_EQ(matchedBytes("[\\d-]"), "- 0-9");
    EXPECT_EQ(matchedBytes("[-\\d]"), "- 0-9");
}

TEST(Bracket, AHyphenMayBeTheEndOfARange) {
    EXPECT_EQ(matchedBytes("[+--]"), "+--");
    EXPECT_EQ(matchedBytes("[--/]"), "--/");
    EXPECT_EQ(matchedBytes("[---]"), "-");
    EXPECT_EQ(matchedBytes("[!--a]"), "!-- a");
}

TEST(Bracket, AHyphenBehindARangeIsAByte) {
    EXPECT_EQ(matchedBytes("[a-c-e]"), "- a-c e");
    EXPECT_EQ(matchedBytes("[a-c-]"), "- a-c");
    EXPECT_EQ(matchedBytes("[+--/]"), "+-- /");
}

TEST(Bracket, EscapesAreThoseOfThePattern) {
    EXPECT_EQ(matchedBytes("[\\d\\s]"), "\\x09-\\x0D   0-9");
    EXPECT_EQ(matchedBytes("[\\W]"), "\\x00-/ :-@ [-^ ` {-\\xFF");
    EXPECT_EQ(matchedBytes("[^\\D]"), "0-9");
    EXPECT_EQ(matchedBytes("[\\]\\\\\\-]"), "- \\-]");
    EXPECT_EQ(matchedBytes("[\\b]"), "\\x08");
    EXPECT_EQ(matchedBytes("[\\cA\\t]"), "\\x09 A");
    EXPECT_EQ(matchedBytes("[\\a\\z]"), "a z");
    EXPECT_EQ(matchedBytes("[\\u0041]"), "A");
}

TEST(Bracket, KnowsTheNamedClasses) {
    constexpr std::array<std::array<const char*, 2>, 15> classes{{
        {"alnum", "0-9 A-Z a-z"},
        {"alpha", "A-Z a-z"},
        {"blank", "\\x09  "},
        {"cntrl", "\\x00-\\x1F \\x7F"},
        {"d", "0-9"},
        {"digit", "0-9"},
        {"graph", "!-~"},
        {"lower", "a-z"},
        {"print", " -~"},
        {"punct", "!-/ :-@ [-` {-~"},
        {"s", "\\x09-\\x0D  "},
        {"space", "\\x09-\\x0D  "},
        {"upper", "A-Z"},
        {"w", "0-9 A-Z _ a-z"},
        {"xdigit", "0-9 A-F a-f"},
    }};
    for (const auto& [name, bytes] : classes) EXPECT_EQ(matchedBytes("[[:" + std::string(name) + ":]]"), bytes) << name;
    EXPECT_EQ(matchedBytes("[[:ALPHA:]]"), "A-Z a-z");
    EXPECT_EQ(matchedBytes("[_[:digit:][:upper:]-]"), "- 0-9 A-Z _");
    EXPECT_EQ(matchedBytes("[^[:print:]]"), "\\x00-\\x1F \\x7F-\\xFF");
}

TEST(Bracket, KnowsNamedBytes) {
    EXPECT_EQ(matchedBytes("[[.a.]]"), "a");
    EXPECT_EQ(matchedBytes("[[.NUL.]]"), "\\x00");
    EXPECT_EQ(matchedBytes("[[.IS1.]]"), "\\x1F");
    EXPECT_EQ(matchedBytes("[[.space.]]"), " ");
    EXPECT_EQ(matchedBytes("[[.hyphen.]]"), "-");
    EXPECT_EQ(matchedBytes("[[.nine.]]"), "9");
    EXPECT_EQ(matchedBytes("[[.question-mark.]]"), "?");
    EXPECT_EQ(matchedBytes("[[.commercial-at.]]"), "@");
    EXPECT_EQ(matchedBytes("[[.left-square-bracket.]]"), "[");
    EXPECT_EQ(matchedBytes("[[.underscore.]]"), "_");
    EXPECT_EQ(matchedBytes("[[.grave-accent.]]"), "`");
    EXPECT_EQ(matchedBytes("[[.left-curly-bracket.]]"), "{");
    EXPECT_EQ(matchedBytes("[[.DEL.]]"), "\\x7F");
    EXPECT_EQ(matchedBytes("[[.a.]-c]"), "a-c");
}

TEST(Bracket, TheTwoCasesOfALetterAreEquivalent) {
    EXPECT_EQ(matchedBytes("[[=a=]]"), "A a");
    EXPECT_EQ(matchedBytes("[[=Z=]]"), "Z z");
    EXPECT_EQ(matchedBytes("[[=hyphen=]]"), "-");
    EXPECT_EQ(matchedBytes("[[=a=]b]"), "A a-b");
}

TEST(Bracket, ABracketWithinIsAByteUnlessItBeginsAName) {
    EXPECT_EQ(matchedBytes("[[]"), "[");
    EXPECT_EQ(matchedBytes("[[a]"), "[ a");
    EXPECT_EQ(matchedBytes("[A-[]"), "A-[");
    EXPECT_EQ(found("[[-]]", "[]"), "0-2");
    EXPECT_EQ(matchedBytes("[:alpha:]"), ": a h l p");
}

TEST(Bracket, IgnoringCaseLettersHaveTwoForms) {
    EXPECT_EQ(matchedBytes("[ab]", ignoringCase), "A-B a-b");
    EXPECT_EQ(matchedBytes("[A-C]", ignoringCase), "A-C a-c");
    EXPECT_EQ(matchedBytes("[Z-a]", ignoringCase), "A Z-a z");
    EXPECT_EQ(matchedBytes("[^a]", ignoringCase), "\\x00-@ B-` b-\\xFF");
    EXPECT_EQ(matchedBytes("[[:upper:]]", ignoringCase), "A-Z a-z");
    EXPECT_EQ(matchedBytes("[[:lower:]]", ignoringCase), "A-Z a-z");
    EXPECT_EQ(matchedBytes("[[.a.]]", ignoringCase), "A a");
    EXPECT_EQ(matchedBytes("[\\W]", ignoringCase), "\\x00-/ :-@ [-^ ` {-\\xFF");
}

} // namespace

} // namespace pattern

// Texts of ten megabytes, and searches that would never end.

#include "found.h"
#include "pattern/match_iterator.h"

#include <gtest/gtest.h>

#include <chrono>

namespace pattern {

namespace {

constexpr std::size_t tenMegabytes = std::size_t{10} << 20;
constexpr double aboutASecond = 5; // seconds; with room for sanitizers and a busy machine

const std::string& manyLetters() {
    static const std::string text(tenMegabytes, 'a');
    return text;
}

/// Words of seven letters, eleven to a line.
const std::string& manyWords() {
    static const std::string text = [] {
        std::string made;
        for (std::size_t word = 1; made.size() < tenMegabytes; ++word)
            made += word % 11 == 0 ? "lantern\n" : "lantern ";
        return made;
    }();
    return text;
}

std::size_t countOf(std::string_view source, std::string_view text) {
    const Pattern compiled = Pattern::compile(source);
    Match match;
    std::size_t count = 0;
    for (MatchIterator matches(compiled, text, match); matches.next();) ++count;
    return count;
}

std::string foundOrFault(std::string_view source, std::string_view text) try {
    return found(source, text);
} catch (const PatternTooComplex& fault) {
    return fault.what();
}

/// Searches until the engine gives up, and says whether it did so in time.
void expectTooComplex(std::string_view source, std::string_view text) {
    const auto begin = std::chrono::steady_clock::now();
    try {
        found(source, text);
        ADD_FAILURE() << source << " did not give up";
    } catch (const PatternTooComplex& fault) {
        EXPECT_STREQ(fault.what(), "pattern is too complex for this text");
    }
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begin;
    EXPECT_LT(taken.count(), aboutASecond) << source;
}

TEST(LargeText, IsOneMatch) {
    const std::string whole = "0-10485760";
    EXPECT_EQ(foundOrFault("a*", manyLetters()), whole);
    EXPECT_EQ(foundOrFault("[^]*", manyLetters()), whole);
    EXPECT_EQ(foundOrFault(".*?$", manyLetters()), whole);
    EXPECT_EQ(foundOrFault("(a+)$", manyLetters()), whole + " " + whole);
    EXPECT_EQ(foundOrFault("(a|b)*", manyLetters()), whole + " 10485759-10485760");
    EXPECT_EQ(foundOrFault("(?:a|bc)*", manyLetters()), whole);
    EXPECT_EQ(foundOrFault("((a)|(b))*", manyLetters()), whole + " 10485759-10485760 10485759-10485760 -");
    EXPECT_EQ(foundOrFault("^(?:(\\w)\\s?)*$", manyLetters()), whole + " 10485759-10485760");
    EXPECT_EQ(foundOrFault("(?:a|ab)*$", manyLetters()), whole);
}

TEST(LargeText, IsGoneOverOnce) {
    const std::size_t words = (manyWords().size() + 7) / 8;
    EXPECT_EQ(countOf("\\w+", manyWords()), words);
    EXPECT_EQ(countOf("(\\w+)(\\s)", manyWords()), words);
    EXPECT_EQ(countOf("lantern", manyWords()), words);
    EXPECT_EQ(countOf("\\bl.*?n\\b", manyWords()), words);
    EXPECT_EQ(countOf("[aeiou]", manyWords()), words * 2);
    EXPECT_EQ(countOf(".+\\n", manyWords()), words / 11);
    EXPECT_EQ(countOf("(.)\\1", manyWords()), 0U);
}

TEST(LargeText, IsSearchedInVain) {
    for (const char* const source : {".*x", ".*?x", "a+b", "(a+)b", "a*?b", "a.*x", "[a-c]a*b", "\\s+$", "(a|b)*c",
                                     "(?:ab)+c", "lanterns", "a{5000}b", "(?=.*z)a"})
        EXPECT_EQ(foundOrFault(source, manyLetters()), "none") << source;
}

TEST(LargeText, WithAnUnhappyEndStillIsGoneOverOnce) {
    const std::string blanks = std::string(tenMegabytes, ' ') + "x";
    EXPECT_EQ(foundOrFault("\\s+$", blanks), "none");
    EXPECT_EQ(foundOrFault("[ \\t]*\\n", blanks + " "), "none");
    EXPECT_EQ(foundOrFault("a.*y", manyLetters() + "\ny"), "none");
    EXPECT_EQ(foundOrFault("[ab]\\w*-", manyLetters() + " -"), "none");
}

TEST(HopelessSearch, EndsInAClearFault) {
    const std::string letters(60, 'a');
    expectTooComplex("(a+)+b", letters + "cb");
    expectTooComplex("(?:a|aa)+$", letters + "c");
    expectTooComplex("((?:a|b|ab)*)*c", letters + "dc");
    expectTooComplex("(a*)*b", letters + "cb");
    expectTooComplex("(?:a?){40}b", letters + "cb");
    expectTooComplex("(?:(a)|a)*c", letters + "bc");
    expectTooComplex("(?=(?:(a)|a)*c)a", letters + "bc");
    expectTooComplex("(.*)(.*)(.*)(.*)(.*)z", std::string(2000, 'a') + "\nz");
}

TEST(HopelessSearch, EndsForLongTextsToo) {
    const std::string letters(200'000, 'a');
    expectTooComplex("(?:q|a*b)", letters + "q");
    expectTooComplex("(?:q|a*?b)", letters + "q");
    expectTooComplex("(a*)\\1b", letters + "cb");
    expectTooComplex("(?:\\b|a)(?:(?:\\B){100}){1000}c", letters + "bc");
}

TEST(HopelessSearch, EndsBeforeMemoryDoes) {
    expectTooComplex("(?:(a)|(ab))*c", manyLetters() + manyLetters() + "dc");
    expectTooComplex("(?:a|(?:))*b", manyLetters() + manyLetters() + "cb");
}

TEST(HopelessSearch, DoesNotHarmTheNext) {
    Match match;
    const Pattern hopeless = Pattern::compile("(a+)+b");
    const std::string letters(60, 'a');
    EXPECT_THROW(hopeless.search(letters + "cb", 0, match), PatternTooComplex);
    ASSERT_TRUE(hopeless.search("xaab", 0, match));
    EXPECT_EQ(match[0], (Span{1, 4}));
    EXPECT_EQ(match[1], (Span{1, 3}));
}

TEST(HopelessSearch, AWholeWalkSharesOneBudget) {
    std::string text;
    for (int line = 0; line < 1000; ++line) text += std::string(16, 'a') + "c b\n";
    const char* const source = "(a+)+b|c"; // each search takes a hundredth of the budget
    EXPECT_EQ(foundOrFault(source, text), "16-17 -");
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_THROW(countOf(source, text), PatternTooComplex);
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begin;
    EXPECT_LT(taken.count(), aboutASecond);
}

} // namespace

} // namespace pattern

// Every fault of a pattern with its exact text, and the limits of size.

#include "found.h"

#include <gtest/gtest.h>

namespace pattern {

namespace {

std::string repeated(std::string_view text, std::size_t times) {
    std::string result;
    while (times-- > 0) result += text;
    return result;
}

TEST(Fault, AGroupIsNotClosed) {
    for (const char* const source : {"(", "(a", "((a)", "(?:", "(?:a", "(?=a", "(?!", "(a|b", "(a|"})
        EXPECT_EQ(faultOf(source), "a group has no )") << source;
}

TEST(Fault, AParenthesisClosesNothing) {
    for (const char* const source : {")", "a)", "(a))", "a|)", "[)])"})
        EXPECT_EQ(faultOf(source), "a ) closes no group") << source;
}

TEST(Fault, AGroupIsOfNoKnownKind) {
    for (const char* const source : {"(?", "(?)", "(?a)", "(?<a>b)", "(?<=a)b", "(?#a)", "(?\?)", "(?{1})"})
        EXPECT_EQ(faultOf(source), "(? is not followed by one of : = !") << source;
}

TEST(Fault, AQuantifierHasNothingToRepeat) {
    for (const char* const source : {"*", "+", "?", "{1}", "{", "*?", "a|*", "(*)", "(?:+)", "(?=?)", "^*", "$+",
                                     "\\b?", "\\B{2}", "(?=a)*", "(?!a)+"})
        EXPECT_EQ(faultOf(source), "a quantifier has nothing to repeat") << source;
}

TEST(Fault, ACountIsNotClosed) {
    for (const char* const source : {"a{2", "a{2,3", "a{2 }", "a{1.5}", "a{2,3,}", "a{2x}"})
        EXPECT_EQ(faultOf(source), "a { has no } behind its numbers") << source;
}

TEST(Fault, ACountIsNoNumber) {
    for (const char* const source : {"a{", "a{}", "a{,3}", "a{x}", "a{-1}", "a{ 2}", "a{2,x}", "a{2,", "a{2,,3}"})
        EXPECT_EQ(faultOf(source), "a { is not followed by a number") << source;
}

TEST(Fault, CountsFall) { EXPECT_EQ(faultOf("a{2,1}"), "the numbers between { and } fall"); }

TEST(Fault, ACountIsTooLarge) {
    for (const char* const source : {"a{10000001}", "a{1,4294967297}", "a{99999999999999999999}"})
        EXPECT_EQ(faultOf(source), "a number between { and } is too large") << source;
    EXPECT_EQ(faultOf("a{10000000}"), "none");
}

TEST(Fault, ABackslashIsTheLastByte) {
    for (const char* const source : {"\\", "a\\", "(\\", "[\\"})
        EXPECT_EQ(faultOf(source), "nothing follows the last backslash") << source;
}

TEST(Fault, AnEscapeIsNotFinished) {
    for (const char* const source : {"\\x", "\\x4", "\\xg0", "\\x4g", "[\\x]", "[\\x4"})
        EXPECT_EQ(faultOf(source), "\\x is not followed by two hexadecimal digits") << source;
    for (const char* const source : {"\\u", "\\u004", "\\u00g1", "[\\u]"})
        EXPECT_EQ(faultOf(source), "\\u is not followed by four hexadecimal digits") << source;
    EXPECT_EQ(faultOf("\\c"), "\\c is not followed by a letter");
}

TEST(Fault, ABackReferenceNamesNoGroup) {
    for (const char* const source : {"\\1", "(a)\\2", "\\1(a)", "(a)\\10", "(?:a)\\1", "\\99999999999999999999"})
        EXPECT_EQ(faultOf(source), "a back reference names a group that doesn't begin before it") << source;
}

TEST(Fault, ABackReferenceStandsInItsGroup) {
    for (const char* const source : {"(\\1)", "(a\\1)", "((a)\\1)", "(a(?=\\1))"})
        EXPECT_EQ(faultOf(source), "a back reference stands within the group that it names") << source;
}

TEST(Fault, ABracketIsNotClosed) {
    for (const char* const source : {"[", "[a", "[^", "[^a", "[a-", "[a-b", "[]a[", "[[:alpha:]", "[\\]"})
        EXPECT_EQ(faultOf(source), "a [ has no ]") << source;
}

TEST(Fault, ANameBetweenBracketsIsNotClosed) {
    EXPECT_EQ(faultOf("[[:alpha]]"), "a [: has no :]");
    EXPECT_EQ(faultOf("[[:"), "a [: has no :]");
    EXPECT_EQ(faultOf("[[=a]"), "a [= has no =]");
    EXPECT_EQ(faultOf("[[.a]"), "a [. has no .]");
}

TEST(Fault, AClassIsUnknown) {
    for (const char* const source : {"[[:foo:]]", "[[::]]", "[[:^alpha:]]", "[[:alphax:]]", "[[:al:]]"})
        EXPECT_EQ(faultOf(source), "a class between [: and :] is unknown") << source;
}

TEST(Fault, ANameIsUnknown) {
    for (const char* const source : {"[[.ab.]]", "[[..]]", "[[.1.]]", "[[.-.]]", "[[.Space.]]", "[[=ab=]]", "[[==]]"})
        EXPECT_EQ(faultOf(source), "a name between brackets is unknown") << source;
}

TEST(Fault, ARangeBeginsWithAClass) {
    for (const char* const source : {"[\\w-z]", "[a\\d-z]", "[[:alpha:]-z]", "[[=a=]-z]", "[\\d--]"})
        EXPECT_EQ(faultOf(source), "a range between brackets begins with a class") << source;
}

TEST(Fault, ARangeEndsWithAClass) {
    for (const char* const source : {"[a-\\d]", "[--\\w]", "[a-[:alpha:]]", "[a-[.c.]]", "[a-[=c=]]"})
        EXPECT_EQ(faultOf(source), "a range between brackets ends with a class") << source;
}

TEST(Fault, ARangeFalls) {
    for (const char* const source : {"[z-a]", "[a--]", "[a-\\n]", "[[.c.]-a]"})
        EXPECT_EQ(faultOf(source), "a range between brackets has its ends the wrong way round") << source;
    EXPECT_EQ(faultOf("[z-a]", ignoringCase), "a range between brackets has its ends the wrong way round");
}

TEST(Fault, AnEscapeHasNoMeaningBetweenBrackets) {
    EXPECT_EQ(faultOf("[\\B]"), "\\B has no meaning between brackets");
    EXPECT_EQ(faultOf("(a)[\\1]"), "a back reference has no meaning between brackets");
    EXPECT_EQ(faultOf("[\\9]"), "a back reference has no meaning between brackets");
}

TEST(Fault, LoneQuantifiersMustStillBeWellFormed) {
    EXPECT_EQ(faultOf("{2,1}", withLoneQuantifiers), "the numbers between { and } fall");
    EXPECT_EQ(faultOf("(?*)", withLoneQuantifiers), "(? is not followed by one of : = !");
}

TEST(Limit, GroupsNestTwoHundredDeep) {
    EXPECT_EQ(found(repeated("(?:", 200) + "a" + repeated(")", 200), "ba"), "1-2");
    EXPECT_EQ(faultOf(repeated("(", 201) + "a" + repeated(")", 201)), "the groups are nested too deeply");
    EXPECT_EQ(faultOf(repeated("(", 100'000) + "a" + repeated(")", 100'000)), "the groups are nested too deeply");
    EXPECT_EQ(faultOf(repeated("(?=", 100'000)), "the groups are nested too deeply");
}

TEST(Limit, ManyGroupsSideBySideAreNotNested) {
    const Pattern compiled = Pattern::compile(repeated("(a)", 5000));
    Match match;
    const std::string text(5000, 'a');
    ASSERT_TRUE(compiled.search(text, 0, match));
    EXPECT_EQ(match.size(), 5001U);
    EXPECT_EQ(match[5000], (Span{4999, 5000}));
}

TEST(Limit, QuantifiersOfQuantifiersEnd) {
    EXPECT_EQ(faultOf("(?:a|b)" + repeated("*", 900)), "none");
    EXPECT_EQ(faultOf("(?:ab)" + repeated("*", 100'000)), "too many quantifiers follow one another");
}

TEST(Limit, APatternHasAQuarterMillionItemsAtMost) {
    const std::string text(200'000, 'a');
    EXPECT_EQ(found(text, text), "0-200000");
    EXPECT_EQ(faultOf(std::string(250'001, 'a')), "the pattern is too long");
}

TEST(Limit, CountsOfGroupsAreWrittenOutUpToALimit) {
    const char* const tooLarge = "the pattern is too large when its counts are written out";
    EXPECT_EQ(faultOf("(?:ab){100000}"), "none");
    EXPECT_EQ(faultOf("(?:ab){10000000}"), tooLarge);
    EXPECT_EQ(faultOf("(?:a|bc){0,10000000}"), tooLarge);
    EXPECT_EQ(faultOf("((a{100}b){1000}){1000}"), tooLarge);
    EXPECT_EQ(faultOf("(?:(?:(?:\\b){1000}){1000}){1000}"), tooLarge);
}

TEST(Limit, CountsOfSingleBytesAreNotWrittenOut) {
    const std::string text(1'000'001, 'a');
    EXPECT_EQ(found("a{1000000}", text), "0-1000000");
    EXPECT_EQ(found("(?:(?:){10000000}){10000000}a", "a"), "0-1");
}

} // namespace

} // namespace pattern

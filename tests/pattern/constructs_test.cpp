// Every construct of the grammar, with the exact spans that it finds.

#include "found.h"

#include <gtest/gtest.h>

namespace pattern {

namespace {

TEST(Construct, BytesStandForThemselves) {
    EXPECT_EQ(found("abc", "xxabcabc"), "2-5");
    EXPECT_EQ(found("abc", "xxab"), "none");
    EXPECT_EQ(found("", "abc"), "0-0");
    EXPECT_EQ(found("a", ""), "none");
    EXPECT_EQ(found("]}", "a]}"), "1-3");
    EXPECT_EQ(found(std::string_view("a\0b", 3), std::string_view("xa\0b", 4)), "1-4");
    EXPECT_EQ(found("\xC3\xA9", "caf\xC3\xA9"), "3-5");
}

TEST(Construct, ADotIsAnyByteButLineEnds) {
    EXPECT_EQ(found(".+", "\n\rab\xFF\n"), "2-5");
    EXPECT_EQ(matchedBytes("."), "\\x00-\\x09 \\x0B-\\x0C \\x0E-\\xFF");
}

TEST(Construct, EscapesNameBytes) {
    EXPECT_EQ(matchedBytes("\\t"), "\\x09");
    EXPECT_EQ(matchedBytes("\\n"), "\\x0A");
    EXPECT_EQ(matchedBytes("\\v"), "\\x0B");
    EXPECT_EQ(matchedBytes("\\f"), "\\x0C");
    EXPECT_EQ(matchedBytes("\\r"), "\\x0D");
    EXPECT_EQ(matchedBytes("\\0"), "\\x00");
    EXPECT_EQ(matchedBytes("\\x41"), "A");
    EXPECT_EQ(matchedBytes("\\xfF"), "\\xFF");
    EXPECT_EQ(matchedBytes("\\u0041"), "A");
    EXPECT_EQ(matchedBytes("\\cA"), "A");
    EXPECT_EQ(matchedBytes("\\cz"), "z");
    EXPECT_EQ(found("\\01", std::string_view("\0001", 2)), "0-2");
}

TEST(Construct, OfAnEscapedCodePointTheLowByteCounts) {
    EXPECT_EQ(matchedBytes("\\u0141"), "A");
    EXPECT_EQ(matchedBytes("\\u00e9"), "\\xE9");
}

TEST(Construct, OtherEscapedBytesStandForThemselves) {
    for (const char c : std::string("aegiklmopqyz.*+?()[]{}|^$/\\-_\"'AEZ%")) {
        const std::string byte(1, c);
        EXPECT_EQ(matchedBytes("\\" + byte), byte);
    }
}

TEST(Construct, ClassesAreAscii) {
    EXPECT_EQ(matchedBytes("\\d"), "0-9");
    EXPECT_EQ(matchedBytes("\\D"), "\\x00-/ :-\\xFF");
    EXPECT_EQ(matchedBytes("\\w"), "0-9 A-Z _ a-z");
    EXPECT_EQ(matchedBytes("\\W"), "\\x00-/ :-@ [-^ ` {-\\xFF");
    EXPECT_EQ(matchedBytes("\\s"), "\\x09-\\x0D  ");
    EXPECT_EQ(matchedBytes("\\S"), "\\x00-\\x08 \\x0E-\\x1F !-\\xFF");
}

TEST(Construct, TheFirstAlternativeThatLeadsToAMatchIsTaken) {
    EXPECT_EQ(found("a|ab", "ab"), "0-1");
    EXPECT_EQ(found("ab|a", "ab"), "0-2");
    EXPECT_EQ(found("(?:a|ab)(?:c|bcd)(d*)", "abcd"), "0-4 4-4");
    EXPECT_EQ(found("b|a", "xab"), "1-2");
    EXPECT_EQ(found("a||b", "b"), "0-0");
    EXPECT_EQ(found("|a", "a"), "0-0");
    EXPECT_EQ(found("a|", "b"), "0-0");
    EXPECT_EQ(found("cat|car|cow", "a cow"), "2-5");
}

TEST(Construct, GroupsCaptureAndOthersDoNot) {
    EXPECT_EQ(found("(a)(?:b)(c)", "xabc"), "1-4 1-2 3-4");
    EXPECT_EQ(found("((a)(b))", "ab"), "0-2 0-2 0-1 1-2");
    EXPECT_EQ(found("(a)|(b)", "b"), "0-1 - 0-1");
    EXPECT_EQ(found("()", "a"), "0-0 0-0");
    EXPECT_EQ(found("(?:)", "a"), "0-0");
    EXPECT_EQ(Pattern::compile("(a)(?:b)((c))").captureCount(), 3U);
    EXPECT_EQ(Pattern::compile("(a){0}").captureCount(), 1U);
}

TEST(Construct, AGroupKeepsWhatItsLastRoundCaptured) {
    EXPECT_EQ(found("(a|b)*", "abab"), "0-4 3-4");
    EXPECT_EQ(found("(?:(a)|b)*", "ab"), "0-2 0-1");
    EXPECT_EQ(found("(z)((a+)?(b+)?(c))*", "zaacbbbcac"), "0-10 0-1 8-10 8-9 4-7 9-10");
    EXPECT_EQ(found("(a{0})b", "b"), "0-1 0-0");
    EXPECT_EQ(found("(a){0}b", "b"), "0-1 -");
}

TEST(Construct, AGroupThatIsLeftAgainGetsItsOldCaptureBack) {
    EXPECT_EQ(found("(?:(a)b|ac)", "ac"), "0-2 -");
    EXPECT_EQ(found("(?:(a)|(ab))c", "abc"), "0-3 - 0-2");
    EXPECT_EQ(found("(?:([ab])c|[ab])*", "acbd"), "0-3 0-1");
}

TEST(Construct, QuantifiersTakeAsManyRoundsAsTheyCan) {
    EXPECT_EQ(found("a*", "aaab"), "0-3");
    EXPECT_EQ(found("a+", "baaab"), "1-4");
    EXPECT_EQ(found("a?", "aa"), "0-1");
    EXPECT_EQ(found("a{2}", "aaaa"), "0-2");
    EXPECT_EQ(found("a{2,}", "baaaab"), "1-5");
    EXPECT_EQ(found("a{1,3}", "aaaa"), "0-3");
    EXPECT_EQ(found("a{0}b", "ab"), "1-2");
    EXPECT_EQ(found("(?:ab){2,3}", "abababab"), "0-6");
    EXPECT_EQ(found("(?:ab){2}", "abxabab"), "3-7");
    EXPECT_EQ(found("a{00002}", "aaa"), "0-2");
}

TEST(Construct, LazyQuantifiersTakeAsFewRoundsAsTheyMust) {
    EXPECT_EQ(found("a*?", "aaa"), "0-0");
    EXPECT_EQ(found("a*?b", "aab"), "0-3");
    EXPECT_EQ(found("a+?", "aaa"), "0-1");
    EXPECT_EQ(found("a??b", "ab"), "0-2");
    EXPECT_EQ(found("a{2,3}?", "aaaa"), "0-2");
    EXPECT_EQ(found("a{2,}?", "aaaa"), "0-2");
    EXPECT_EQ(found("<.*?>", "<a><b>"), "0-3");
    EXPECT_EQ(found("(?:ab)+?c", "ababc"), "0-5");
    EXPECT_EQ(found("(a)*?b", "aab"), "0-3 1-2");
}

TEST(Construct, ALoopGivesRoundsBackForTheRestOfThePattern) {
    EXPECT_EQ(found("a*ab", "aaab"), "0-4");
    EXPECT_EQ(found(".*b", "abab\nb"), "0-4");
    EXPECT_EQ(found("\\w+1", "abc12"), "0-4");
    EXPECT_EQ(found("(?:ab)*a", "abab"), "0-3");
    EXPECT_EQ(found("(a+)(a+)", "aaaa"), "0-4 0-3 3-4");
    EXPECT_EQ(found("(a{1,3})(a{2})", "aaaa"), "0-4 0-2 2-4");
    EXPECT_EQ(found("(\\w)*c", "abcd"), "0-3 1-2");
}

TEST(Construct, QuantifiersFollowOneAnother) {
    EXPECT_EQ(found("a**", "aaa"), "0-3");
    EXPECT_EQ(found("a{2}{3}", "aaaaaaa"), "0-6");
    EXPECT_EQ(found("a{2}+", "aaaaa"), "0-4");
    EXPECT_EQ(found("a?+", "aaa"), "0-3");
    EXPECT_EQ(found("a*?*", "aaa"), "0-0");
    EXPECT_EQ(found("a{1,2}{0}", "aa"), "0-0");
}

TEST(Construct, ALoopMayBeEmptyTwiceAtOnePlace) {
    EXPECT_EQ(found("(a*)*", "b"), "0-0 0-0");
    EXPECT_EQ(found("(a*)+", "aab"), "0-2 2-2");
    EXPECT_EQ(found("(|a)*", "aa"), "0-0 0-0");
    EXPECT_EQ(found("(a|)*", "aa"), "0-2 2-2");
    EXPECT_EQ(found("(a|b*|c)*", "abcab"), "0-2 2-2");
    EXPECT_EQ(foundAll("(a*?)*", "aab"), "0-0 0-0 | 0-1 1-1 | 1-1 1-1 | 1-2 2-2 | 2-2 2-2 | 3-3 3-3");
    EXPECT_EQ(foundAll("(a*)*?", "aab"), "0-0 - | 0-2 0-2 | 2-2 - | 3-3 -");
    EXPECT_EQ(found("(?:)*a", "a"), "0-1");
    EXPECT_EQ(found("(?:(?:a?)+)*b", "aab"), "0-3");
}

TEST(Construct, ABackReferenceMatchesWhatItsGroupCaptured) {
    EXPECT_EQ(found("(a|b)\\1", "abb"), "1-3 1-2");
    EXPECT_EQ(found("(\\w+)\\s\\1", "the the cat"), "0-7 0-3");
    EXPECT_EQ(found("(a*)\\1", "aaaaa"), "0-4 0-2");
    EXPECT_EQ(found("(a)\\1{2}", "aaaa"), "0-3 0-1");
    EXPECT_EQ(found("()\\1a", "a"), "0-1 0-0");
    EXPECT_EQ(found("(a)(b)(c)(d)(e)(f)(g)(h)(i)(j)\\10", "abcdefghijj"),
              "0-11 0-1 1-2 2-3 3-4 4-5 5-6 6-7 7-8 8-9 9-10");
}

TEST(Construct, ABackReferenceToAGroupWithoutCaptureFails) {
    EXPECT_EQ(found("(?:(a)|b)\\1", "b"), "none");
    EXPECT_EQ(found("(a)|b\\1", "b"), "none");
    EXPECT_EQ(found("(a){0}\\1b", "b"), "none");
}

TEST(Construct, ALookAheadTakesNothing) {
    EXPECT_EQ(found("a(?=b)", "acab"), "2-3");
    EXPECT_EQ(found("a(?!b)", "abac"), "2-3");
    EXPECT_EQ(found("(?=a)", "ba"), "1-1");
    EXPECT_EQ(found("(?!)", "a"), "none");
    EXPECT_EQ(found("(?=)", "a"), "0-0");
    EXPECT_EQ(found("(?=.*\\d)\\w+", "abc de1"), "0-3");
    EXPECT_EQ(found("\\w+(?!\\w|,)", "abc, de"), "5-7");
    EXPECT_EQ(found("(?=(a+))a*b\\1", "baaabac"), "3-6 3-4");
    EXPECT_EQ(found("(?!(?!a))a", "ba"), "1-2");
}

TEST(Construct, ALookAheadIsNotEnteredAgain) {
    EXPECT_EQ(found("(?=(a+?))\\1b", "aab"), "1-3 1-2");
    EXPECT_EQ(found("(?=(a|ab))\\1c", "abc"), "none");
}

TEST(Construct, ALookAheadKeepsItsCapturesOnlyOnTheWayThatMatches) {
    EXPECT_EQ(found("(?=(a))a", "a"), "0-1 0-1");
    EXPECT_EQ(found("(?:(?=(a))b|a)", "a"), "0-1 -");
    EXPECT_EQ(found("(?!(a)b)a", "ac"), "0-1 -");
    EXPECT_EQ(found("(?:(?=(a)(b)?)abc|abd)", "abd"), "0-3 - -");
    EXPECT_EQ(found("(?:(x)|(?=(a))a)*", "xaxa"), "0-4 2-3 3-4");
}

TEST(Construct, TheTextBeginsAndEndsAtItsEndsAlone) {
    EXPECT_EQ(found("^a", "aa"), "0-1");
    EXPECT_EQ(found("^b", "a\nb"), "none");
    EXPECT_EQ(found("a$", "aba"), "2-3");
    EXPECT_EQ(found("a$", "a\n"), "none");
    EXPECT_EQ(found("^$", ""), "0-0");
    EXPECT_EQ(found("^^a$$", "a"), "0-1");
    EXPECT_EQ(found("a^b", "ab"), "none");
    EXPECT_EQ(found("(?:^a|b)*", "aab"), "0-1");
    EXPECT_EQ(found("x*^a|b$", "ab"), "0-1");
    EXPECT_EQ(found("(?=^)b", "ab"), "none");
    EXPECT_EQ(found("\\w(?:b|c)$", "abcabc"), "4-6");
}

TEST(Construct, WordsBeginAndEndAtBoundaries) {
    EXPECT_EQ(foundAll("\\b", "ab cd"), "0-0 | 2-2 | 3-3 | 5-5");
    EXPECT_EQ(foundAll("\\B", "ab cd"), "1-1 | 4-4");
    EXPECT_EQ(found("\\b", ""), "none");
    EXPECT_EQ(found("\\B", ""), "0-0");
    EXPECT_EQ(foundAll("\\b\\w{2}\\b", "a bc def gh"), "2-4 | 9-11");
    EXPECT_EQ(found("\\bb", "ab b"), "3-4");
    EXPECT_EQ(found("(?=\\bb)b", "ab"), "none");
    EXPECT_EQ(found("\\b ", "a  "), "1-2");
}

TEST(Construct, IgnoringCaseLettersHaveTwoForms) {
    EXPECT_EQ(found("aBc", "xAbC", ignoringCase), "1-4");
    EXPECT_EQ(found("a1_", "A1_", ignoringCase), "0-3");
    EXPECT_EQ(found("(a)\\1", "aA", ignoringCase), "0-2 0-1");
    EXPECT_EQ(found("(a)\\1", "aA"), "none");
    EXPECT_EQ(matchedBytes("\\x41", ignoringCase), "A a");
    EXPECT_EQ(matchedBytes("@", ignoringCase), "@");
    EXPECT_EQ(matchedBytes("\xC9", ignoringCase), "\\xC9");
    EXPECT_EQ(found("cat|DOG", "a dog", ignoringCase), "2-5");
}

TEST(Construct, ASearchFromAPlaceTakesTheRestAsItsText) {
    EXPECT_EQ(found("^b", "ab", {}, 1), "1-2");
    EXPECT_EQ(found("\\bb", "ab", {}, 1), "1-2");
    EXPECT_EQ(found("a", "aba", {}, 1), "2-3");
    EXPECT_EQ(found("", "ab", {}, 2), "2-2");
    EXPECT_EQ(found("a", "ab", {}, 2), "none");
}

TEST(LoneQuantifier, RepeatsTheEmptyTextWhereItIsAllowed) {
    EXPECT_EQ(foundAll("*?", "a-b", withLoneQuantifiers), "0-0 | 1-1 | 2-2 | 3-3");
    EXPECT_EQ(found("*a", "ba", withLoneQuantifiers), "1-2");
    EXPECT_EQ(found("+?", "a", withLoneQuantifiers), "0-0");
    EXPECT_EQ(found("^*a", "a", withLoneQuantifiers), "0-1");
    EXPECT_EQ(found("(+)a", "a", withLoneQuantifiers), "0-1 0-0");
    EXPECT_EQ(found("b|?", "a", withLoneQuantifiers), "0-0");
    EXPECT_EQ(found("(?:*)+a", "a", withLoneQuantifiers), "0-1");
    EXPECT_EQ(found("$*", "a", withLoneQuantifiers), "1-1");
    EXPECT_EQ(found("(?=a)*a", "a", withLoneQuantifiers), "0-1");
    EXPECT_EQ(found("a*?*?", "aa", withLoneQuantifiers), "0-0");
}

} // namespace

} // namespace pattern

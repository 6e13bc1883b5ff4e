// The steps of the iterator from match to match, above all at empty ones.

#include "found.h"
#include "pattern/match_iterator.h"

#include <gtest/gtest.h>

namespace pattern {

namespace {

TEST(Iterator, MatchesFollowWithoutOverlap) {
    EXPECT_EQ(foundAll("aa", "aaaaa"), "0-2 | 2-4");
    EXPECT_EQ(foundAll("\\d+", "a1b22c333"), "1-2 | 3-5 | 6-9");
    EXPECT_EQ(foundAll("(\\w)(\\w)?", "abc"), "0-2 0-1 1-2 | 2-3 2-3 -");
    EXPECT_EQ(foundAll("x", "abc"), "none");
}

TEST(Iterator, AnEmptyMatchIsFoundAtEveryPlace) {
    EXPECT_EQ(foundAll("", "ab"), "0-0 | 1-1 | 2-2");
    EXPECT_EQ(foundAll("", ""), "0-0");
    EXPECT_EQ(foundAll("x*", "ab"), "0-0 | 1-1 | 2-2");
    EXPECT_EQ(foundAll("(?:)", "ab"), "0-0 | 1-1 | 2-2");
}

TEST(Iterator, AnEmptyMatchFollowsAMatchThatEndsThere) {
    EXPECT_EQ(foundAll("a*", "baac"), "0-0 | 1-3 | 3-3 | 4-4");
    EXPECT_EQ(foundAll("x*", "axa"), "0-0 | 1-2 | 2-2 | 3-3");
    EXPECT_EQ(foundAll("\\w*", "ab cd"), "0-2 | 2-2 | 3-5 | 5-5");
}

TEST(Iterator, BehindAnEmptyMatchALongerOneIsTriedAtTheSamePlace) {
    EXPECT_EQ(foundAll("a*?", "aa"), "0-0 | 0-1 | 1-1 | 1-2 | 2-2");
    EXPECT_EQ(foundAll("|a", "aa"), "0-0 | 0-1 | 1-1 | 1-2 | 2-2");
    EXPECT_EQ(foundAll("a||b", "b"), "0-0 | 0-1 | 1-1");
    EXPECT_EQ(foundAll("(?=a)|ab", "ab"), "0-0 | 0-2");
}

TEST(Iterator, ThatTryLooksNowhereElse) { EXPECT_EQ(foundAll("(?:)|b", "aab"), "0-0 | 1-1 | 2-2 | 2-3 | 3-3"); }

TEST(Iterator, TheTextBeginsOnlyOnce) {
    EXPECT_EQ(foundAll("^", "ab"), "0-0");
    EXPECT_EQ(foundAll("^a", "aaa"), "0-1");
    EXPECT_EQ(foundAll("^a|b", "ab b"), "0-1 | 1-2 | 3-4");
    EXPECT_EQ(foundAll("^a*?", "aa"), "0-0 | 0-1");
}

TEST(Iterator, TheTryBehindAnEmptyFirstMatchTakesItsPlaceForTheBegin) {
    EXPECT_EQ(foundAll("\\b(?:^b)?", " b"), "1-1 | 1-2 | 2-2");
    EXPECT_EQ(foundAll("\\b(?:^b)?", "a b"), "0-0 | 1-1 | 2-2 | 3-3");
}

TEST(Iterator, BoundariesSeeTheByteBefore) {
    EXPECT_EQ(foundAll("\\ba", "aab a"), "0-1 | 4-5");
    EXPECT_EQ(foundAll("\\b\\w", "ab ab"), "0-1 | 3-4");
    EXPECT_EQ(foundAll("\\B.", "abc"), "1-2 | 2-3");
}

TEST(Iterator, TheTextEndsOnlyOnce) {
    EXPECT_EQ(foundAll("$", "ab"), "2-2");
    EXPECT_EQ(foundAll("b*$", "abb"), "1-3 | 3-3");
}

TEST(Iterator, StaysAtTheEnd) {
    const Pattern compiled = Pattern::compile("a");
    Match match;
    MatchIterator matches(compiled, "a", match);
    EXPECT_TRUE(matches.next());
    EXPECT_FALSE(matches.next());
    EXPECT_FALSE(matches.next());
}

TEST(Match, CanBeUsedForPatternsOfDifferentSizes) {
    Match match;
    ASSERT_TRUE(Pattern::compile("(a)(b)(c)").search("abc", 0, match));
    EXPECT_EQ(match.size(), 4U);
    ASSERT_TRUE(Pattern::compile("b").search("abc", 0, match));
    EXPECT_EQ(match.size(), 1U);
    ASSERT_TRUE(Pattern::compile("(x)?(b)").search("abc", 0, match));
    EXPECT_EQ(match.size(), 3U);
    EXPECT_FALSE(match[1].matched());
    EXPECT_EQ(match[1].in("abc"), "");
    EXPECT_EQ(match[2].in("abc"), "b");
}

TEST(Pattern, CopiesShareTheirProgram) {
    Match match;
    const Pattern copy = [] { return Pattern::compile("(b)"); }();
    const Pattern other = copy; // NOLINT: the copy is what is tested
    EXPECT_TRUE(other.search("abc", 0, match));
    EXPECT_EQ(match[1], (Span{1, 2}));
}

} // namespace

} // namespace pattern

// The fast ways of a search against the plain ones: scans against a look at each byte, and the plan of starts against
// an attempt at every place.

#include "comparison.h"
#include "pattern/byte_scan.h"
#include "pattern/compiler.h"
#include "pattern/parser.h"
#include "pattern/searcher.h"
#include "random_pattern.h"

#include <gtest/gtest.h>

namespace pattern {

namespace {

constexpr std::uint64_t seed = 20'240'607;

ByteSet randomSet(RandomPattern& random) {
    ByteSet set;
    for (std::size_t ranges = random.below(7); ranges > 0; --ranges) {
        const std::size_t low = random.below(256);
        set |= ByteSet::range(static_cast<Byte>(low),
                              static_cast<Byte>(std::min<std::size_t>(255, low + random.below(40))));
    }
    return random.below(2) == 0 ? ~set : set;
}

/// Bytes of which most are in the set, or most are not.
std::vector<Byte> randomBytes(RandomPattern& random, const ByteSet& set) {
    std::vector<Byte> bytes(random.below(200));
    const bool mostlyMembers = random.below(2) == 0;
    for (Byte& byte : bytes) {
        do byte = static_cast<Byte>(random.below(256));
        while (random.below(100) != 0 && !set.empty() && set != ByteSet::all() && set.contains(byte) != mostlyMembers);
    }
    return bytes;
}

TEST(Scan, FindsWhatALookAtEachByteFinds) {
    RandomPattern random(seed);
    for (int round = 0; round < 20'000; ++round) {
        const ByteSet set = randomSet(random);
        const ByteTable table(set);
        const std::vector<Byte> bytes = randomBytes(random, set);
        const std::size_t from = random.below(bytes.size() + 1);
        const std::size_t limit = from + random.below(bytes.size() - from + 1);
        std::size_t first = from;
        while (first < limit && !set.contains(bytes[first])) ++first;
        std::size_t end = from;
        while (end < limit && set.contains(bytes[end])) ++end;
        ASSERT_EQ(firstOf(table, bytes.data(), from, limit), first) << "seed " << seed << ", round " << round;
        ASSERT_EQ(endOfRun(table, bytes.data(), from, limit), end) << "seed " << seed << ", round " << round;
    }
}

TEST(Scan, FindsALiteralWhereverItStands) {
    RandomPattern random(seed + 1);
    for (int round = 0; round < 20'000; ++round) {
        std::string text;
        for (std::size_t size = random.below(120); text.size() < size;) text += "aab"[random.below(3)];
        std::string literal;
        for (std::size_t size = 2 + random.below(6); literal.size() < size;) literal += "aab"[random.below(3)];
        if (text.size() < literal.size()) continue;
        const std::size_t limit = text.size() - literal.size() + 1;
        const std::size_t from = random.below(limit + 1);
        const PairedLiteral paired{literal, random.below(literal.size()), random.below(literal.size())};
        const std::size_t expected = std::min(text.find(literal, from), limit);
        ASSERT_EQ(firstOf(paired, reinterpret_cast<const Byte*>(text.data()), from, limit), expected)
            << "seed " << seed + 1 << ": " << literal << " in " << text << " from " << from;
    }
}

Program compiled(const std::string& source, Case letters) {
    return compile(parse(source, letters, LoneQuantifier::RepeatsNothing), letters);
}

/// The same program without anything that skips a place.
Program withoutPlan(Program program) {
    program.plan = StartPlan{};
    program.shortcut = Shortcut::None;
    return program;
}

std::string firstSpans(const Program& program, const std::string& text, std::size_t from,
                       const SearchFlags& flags) try {
    Match match;
    StepBudget budget = StepBudget::ofSteps(1'000'000);
    if (!Searcher(program, text, match, budget).search(from, flags)) return "none";
    std::string spans;
    for (std::size_t group = 0; group < match.size(); ++group)
        spans += std::to_string(match[group].begin) + "-" + std::to_string(match[group].end) + " ";
    return spans;
} catch (const PatternTooComplex&) {
    return "too complex";
}

void expectSameWithAndWithoutPlan(const std::string& source, const std::string& text, Case letters, std::size_t from,
                                  const SearchFlags& flags) {
    Program planned;
    try {
        planned = compiled(source, letters);
    } catch (const PatternFault&) {
        return; // a few of the random patterns are none
    }
    const std::string fast = firstSpans(planned, text, from, flags);
    const std::string plain = firstSpans(withoutPlan(planned), text, from, flags);
    if (plain == "too complex") return; // the plan may well know better
    ASSERT_EQ(fast, plain) << "/" << printable(source) << "/ in \"" << printable(text) << "\" from " << from;
}

TEST(StartPlan, FindsWhatAnAttemptAtEveryPlaceFinds) {
    RandomPattern random(seed + 2);
    for (int round = 0; round < 40'000; ++round) {
        const std::string source = random.sound();
        std::string text;
        for (std::size_t pieces = random.below(12); pieces > 0; --pieces) text += random.subject();
        const std::size_t from = random.below(text.size() + 1);
        const SearchFlags flags{from > 0 && random.below(2) == 0, random.below(8) == 0};
        const Case letters = random.below(4) == 0 ? Case::Ignored : Case::Sensitive;
        SCOPED_TRACE("seed " + std::to_string(seed + 2) + ", round " + std::to_string(round));
        expectSameWithAndWithoutPlan(source, text, letters, from, flags);
        if (HasFatalFailure()) return;
    }
}

TEST(StartPlan, FindsMatchesOfLiteralsWithinThePattern) {
    RandomPattern random(seed + 3);
    const std::vector<std::string> heads{"",  "\\d", "[ab]",  "a*",   "\\w+", "(?:a|b)",
                                         "^", "\\b", "(?=a)", "(a)?", "b{2}"};
    const std::vector<std::string> tails{"", "$", "b", "\\b", "(?!a)", "\\w*", "+", "{2}", "c$"};
    for (int round = 0; round < 40'000; ++round) {
        std::string literal;
        for (std::size_t size = 1 + random.below(4); literal.size() < size;) literal += "abc"[random.below(3)];
        const std::string source = heads[random.below(heads.size())] + literal + tails[random.below(tails.size())];
        std::string text;
        for (std::size_t size = random.below(80); text.size() < size;) text += "aabbc1 "[random.below(7)];
        SCOPED_TRACE("seed " + std::to_string(seed + 3) + ", round " + std::to_string(round));
        expectSameWithAndWithoutPlan(source, text, Case::Sensitive, 0, {});
        if (HasFatalFailure()) return;
    }
}

StartPlan::Way wayOf(const std::string& source) { return compiled(source, Case::Sensitive).plan.way; }

TEST(StartPlan, TakesTheBestWayThatThePatternAllows) {
    using Way = StartPlan::Way;
    EXPECT_EQ(wayOf("lantern"), Way::FixedLiteral);
    EXPECT_EQ(wayOf("\\d\\d:\\d"), Way::FixedLiteral);
    EXPECT_EQ(wayOf("\"[^\"]*\""), Way::FirstByte);
    EXPECT_EQ(wayOf("[a-z]+"), Way::FirstSet);
    EXPECT_EQ(wayOf("cat|dog"), Way::FirstSet);
    EXPECT_EQ(wayOf("^a"), Way::TextBegin);
    EXPECT_EQ(wayOf("(?:^a|^b)"), Way::TextBegin);
    EXPECT_EQ(wayOf("a*"), Way::EveryPlace);
    EXPECT_EQ(wayOf("[^]a?"), Way::EveryPlace);
}

} // namespace

} // namespace pattern

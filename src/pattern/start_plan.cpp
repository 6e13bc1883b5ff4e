// Plans of starts.
//
// Most places of a text can be ruled out without running the program. Best is a literal that every match has at the
// same distance from its begin: its two rarest bytes are looked for together, sixteen places at once. Next come the
// sets of the bytes that a match can begin with. Which of the two is better is decided by how often their bytes occur
// in ordinary text. A literal at no fixed distance still helps: where it no longer occurs, the search is over.

#include "pattern/start_plan.h"

#include "pattern/byte_classes.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace pattern {

namespace {

/// How many of 1000 bytes of prose and of scripts are this one, roughly.
constexpr unsigned frequency(Byte byte) {
    constexpr std::string_view letters = "etaoinsrhldcumpfgwybvkxjqz";
    constexpr std::array<unsigned, 26> letterFrequencies{95, 70, 65, 60, 58, 57, 52, 50, 40, 36, 35, 26, 25,
                                                         22, 19, 18, 17, 16, 15, 13, 8,  7,  3,  2,  1,  1};
    if (classes::lower.contains(byte)) return letterFrequencies[letters.find(static_cast<char>(byte))];
    if (classes::upper.contains(byte)) return 4;
    if (classes::digits.contains(byte)) return 6;
    switch (byte) {
    case ' ': return 160;
    case '\n': return 20;
    case '.':
    case ',': return 8;
    case '_':
    case '(':
    case ')':
    case '"':
    case '=':
    case ';': return 5;
    default: return byte > ' ' && byte < 127 ? 2 : 1;
    }
}

unsigned frequency(const ByteSet& set) {
    unsigned sum = 0;
    for (unsigned byte = 0; byte < 256; ++byte)
        if (set.contains(static_cast<Byte>(byte))) sum += frequency(static_cast<Byte>(byte));
    return sum;
}

/// Bytes that every match has, one behind the other.
struct Literal {
    std::string bytes;
    std::size_t offset = 0; // of the first, from the begin of the match; the least, if it isn't fixed
    bool isAtFixed = true;  // the offset is the same in every match

    /// Where the rarest of the bytes stands, the one at `except` aside.
    std::size_t rarest(std::size_t except = unbounded) const {
        std::size_t found = except == 0 ? 1 : 0;
        for (std::size_t i = found + 1; i < bytes.size(); ++i)
            if (i != except && frequency(byteAt(i)) < frequency(byteAt(found))) found = i;
        return found;
    }

    Byte byteAt(std::size_t index) const { return static_cast<Byte>(bytes[index]); }

    unsigned frequencyOfRarest() const { return frequency(byteAt(rarest())); }
};

/// Collects the literals of a pattern from left to right.
class LiteralWalk {
public:
    std::vector<Literal> walk(const Node& root) {
        visit(root);
        endLiteral();
        return std::move(literals_);
    }

private:
    void visit(const Node& node) {
        switch (node.kind) {
        case Node::Kind::Set:
            if (node.set.count() == 1)
                current_.bytes.push_back(static_cast<char>(node.set.lowest()));
            else
                skip(1);
            break;
        case Node::Kind::Sequence:
            for (const Node& part : node.parts) visit(part);
            break;
        case Node::Kind::Group: visit(node.parts.front()); break;
        case Node::Kind::Repeat: visitRepeat(node); break;
        case Node::Kind::Choice:
        case Node::Kind::BackReference:
            skip(node.facts.minLength);
            current_.isAtFixed &= node.facts.minLength == node.facts.maxLength;
            break;
        case Node::Kind::Ahead: visitAhead(node.parts.front()); break;
        case Node::Kind::Empty:
        case Node::Kind::TextBegin:
        case Node::Kind::TextEnd:
        case Node::Kind::WordBoundary:
        case Node::Kind::NoWordBoundary:
        case Node::Kind::NotAhead: break; // they take no bytes
        }
    }

    void visitRepeat(const Node& node) {
        std::size_t rest = node.facts.minLength; // of the bytes that the loop takes at least
        if (node.repetition.min > 0) {
            const Node& body = node.parts.front();
            visit(body);
            rest -= body.facts.minLength;
        }
        skip(rest);
        current_.isAtFixed &= node.facts.minLength == node.facts.maxLength;
    }

    /// What a look ahead must see is there, but it may stand behind the end of the match, where no plan with a fixed
    /// distance looks.
    void visitAhead(const Node& part) {
        LiteralWalk inside;
        inside.current_.offset = current_.offset + current_.bytes.size();
        for (Literal& literal : inside.walk(part)) {
            literal.isAtFixed = false;
            literals_.push_back(std::move(literal));
        }
    }

    /// Ends the current literal; the next begins `length` bytes behind it.
    void skip(std::size_t length) {
        endLiteral();
        current_.offset += length;
    }

    void endLiteral() {
        const std::size_t end = current_.offset + current_.bytes.size();
        if (!current_.bytes.empty()) literals_.push_back(current_);
        current_.bytes.clear();
        current_.offset = end;
    }

    Literal current_; // still growing
    std::vector<Literal> literals_;
};

std::optional<Literal> best(const std::vector<Literal>& literals, bool fixedOnly) {
    std::optional<Literal> found;
    for (const Literal& literal : literals) {
        if (fixedOnly && !literal.isAtFixed) continue;
        if (!found || std::pair(literal.frequencyOfRarest(), found->bytes.size()) <
                          std::pair(found->frequencyOfRarest(), literal.bytes.size()))
            found = literal;
    }
    return found;
}

/// Looks for a run without maximum at the begin of a pattern.
class LeadingRun {
public:
    explicit LeadingRun(const Node& root) { visit(root); }

    const ByteSet* run = nullptr; // the bytes of the run, if there is one
    std::size_t bytes = 0;        // that stand before it

private:
    /// False if the walk is over.
    bool visit(const Node& node) {
        switch (node.kind) {
        case Node::Kind::Set: ++bytes; return true;
        case Node::Kind::Group: return visit(node.parts.front());
        case Node::Kind::Sequence:
            return std::all_of(node.parts.begin(), node.parts.end(), [this](const Node& part) { return visit(part); });
        case Node::Kind::Repeat: visitRepeat(node); return false;
        default: return false;
        }
    }

    void visitRepeat(const Node& node) {
        const Node& body = node.parts.front();
        const Node& byte = body.kind == Node::Kind::Group ? body.parts.front() : body;
        if (byte.kind != Node::Kind::Set) {
            if (node.repetition.min > 0) visit(body); // the first round is as good as any other begin
        } else if (node.repetition.max == noMaximum) {
            run = &byte.set;
        }
    }
};

/// The sets of the bytes that matches begin with: the first set is for the first byte, and so on.
struct Prefix {
    std::vector<ByteSet> sets;
    bool isWhole = true; // every match has exactly as many bytes
};

Prefix prefixOf(const Node& node);

Prefix prefixOfSequence(const std::vector<Node>& parts) {
    Prefix prefix;
    for (const Node& part : parts) {
        const Prefix next = prefixOf(part);
        prefix.sets.insert(prefix.sets.end(), next.sets.begin(), next.sets.end());
        prefix.isWhole = next.isWhole;
        if (!prefix.isWhole || prefix.sets.size() >= StartPlan::maxPrefix) break;
    }
    return prefix;
}

Prefix prefixOfChoice(const std::vector<Node>& alternatives) {
    Prefix prefix = prefixOf(alternatives.front());
    for (const Node& alternative : alternatives) {
        const Prefix other = prefixOf(alternative);
        const std::size_t common = std::min(prefix.sets.size(), other.sets.size());
        prefix.isWhole &= other.isWhole && prefix.sets.size() == other.sets.size();
        prefix.sets.resize(common);
        for (std::size_t i = 0; i < common; ++i) prefix.sets[i] |= other.sets[i];
    }
    return prefix;
}

/// May give more sets than a plan has room for. Of longer ones, the sets behind those are not to be relied on.
Prefix prefixOf(const Node& node) {
    switch (node.kind) {
    case Node::Kind::Set: return {{node.set}, true};
    case Node::Kind::Group: return prefixOf(node.parts.front());
    case Node::Kind::Sequence: return prefixOfSequence(node.parts);
    case Node::Kind::Choice: return prefixOfChoice(node.parts);
    case Node::Kind::Repeat: {
        if (node.repetition.min == 0) return {{}, false};
        Prefix prefix = prefixOf(node.parts.front());
        prefix.isWhole = false;
        return prefix;
    }
    case Node::Kind::BackReference: return {{}, false};
    default: return {}; // takes no bytes
    }
}

bool beginsAtWordBoundary(const Node& node) {
    if (node.kind == Node::Kind::Group || node.kind == Node::Kind::Sequence)
        return beginsAtWordBoundary(node.parts.front());
    return node.kind == Node::Kind::WordBoundary;
}

bool endsAtTextEnd(const Node& node) {
    if (node.kind == Node::Kind::Sequence || node.kind == Node::Kind::Group) return endsAtTextEnd(node.parts.back());
    if (node.kind == Node::Kind::Choice) return std::all_of(node.parts.begin(), node.parts.end(), endsAtTextEnd);
    return node.kind == Node::Kind::TextEnd;
}

PairedLiteral paired(const Literal& literal) {
    const std::size_t first = literal.rarest();
    const std::size_t second = literal.bytes.size() == 1 ? first : literal.rarest(first);
    return {literal.bytes, first, second};
}

} // namespace

StartPlan planStarts(const Node& root, const std::function<std::uint32_t(const ByteSet&)>& table) {
    StartPlan plan;
    const Facts& facts = root.facts;
    plan.minLength = facts.minLength;
    plan.maxFromEnd = endsAtTextEnd(root) ? facts.maxLength : unbounded;
    const std::vector<Literal> literals = LiteralWalk().walk(root);
    const std::optional<Literal> fixed = best(literals, true);
    if (facts.atTextBegin) {
        plan.way = StartPlan::Way::TextBegin;
    } else if (fixed && fixed->frequencyOfRarest() <= frequency(facts.first)) {
        const bool isFirstByte = fixed->offset == 0 && fixed->bytes.size() == 1;
        plan.way = isFirstByte ? StartPlan::Way::FirstByte : StartPlan::Way::FixedLiteral;
        plan.literal = paired(*fixed);
        plan.offset = fixed->offset;
    } else if (facts.minLength > 0 && facts.first != ByteSet::all()) {
        plan.way = StartPlan::Way::FirstSet;
        std::vector<ByteSet> sets = prefixOf(root).sets;
        sets.resize(std::clamp(sets.size(), std::size_t{1}, StartPlan::maxPrefix));
        sets.front() = facts.first; // which look aheads may have made smaller
        for (const ByteSet& set : sets) plan.prefixTables[plan.prefix++] = table(set);
    }

    plan.atWordBegin = beginsAtWordBoundary(root) && facts.minLength > 0 && (facts.first & ~classes::word).empty();
    // Ahead of the run, one byte may stand that the search for candidates has already tested.
    const LeadingRun leading(root);
    const bool testsFirst = plan.way == StartPlan::Way::FirstByte || plan.way == StartPlan::Way::FirstSet;
    if (leading.run != nullptr && !facts.refersBack && leading.bytes <= (testsFirst ? 1 : 0)) {
        plan.leadingRun = table(*leading.run);
        plan.leadingBytes = leading.bytes;
    }

    const std::optional<Literal> needed = best(literals, false);
    const bool seesLiteral = plan.way == StartPlan::Way::FirstByte || plan.way == StartPlan::Way::FixedLiteral;
    const bool tellsMore = needed && !(seesLiteral && needed->frequencyOfRarest() >= fixed->frequencyOfRarest());
    if (tellsMore) {
        plan.hasNeededByte = true;
        plan.neededByte = needed->byteAt(needed->rarest());
        plan.neededFrom = needed->offset + needed->rarest();
    }
    return plan;
}

} // namespace pattern

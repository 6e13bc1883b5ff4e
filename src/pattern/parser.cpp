// A parser by recursive descent over this grammar:
//
//     choice     = sequence { "|" sequence }
//     sequence   = { place | atom { quantifier } }
//     place      = "^" | "$" | "\b" | "\B" | "(?=" choice ")" | "(?!" choice ")"
//     atom       = "." | byte | escape | bracket | "(" choice ")" | "(?:" choice ")"
//     quantifier = ( "*" | "+" | "?" | "{" number [ "," [ number ] ] "}" ) [ "?" ]
//
// A "]" or "}" that closes nothing is a byte, a "{" never is. Every other special byte needs a backslash to stand for
// itself. The recursion is bounded by a limit on the depth of groups, for this file and for all that walk the tree.

#include "pattern/parser.h"

#include "pattern/bracket.h"

#include <algorithm>
#include <optional>

namespace pattern {

namespace {

constexpr std::size_t maxGroupDepth = 200;   // groups within groups
constexpr std::size_t maxHeight = 1000;      // levels of the tree: groups, and quantifiers of quantifiers
constexpr std::size_t maxItems = 250'000;    // single bytes, places, groups and quantifiers
constexpr std::size_t maxCount = 10'000'000; // the largest number between { and }

class Parser {
public:
    Parser(std::string_view source, Case letters, LoneQuantifier loneQuantifier)
        : text_(source), letters_(letters), loneQuantifier_(loneQuantifier) {}

    Syntax parse() {
        Node root = parseChoice();
        if (!text_.atEnd()) throw PatternFault("a ) closes no group");
        return {std::move(root), groups_};
    }

private:
    Node parseChoice() {
        std::vector<Node> alternatives;
        alternatives.push_back(parseSequence());
        while (text_.take("|")) alternatives.push_back(parseSequence());
        return choiceNode(std::move(alternatives));
    }

    Node parseSequence() {
        std::vector<Node> parts;
        while (!text_.atEnd() && !text_.isNext("|") && !text_.isNext(")")) {
            countItem();
            if (std::optional<Node> place = parsePlace())
                parts.push_back(std::move(*place));
            else
                parts.push_back(parseQuantified());
        }
        return sequenceNode(std::move(parts));
    }

    /// What tests the place and cannot be repeated.
    std::optional<Node> parsePlace() {
        if (text_.take("^")) return placeNode(Node::Kind::TextBegin);
        if (text_.take("$")) return placeNode(Node::Kind::TextEnd);
        if (text_.take("\\b")) return placeNode(Node::Kind::WordBoundary);
        if (text_.take("\\B")) return placeNode(Node::Kind::NoWordBoundary);
        if (text_.take("(?=")) return lookNode(Node::Kind::Ahead, parseInGroup());
        if (text_.take("(?!")) return lookNode(Node::Kind::NotAhead, parseInGroup());
        return std::nullopt;
    }

    Node parseQuantified() {
        Node node = parseAtom();
        while (const std::optional<Repetition> repetition = parseQuantifier()) {
            countItem();
            node = repeatNode(std::move(node), *repetition);
            if (node.facts.height > maxHeight) throw PatternFault("too many quantifiers follow one another");
        }
        return node;
    }

    Node parseAtom() {
        if (isQuantifierNext()) {
            if (loneQuantifier_ == LoneQuantifier::IsFault) throw PatternFault("a quantifier has nothing to repeat");
            return {};
        }
        if (text_.take(".")) return setNode(~classes::lineEnds);
        if (text_.take("[")) return setNode(readBracket(text_, letters_));
        if (text_.take("\\")) return parseEscape();
        if (text_.take("(?:")) return parseInGroup();
        if (text_.isNext("(?")) throw PatternFault("(? is not followed by one of : = !");
        if (text_.take("(")) return parseGroup();
        return setNode(foldedByte(text_.next(), letters_));
    }

    Node parseEscape() {
        const Escape escape = readEscape(text_);
        if (escape.kind == Escape::Kind::Class) return setNode(escape.set);
        if (escape.kind == Escape::Kind::BackReference) return parseBackReference(escape.group);
        return setNode(foldedByte(escape.byte,
                                  letters_)); // the boundaries were taken as places
    }

    Node parseBackReference(std::size_t group) {
        if (group > groups_) throw PatternFault("a back reference names a group that doesn't begin before it");
        const std::uint32_t number = static_cast<std::uint32_t>(group);
        if (std::find(openGroups_.begin(), openGroups_.end(), number) != openGroups_.end())
            throw PatternFault("a back reference stands within the group that it names");
        return backReferenceNode(number);
    }

    Node parseGroup() {
        const std::uint32_t number = ++groups_;
        openGroups_.push_back(number);
        Node part = parseInGroup();
        openGroups_.pop_back();
        return groupNode(number, std::move(part));
    }

    /// The content of a group and the ")" that closes it.
    Node parseInGroup() {
        if (++depth_ > maxGroupDepth) throw PatternFault("the groups are nested too deeply");
        Node part = parseChoice();
        --depth_;
        if (!text_.take(")")) throw PatternFault("a group has no )");
        return part;
    }

    bool isQuantifierNext() const {
        return text_.isNext("*") || text_.isNext("+") || text_.isNext("?") || text_.isNext("{");
    }

    std::optional<Repetition> parseQuantifier() {
        Repetition repetition;
        if (text_.take("*")) {
            repetition = {0, noMaximum, false, false};
        } else if (text_.take("+")) {
            repetition = {1, noMaximum, false, true};
        } else if (text_.take("?")) {
            repetition = {0, 1, false, false};
        } else if (text_.take("{")) {
            repetition.min = repetition.max = parseCount();
            if (text_.take(",")) repetition.max = text_.isNext("}") ? noMaximum : parseCount();
            if (!text_.take("}")) throw PatternFault("a { has no } behind its numbers");
            if (repetition.min > repetition.max) throw PatternFault("the numbers between { and } fall");
        } else {
            return std::nullopt;
        }
        repetition.lazy = text_.take("?");
        return repetition;
    }

    std::uint32_t parseCount() {
        if (text_.atEnd() || !classes::digits.contains(text_.peek()))
            throw PatternFault("a { is not followed by a number");
        const std::size_t count = readNumber(text_);
        if (count > maxCount) throw PatternFault("a number between { and } is too large");
        return static_cast<std::uint32_t>(count);
    }

    void countItem() {
        if (++items_ > maxItems) throw PatternFault("the pattern is too long");
    }

    PatternText text_;
    Case letters_;
    LoneQuantifier loneQuantifier_;
    std::uint32_t groups_ = 0;
    std::vector<std::uint32_t> openGroups_;
    std::size_t depth_ = 0;
    std::size_t items_ = 0;
};

} // namespace

Syntax parse(std::string_view source, Case letters, LoneQuantifier loneQuantifier) {
    return Parser(source, letters, loneQuantifier).parse();
}

} // namespace pattern

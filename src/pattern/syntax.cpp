// The makers of nodes: each computes the facts of its node and chooses the plainest form that matches the same.

#include "pattern/syntax.h"

#include <algorithm>
#include <iterator>

namespace pattern {

namespace {

/// a + b, unbounded if that is too much.
std::size_t sum(std::size_t a, std::size_t b) { return a > unbounded - b ? unbounded : a + b; }

/// a * b, unbounded if that is too much.
std::size_t product(std::size_t a, std::size_t b) {
    if (a == 0 || b == 0) return 0;
    return a > unbounded / b ? unbounded : a * b;
}

/// The facts that hold for a node because they hold for one of its parts.
void inherit(Facts& facts, const Facts& part) {
    facts.writesMemory |= part.writesMemory;
    facts.refersBack |= part.refersBack;
    facts.height = std::max(facts.height, part.height + 1);
}

bool isSet(const Node& node) { return node.kind == Node::Kind::Set; }

/// A greedy loop over single bytes that captures nothing and has no upper bound.
bool isOpenRun(const Node& node) {
    return node.kind == Node::Kind::Repeat && isSet(node.parts.front()) && !node.repetition.lazy &&
           node.repetition.max == noMaximum;
}

} // namespace

Node setNode(const ByteSet& set) {
    Node node;
    node.kind = Node::Kind::Set;
    node.set = set;
    node.facts.minLength = node.facts.maxLength = 1;
    node.facts.first = set;
    node.facts.passes = false;
    return node;
}

Node sequenceNode(std::vector<Node> parts) {
    std::vector<Node> flat;
    flat.reserve(parts.size());
    for (Node& part : parts) {
        if (part.kind == Node::Kind::Sequence)
            std::move(part.parts.begin(), part.parts.end(), std::back_inserter(flat));
        else if (part.kind != Node::Kind::Empty)
            flat.push_back(std::move(part));
    }
    if (flat.empty()) return {};
    if (flat.size() == 1) return std::move(flat.front());

    Node node;
    node.kind = Node::Kind::Sequence;
    node.parts = std::move(flat);
    Facts& facts = node.facts;
    for (const Node& part : node.parts) {
        if (facts.maxLength == 0) {
            facts.atTextBegin |= part.facts.atTextBegin;
            facts.admitted &= part.facts.admitted;
        }
        if (facts.minLength == 0) facts.first |= part.facts.first;
        facts.passes &= part.facts.passes;
        facts.minLength = sum(facts.minLength, part.facts.minLength);
        facts.maxLength = sum(facts.maxLength, part.facts.maxLength);
        inherit(facts, part.facts);
    }
    facts.first &= facts.admitted;
    return node;
}

Node choiceNode(std::vector<Node> alternatives) {
    if (alternatives.size() == 1) return std::move(alternatives.front());
    if (std::all_of(alternatives.begin(), alternatives.end(), isSet)) {
        ByteSet set;
        for (const Node& alternative : alternatives) set |= alternative.set;
        return setNode(set);
    }

    Node node;
    node.kind = Node::Kind::Choice;
    node.parts = std::move(alternatives);
    Facts& facts = node.facts;
    facts.minLength = unbounded;
    facts.passes = false;
    facts.atTextBegin = true;
    for (const Node& part : node.parts) {
        facts.minLength = std::min(facts.minLength, part.facts.minLength);
        facts.maxLength = std::max(facts.maxLength, part.facts.maxLength);
        facts.first |= part.facts.first;
        facts.passes |= part.facts.passes;
        facts.atTextBegin &= part.facts.atTextBegin;
        inherit(facts, part.facts);
    }
    return node;
}

Node groupNode(std::uint32_t number, Node part) {
    Node node;
    node.kind = Node::Kind::Group;
    node.number = number;
    node.facts = part.facts;
    node.facts.writesMemory = true;
    node.facts.height = part.facts.height + 1;
    node.parts.push_back(std::move(part));
    return node;
}

Node repeatNode(Node part, const Repetition& repetition) {
    if (repetition.max == 0 || part.kind == Node::Kind::Empty) return {};
    if (repetition.min == 1 && repetition.max == 1) return part;

    Node node;
    node.kind = Node::Kind::Repeat;
    node.repetition = repetition;
    if (isOpenRun(part) && !repetition.lazy && repetition.max == noMaximum && repetition.min <= 1 &&
        part.repetition.min <= 1) {
        // Runs of runs are runs. As two loops they would try every way to cut the run in pieces.
        part.repetition.min = part.repetition.min * repetition.min;
        node = std::move(part);
        part = std::move(node.parts.front());
        node.parts.clear();
    }

    Facts& facts = node.facts;
    facts = Facts{};
    facts.minLength = product(part.facts.minLength, node.repetition.min);
    facts.maxLength = node.repetition.max == noMaximum && part.facts.maxLength > 0
                          ? unbounded
                          : product(part.facts.maxLength, node.repetition.max);
    facts.first = part.facts.first;
    facts.passes = node.repetition.min == 0 || part.facts.passes;
    facts.atTextBegin = node.repetition.min > 0 && part.facts.atTextBegin;
    inherit(facts, part.facts);
    facts.writesMemory |= part.facts.minLength == 0; // such a loop marks where its last round began
    node.parts.push_back(std::move(part));
    return node;
}

Node placeNode(Node::Kind kind) {
    Node node;
    node.kind = kind;
    node.facts.atTextBegin = kind == Node::Kind::TextBegin;
    node.facts.passes = kind != Node::Kind::TextEnd;
    return node;
}

Node lookNode(Node::Kind kind, Node part) {
    Node node;
    node.kind = kind;
    if (kind == Node::Kind::Ahead && part.facts.minLength > 0) node.facts.admitted = part.facts.first;
    inherit(node.facts, part.facts);
    node.parts.push_back(std::move(part));
    return node;
}

Node backReferenceNode(std::uint32_t group) {
    Node node;
    node.kind = Node::Kind::BackReference;
    node.number = group;
    node.facts.maxLength = unbounded;
    node.facts.first = ByteSet::all();
    node.facts.refersBack = true;
    return node;
}

} // namespace pattern

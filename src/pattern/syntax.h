// A pattern as a tree.
//
// Each node carries facts about what it matches, taken from its parts when it is made, so that the compiler can ask at
// any node how long a match is and how it begins. Nodes are made by the functions below alone. They bring the tree into
// a plain form on the way: a letter is a set of one byte, sequences hold no sequences, a choice between single bytes is
// one set.

#pragma once

#include "pattern/byte_set.h"
#include "pattern/repetition.h"

#include <limits>
#include <vector>

namespace pattern {

constexpr std::size_t unbounded = std::numeric_limits<std::size_t>::max(); // of lengths

/// What is known about all matches of a node.
struct Facts {
    std::size_t minLength = 0;         // in bytes
    std::size_t maxLength = 0;         // in bytes, or unbounded
    ByteSet first;                     // with which of them a match that isn't empty may begin
    ByteSet admitted = ByteSet::all(); // a match begins only before one of these, or at the end
    bool passes = true;                // there may be an empty match somewhere before the end of the text
    bool atTextBegin = false;          // every match begins where the text does
    bool writesMemory = false;         // a match sets captures or the marks of loops
    bool refersBack = false;           // what matches depends on a capture
    std::size_t height = 1;            // levels of nodes
};

struct Node {
    enum class Kind : std::uint8_t {
        Empty,          // the empty text
        Set,            // one byte out of `set`
        Sequence,       // the parts, one after the other
        Choice,         // one of the parts, the first that leads to a match
        Group,          // the part, captured under `number`
        Repeat,         // the part, as often as `repetition` says
        TextBegin,      // ^
        TextEnd,        // $
        WordBoundary,   // \b
        NoWordBoundary, // \B
        Ahead,          // the part matches from here on
        NotAhead,       // the part doesn't match from here on
        BackReference,  // what the group `number` has captured
    };

    Kind kind = Kind::Empty;
    std::uint32_t number = 0;
    Repetition repetition;
    ByteSet set;
    std::vector<Node> parts;
    Facts facts;
};

/// A pattern that was read.
struct Syntax {
    Node root;
    std::uint32_t groups = 0; // that capture
};

Node setNode(const ByteSet& set);
Node sequenceNode(std::vector<Node> parts);
Node choiceNode(std::vector<Node> alternatives);
Node groupNode(std::uint32_t number, Node part);
Node repeatNode(Node part, const Repetition& repetition);
/// A node that tests the place: TextBegin, TextEnd, WordBoundary or NoWordBoundary.
Node placeNode(Node::Kind kind);
/// Ahead or NotAhead.
Node lookNode(Node::Kind kind, Node part);
Node backReferenceNode(std::uint32_t group);

} // namespace pattern

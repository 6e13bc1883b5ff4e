// The compiler. It walks the tree once and hands down, with each node, what may follow it: the set of bytes with which
// the rest of the pattern can go on. Three savings come from that.
//
// A run whose bytes cannot begin what follows never gains by giving back a byte, so it takes all and leaves no choice
// behind ([a-z]+ before a blank). An alternative or a further round of a loop is chosen by the next byte, and the other
// way is kept only if that byte could begin it. And a loop at the very end of the pattern drops the choices of its past
// rounds, since what follows cannot fail any more.
//
// Counted repetitions are written out, round by round, as far as their body isn't a single byte.

#include "pattern/compiler.h"

#include "pattern/faults.h"
#include "pattern/start_plan.h"

#include <algorithm>
#include <map>
#include <optional>

namespace pattern {

namespace {

constexpr std::size_t maxInstructions = 250'000;

/// What comes after a node, seen from its end.
struct Follow {
    ByteSet next;         // before any other byte the rest cannot succeed; nothing is said about the end of the text
    bool accepts = false; // the rest is nothing at all and succeeds
};

/// A byte and the mask under which it equals every member of `set` and nothing else, if there is such a mask.
struct MaskedByte {
    Byte byte = 0;
    Byte mask = 0;
};

std::optional<MaskedByte> maskedByteOf(const Node& node) {
    if (node.kind != Node::Kind::Set) return std::nullopt;
    const std::size_t members = node.set.count();
    if (members == 1) return MaskedByte{node.set.lowest(), 0xFF};
    if (members != 2) return std::nullopt;
    const unsigned difference = node.set.lowest() ^ static_cast<unsigned>(node.set.highest());
    if (!std::has_single_bit(difference)) return std::nullopt;
    const unsigned mask = 0xFFU & ~difference;
    return MaskedByte{static_cast<Byte>(node.set.lowest() & mask), static_cast<Byte>(mask)};
}

class Compiler {
public:
    Compiler(const Syntax& syntax, Case letters) : letters_(letters) {
        program_.groups = syntax.groups;
        program_.slots = 2 * (syntax.groups + 1);
    }

    Program compile(const Node& root) {
        emit(root, {ByteSet::all(), true});
        add({Op::Accept});
        program_.plan = planStarts(root, [this](const ByteSet& set) { return table(set); });
        findShortcut(root);
        return std::move(program_);
    }

private:
    /// What follows a node before `part`, if `after` follows `part`.
    static Follow before(const Node& part, const Follow& after) {
        Follow follow;
        follow.next = part.facts.first;
        if (part.facts.passes) follow.next |= after.next;
        follow.next &= part.facts.admitted;
        return follow;
    }

    void emit(const Node& node, const Follow& follow) {
        switch (node.kind) {
        case Node::Kind::Empty: break;
        case Node::Kind::Set: emitSet(node); break;
        case Node::Kind::Sequence: emitSequence(node.parts, follow); break;
        case Node::Kind::Choice: emitChoice(node.parts, follow); break;
        case Node::Kind::Group:
            add({Op::Save, 2 * node.number});
            emit(node.parts.front(), follow);
            add({Op::Save, 2 * node.number + 1});
            break;
        case Node::Kind::Repeat: emitRepeat(node, follow); break;
        case Node::Kind::TextBegin: add({Op::TextBegin}); break;
        case Node::Kind::TextEnd: add({Op::TextEnd}); break;
        case Node::Kind::WordBoundary: add({Op::WordBoundary}); break;
        case Node::Kind::NoWordBoundary: add({Op::NoWordBoundary}); break;
        case Node::Kind::Ahead:
        case Node::Kind::NotAhead: emitLook(node); break;
        case Node::Kind::BackReference:
            add({letters_ == Case::Ignored ? Op::FoldedBackReference : Op::BackReference, 2 * node.number});
            break;
        }
    }

    void emitSet(const Node& node) {
        if (node.set.count() == 1)
            add({Op::Single, node.set.lowest()});
        else
            add({Op::Set, table(node.set)});
    }

    void emitSequence(const std::vector<Node>& parts, const Follow& follow) {
        std::vector<Follow> follows(parts.size());
        follows.back() = follow;
        for (std::size_t i = parts.size() - 1; i > 0; --i) follows[i - 1] = before(parts[i], follows[i]);
        for (std::size_t i = 0; i < parts.size();) {
            std::size_t literalEnd = i;
            while (literalEnd < parts.size() && maskedByteOf(parts[literalEnd])) ++literalEnd;
            if (literalEnd - i >= 2) {
                emitLiteral(parts, i, literalEnd);
                i = literalEnd;
            } else {
                emit(parts[i], follows[i]);
                ++i;
            }
        }
    }

    void emitLiteral(const std::vector<Node>& parts, std::size_t begin, std::size_t end) {
        std::string bytes;
        std::string masks;
        for (std::size_t i = begin; i < end; ++i) {
            const MaskedByte masked = *maskedByteOf(parts[i]);
            bytes.push_back(static_cast<char>(masked.byte));
            masks.push_back(static_cast<char>(masked.mask));
        }
        const bool isPlain = std::all_of(masks.begin(), masks.end(), [](char mask) { return mask == '\xFF'; });
        const std::uint32_t at = static_cast<std::uint32_t>(program_.literals.size());
        program_.literals += bytes;
        if (!isPlain) program_.literals += masks;
        add({isPlain ? Op::Literal : Op::MaskedLiteral, at, static_cast<std::uint32_t>(bytes.size())});
    }

    void emitChoice(const std::vector<Node>& alternatives, const Follow& follow) {
        std::vector<ByteSet> later(alternatives.size()); // with which the alternatives behind each one can go on
        for (std::size_t i = alternatives.size() - 1; i > 0; --i)
            later[i - 1] = later[i] | before(alternatives[i], follow).next;

        std::vector<std::uint32_t> exits;
        for (std::size_t i = 0; i + 1 < alternatives.size(); ++i) {
            const std::uint32_t fork = addFork(alternatives[i], later[i]);
            program_.code[fork].b = here();
            emit(alternatives[i], follow);
            exits.push_back(add({Op::Jump}));
            program_.code[fork].c = here();
        }
        emit(alternatives.back(), follow);
        for (const std::uint32_t exit : exits) program_.code[exit].b = here();
    }

    /// Adds the instruction that tries `way` first and then, if the next byte is one of `otherwise`, the other way. The
    /// targets `b` and `c` are still to be set.
    std::uint32_t addFork(const Node& way, const ByteSet& otherwise) {
        if (way.facts.minLength == 0) return add({Op::Fork});
        const ByteSet& first = way.facts.first;
        if (!first.intersects(otherwise)) return add({Op::Branch, table(first)});
        if ((first & otherwise) == first) return add({Op::ForkIf, table(first)});
        return add({Op::ForkEither, table(first), 0, 0, table(otherwise)});
    }

    void emitRepeat(const Node& node, const Follow& follow) {
        const Node& body = node.parts.front();
        const Repetition& repetition = node.repetition;
        if (body.kind == Node::Kind::Set) {
            emitRun(body.set, repetition, follow);
            return;
        }
        if (body.kind == Node::Kind::Group && body.parts.front().kind == Node::Kind::Set) {
            emitCapturedRun(body, repetition, follow);
            return;
        }

        const Follow inner{body.facts.first | follow.next, false};
        const bool mayBeEmpty = body.facts.minLength == 0;
        const bool isOpen = repetition.max == noMaximum;
        const bool endsWithPlus = isOpen && repetition.min > 0 && (repetition.sharesBody || !mayBeEmpty);
        const std::uint32_t copies = repetition.min - (endsWithPlus ? 1 : 0);
        for (std::uint32_t i = 0; i < copies; ++i) emit(body, inner);
        if (!isOpen)
            emitOptions(node, repetition.max - repetition.min, follow);
        else if (mayBeEmpty)
            emitMarkedLoop(node, endsWithPlus, inner);
        else
            emitLoop(node, endsWithPlus, inner, follow);
    }

    void emitRun(const ByteSet& set, const Repetition& repetition, const Follow& follow) {
        const std::uint32_t run = table(set);
        const bool gainsNothing = !set.intersects(follow.next);
        if (gainsNothing || repetition.min == repetition.max || (follow.accepts && !repetition.lazy))
            add({Op::FullRun, run, repetition.min, repetition.max});
        else if (repetition.lazy)
            add({Op::LazyRun, run, repetition.min, repetition.max, table(follow.next)});
        else
            add({Op::GreedyRun, run, repetition.min, repetition.max, table(follow.next)});
    }

    /// A run of a group that holds a single byte: the group has what the last round gave it.
    void emitCapturedRun(const Node& group, const Repetition& repetition, const Follow& follow) {
        const std::uint32_t begin = newSlots(1);
        add({Op::Save, begin});
        emitRun(group.parts.front().set, repetition, follow);
        add({Op::LastOfRun, begin, 2 * group.number});
    }

    /// Up to `count` further rounds, each only after the one before it.
    void emitOptions(const Node& node, std::uint32_t count, const Follow& follow) {
        const Node& body = node.parts.front();
        const Follow inner{body.facts.first | follow.next, false};
        std::vector<std::uint32_t> forks;
        for (std::uint32_t i = 0; i < count; ++i) {
            const bool isLast = i + 1 == count;
            forks.push_back(addRoundFork(body, node.repetition.lazy, follow));
            program_.code[forks.back()].b = here();
            emit(body, isLast ? follow : inner);
        }
        for (const std::uint32_t fork : forks) program_.code[fork].c = here();
    }

    /// Adds the instruction that decides on a further round: `b` is the round, `c` what follows the loop. Both are
    /// still to be set.
    std::uint32_t addRoundFork(const Node& body, bool lazy, const Follow& follow) {
        if (body.facts.minLength == 0) return add({lazy ? Op::EnterLazily : Op::EnterRound, newSlots(2)});
        const ByteSet& first = body.facts.first;
        if (lazy && first.intersects(follow.next)) return add({Op::ForkLazily, table(first)});
        return addFork(body, follow.next);
    }

    /// A loop without a maximum whose rounds may be empty.
    void emitMarkedLoop(const Node& node, bool isPlus, const Follow& inner) {
        const Op op = node.repetition.lazy ? Op::EnterLazily : Op::EnterRound;
        if (isPlus) {
            const std::uint32_t round = here();
            emit(node.parts.front(), inner);
            const std::uint32_t fork = add({op, newSlots(2), round});
            program_.code[fork].c = here();
        } else {
            const std::uint32_t fork = add({op, newSlots(2)});
            program_.code[fork].b = here();
            emit(node.parts.front(), inner);
            add({Op::Jump, 0, fork});
            program_.code[fork].c = here();
        }
    }

    /// A loop without a maximum whose rounds are never empty.
    void emitLoop(const Node& node, bool isPlus, const Follow& inner, const Follow& follow) {
        const Node& body = node.parts.front();
        // Behind the first round nothing can fail. Within a look ahead, though, the old captures stay on the stack,
        // because it isn't the end of the pattern and they may have to come back.
        const bool cuts = follow.accepts && !node.repetition.lazy && (lookDepth_ == 0 || !body.facts.writesMemory);
        const std::uint32_t height = cuts ? newSlots(1) : 0;
        if (cuts) add({Op::MarkStack, height});
        std::optional<std::uint32_t> entry;
        if (!isPlus) entry = addRoundFork(body, node.repetition.lazy, follow);
        const std::uint32_t round = here();
        emit(body, inner);
        if (cuts) add({Op::CutStack, height});
        const std::uint32_t fork = addRoundFork(body, node.repetition.lazy, follow);
        program_.code[fork].b = round;
        program_.code[fork].c = here();
        if (entry) {
            program_.code[*entry].b = round;
            program_.code[*entry].c = here();
        }
    }

    void emitLook(const Node& node) {
        const bool isPositive = node.kind == Node::Kind::Ahead;
        const std::uint32_t look = add({isPositive ? Op::Ahead : Op::NotAhead});
        ++lookDepth_;
        program_.code[look].c = program_.slots;
        emit(node.parts.front(), {ByteSet::all(), true});
        program_.code[look].d = program_.slots;
        --lookDepth_;
        add({isPositive ? Op::AheadEnd : Op::NotAheadEnd});
        program_.code[look].b = here();
    }

    /// Recognises the patterns that match without their program.
    void findShortcut(const Node& root) {
        if (program_.groups > 0 || program_.code.size() != 2) return;
        const Instruction& only = program_.code.front();
        const bool isPlain = only.op == Op::Literal || only.op == Op::Single;
        if (isPlain && program_.plan.literal.bytes.size() == root.facts.minLength)
            program_.shortcut = Shortcut::Literal;
        if (only.op == Op::Set && program_.plan.way == StartPlan::Way::FirstSet) program_.shortcut = Shortcut::OneByte;
        if (only.op == Op::FullRun && only.b <= 1 && only.c == noMaximum) {
            program_.shortcut = Shortcut::Run;
            program_.runTable = only.a;
            program_.runMayBeEmpty = only.b == 0;
        }
    }

    std::uint32_t here() const { return static_cast<std::uint32_t>(program_.code.size()); }

    std::uint32_t add(const Instruction& instruction) {
        if (program_.code.size() >= maxInstructions)
            throw PatternFault("the pattern is too large when its counts are written out");
        program_.code.push_back(instruction);
        return here() - 1;
    }

    std::uint32_t newSlots(std::uint32_t count) {
        program_.slots += count;
        return program_.slots - count;
    }

    std::uint32_t table(const ByteSet& set) {
        const auto [entry, isNew] = tables_.try_emplace(set, static_cast<std::uint32_t>(program_.tables.size()));
        if (isNew) program_.tables.emplace_back(set);
        return entry->second;
    }

    Case letters_;
    Program program_;
    std::map<ByteSet, std::uint32_t> tables_;
    std::size_t lookDepth_ = 0;
};

} // namespace

Program compile(const Syntax& syntax, Case letters) { return Compiler(syntax, letters).compile(syntax.root); }

} // namespace pattern

// Compiling an expression to nodes: the grammar of the token evaluator, read once.
//
// What the nodes don't have, and whatever breaks the grammar, ends the attempt silently: the line keeps its tokens, and
// if it is ever reached, the token evaluator says what is wrong with it.

#include "script/fast_expression.h"

#include <algorithm>
#include <limits>

namespace {

// Deeper trees are left to the token evaluator, which watches the stack; the node evaluator need not.
constexpr unsigned greatestHeight = 200;

FastKind kindOf(BinaryOperator binaryOperator) {
    switch (binaryOperator) {
    case BinaryOperator::Or: return FastKind::Or;
    case BinaryOperator::And: return FastKind::And;
    case BinaryOperator::None: return FastKind::None;
    default: break;
    }
    // From Equal to GreaterOrEqual and from Add to Pentation the two enumerations run in the same order.
    const int number = static_cast<int>(binaryOperator);
    const bool compares = binaryOperator < BinaryOperator::Add;
    return static_cast<FastKind>(number +
                                 (compares ? static_cast<int>(FastKind::Equal) - static_cast<int>(BinaryOperator::Equal)
                                           : static_cast<int>(FastKind::Add) - static_cast<int>(BinaryOperator::Add)));
}

class FastCompiler {
public:
    FastCompiler(const std::vector<std::string>& tokens, const std::vector<TokenAnalysis>& analysis, std::size_t first,
                 std::size_t last)
        : tokens_(tokens), analysis_(analysis), position_(first), last_(last) {}

    FastExpression compile() {
        const FastNodeIndex root = readLevel(1, 0);
        if (failed_ || position_ != last_) return {};
        result_.root = root;
        return std::move(result_);
    }

private:
    bool isToken(std::string_view text) const { return position_ < last_ && tokens_[position_] == text; }

    FastNodeIndex fail() {
        failed_ = true;
        return noFastNode;
    }

    /// Adds a node whose operation is done when the tokens read so far have been read.
    FastNodeIndex add(FastKind kind, FastNodeIndex left = noFastNode, FastNodeIndex right = noFastNode) {
        if (failed_) return noFastNode;
        FastNode node;
        node.kind = kind;
        node.left = left;
        node.right = right;
        node.tokenIndex = static_cast<std::uint32_t>(position_ - 1);
        node.calls = calls(left) || calls(right);
        const unsigned height = 1 + std::max(heightOf(left), heightOf(right));
        if (height > greatestHeight) return fail();
        result_.nodes.push_back(node);
        heights_.push_back(height);
        return static_cast<FastNodeIndex>(result_.nodes.size() - 1);
    }

    FastNode& node(FastNodeIndex index) { return result_.nodes[static_cast<std::size_t>(index)]; }
    bool calls(FastNodeIndex index) { return index != noFastNode && node(index).calls; }
    unsigned heightOf(FastNodeIndex index) const {
        return index == noFastNode ? 0 : heights_[static_cast<std::size_t>(index)];
    }

    FastNodeIndex readLevel(int minimumLevel, unsigned depth) {
        if (depth > greatestHeight) return fail();
        FastNodeIndex left = readUnary(depth);
        while (!failed_ && position_ < last_) {
            const BinaryOperator binaryOperator = analysis_[position_].binaryOperator;
            const int level = binaryLevel(binaryOperator);
            if (binaryOperator == BinaryOperator::None || level < minimumLevel) break;
            ++position_;
            const FastNodeIndex right = readLevel(isRightAssociative(binaryOperator) ? level : level + 1, depth + 1);
            left = add(kindOf(binaryOperator), left, right);
        }
        return left;
    }

    FastNodeIndex readUnary(unsigned depth) {
        if (position_ >= last_) return fail();
        const std::string& text = tokens_[position_];
        const char mark = text.size() == 1 ? text[0] : '\0';
        if (mark == '+') {
            ++position_;
            return readLevel(unaryLevel, depth + 1);
        }
        if (mark == '!' || mark == '#' || mark == '-') {
            ++position_;
            const FastNodeIndex operand = readLevel(unaryLevel, depth + 1);
            if (mark == '-') return addNegation(operand);
            return add(mark == '!' ? FastKind::LogicalNot : FastKind::Length, operand);
        }
        if (text == "not") {
            ++position_;
            // What follows decides, also beyond the range that is compiled here.
            if (position_ == tokens_.size() || analysis_[position_].endsNegation) return add(FastKind::Nil);
            return add(FastKind::LogicalNot, readLevel(unaryLevel, depth + 1));
        }
        return readPrimary(depth);
    }

    /// A negated literal is a literal.
    FastNodeIndex addNegation(FastNodeIndex operand) {
        if (failed_) return noFastNode;
        FastNode& literal = node(operand);
        if (literal.kind == FastKind::Integer) {
            literal.intValue = static_cast<int>(0U - static_cast<unsigned>(literal.intValue));
            return operand;
        }
        if (literal.kind == FastKind::Float) {
            literal.floatValue = -literal.floatValue;
            return operand;
        }
        return add(FastKind::Negate, operand);
    }

    FastNodeIndex readPrimary(unsigned depth) {
        FastNodeIndex value = readAtom(depth);
        while (!failed_ && position_ < last_) {
            if (isToken("("))
                value = readCall(value, depth);
            else if (isToken("["))
                value = readIndex(value, depth);
            else
                break;
        }
        return value;
    }

    FastNodeIndex readAtom(unsigned depth) {
        if (isToken("(")) {
            ++position_;
            const FastNodeIndex inner = readLevel(1, depth + 1);
            if (!isToken(")")) return fail();
            ++position_;
            return inner;
        }
        if (isToken("[")) return readArrayLiteral(depth);
        if (isToken("{")) return readTableLiteral(depth);
        const std::string& text = tokens_[position_];
        const TokenAnalysis& analysis = analysis_[position_];
        ++position_;
        switch (analysis.kind) {
        case TokenKind::True:
        case TokenKind::False: return addInt(FastKind::Boolean, analysis.isTrue() ? 1 : 0);
        case TokenKind::Integer: return addInt(FastKind::Integer, analysis.intValue);
        case TokenKind::String:
            result_.strings.emplace_back(analysis.text);
            return addInt(FastKind::String, static_cast<int>(result_.strings.size()) - 1);
        case TokenKind::Float: {
            float number = 0;
            if (!parseFloatStrict(text, number)) return fail();
            const FastNodeIndex index = add(FastKind::Float);
            if (!failed_) node(index).floatValue = number;
            return index;
        }
        case TokenKind::Identifier: {
            const FastNodeIndex index = add(FastKind::Variable);
            if (failed_) return noFastNode;
            node(index).name = analysis.name;
            node(index).explicitScope = analysis.explicitScope;
            node(index).isPlace = true;
            return index;
        }
        case TokenKind::Varargs: result_.givesValue = true; return add(FastKind::Varargs);
        case TokenKind::Nil: // reached behind an operator that is no boundary of its own
        case TokenKind::Pointer:
        case TokenKind::Other: break;
        }
        return fail();
    }

    FastNodeIndex addInt(FastKind kind, int value) {
        const FastNodeIndex index = add(kind);
        if (!failed_) node(index).intValue = value;
        return index;
    }

    FastNodeIndex readCall(FastNodeIndex callee, unsigned depth) {
        const std::vector<FastNodeIndex> arguments = readList(")", depth);
        const FastNodeIndex index = addWithArguments(FastKind::Call, callee, arguments);
        if (!failed_) node(index).calls = true;
        return index;
    }

    /// From the opening bracket to behind the closing one.
    std::vector<FastNodeIndex> readList(std::string_view closing, unsigned depth) {
        ++position_;
        std::vector<FastNodeIndex> items;
        if (!isToken(closing)) {
            while (true) {
                items.push_back(readLevel(1, depth + 1));
                if (failed_ || !isToken(",")) break;
                ++position_;
            }
        }
        if (!isToken(closing)) fail();
        ++position_;
        return items;
    }

    /// Adds a node that has more than two below it.
    FastNodeIndex addWithArguments(FastKind kind, FastNodeIndex left, const std::vector<FastNodeIndex>& arguments) {
        const FastNodeIndex index = add(kind, left);
        if (failed_) return noFastNode;
        for (const FastNodeIndex argument : arguments) {
            heights_.back() = std::max(heights_.back(), heightOf(argument) + 1);
            node(index).calls = node(index).calls || calls(argument);
        }
        if (heights_.back() > greatestHeight) return fail();
        node(index).right = static_cast<FastNodeIndex>(result_.arguments.size());
        node(index).intValue = static_cast<int>(arguments.size());
        result_.arguments.insert(result_.arguments.end(), arguments.begin(), arguments.end());
        return index;
    }

    FastNodeIndex readArrayLiteral(unsigned depth) {
        result_.givesValue = true;
        const std::vector<FastNodeIndex> elements = readList("]", depth);
        return addWithArguments(FastKind::ArrayLiteral, noFastNode, elements);
    }

    FastNodeIndex readTableLiteral(unsigned depth) {
        ++position_;
        result_.givesValue = true;
        std::vector<FastNodeIndex> entries; // pairs
        while (!isToken("}")) {
            entries.push_back(readEntryKey(depth));
            if (failed_) return noFastNode;
            entries.push_back(readLevel(1, depth + 1));
            if (failed_) return noFastNode;
            if (isToken("}")) break;
            if (!isToken(",")) return fail();
            ++position_;
        }
        ++position_;
        return addWithArguments(FastKind::TableLiteral, noFastNode, entries);
    }

    bool isKeyMark(std::size_t index) const {
        return index < last_ && (tokens_[index] == "=" || tokens_[index] == ":");
    }

    /// A key and its mark; none in front of a positional value.
    FastNodeIndex readEntryKey(unsigned depth) {
        if (position_ >= last_) return fail();
        if (isToken("[")) {
            ++position_;
            const FastNodeIndex key = readLevel(1, depth + 1);
            if (failed_ || !isToken("]") || !isKeyMark(position_ + 1)) return fail();
            position_ += 2;
            return add(FastKind::ComputedKey, key);
        }
        if (!isKeyMark(position_ + 1)) return noFastNode;
        const TokenAnalysis& key = analysis_[position_];
        const bool isBareName = key.isIdentifier && key.explicitScope == ExplicitScope::None;
        if (!isBareName && key.kind != TokenKind::String) return fail();
        position_ += 2;
        result_.strings.emplace_back(isBareName ? key.name->key : key.text);
        return addInt(FastKind::String, static_cast<int>(result_.strings.size()) - 1);
    }

    FastNodeIndex readIndex(FastNodeIndex container, unsigned depth) {
        ++position_;
        const FastNodeIndex key = readLevel(1, depth + 1);
        if (failed_ || !isToken("]")) return fail();
        ++position_;
        const FastNodeIndex index = add(FastKind::Index, container, key);
        if (failed_) return noFastNode;
        node(index).isPlace = node(container).isPlace && isPlainKey(node(key));
        return index;
    }

    static bool isPlainKey(const FastNode& key) {
        return key.kind == FastKind::String || key.kind == FastKind::Integer || key.kind == FastKind::Variable;
    }

    const std::vector<std::string>& tokens_;
    const std::vector<TokenAnalysis>& analysis_;
    std::size_t position_;
    std::size_t last_;
    FastExpression result_;
    std::vector<unsigned> heights_; // of each node's tree
    bool failed_ = false;
};

} // namespace

FastExpression compileFastExpressionRange(const std::vector<std::string>& tokens,
                                          const std::vector<TokenAnalysis>& analysis, std::size_t first,
                                          std::size_t last) {
    if (first >= last || last > std::numeric_limits<std::uint32_t>::max()) return {};
    return FastCompiler(tokens, analysis, first, last).compile();
}

// The token evaluator: a recursive precedence climber over a line's tokens.
//
// It is exact for every expression there is and makes no tree; what compiled to nodes takes the faster road of
// fast_evaluate.cpp. The same climber also walks an expression without evaluating it, for the side of a short circuit
// that is not needed: it reads the same grammar and fails on the same faults, but calls nothing.
//
// While it reads, it keeps the engine's record of the last token, so that an error raised far below still points at the
// right place of the line. After everything that may have called a function it tests for a soft error and, if one is
// pending, goes back at once without reading on.

#include "script/literal_entries.h"
#include "script/native_stack.h"
#include "script/ostrel_script.h"

class TokenEvaluator {
public:
    TokenEvaluator(OstrelScript& engine, const std::vector<std::string>& tokens, std::size_t& position,
                   const std::vector<TokenAnalysis>* analysis)
        : engine_(engine), tokens_(tokens), position_(position), analysis_(analysis) {}

    Variable evaluate() {
        while (hasToken() && token().empty()) ++position_;
        if (!hasToken()) engine_.throwError("Unexpected end of expression", "EOF");
        return evaluateLevel(1);
    }

    void skip(int minimumLevel) {
        const bool outer = skipping_;
        skipping_ = true;
        evaluateLevel(minimumLevel);
        skipping_ = outer;
    }

private:
    bool hasToken() const { return position_ < tokens_.size(); }
    const std::string& token() const { return tokens_[position_]; }
    bool isToken(std::string_view text) const { return hasToken() && token() == text; }
    bool aborted() const { return engine_.shouldAbortForSoftRaisedError(); }

    TokenAnalysis analysisOf(std::size_t index) const {
        return analysis_ != nullptr ? (*analysis_)[index] : engine_.analyseToken(tokens_[index]);
    }

    void consume() {
        engine_.position_.token = position_;
        ++position_;
    }

    void expect(std::string_view text, const char* message) {
        if (!isToken(text)) engine_.throwError(message, text);
        consume();
    }

    Variable evaluateLevel(int minimumLevel) {
        checkNativeStack();
        Variable left = evaluateUnary();
        while (hasToken() && !aborted()) {
            const BinaryOperator binaryOperator = analysisOf(position_).binaryOperator;
            const int level = binaryLevel(binaryOperator);
            if (binaryOperator == BinaryOperator::None || level < minimumLevel) break;
            consume();
            if (binaryOperator == BinaryOperator::Or || binaryOperator == BinaryOperator::And) {
                const bool decided = engine_.isTruthy(left) == (binaryOperator == BinaryOperator::Or);
                if (skipping_ || decided)
                    skip(level + 1);
                else
                    left = evaluateLevel(level + 1);
                continue;
            }
            const Variable right = evaluateLevel(isRightAssociative(binaryOperator) ? level : level + 1);
            if (aborted()) return {};
            if (!skipping_) left = apply(std::move(left), binaryOperator, right);
        }
        return left;
    }

    Variable apply(Variable left, BinaryOperator binaryOperator, const Variable& right) {
        switch (binaryOperator) {
        case BinaryOperator::Equal: return engine_.variablesEqual(left, right);
        case BinaryOperator::NotEqual: return !engine_.variablesEqual(left, right);
        case BinaryOperator::Less: return engine_.compareVariables(left, right) < 0;
        case BinaryOperator::Greater: return engine_.compareVariables(left, right) > 0;
        case BinaryOperator::LessOrEqual: return engine_.compareVariables(left, right) <= 0;
        case BinaryOperator::GreaterOrEqual: return engine_.compareVariables(left, right) >= 0;
        default: break;
        }
        // A text grows in place: a chain of joins builds one string.
        if (binaryOperator == BinaryOperator::Add && left.isString()) {
            right.appendTo(left.editString());
            return left;
        }
        return engine_.performOperation(left, binaryOperator, right);
    }

    Variable evaluateUnary() {
        if (!hasToken()) engine_.throwError("Unexpected end of expression", "EOF");
        const std::string& text = token();
        const char mark = text.size() == 1 ? text[0] : '\0';
        if (mark == '!' || mark == '#' || mark == '+' || mark == '-') {
            consume();
            const Variable operand = evaluateLevel(unaryLevel);
            if (skipping_ || aborted()) return {};
            return applyUnary(mark, operand);
        }
        if (text == "not") {
            consume();
            if (!hasToken() || analysisOf(position_).endsNegation) return {};
            const Variable operand = evaluateLevel(unaryLevel);
            if (skipping_ || aborted()) return {};
            return !engine_.isTruthy(operand);
        }
        return evaluatePrimary();
    }

    Variable applyUnary(char mark, const Variable& operand) {
        switch (mark) {
        case '!': return !engine_.isTruthy(operand);
        case '#': return engine_.arrayLength(operand);
        case '-': return engine_.negate(operand);
        default: return operand;
        }
    }

    Variable evaluatePrimary() {
        Variable value = evaluateAtom();
        while (hasToken() && !aborted()) {
            if (token() == "(")
                value = evaluateCall(value);
            else if (token() == "[")
                value = evaluateIndex(value);
            else
                break;
        }
        return value;
    }

    Variable evaluateAtom() {
        const std::string& text = token();
        if (text == "(") return evaluateParenthesised();
        if (text == "{") return evaluateTableLiteral();
        if (text == "[") return evaluateArrayLiteral();
        const TokenAnalysis analysis = analysisOf(position_);
        consume();
        switch (analysis.kind) {
        case TokenKind::String: return Variable(analysis.text);
        case TokenKind::Varargs: return engine_.currentVarargs();
        case TokenKind::True: return true;
        case TokenKind::False: return false;
        case TokenKind::Integer: return analysis.intValue;
        case TokenKind::Float: {
            float number = 0;
            if (skipping_) return {};
            if (!parseFloatStrict(text, number)) engine_.throwError("Invalid numeric format", text);
            return number;
        }
        case TokenKind::Pointer: {
            void* address = nullptr;
            parsePointerLiteral(text, address);
            return address;
        }
        case TokenKind::Nil:
        case TokenKind::Identifier: {
            if (skipping_) return {};
            const Variable* variable = engine_.resolveToken(analysis);
            return variable == nullptr ? Variable() : *variable;
        }
        case TokenKind::Other: break;
        }
        engine_.throwError("Unknown token: " + text, text);
    }

    Variable evaluateParenthesised() {
        consume();
        Variable value = evaluate();
        if (aborted()) return {};
        expect(")", "Expected closing parenthesis");
        return value;
    }

    Variable evaluateCall(const Variable& callee) {
        consume();
        std::vector<Variable> arguments;
        if (!isToken(")")) {
            while (true) {
                arguments.push_back(evaluate());
                if (aborted()) return {};
                if (isToken(")")) break;
                if (!isToken(","))
                    engine_.throwError("Expected ',' or ')' after function argument", hasToken() ? token() : "EOF");
                consume();
            }
        }
        consume();
        if (skipping_) return {};
        return engine_.invokeCallableFast(callee, arguments.data(), arguments.size());
    }

    Variable evaluateIndex(const Variable& container) {
        consume();
        const Variable key = evaluate();
        if (aborted()) return {};
        expect("]", "Expected closing bracket");
        if (skipping_) return {};
        return engine_.getIndexedValue(container, key);
    }

    Variable evaluateArrayLiteral() {
        consume();
        Elements elements;
        if (isToken("]")) {
            consume();
            return makeArray({});
        }
        while (true) {
            elements.push_back(evaluate());
            if (aborted()) return {};
            if (isToken("]")) break;
            if (!isToken(",")) engine_.throwError("Expected ',' or ']' in array literal", hasToken() ? token() : "EOF");
            consume();
        }
        consume();
        return makeArray(std::move(elements));
    }

    // --- Table literals ---

    Variable evaluateTableLiteral() {
        consume();
        if (isToken("}")) {
            consume();
            return makeTable();
        }
        LiteralEntries entries;
        while (true) {
            if (!hasToken()) engine_.throwError("Unexpected end of table literal", "EOF");
            readTableEntry(entries);
            if (aborted()) return {};
            if (!hasToken()) engine_.throwError("Unexpected end of table literal", "EOF");
            if (isToken("}")) break;
            if (!isToken(",")) engine_.throwError("Expected ',' or '}' in table literal", token());
            consume();
            if (isToken("}")) break;
        }
        consume();
        return entries.take();
    }

    Ref<ScriptText> keyOf(const TokenAnalysis& identifier) const {
        const bool isBare = identifier.explicitScope == ExplicitScope::None;
        return isBare ? identifier.name->key : engine_.internText(token());
    }

    bool isKeyMark(std::size_t index) const {
        return index < tokens_.size() && (tokens_[index] == "=" || tokens_[index] == ":");
    }

    void readTableEntry(LiteralEntries& entries) {
        if (token() == "[") {
            readBracketedEntry(entries);
            return;
        }
        if (isKeyMark(position_ + 1)) {
            const TokenAnalysis analysis = analysisOf(position_);
            if (!analysis.isIdentifier && analysis.kind != TokenKind::String)
                engine_.throwError("Invalid table key", token());
            const Ref<ScriptText> key = analysis.isIdentifier ? keyOf(analysis) : analysis.text;
            consume();
            consume();
            Variable value = evaluate();
            if (!aborted() && !skipping_) entries.add(key, std::move(value));
            return;
        }
        Variable value = evaluate();
        if (!aborted() && !skipping_) entries.add(std::move(value));
    }

    void readBracketedEntry(LiteralEntries& entries) {
        consume();
        const Variable key = evaluate();
        if (aborted()) return;
        if (!isToken("]")) engine_.throwError("Expected ']' after table key", hasToken() ? token() : "EOF");
        consume();
        if (!isKeyMark(position_)) engine_.throwError("Expected ':' after table key", hasToken() ? token() : "EOF");
        consume();
        const std::string text = skipping_ ? std::string() : engine_.keyToString(key);
        Variable value = evaluate();
        if (!aborted() && !skipping_) entries.add(makeRef<ScriptText>(text), std::move(value));
    }

    OstrelScript& engine_;
    const std::vector<std::string>& tokens_;
    std::size_t& position_;
    const std::vector<TokenAnalysis>* analysis_;
    bool skipping_ = false; // walking the grammar without effects
};

Variable OstrelScript::evaluateExpression(const std::vector<std::string>& tokens, std::size_t& position,
                                          const std::vector<TokenAnalysis>* analysis) {
    position_.tokens = &tokens;
    return TokenEvaluator(*this, tokens, position, analysis).evaluate();
}

void OstrelScript::skipExpression(const std::vector<std::string>& tokens, std::size_t& position, int minimumLevel,
                                  const std::vector<TokenAnalysis>* analysis) {
    position_.tokens = &tokens;
    TokenEvaluator(*this, tokens, position, analysis).skip(minimumLevel);
}

Variable OstrelScript::negate(const Variable& operand) {
    switch (operand.type) {
    case VarType::Float: return -operand.asFloat();
    case VarType::Integer: return static_cast<int>(0U - static_cast<unsigned>(operand.asInt()));
    case VarType::Boolean: return operand.asBool() ? -1 : 0;
    default: throwError("Unary '-' requires a numeric value", lastTokenText());
    }
}

Variable OstrelScript::currentVarargs() const { return varargs_.empty() ? Variable() : makeMulti(varargs_.back()); }

// The headers of the two kinds of `for`. All walkers read a loop's header here and then go round in their own way.

#include "script/ostrel_script.h"

#include <array>

namespace {

constexpr std::size_t firstClause = 3; // token behind `for name =`

} // namespace

// ---------------------------------------------------------------------------------------------------------------------
// for name = start, limit [, step]
// ---------------------------------------------------------------------------------------------------------------------

/// Reads the clauses once, as integers.
NumericLoop OstrelScript::readNumericLoop(const ParsedScriptLine& line) {
    const LinePlan& plan = *line.plan;
    NumericLoop loop;
    const bool compiled =
        plan.forStart.isValid() && plan.forLimit.isValid() && (!plan.hasForStep || plan.forStep.isValid());
    if (compiled)
        readCompiledClauses(line, loop);
    else
        readClauseTokens(line, loop);
    if (shouldAbortForSoftRaisedError()) return loop;
    if (loop.step == 0) throwError("for loop step must not be 0", lastTokenText());
    return loop;
}

void OstrelScript::readCompiledClauses(const ParsedScriptLine& line, NumericLoop& loop) {
    const LinePlan& plan = *line.plan;
    const std::array<const FastExpression*, 3> clauses = {&plan.forStart, &plan.forLimit, &plan.forStep};
    const std::array<std::int64_t*, 3> places = {&loop.current, &loop.limit, &loop.step};
    // The compiled form knows no tokens; a fault walks over them to find the end of its clause.
    const auto pointAtClause = [this, &line](std::size_t clause) {
        std::size_t position = firstClause;
        for (std::size_t i = 0; i <= clause; ++i, ++position)
            skipExpression(line.tokens, position, 1, &line.tokenAnalysis);
    };
    for (std::size_t i = 0; i < (plan.hasForStep ? 3U : 2U); ++i) {
        const Variable value = evaluateFastExpression(*clauses[i]);
        if (shouldAbortForSoftRaisedError()) return;
        if (!value.isNumeric()) pointAtClause(i);
        *places[i] = toInt(value);
    }
    if (loop.step == 0) pointAtClause(2);
}

void OstrelScript::readClauseTokens(const ParsedScriptLine& line, NumericLoop& loop) {
    const std::vector<std::string>& tokens = line.tokens;
    std::size_t position = firstClause;
    const auto readClause = [this, &line, &position](std::int64_t& place) {
        const Variable value = evaluateExpression(line.tokens, position, &line.tokenAnalysis);
        if (!shouldAbortForSoftRaisedError()) place = toInt(value);
        return !shouldAbortForSoftRaisedError();
    };
    const auto isComma = [&tokens, &position] { return position < tokens.size() && tokens[position] == ","; };
    const auto tokenHere = [&tokens, &position] {
        return position < tokens.size() ? std::string_view(tokens[position]) : std::string_view("EOF");
    };
    if (!readClause(loop.current)) return;
    if (!isComma()) throwError("Expected ',' after for start value", tokenHere());
    ++position;
    if (!readClause(loop.limit)) return;
    if (isComma()) {
        ++position;
        if (!readClause(loop.step)) return;
    }
    if (position < tokens.size()) throwError("Unexpected token after for clause", tokenHere());
}

// ---------------------------------------------------------------------------------------------------------------------
// for names in iterator
// ---------------------------------------------------------------------------------------------------------------------

void OstrelScript::reportLoopHeader(const ParsedScriptLine& line) {
    const std::vector<std::string>& tokens = line.tokens;
    std::size_t i = 1;
    const auto tokenHere = [&tokens, &i] {
        return i < tokens.size() ? std::string_view(tokens[i]) : std::string_view("EOF");
    };
    while (true) {
        if (i >= tokens.size() || !line.tokenAnalysis[i].isIdentifier)
            throwError("Expected loop variable name", tokenHere());
        ++i;
        if (i >= tokens.size() || tokens[i] != ",") break;
        ++i;
    }
    throwError("Expected 'in' in generic for loop", tokenHere());
}

/// Evaluates the iterator and copies what it gives, so that the loop shows the state at its start.
GenericLoop OstrelScript::readGenericLoop(const ParsedScriptLine& line) {
    const LinePlan& plan = *line.plan;
    GenericLoop loop;
    if (plan.loopNames.empty() || plan.isNumericFor) reportLoopHeader(line);
    constexpr const char* leftOver = "Unexpected token after for iterator";
    if (plan.iteratorBuiltin != BuiltinId::None) {
        const Variable container = evaluateRange(line, plan.iteratorArgumentRange, plan.iteratorArgument, leftOver);
        if (!shouldAbortForSoftRaisedError()) readContainerWalk(container, plan.iteratorBuiltin, loop);
        return loop;
    }
    const Variable iterator = evaluateRange(line, plan.iteratorRange, plan.iteratorExpression, leftOver);
    if (shouldAbortForSoftRaisedError()) return loop;
    if (iterator.isArray())
        loop.entries = *iterator.asArray();
    else if (isByteCall(plan, iterator))
        loop.entries =
            iterator.isMulti() ? iterator.asMulti()->values : std::vector<Variable>(iterator.isNil() ? 0 : 1, iterator);
    else
        throwError("generic for loops expect an array iterator", lastTokenText());
    return loop;
}

/// A call of `string.byte` may stand as an iterator by itself: its results are the entries, however many there are.
bool OstrelScript::isByteCall(const LinePlan& plan, const Variable& result) {
    const FastExpression& expression = plan.iteratorExpression;
    const bool fits = result.isMulti() || result.isNil() || result.type == VarType::Integer;
    if (!fits || !expression.isValid()) return false;
    const FastNode& call = expression.node(expression.root);
    if (call.kind != FastKind::Call) return false;
    const FastNode& callee = expression.node(call.left);
    const auto variable = [this](const FastNode& node) -> const Variable* {
        return node.kind == FastKind::Variable ? resolveExplicitScopeVariable(node.name, node.explicitScope) : nullptr;
    };
    const Variable* function = variable(callee);
    if (callee.kind == FastKind::Index && expression.node(callee.right).kind == FastKind::String) {
        const Variable* table = variable(expression.node(callee.left));
        const auto text = static_cast<std::size_t>(expression.node(callee.right).intValue);
        function = table != nullptr && table->isTable() ? findElement(*table, expression.strings[text]) : nullptr;
    }
    return function != nullptr && function->isFunction() && function->asFunction()->builtinId == BuiltinId::StringByte;
}

void OstrelScript::readContainerWalk(const Variable& container, BuiltinId iterator, GenericLoop& loop) {
    const bool isPairs = iterator == BuiltinId::Pairs;
    if (!container.isArray() && !container.isTable())
        throw std::runtime_error(isPairs ? "pairs(container) expects an array or table"
                                         : "ipairs(container) expects an array or table");
    loop.isPairs = true;
    if (container.isArray()) {
        for (const Variable& element : *container.asArray()) {
            if (!isPairs && element.isNil()) break;
            loop.keys.emplace_back(static_cast<int>(loop.keys.size()) + 1);
            loop.entries.push_back(element);
        }
        return;
    }
    Table& table = *container.asTable();
    if (isPairs) {
        loop.keys = table.sortedKeyValues();
        for (const std::string& key : table.sortedKeys()) loop.entries.push_back(*table.find(std::string_view(key)));
        return;
    }
    for (int index = 1;; ++index) {
        const Variable* element = table.find(index);
        if (element == nullptr || element->isNil()) break;
        loop.keys.emplace_back(index);
        loop.entries.push_back(*element);
    }
}

/// Gives the loop's names their values of one round: key and value, or the parts of the entry.
void OstrelScript::assignLoopNames(const std::vector<Binding*>& names, const GenericLoop& loop, std::size_t round) {
    const Variable& entry = loop.entries[round];
    const Elements* parts = !loop.isPairs && entry.isArray() ? entry.asArray().get() : nullptr;
    for (std::size_t i = 0; i < names.size(); ++i) {
        Variable& target = names[i]->value;
        if (loop.isPairs)
            target = i == 0 ? loop.keys[round] : (i == 1 ? entry : Variable());
        else if (parts != nullptr)
            target = i < parts->size() ? (*parts)[i] : Variable();
        else
            target = i == 0 ? entry : Variable();
    }
}

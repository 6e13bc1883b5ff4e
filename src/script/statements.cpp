// Statements that are no blocks: conditions, assignments, call statements, `return`. All walkers use these.

#include "script/ostrel_script.h"

namespace {

/// A single value where several came: the first, or nil.
Variable firstOf(Variable value) {
    if (!value.isMulti()) return value;
    const std::vector<Variable>& values = value.asMulti()->values;
    return values.empty() ? Variable() : values.front();
}

constexpr const char* trailingToken = "Unexpected trailing token";

} // namespace

// ---------------------------------------------------------------------------------------------------------------------
// Expressions of a line
// ---------------------------------------------------------------------------------------------------------------------

/// Evaluates the tokens of a range; whatever is left of it is the fault `leftOver`.
Variable OstrelScript::evaluateRange(const ParsedScriptLine& line, const TokenRange& range,
                                     const FastExpression& expression, const char* leftOver) {
    if (expression.isValid()) {
        Variable value = evaluateFastExpression(expression);
        position_.token = range.second - 1; // read to its end, as the tokens would have been
        return value;
    }
    std::size_t position = range.first;
    Variable value = evaluateExpression(line.tokens, position, &line.tokenAnalysis);
    if (!shouldAbortForSoftRaisedError() && position < range.second) throwError(leftOver, line.tokens[position]);
    return value;
}

bool OstrelScript::evaluateCondition(const ParsedScriptLine& line, const char* name) {
    const FastExpression& expression = line.plan->expression;
    if (expression.isValid()) {
        Variable boxed;
        const FastScalarValue scalar = evaluateFastDual(expression, boxed);
        return scalar.isValid() ? fastScalarIsTruthy(scalar) : isTruthy(boxed);
    }
    if (line.kind == LineKind::Until && line.tokens.size() == 1) throwError("Missing until condition", line.tokens[0]);
    const std::string leftOver = std::string("Unexpected token after ") + name + " condition";
    return isTruthy(evaluateRange(line, {1, line.tokens.size()}, expression, leftOver.c_str()));
}

void OstrelScript::executeExpressionStatement(const ParsedScriptLine& line) {
    const FastExpression& expression = line.plan->expression;
    if (expression.isValid()) {
        Variable unwanted;
        evaluateFastDual(expression, unwanted);
    } else {
        evaluateRange(line, {0, line.tokens.size()}, expression, trailingToken);
    }
}

void OstrelScript::evaluateReturn(const ParsedScriptLine& line, Variable& result) {
    const LinePlan& plan = *line.plan;
    constexpr const char* leftOver = "Unexpected token after return value";
    if (plan.valueRanges.empty()) {
        result.setNil();
        return;
    }
    if (plan.valueRanges.size() == 1) {
        if (plan.values[0].isValid()) {
            const FastScalarValue scalar = evaluateFastDual(plan.values[0], result);
            if (scalar.isValid()) assignFastScalarToVariable(result, scalar);
        } else {
            result = evaluateRange(line, plan.valueRanges[0], plan.values[0], leftOver);
        }
        return;
    }
    std::vector<Variable> values;
    values.reserve(plan.valueRanges.size());
    for (std::size_t i = 0; i < plan.valueRanges.size(); ++i) {
        Variable value = evaluateRange(line, plan.valueRanges[i], plan.values[i], leftOver);
        if (shouldAbortForSoftRaisedError()) return;
        if (value.isMulti() && i + 1 == plan.valueRanges.size())
            values.insert(values.end(), value.asMulti()->values.begin(), value.asMulti()->values.end());
        else
            values.push_back(std::move(value));
    }
    result = makeMulti(std::move(values));
}

// ---------------------------------------------------------------------------------------------------------------------
// Assignment
// ---------------------------------------------------------------------------------------------------------------------

void OstrelScript::executeStatement(const ParsedScriptLine& line) {
    const LinePlan& plan = *line.plan;
    if (!plan.isAssignment && !plan.isDeclaration)
        executeExpressionStatement(line);
    else if (plan.isDeclaration)
        for (const ParsedAssignmentTarget& target : plan.targets)
            assignToken(target.name, Variable(), plan.scopeTarget);
    else if (plan.compoundOperator != BinaryOperator::None)
        assignCompound(line);
    else if (plan.targets.size() == 1 && plan.valueRanges.size() == 1)
        assignSingle(line);
    else
        assignList(line);
}

Variable OstrelScript::evaluateValue(const ParsedScriptLine& line, std::size_t index) {
    const LinePlan& plan = *line.plan;
    return evaluateRange(line, plan.valueRanges[index], plan.values[index], trailingToken);
}

void OstrelScript::assignSingle(const ParsedScriptLine& line) {
    const LinePlan& plan = *line.plan;
    Variable result;
    const ParsedAssignmentTarget& target = plan.targets[0];
    const FastExpression& expression = plan.values[0];
    const bool simple = target.indexRanges.empty();
    if (simple && expression.isValid()) {
        const FastScalarValue scalar = evaluateFastDual(expression, result);
        if (shouldAbortForSoftRaisedError()) return;
        // A number goes straight into the variable it replaces.
        if (scalar.isValid() && plan.scopeTarget == ScopeTarget::None) {
            if (Variable* existing = resolveToken(target.name)) {
                assignFastScalarToVariable(*existing, scalar);
                return;
            }
        }
        if (scalar.isValid()) assignFastScalarToVariable(result, scalar);
    } else {
        result = evaluateValue(line, 0);
        if (shouldAbortForSoftRaisedError()) return;
    }
    if (result.isMulti()) result = firstOf(std::move(result));
    assignTarget(line, target, std::move(result));
}

void OstrelScript::assignList(const ParsedScriptLine& line) {
    const LinePlan& plan = *line.plan;
    std::vector<Variable> values;
    for (std::size_t i = 0; i < plan.valueRanges.size(); ++i) {
        Variable value = evaluateValue(line, i);
        if (shouldAbortForSoftRaisedError()) return;
        const bool isLast = i + 1 == plan.valueRanges.size();
        if (value.isMulti() && isLast)
            values.insert(values.end(), value.asMulti()->values.begin(), value.asMulti()->values.end());
        else
            values.push_back(firstOf(std::move(value)));
    }
    for (std::size_t i = 0; i < plan.targets.size(); ++i) {
        assignTarget(line, plan.targets[i], i < values.size() ? std::move(values[i]) : Variable());
        if (shouldAbortForSoftRaisedError()) return;
    }
}

void OstrelScript::assignCompound(const ParsedScriptLine& line) {
    const LinePlan& plan = *line.plan;
    const ParsedAssignmentTarget& target = plan.targets[0];
    const std::string& name = line.tokens[target.nameToken];

    Variable right;
    for (std::size_t i = 0; i < plan.valueRanges.size(); ++i) {
        Variable value = evaluateValue(line, i);
        if (shouldAbortForSoftRaisedError()) return;
        if (i == 0) right = firstOf(std::move(value));
    }
    const std::vector<Variable> keys = evaluateKeys(line, target);
    if (shouldAbortForSoftRaisedError()) return;
    Variable* place = resolveToken(target.name);
    if (place == nullptr) throwError("Variable not found: " + name, name);

    if (keys.empty()) {
        applyInPlace(*place, plan.compoundOperator, right);
        return;
    }
    for (std::size_t i = 0; i + 1 < keys.size(); ++i) place = getIndexedValueMutable(*place, keys[i], false);
    const Variable result = performOperation(getIndexedValue(*place, keys.back()), plan.compoundOperator, right);
    setIndexedValue(*place, keys.back(), result, false);
}

/// `target op= right` without a copy of the target where that is possible.
void OstrelScript::applyInPlace(Variable& target, BinaryOperator binaryOperator, const Variable& right) {
    if (binaryOperator == BinaryOperator::Add && target.isString()) {
        const Variable suffix = right.toString(); // made first: a text that is too large leaves the target alone
        suffix.appendTo(target.editString());
    } else {
        target = performOperation(target, binaryOperator, right);
    }
}

std::vector<Variable> OstrelScript::evaluateKeys(const ParsedScriptLine& line, const ParsedAssignmentTarget& target) {
    std::vector<Variable> keys;
    keys.reserve(target.indexRanges.size());
    for (std::size_t i = 0; i < target.indexRanges.size(); ++i) {
        keys.push_back(
            evaluateRange(line, target.indexRanges[i], target.indexExpressions[i], "Expected closing bracket"));
        if (shouldAbortForSoftRaisedError()) break;
    }
    return keys;
}

void OstrelScript::assignTarget(const ParsedScriptLine& line, const ParsedAssignmentTarget& target, Variable value) {
    const ScopeTarget scope = line.plan->scopeTarget;
    if (target.indexRanges.empty()) {
        assignToken(target.name, std::move(value), scope);
        return;
    }
    if (target.indexRanges.size() == 1 && target.indexExpressions[0].isValid()) {
        assignElement(target, std::move(value), scope);
        return;
    }
    const std::vector<Variable> keys = evaluateKeys(line, target);
    if (!shouldAbortForSoftRaisedError()) assignIndexed(target.name, keys, value, scope);
}

/// `name[key] = value`: an element that is there, or the next one of an array, is stored where it belongs; all else
/// goes the general way.
void OstrelScript::assignElement(const ParsedAssignmentTarget& target, Variable value, ScopeTarget scope) {
    Variable key;
    const FastScalarValue scalar = evaluateFastDual(target.indexExpressions[0], key);
    if (shouldAbortForSoftRaisedError()) return;
    position_.token = target.indexRanges[0].second - 1;
    if (Variable* container = resolveToken(target.name)) {
        if (scalar.kind == ScalarKind::Integer && container->isArray()) {
            Elements& elements = *container->asArray();
            const auto index = static_cast<std::size_t>(static_cast<unsigned>(scalar.intValue)) - 1;
            if (index < elements.size()) {
                elements[index] = std::move(value);
                return;
            }
        } else if (!scalar.isValid() && key.isString() && container->isTable()) {
            container->asTable()->findOrAdd(key.asString()) = std::move(value);
            return;
        }
    }
    if (scalar.isValid()) assignFastScalarToVariable(key, scalar);
    assignIndexed(target.name, {std::move(key)}, value, scope);
}

/// Walks to the last container, making those that are missing: an array where the next key can be kept in one, else a
/// table.
void OstrelScript::assignIndexed(const TokenAnalysis& name, const std::vector<Variable>& keys, const Variable& value,
                                 ScopeTarget scope) {
    const auto containerFor = [](const Variable& key) {
        return prefersArrayStorage(key) ? makeArray({}) : makeTable();
    };
    Variable* place = resolveToken(name);
    Variable made; // another hold on a container that is made here; the variable itself may be hidden by its scope
    if (place == nullptr || place->isNil()) {
        keyToString(keys[0]); // a key that no container takes leaves no empty container behind
        made = containerFor(keys[0]);
        assignToken(name, made, scope);
        place = &made;
    }
    for (std::size_t i = 0; i + 1 < keys.size(); ++i) {
        place = getIndexedValueMutable(*place, keys[i], true);
        if (place->isNil()) *place = containerFor(keys[i + 1]);
    }
    setIndexedValue(*place, keys.back(), value, true);
}

// Statements that are no blocks: conditions, assignments, call statements, `return`. All walkers use these.

#include "script/numeric_operation.h"
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
    switch (plan.form) {
    case StatementForm::Call: {
        Variable unwanted;
        evaluateFastDual(plan.expression, unwanted);
        return;
    }
    case StatementForm::AssignName: assignName(plan); return;
    case StatementForm::AssignElement: assignElement(plan); return;
    case StatementForm::CompoundName: assignCompoundName(line); return;
    case StatementForm::General: break;
    }
    if (!plan.isAssignment && !plan.isDeclaration)
        executeExpressionStatement(line);
    else if (plan.isDeclaration)
        for (const ParsedAssignmentTarget& target : plan.targets)
            assignToken(target.name, Variable(), plan.scopeTarget);
    else if (plan.compoundOperator != BinaryOperator::None)
        assignCompound(line);
    else
        assignList(line);
}

void OstrelScript::assignName(const LinePlan& plan) {
    Variable result;
    const FastScalarValue scalar = evaluateFastDual(plan.values[0], result);
    if (shouldAbortForSoftRaisedError()) return;
    Name* const name = plan.targets[0].name.name;
    Variable* place = plan.scopeTarget == ScopeTarget::Local ? &localPlace(name) : resolveVariablePtr(name);
    if (place == nullptr) place = &globalPlace(name);
    // A number goes straight into the variable it replaces.
    if (scalar.isValid())
        assignFastScalarToVariable(*place, scalar);
    else
        *place = result.isMulti() ? firstOf(std::move(result)) : std::move(result);
}

void OstrelScript::assignCompoundName(const ParsedScriptLine& line) {
    const LinePlan& plan = *line.plan;
    const ParsedAssignmentTarget& target = plan.targets[0];
    Variable right;
    const FastScalarValue scalar = evaluateFastDual(plan.values[0], right);
    if (shouldAbortForSoftRaisedError()) return;
    position_.token = plan.valueRanges[0].second - 1;
    Variable* const place = resolveToken(target.name);
    if (place == nullptr) failUnknownVariable(line);
    const bool isArithmetic =
        plan.compoundOperator >= BinaryOperator::Add && plan.compoundOperator <= BinaryOperator::Power;
    if (isArithmetic && scalar.kind > ScalarKind::Nil && place->isNumeric()) {
        assignFastScalarToVariable(*place,
                                   numericOperation(plan.compoundOperator, fastScalarFromVariable(*place), scalar));
        return;
    }
    if (scalar.isValid()) assignFastScalarToVariable(right, scalar);
    applyInPlace(*place, plan.compoundOperator, right.isMulti() ? firstOf(std::move(right)) : right);
}

void OstrelScript::failUnknownVariable(const ParsedScriptLine& line) {
    const std::string& name = line.tokens[line.plan->targets[0].nameToken];
    throwError("Variable not found: " + name, name);
}

Variable OstrelScript::evaluateValue(const ParsedScriptLine& line, std::size_t index) {
    const LinePlan& plan = *line.plan;
    return evaluateRange(line, plan.valueRanges[index], plan.values[index], trailingToken);
}

void OstrelScript::assignList(const ParsedScriptLine& line) {
    const LinePlan& plan = *line.plan;
    if (plan.valueRanges.size() == 1) {
        const Variable value = evaluateValue(line, 0);
        if (!shouldAbortForSoftRaisedError()) assignResults(line, value);
        return;
    }
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

/// The results of one call to several targets: what a multi value holds, or one value and nil for the others.
void OstrelScript::assignResults(const ParsedScriptLine& line, const Variable& value) {
    const LinePlan& plan = *line.plan;
    const Ref<MultiResult> several = value.isMulti() ? value.asMulti() : nullptr;
    for (std::size_t i = 0; i < plan.targets.size(); ++i) {
        if (!several)
            assignTarget(line, plan.targets[i], i == 0 ? value : Variable());
        else
            assignTarget(line, plan.targets[i], i < several->values.size() ? several->values[i] : Variable());
        if (shouldAbortForSoftRaisedError()) return;
    }
}

void OstrelScript::assignCompound(const ParsedScriptLine& line) {
    const LinePlan& plan = *line.plan;
    const ParsedAssignmentTarget& target = plan.targets[0];

    Variable right;
    for (std::size_t i = 0; i < plan.valueRanges.size(); ++i) {
        Variable value = evaluateValue(line, i);
        if (shouldAbortForSoftRaisedError()) return;
        if (i == 0) right = firstOf(std::move(value));
    }
    const std::vector<Variable> keys = evaluateKeys(line, target);
    if (shouldAbortForSoftRaisedError()) return;
    Variable* place = resolveToken(target.name);
    if (place == nullptr) failUnknownVariable(line);

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
    if (binaryOperator == BinaryOperator::Add && target.isString() && right.isString()) {
        right.appendTo(target.editString());
    } else if (binaryOperator == BinaryOperator::Add && target.isString()) {
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
    const std::vector<Variable> keys = evaluateKeys(line, target);
    if (!shouldAbortForSoftRaisedError()) assignIndexed(target.name, keys, value, scope);
}

/// `name[key] = value`: an element that is there, or a key of a table, is stored where it belongs; all else goes the
/// general way.
void OstrelScript::assignElement(const LinePlan& plan) {
    Variable boxed;
    FastScalarValue value = evaluateFastDual(plan.values[0], boxed);
    if (shouldAbortForSoftRaisedError()) return;
    if (boxed.isMulti()) {
        boxed = firstOf(std::move(boxed));
        value = {};
    }
    const ParsedAssignmentTarget& target = plan.targets[0];
    Variable key;
    const FastScalarValue scalar = evaluateFastDual(target.indexExpressions[0], key);
    if (shouldAbortForSoftRaisedError()) return;
    position_.token = target.indexRanges[0].second - 1;
    if (const Variable* container = resolveToken(target.name)) {
        Variable* place = nullptr;
        if (scalar.kind == ScalarKind::Integer && container->isArray()) {
            Elements& elements = container->elements();
            const std::size_t offset = static_cast<std::size_t>(static_cast<unsigned>(scalar.intValue)) - 1;
            if (offset < elements.size()) place = &elements[offset];
        } else if (!scalar.isValid() && key.isString() && container->isTable()) {
            place = &container->table().findOrAdd(key.sharedText());
        }
        if (place != nullptr) {
            if (value.isValid())
                assignFastScalarToVariable(*place, value);
            else
                *place = std::move(boxed);
            return;
        }
    }
    if (scalar.isValid()) assignFastScalarToVariable(key, scalar);
    if (value.isValid()) assignFastScalarToVariable(boxed, value);
    assignIndexed(target.name, {std::move(key)}, boxed, plan.scopeTarget);
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

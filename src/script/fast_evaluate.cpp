// Evaluating nodes.
//
// Every node gives its result in one of two ways. A number, boolean or nil that was made from nothing but such values
// comes back as a scalar, in two words; all else comes back as a Variable, and so does everything that is computed from
// one. An operand that merely names a variable or an element is not copied but borrowed, unless something that is
// evaluated after it could call a function and change what it points to.
//
// Each operation stands here twice: a short form for numbers in variables, literals and elements, which is what frame
// loops consist of, and behind it the general form. The short form declines before it has done anything that could be
// seen, so the general form may start from the beginning; it is the definition.

#include "script/fast_arithmetic.h"
#include "script/literal_entries.h"
#include "script/ostrel_script.h"
#include "script/scope_guard.h"

#include <array>

class FastEvaluator {
public:
    FastEvaluator(OstrelScript& engine, const FastExpression& expression)
        : engine_(engine), expression_(expression), nodes_(expression.nodes.data()) {}

    /// The node's result: a valid scalar, or else `boxed` holds it.
    FastScalarValue evaluate(FastNodeIndex index, Variable& boxed) {
        const FastNode& node = at(index);
        switch (node.kind) {
        case FastKind::Integer: return makeFastScalarInt(node.intValue);
        case FastKind::Float: return makeFastScalarFloat(node.floatValue);
        case FastKind::Boolean: return makeFastScalarBool(node.intValue != 0);
        case FastKind::Nil:
        case FastKind::None: return makeFastScalarNil();
        case FastKind::String: boxed = stringLiteral(node); return {};
        case FastKind::Variable: return copyOf(resolve(node), boxed);
        case FastKind::Index:
            if (node.isPlace) {
                if (const Variable* element = elementPlace(node)) {
                    setToken(node);
                    return copyOf(element, boxed);
                }
            }
            return evaluateIndex(node, boxed);
        case FastKind::Call: return evaluateCall(node, boxed);
        case FastKind::Negate: return evaluateNegation(node, boxed);
        case FastKind::LogicalNot: return evaluateNot(node, boxed);
        case FastKind::Length: return evaluateLength(node, boxed);
        case FastKind::And:
        case FastKind::Or: return evaluateShortCircuit(node, boxed);
        case FastKind::ArrayLiteral: return evaluateArrayLiteral(node, boxed);
        case FastKind::TableLiteral: return evaluateTableLiteral(node, boxed);
        case FastKind::Varargs: boxed = engine_.currentVarargs(); return madeValue();
        default: return evaluateBinary(node, boxed);
        }
    }

private:
    /// The result of what made a Variable, such as a join: what is looked up with it is no scalar either. A Variable
    /// that merely stands in a name, an element or a literal has no such mark, and a call needs none.
    static FastScalarValue madeValue() {
        FastScalarValue none;
        none.boolValue = true;
        return none;
    }
    bool isMade(FastNodeIndex index, const FastOperand& operand) const {
        return !operand.scalar.isValid() && (operand.scalar.boolValue || at(index).kind == FastKind::Call);
    }

    const FastNode& at(FastNodeIndex index) const { return nodes_[index]; }
    bool aborted(const FastNode& node) const { return node.calls && engine_.shouldAbortForSoftRaisedError(); }
    const Variable& stringLiteral(const FastNode& node) const {
        return expression_.strings[static_cast<std::size_t>(node.intValue)];
    }

    const Variable* resolve(const FastNode& node) const {
        if (node.explicitScope == ExplicitScope::None) return engine_.resolveVariablePtr(node.name);
        return engine_.resolveExplicitScopeVariable(node.name, node.explicitScope);
    }

    static FastScalarValue copyOf(const Variable* variable, Variable& boxed) {
        if (variable == nullptr) return makeFastScalarNil();
        const FastScalarValue scalar = fastScalarFromVariable(*variable);
        if (!scalar.isValid()) boxed = *variable;
        return scalar;
    }

    static FastOperand borrowed(const Variable* variable) {
        if (variable == nullptr) return {makeFastScalarNil(), nullptr};
        return {fastScalarFromVariable(*variable), variable};
    }

    /// Reads an operand. With `stable`, nothing is called between here and the operand's use.
    FastOperand read(FastNodeIndex index, Variable& storage, bool stable) {
        const FastNode& node = at(index);
        if (node.kind == FastKind::String) return {{}, &stringLiteral(node)};
        if (stable && node.kind == FastKind::Variable) return borrowed(resolve(node));
        if (stable && node.kind == FastKind::Index && !node.calls) {
            if (node.isPlace) {
                if (const Variable* element = elementPlace(node)) {
                    setToken(node);
                    return borrowed(element);
                }
            }
            const FastOperand container = read(node.left, storage, true);
            if (!container.scalar.isValid() && (container.boxed->isArray() || container.boxed->isTable())) {
                Variable keyStorage;
                const FastOperand key = read(node.right, keyStorage, true);
                setToken(node);
                const Variable* element = findElement(*container.boxed, key);
                if (!isMade(node.left, container) && !isMade(node.right, key)) return borrowed(element);
                return {madeValue(), element == nullptr ? &nil_ : element};
            }
        }
        const FastScalarValue scalar = evaluate(index, storage);
        return {scalar, &storage};
    }

    void setToken(const FastNode& node) { engine_.position_.token = node.tokenIndex; }

    /// The element that an Index node with the mark of a place stands for: the nil of a missing one, or null if the
    /// general form must say what is the matter. Calls nothing and changes nothing.
    const Variable* elementPlace(const FastNode& node) const {
        const FastNode& containerNode = at(node.left);
        const Variable* const container =
            containerNode.kind == FastKind::Variable ? resolve(containerNode) : elementPlace(containerNode);
        if (container == nullptr) return nullptr;
        const FastNode& key = at(node.right);
        if (container->isArray()) {
            const int index = key.kind == FastKind::Integer ? key.intValue : plainIndex(key);
            const Elements& elements = container->elements();
            const std::size_t offset = static_cast<std::size_t>(static_cast<unsigned>(index)) - 1;
            return offset < elements.size() ? &elements[offset] : nullptr;
        }
        if (!container->isTable()) return nullptr;
        if (key.kind == FastKind::String) {
            const Variable* const element = container->table().find(stringLiteral(key).text(), node.hint);
            return element == nullptr ? &nil_ : element;
        }
        const Variable* const value = key.kind == FastKind::Variable ? resolve(key) : nullptr;
        if (value == nullptr || !value->isString()) return nullptr;
        const Variable* const element = container->table().find(value->text());
        return element == nullptr ? &nil_ : element;
    }

    /// The integer in a variable; 0 if there is none, which is no index.
    int plainIndex(const FastNode& key) const {
        if (key.kind != FastKind::Variable) return 0;
        const Variable* const value = resolve(key);
        return value != nullptr && value->type == VarType::Integer ? value->asInt() : 0;
    }

    const Variable* findElement(const Variable& container, const FastOperand& key) {
        if (key.scalar.kind == ScalarKind::Integer) {
            const int index = key.scalar.intValue;
            if (container.isTable()) return container.table().find(index);
            Elements& elements = container.elements();
            if (index < 1 || static_cast<std::size_t>(index) > elements.size()) return nullptr;
            return &elements[static_cast<std::size_t>(index) - 1];
        }
        if (!key.scalar.isValid()) return engine_.findElement(container, *key.boxed);
        return engine_.findElement(container, fastScalarToVariable(key.scalar));
    }

    FastScalarValue evaluateIndex(const FastNode& node, Variable& boxed) {
        const bool keyCalls = at(node.right).calls;
        Variable containerStorage;
        const FastOperand container = read(node.left, containerStorage, !keyCalls);
        if (aborted(node)) return makeFastScalarNil();
        Variable keyStorage;
        const FastOperand key = read(node.right, keyStorage, true);
        if (aborted(node)) return makeFastScalarNil();
        setToken(node);
        if (!container.scalar.isValid() && (container.boxed->isArray() || container.boxed->isTable())) {
            const Variable* element = findElement(*container.boxed, key);
            if (!isMade(node.left, container) && !isMade(node.right, key)) return copyOf(element, boxed);
            boxed = element == nullptr ? Variable() : Variable(*element);
            return madeValue();
        }
        Variable boxedKey;
        const Variable& keyValue = key.value(boxedKey);
        boxed = engine_.getIndexedValue(container.value(containerStorage), keyValue);
        return madeValue();
    }

    static bool isCallable(const Variable& value) { return value.isFunction() && value.callable() != nullptr; }

    FastScalarValue evaluateCall(const FastNode& node, Variable& boxed) {
        // Held, not borrowed: the function may replace its own variable while its arguments are made or while it runs.
        Ref<ScriptCallable> function;
        const FastNode& calleeNode = at(node.left);
        if (const Variable* named = calleeNode.kind == FastKind::Variable ? resolve(calleeNode) : nullptr;
            named != nullptr && isCallable(*named)) {
            function = named->asFunction();
        } else {
            Variable storage;
            const FastOperand callee = read(node.left, storage, true);
            if (aborted(calleeNode)) return makeFastScalarNil();
            if (callee.scalar.isValid() || !isCallable(*callee.boxed)) return failCall(node, callee);
            function = callee.boxed->asFunction();
        }
        const auto count = static_cast<std::size_t>(node.intValue);
        return function->hasFixedParameters() ? callBound(node, *function, count, boxed)
                                              : callUnbound(node, *function, count, boxed);
    }

    /// Evaluates the arguments on the stack. Apart from the other road, which needs none of these places.
    [[gnu::noinline]] FastScalarValue callUnbound(const FastNode& node, ScriptCallable& function, std::size_t count,
                                                  Variable& boxed) {
        switch (count) {
        case 0: return callWith(node, function, nullptr, 0, boxed);
        case 1: {
            Variable argument;
            return callWith(node, function, &argument, 1, boxed);
        }
        case 2: {
            std::array<Variable, 2> arguments;
            return callWith(node, function, arguments.data(), count, boxed);
        }
        case 3:
        case 4: {
            std::array<Variable, 4> arguments;
            return callWith(node, function, arguments.data(), count, boxed);
        }
        default: {
            std::vector<Variable> arguments(count);
            return callWith(node, function, arguments.data(), count, boxed);
        }
        }
    }

    /// Evaluates the arguments where the callee's frame will have them. No name leads to them before all are there.
    FastScalarValue callBound(const FastNode& node, const ScriptCallable& function, std::size_t count,
                              Variable& boxed) {
        const std::size_t parameters = function.parameters.size();
        const BindingsGuard bindings(engine_.bindings_);
        const std::size_t base = bindings.size();
        for (std::size_t i = 0; i < count; ++i) {
            const FastNodeIndex argument = argumentOf(node, i);
            if (i < parameters) {
                evaluateInto(engine_.bindings_.pushUnnamed().value, argument);
            } else {
                Variable unwanted;
                evaluate(argument, unwanted);
            }
            if (aborted(at(argument))) return makeFastScalarNil();
        }
        for (std::size_t i = count; i < parameters; ++i) engine_.bindings_.pushUnnamed();
        setToken(node);
        return engine_.callBound(function, base, boxed);
    }

    /// Evaluates the arguments into their places and calls.
    FastScalarValue callWith(const FastNode& node, ScriptCallable& function, Variable* arguments, std::size_t count,
                             Variable& boxed) {
        if (!evaluateArguments(node, arguments, count)) return makeFastScalarNil();
        setToken(node);
        return engine_.callFunction(function, arguments, count, boxed);
    }

    /// False if a soft error came up on the way.
    bool evaluateArguments(const FastNode& node, Variable* arguments, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) {
            const FastNodeIndex argument = argumentOf(node, i);
            const FastScalarValue scalar = evaluate(argument, arguments[i]);
            if (scalar.isValid()) assignFastScalarToVariable(arguments[i], scalar);
            if (aborted(at(argument))) return false;
        }
        return true;
    }

    /// What is called is no function. Its arguments are evaluated all the same, then the call fails.
    FastScalarValue failCall(const FastNode& node, const FastOperand& callee) {
        Variable storage;
        const Variable value = callee.value(storage);
        std::vector<Variable> arguments(static_cast<std::size_t>(node.intValue));
        if (!evaluateArguments(node, arguments.data(), arguments.size())) return makeFastScalarNil();
        setToken(node);
        Variable unreached;
        return engine_.callDual(value, arguments.data(), arguments.size(), unreached);
    }

    FastNodeIndex argumentOf(const FastNode& node, std::size_t place) const {
        return expression_.arguments[static_cast<std::size_t>(node.right) + place];
    }

    void evaluateInto(Variable& place, FastNodeIndex index) {
        const FastScalarValue scalar = evaluate(index, place);
        if (scalar.isValid()) assignFastScalarToVariable(place, scalar);
    }

    FastScalarValue evaluateArrayLiteral(const FastNode& node, Variable& boxed) {
        const auto count = static_cast<std::size_t>(node.intValue);
        Elements elements(count);
        for (std::size_t i = 0; i < count; ++i) {
            evaluateInto(elements[i], argumentOf(node, i));
            if (aborted(node)) return makeFastScalarNil();
        }
        boxed = makeArray(std::move(elements));
        return madeValue();
    }

    FastScalarValue evaluateTableLiteral(const FastNode& node, Variable& boxed) {
        if (node.intValue == 0) {
            boxed = makeTable();
            return madeValue();
        }
        LiteralEntries entries;
        for (std::size_t i = 0; i < static_cast<std::size_t>(node.intValue); i += 2) {
            const FastNodeIndex keyIndex = argumentOf(node, i);
            Ref<ScriptText> key;
            if (keyIndex != noFastNode) {
                key = evaluateEntryKey(at(keyIndex));
                if (aborted(node)) return makeFastScalarNil();
            }
            Variable value;
            evaluateInto(value, argumentOf(node, i + 1));
            if (aborted(node)) return makeFastScalarNil();
            if (key)
                entries.add(key, std::move(value));
            else
                entries.add(std::move(value));
        }
        boxed = entries.take();
        return madeValue();
    }

    /// The key's text; null if a soft error came up.
    Ref<ScriptText> evaluateEntryKey(const FastNode& node) {
        if (node.kind == FastKind::String) return stringLiteral(node).sharedText();
        Variable key;
        evaluateInto(key, node.left);
        if (aborted(node)) return nullptr;
        setToken(node);
        return makeRef<ScriptText>(engine_.keyToString(key));
    }

    FastScalarValue evaluateNegation(const FastNode& node, Variable& boxed) {
        const FastScalarValue operand = evaluate(node.left, boxed);
        if (aborted(node)) return makeFastScalarNil();
        setToken(node);
        switch (operand.kind) {
        case ScalarKind::Integer:
            return makeFastScalarInt(static_cast<int>(0U - static_cast<unsigned>(operand.intValue)));
        case ScalarKind::Float: return makeFastScalarFloat(-operand.floatValue);
        case ScalarKind::Boolean: return makeFastScalarInt(operand.boolValue ? -1 : 0);
        case ScalarKind::Nil: boxed.setNil(); break;
        case ScalarKind::Invalid: break;
        }
        boxed = engine_.negate(boxed);
        return madeValue();
    }

    FastScalarValue evaluateNot(const FastNode& node, Variable& boxed) {
        const FastOperand operand = read(node.left, boxed, true);
        if (aborted(node)) return makeFastScalarNil();
        if (operand.scalar.isValid()) return makeFastScalarBool(!isTruthyInExpression(operand.scalar));
        boxed = !engine_.isTruthy(*operand.boxed);
        return madeValue();
    }

    FastScalarValue evaluateLength(const FastNode& node, Variable& boxed) {
        const FastOperand operand = read(node.left, boxed, true);
        if (aborted(node)) return makeFastScalarNil();
        setToken(node);
        Variable storage;
        const int length = engine_.arrayLength(operand.value(storage));
        if (!isMade(node.left, operand)) return makeFastScalarInt(length);
        boxed = length;
        return madeValue();
    }

    /// Inside an expression only nil and false are false, 0 is not.
    static bool isTruthyInExpression(FastScalarValue value) {
        return value.kind == ScalarKind::Boolean ? value.boolValue : value.kind != ScalarKind::Nil;
    }

    FastScalarValue evaluateShortCircuit(const FastNode& node, Variable& boxed) {
        const FastScalarValue left = evaluate(node.left, boxed);
        if (aborted(at(node.left))) return makeFastScalarNil();
        const bool truthy = left.isValid() ? isTruthyInExpression(left) : engine_.isTruthy(boxed);
        if (truthy == (node.kind == FastKind::Or)) return left.isValid() ? left : madeValue();
        const FastScalarValue right = evaluate(node.right, boxed);
        if (left.isValid() && right.isValid()) return right;
        if (right.isValid()) assignFastScalarToVariable(boxed, right);
        return madeValue();
    }

    /// The scalar of a literal, a variable or an element; Invalid for all other nodes and values.
    FastScalarValue plainScalar(const FastNode& node) const {
        const Variable* place = nullptr;
        if (node.kind == FastKind::Variable)
            place = resolve(node);
        else if (node.kind == FastKind::Integer)
            return makeFastScalarInt(node.intValue);
        else if (node.kind == FastKind::Float)
            return makeFastScalarFloat(node.floatValue);
        else if (node.isPlace)
            place = elementPlace(node);
        return place == nullptr ? FastScalarValue() : fastScalarFromVariable(*place);
    }

    FastScalarValue evaluateBinary(const FastNode& node, Variable& boxed) {
        const FastNode& leftNode = at(node.left);
        const FastNode& rightNode = at(node.right);
        bool made = false; // one side is a number in a Variable that was made, and so is the result
        FastScalarValue left = plainScalar(leftNode);
        if (!left.isValid()) {
            if (leftNode.kind < FastKind::Call || leftNode.kind == FastKind::And || leftNode.kind == FastKind::Or)
                return evaluateBinaryInFull(node, boxed);
            left = evaluate(node.left, boxed);
            if (aborted(leftNode)) return makeFastScalarNil();
            if (!left.isValid()) {
                if (!boxed.isNumeric()) return finishBinary(node, {left, &boxed}, boxed);
                left = fastScalarFromVariable(boxed);
                made = true;
            }
        }
        FastScalarValue right = plainScalar(rightNode);
        if (!right.isValid()) {
            // The left side is a number, so the right one may use the place of the result.
            const bool isOperation = rightNode.kind >= FastKind::Call;
            const FastOperand operand =
                isOperation ? FastOperand{evaluate(node.right, boxed), &boxed} : read(node.right, boxed, true);
            if (aborted(rightNode)) return makeFastScalarNil();
            right = operand.scalar;
            if (!right.isValid()) {
                if (!operand.boxed->isNumeric()) {
                    setToken(node);
                    Variable storage;
                    combineBoxed(engine_, node.kind, {left, nullptr}, operand, boxed, storage);
                    return madeValue();
                }
                right = fastScalarFromVariable(*operand.boxed);
                made = true;
            }
        }
        setToken(node);
        const FastScalarValue result = combineScalars(engine_, node.kind, left, right, boxed);
        if (!made) return result;
        assignFastScalarToVariable(boxed, result);
        return madeValue();
    }

    [[gnu::noinline]] FastScalarValue evaluateBinaryInFull(const FastNode& node, Variable& boxed) {
        const FastOperand left = read(node.left, boxed, !at(node.right).calls);
        if (aborted(at(node.left))) return makeFastScalarNil();
        return finishBinary(node, left, boxed);
    }

    [[gnu::noinline]] FastScalarValue finishBinary(const FastNode& node, const FastOperand& left, Variable& boxed) {
        Variable rightStorage;
        const FastOperand right = read(node.right, rightStorage, true);
        if (aborted(at(node.right))) return makeFastScalarNil();
        setToken(node);
        if (left.scalar.isValid() && right.scalar.isValid())
            return combineScalars(engine_, node.kind, left.scalar, right.scalar, boxed);
        combineBoxed(engine_, node.kind, left, right, boxed, rightStorage);
        return madeValue();
    }

    static inline const Variable nil_;

    OstrelScript& engine_;
    const FastExpression& expression_;
    const FastNode* const nodes_;
};

FastScalarValue OstrelScript::evaluateFastDual(const FastExpression& expression, Variable& boxed) {
    const FastScalarValue scalar = FastEvaluator(*this, expression).evaluate(expression.root, boxed);
    if (!expression.givesValue || !scalar.isValid()) [[likely]]
        return scalar;
    assignFastScalarToVariable(boxed, scalar);
    return {};
}

Variable OstrelScript::evaluateFastExpression(const FastExpression& expression) {
    Variable result;
    const FastScalarValue scalar = evaluateFastDual(expression, result);
    if (scalar.isValid()) assignFastScalarToVariable(result, scalar);
    return result;
}

// `table.sort`.
//
// The elements are sorted in a private copy and written back at the end, so a comparison that fails or raises an error
// leaves the container as it was, and one that changes the container while it is being sorted disturbs nothing: what
// is written back is what was there at the call, in order. Lists of one kind (all integers, all floats, all strings)
// are sorted as what they are, without a value around each element.

#include "script/library/functions.h"

#include "script/library/introsort.h"

#include <algorithm>

namespace {

/// The language's own order.
struct ValueOrder {
    const OstrelScript& engine;

    bool operator()(const Variable& left, const Variable& right) const {
        return engine.compareVariables(left, right) < 0;
    }
    static bool stopped() { return false; }
};

/// The order of numbers among themselves.
struct PlainOrder {
    template <typename Element> bool operator()(const Element& left, const Element& right) const {
        return left < right;
    }
    static bool stopped() { return false; }
};

struct TextOrder {
    bool operator()(const Variable& left, const Variable& right) const { return left.text().text < right.text().text; }
    static bool stopped() { return false; }
};

/// A script's comparison. Once it has raised an error that waits for a protected call, it isn't called any more.
class CallbackOrder {
public:
    CallbackOrder(OstrelScript& engine, const Variable& callable) : engine_(engine), callable_(callable) {}

    bool operator()(const Variable& left, const Variable& right) {
        if (stopped_) return false;
        const Variable arguments[] = {left, right};
        const Variable result = engine_.invokeCallableFast(callable_, arguments, 2);
        stopped_ = engine_.shouldAbortForSoftRaisedError();
        return !stopped_ && engine_.isTruthy(result);
    }
    bool stopped() const { return stopped_; }

private:
    OstrelScript& engine_;
    const Variable& callable_;
    bool stopped_ = false;
};

bool allOfType(const Elements& elements, VarType type) {
    return std::all_of(elements.begin(), elements.end(),
                       [type](const Variable& element) { return element.type == type; });
}

/// Sorts elements that are all of one type; `read` gives an element's alternative.
template <typename Plain, typename Read> void sortPlain(Elements& elements, const Read& read) {
    std::vector<Plain> plain;
    plain.reserve(elements.size());
    for (Variable& element : elements) plain.push_back(read(element));
    PlainOrder order;
    introsort(plain, order);
    for (std::size_t i = 0; i < plain.size(); ++i) elements[i] = Variable(std::move(plain[i]));
}

void sortByValue(const OstrelScript& engine, Elements& elements) {
    if (allOfType(elements, VarType::Integer)) {
        return sortPlain<int>(elements, [](const Variable& element) { return element.asInt(); });
    }
    if (allOfType(elements, VarType::Float)) {
        return sortPlain<float>(elements, [](const Variable& element) { return element.asFloat(); });
    }
    if (allOfType(elements, VarType::String)) {
        TextOrder order;
        return introsort(elements, order);
    }
    ValueOrder order{engine};
    introsort(elements, order);
}

/// Sorts; false if the script's comparison raised an error and the result is to be thrown away.
bool sortElements(OstrelScript& engine, Elements& elements, const Variable& comparison) {
    if (comparison.isNil()) {
        sortByValue(engine, elements);
        return true;
    }
    CallbackOrder order(engine, comparison);
    introsort(elements, order);
    return !order.stopped();
}

} // namespace

Variable sortFunction(OstrelScript& engine, const Variable* arguments, std::size_t count) {
    if (count < 1 || count > 2 || !(arguments[0].isArray() || arguments[0].isTable()))
        fail("table['sort'](table[, comp]) requires an array or table");
    const Variable comparison = count == 2 ? arguments[1] : Variable();
    if (arguments[0].isArray()) {
        const Ref<Elements> array = arguments[0].asArray();
        if (array->size() < 2) return {};
        Elements elements = *array;
        if (sortElements(engine, elements, comparison)) array->swap(elements);
        return {};
    }
    const Ref<Table> table = arguments[0].asTable();
    const auto length = static_cast<int>(table->numericLength());
    if (length < 2) return {};
    Elements elements;
    elements.reserve(static_cast<std::size_t>(length));
    for (int key = 1; key <= length; ++key) elements.push_back(*table->find(key));
    if (!sortElements(engine, elements, comparison)) return {};
    for (int key = 1; key <= length; ++key) table->set(key, std::move(elements[static_cast<std::size_t>(key) - 1]));
    return {};
}

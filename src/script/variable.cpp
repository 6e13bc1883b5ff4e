#include "script/variable.h"

#include "script/callable.h"
#include "script/native_stack.h"
#include "script/result_size.h"
#include "script/table.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <limits>
#include <new>
#include <stdexcept>
#include <unordered_set>

// ---------------------------------------------------------------------------------------------------------------------
// Values that own something
// ---------------------------------------------------------------------------------------------------------------------

template <> void Ref<Table>::destroy(SharedHead* head) { delete static_cast<Shared<Table>*>(head); }

template <> void Ref<ScriptCallable>::destroy(SharedHead* head) { delete static_cast<Shared<ScriptCallable>*>(head); }

void Variable::failAccess() { throw std::bad_variant_access(); }

std::string& Variable::editString() {
    expect(VarType::String);
    if (object_->holds > 1) *this = Variable(std::string(text().text));
    auto& own = *static_cast<Shared<ScriptText>*>(object_);
    own.hash = 0;
    return own.text;
}

// ---------------------------------------------------------------------------------------------------------------------
// Letting go
// ---------------------------------------------------------------------------------------------------------------------

namespace {

/// Containers whose last hold is gone, waiting to be emptied: the list of whoever works them off further out on this
/// thread, or null. Whoever lets go of another container meanwhile only appends to it. The list itself lives on the
/// stack: an object of the thread would be gone before the globals of the program let go of their values.
thread_local std::vector<Variable>* waitingContainers = nullptr;

bool isContainer(const Variable& variable) { return variable.isArray() || variable.isTable() || variable.isMulti(); }

} // namespace

/// Moves the containers inside a container out, so that destroying it destroys nothing nested.
void Variable::takeNested(VarType type, SharedHead* object, std::vector<Variable>& out) {
    if (type == VarType::Table) {
        static_cast<Shared<Table>*>(object)->moveSharedValuesTo(out);
        return;
    }
    Elements& elements = type == VarType::Array ? *static_cast<Shared<Elements>*>(object)
                                                : static_cast<Shared<MultiResult>*>(object)->values;
    for (Variable& element : elements)
        if (isContainer(element)) out.push_back(std::move(element));
}

void Variable::destroyObject(VarType type, SharedHead* object) noexcept {
    switch (type) {
    case VarType::String: delete static_cast<Shared<ScriptText>*>(object); break;
    case VarType::Raw: delete static_cast<Shared<std::vector<char>>*>(object); break;
    case VarType::Function: delete static_cast<Shared<ScriptCallable>*>(object); break;
    case VarType::Array: delete static_cast<Shared<Elements>*>(object); break;
    case VarType::Table: delete static_cast<Shared<Table>*>(object); break;
    default: delete static_cast<Shared<MultiResult>*>(object); break;
    }
}

SharedHead* Variable::giveUp() noexcept {
    SharedHead* const object = object_;
    type = VarType::Nil;
    word_ = 0;
    return --object->holds == 0 ? object : nullptr;
}

void Variable::destroy(VarType type, SharedHead* object) noexcept {
    if (type != VarType::Array && type != VarType::Table && type != VarType::Multi) {
        destroyObject(type, object);
        return;
    }
    if (waitingContainers != nullptr) {
        Variable waiting;
        waiting.type = type;
        waiting.object_ = object;
        ++object->holds;
        waitingContainers->push_back(std::move(waiting));
        return;
    }
    std::vector<Variable> waiting;
    waitingContainers = &waiting;
    takeNested(type, object, waiting);
    destroyObject(type, object); // may let go of functions, and these of further containers: while the list stands
    while (!waiting.empty()) {
        const VarType nextType = waiting.back().type;
        SharedHead* const next = waiting.back().giveUp();
        waiting.pop_back();
        if (next == nullptr) continue;
        takeNested(nextType, next, waiting);
        destroyObject(nextType, next);
    }
    waitingContainers = nullptr;
}

// ---------------------------------------------------------------------------------------------------------------------
// Text
// ---------------------------------------------------------------------------------------------------------------------

std::string floatText(float number) {
    if (std::isnan(number)) return std::signbit(number) ? "-nan" : "nan"; // the C libraries don't agree on this one
    char buffer[64]; // the largest float has 39 digits before the dot
    const int length = std::snprintf(buffer, sizeof buffer, "%f", static_cast<double>(number));
    return std::string(buffer, static_cast<std::size_t>(length));
}

namespace {

void appendInt(std::string& out, int number) {
    char buffer[12];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, number);
    out.append(buffer, result.ptr);
}

void appendPointer(std::string& out, const void* address) {
    char buffer[2 + 2 * sizeof(void*)];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, reinterpret_cast<std::uintptr_t>(address), 16);
    out.push_back('$');
    std::transform(buffer, result.ptr, std::back_inserter(out),
                   [](char digit) { return digit >= 'a' ? static_cast<char>(digit - 'a' + 'A') : digit; });
}

/// The containers that a walk stands in. Few of them are found quickest by looking at each; data may also be nested as
/// deep as the stack allows, and then the deeper ones are looked up.
class ContainerPath {
public:
    /// Goes into a container; false if the walk stands in it already.
    bool enter(const void* container) {
        if (std::find(outer_.begin(), outer_.end(), container) != outer_.end()) return false;
        if (outer_.size() == fewLevels) return inner_.insert(container).second;
        outer_.push_back(container);
        return true;
    }
    /// Leaves the container that was entered last.
    void leave(const void* container) {
        if (inner_.erase(container) == 0) outer_.pop_back();
    }

private:
    static constexpr std::size_t fewLevels = 16;
    std::vector<const void*> outer_;
    std::unordered_set<const void*> inner_;
};

constexpr const char* textSubject = "string"; // of a text that is too large

/// Writes containers; remembers which ones it stands in, so that one that holds itself ends. One that holds others many
/// times over has a text far larger than itself, so the size is looked at all along.
class TextWriter {
public:
    explicit TextWriter(std::string& out) : out_(out) {}

    void write(const Variable& variable) {
        switch (variable.type) {
        case VarType::Nil: out_ += "not"; break;
        case VarType::Integer: appendInt(out_, variable.asInt()); break;
        case VarType::Float: out_ += floatText(variable.asFloat()); break;
        case VarType::String: append(variable.asString()); break;
        case VarType::Boolean: out_ += variable.asBool() ? "true" : "false"; break;
        case VarType::Pointer: appendPointer(out_, variable.asPointer()); break;
        case VarType::Array: writeArray(*variable.asArray()); break;
        case VarType::Table: writeTable(*variable.asTable()); break;
        case VarType::Multi: out_ += "[multivalue]"; break;
        case VarType::Function: out_ += "[function]"; break;
        default: out_ += "[unconvertible type]"; break;
        }
    }

private:
    void append(std::string_view text) {
        requireResultSize(out_.size() + text.size(), textSubject);
        out_ += text;
    }

    bool enter(const void* container) {
        checkNativeStack();
        requireResultSize(out_.size(), textSubject);
        const bool isNew = path_.enter(container);
        if (!isNew) out_ += "...";
        return isNew;
    }

    void writeArray(const Elements& elements) {
        if (!enter(&elements)) return;
        out_ += '[';
        for (std::size_t i = 0; i < elements.size(); ++i) {
            if (i > 0) out_ += ", ";
            write(elements[i]);
        }
        out_ += ']';
        path_.leave(&elements);
    }

    void writeTable(const Table& table) {
        if (!enter(&table)) return;
        out_ += '{';
        bool first = true;
        for (const Table::Entry& entry : table.entries()) {
            if (!first) out_ += ", ";
            first = false;
            append(entry.key->text);
            out_ += ": ";
            write(entry.value);
        }
        out_ += '}';
        path_.leave(&table);
    }

    std::string& out_;
    ContainerPath path_;
};

} // namespace

void Variable::appendTo(std::string& out) const {
    TextWriter(out).write(*this);
    requireResultSize(out.size(), textSubject);
}

std::string Variable::toString() const {
    std::string out;
    appendTo(out);
    return out;
}

void failResultSize(const char* subject) { throw std::runtime_error(std::string(subject) + ": result is too large"); }

void requireResultElements(std::size_t elements, const char* subject) {
    if (elements > maximumResultElements) failResultSize(subject);
}

// ---------------------------------------------------------------------------------------------------------------------
// Making and converting
// ---------------------------------------------------------------------------------------------------------------------

Variable makeMulti(std::vector<Variable> values) { return Variable(makeRef<MultiResult>(std::move(values))); }

Variable makeArray(Elements elements) { return Variable(makeRef<Elements>(std::move(elements))); }

Variable makeTable() { return Variable(makeRef<Table>()); }

void promoteArrayVariableToTable(Variable& variable) {
    if (!variable.isArray()) return;
    auto table = makeRef<Table>();
    const Elements& elements = *variable.asArray();
    table->reserve(elements.size());
    for (std::size_t i = 0; i < elements.size(); ++i) table->set(static_cast<int>(i) + 1, elements[i]);
    variable = Variable(std::move(table));
}

int saturateToInt(double number) {
    if (!(number > static_cast<double>(std::numeric_limits<int>::min())))
        return std::isnan(number) ? 0 : std::numeric_limits<int>::min();
    if (number >= static_cast<double>(std::numeric_limits<int>::max())) return std::numeric_limits<int>::max();
    return static_cast<int>(number);
}

int toInt(const Variable& variable) {
    switch (variable.type) {
    case VarType::Integer: return variable.asInt();
    case VarType::Float: return saturateToInt(static_cast<double>(variable.asFloat()));
    case VarType::Boolean: return variable.asBool() ? 1 : 0;
    default: throw std::runtime_error("Expected a numeric value");
    }
}

double toDouble(const Variable& variable) {
    switch (variable.type) {
    case VarType::Integer: return variable.asInt();
    case VarType::Float: return static_cast<double>(variable.asFloat());
    case VarType::Boolean: return variable.asBool() ? 1.0 : 0.0;
    default: throw std::runtime_error("Expected a numeric value");
    }
}

namespace {

constexpr double largestArrayKey = 2147483648.0;

bool isWholeArrayNumber(float number) {
    const double wide = static_cast<double>(number);
    return std::isfinite(wide) && std::trunc(wide) == wide && std::fabs(wide) <= largestArrayKey && wide > 0;
}

} // namespace

bool prefersArrayStorage(const Variable& key) {
    if (key.type == VarType::Integer) return key.asInt() > 0;
    return key.type == VarType::Float && isWholeArrayNumber(key.asFloat());
}

bool tryGetArrayIndex(const Variable& key, int& out) {
    if (key.type == VarType::Integer) {
        out = key.asInt();
        return true;
    }
    if (key.type != VarType::Float || !isWholeArrayNumber(key.asFloat())) return false;
    out = saturateToInt(static_cast<double>(key.asFloat()));
    return true;
}

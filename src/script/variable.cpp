#include "script/variable.h"

#include "script/callable.h"
#include "script/native_stack.h"
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

void Variable::failAccess() { throw std::bad_variant_access(); }

void Variable::copyOwned(const Variable& other) {
    switch (type) {
    case VarType::String: new (&string_) std::string(other.string_); break;
    case VarType::Raw: new (&raw_) std::vector<char>(other.raw_); break;
    case VarType::Array: new (&array_) std::shared_ptr<Elements>(other.array_); break;
    case VarType::Table: new (&table_) std::shared_ptr<Table>(other.table_); break;
    case VarType::Function: new (&function_) std::shared_ptr<ScriptCallable>(other.function_); break;
    default: new (&multi_) std::shared_ptr<MultiResult>(other.multi_); break;
    }
}

void Variable::takeOwned(Variable& other) noexcept {
    switch (type) {
    case VarType::String:
        new (&string_) std::string(std::move(other.string_));
        other.string_.~basic_string();
        break;
    case VarType::Raw:
        new (&raw_) std::vector<char>(std::move(other.raw_));
        other.raw_.~vector();
        break;
    // A shared pointer that was moved from holds nothing, and its destructor would do nothing.
    case VarType::Array: new (&array_) std::shared_ptr<Elements>(std::move(other.array_)); break;
    case VarType::Table: new (&table_) std::shared_ptr<Table>(std::move(other.table_)); break;
    case VarType::Function: new (&function_) std::shared_ptr<ScriptCallable>(std::move(other.function_)); break;
    default: new (&multi_) std::shared_ptr<MultiResult>(std::move(other.multi_)); break;
    }
    other.type = VarType::Nil;
    other.word_ = 0;
}

void Variable::assignOwned(const Variable& other) {
    if (this == &other) return;
    if (type == VarType::String && other.type == VarType::String) {
        string_ = other.string_; // reuses the text's storage
        return;
    }
    // The old value may be what keeps `other` alive, so it is let go of last.
    Variable copy(other);
    assignOwned(std::move(copy));
}

void Variable::assignOwned(Variable&& other) noexcept {
    if (this == &other) return;
    Variable old;
    old.type = type;
    old.word_ = word_;
    if (!isPlain()) old.takeOwned(*this);
    type = other.type;
    word_ = other.word_;
    if (!isPlain()) takeOwned(other);
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

bool Variable::isLastHold() const noexcept {
    switch (type) {
    case VarType::Array: return array_.use_count() == 1;
    case VarType::Table: return table_.use_count() == 1;
    case VarType::Multi: return multi_.use_count() == 1;
    default: return false;
    }
}

/// Moves the containers inside a container out, so that destroying it destroys nothing nested.
void Variable::takeNested(std::vector<Variable>& out) {
    if (isTable()) {
        table_->moveSharedValuesTo(out);
        return;
    }
    for (Variable& element : isArray() ? *array_ : multi_->values)
        if (isContainer(element)) out.push_back(std::move(element));
}

void Variable::release() noexcept {
    const VarType released = type;
    type = VarType::Nil;
    switch (released) {
    case VarType::String: string_.~basic_string(); break;
    case VarType::Raw: raw_.~vector(); break;
    case VarType::Function: function_.~shared_ptr(); break;
    default: {
        type = released;
        if (isLastHold()) {
            if (waitingContainers != nullptr) {
                waitingContainers->emplace_back(std::move(*this));
                return;
            }
            std::vector<Variable> waiting;
            waitingContainers = &waiting;
            takeNested(waiting);
            dropHold(); // may let go of functions, and these of further containers: while the list stands
            while (!waiting.empty()) {
                Variable next = std::move(waiting.back());
                waiting.pop_back();
                if (next.isLastHold()) next.takeNested(waiting);
                next.dropHold();
            }
            waitingContainers = nullptr;
            return;
        }
        dropHold();
        return;
    }
    }
    word_ = 0;
}

/// Gives up this hold on a container that has no other containers inside, or other holds.
void Variable::dropHold() noexcept {
    switch (type) {
    case VarType::Array: array_.~shared_ptr(); break;
    case VarType::Table: table_.~shared_ptr(); break;
    case VarType::Multi: multi_.~shared_ptr(); break;
    default: break;
    }
    type = VarType::Nil;
    word_ = 0;
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

/// Writes containers; remembers which ones it stands in, so that one that holds itself ends.
class TextWriter {
public:
    explicit TextWriter(std::string& out) : out_(out) {}

    void write(const Variable& variable) {
        switch (variable.type) {
        case VarType::Nil: out_ += "not"; break;
        case VarType::Integer: appendInt(out_, variable.asInt()); break;
        case VarType::Float: out_ += floatText(variable.asFloat()); break;
        case VarType::String: out_ += variable.asString(); break;
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
    bool enter(const void* container) {
        checkNativeStack();
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
        for (const auto& [key, entry] : table.entries()) {
            if (!first) out_ += ", ";
            first = false;
            out_ += key;
            out_ += ": ";
            write(entry);
        }
        out_ += '}';
        path_.leave(&table);
    }

    std::string& out_;
    ContainerPath path_;
};

} // namespace

void Variable::appendTo(std::string& out) const { TextWriter(out).write(*this); }

std::string Variable::toString() const {
    std::string out;
    appendTo(out);
    return out;
}

// ---------------------------------------------------------------------------------------------------------------------
// Making and converting
// ---------------------------------------------------------------------------------------------------------------------

Variable makeMulti(std::vector<Variable> values) {
    return Variable(std::make_shared<MultiResult>(MultiResult{std::move(values)}));
}

Variable makeArray(Elements elements) { return Variable(std::make_shared<Elements>(std::move(elements))); }

Variable makeTable() { return Variable(std::make_shared<Table>()); }

void promoteArrayVariableToTable(Variable& variable) {
    if (!variable.isArray()) return;
    auto table = std::make_shared<Table>();
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

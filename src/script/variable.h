#pragma once

// The one value type of OstrelScript.
//
// A `Variable` is two words: a type, and a number or a hold on an object. Numbers are 32 bits wide, and there are only
// two kinds of them. Arrays, tables, functions and multi values are shared: a copy is another hold on the same object,
// and nothing but reference counts decides how long it lives. Strings are values: a copy is a copy. They are shared
// too, but nobody can tell: a text that has several holders is copied before one of them writes to it.
//
// Most values that a script touches are numbers, so copying, moving and destroying test the type first. That is why
// this is a union of our own making and not the standard variant: a frame loop copies millions of them. Letting go of a
// container is the one operation that could nest as deep as the data does; it is done with a list instead of recursion,
// so no script can overflow the stack by building a deep value and dropping it.

#include "script/ref.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

class Table;
struct MultiResult;
struct ScriptCallable;
struct Variable;

// What these two hold is known where they are made; letting go of them needs to know it too.
template <> void Ref<Table>::destroy(SharedHead* head);
template <> void Ref<ScriptCallable>::destroy(SharedHead* head);

/// The elements of a script array; index 1 of the script is element 0.
using Elements = std::vector<Variable>;

/// The kind of a value; the numbers are part of the bytecode and state files.
enum class VarType : std::uint32_t {
    Nil = 0,
    Integer = 1,
    Float = 2,
    String = 3,
    Raw = 4,
    Boolean = 5,
    Pointer = 6,
    Array = 7,
    Multi = 8,
    Table = 9,
    Function = 10,
};

/// The text behind a string value.
struct ScriptText {
    explicit ScriptText(std::string content) noexcept : text(std::move(content)) {}

    std::string text;
    mutable std::uint32_t hash = 0; // of the text, once a table has asked for it; 0 before
};

struct Variable {
    VarType type = VarType::Nil; // read by everyone, changed only in here

    Variable() noexcept : word_(0) {}
    Variable(int number) noexcept : type(VarType::Integer), int_(number) {}
    Variable(float number) noexcept : type(VarType::Float), float_(number) {}
    Variable(bool truth) noexcept : type(VarType::Boolean), bool_(truth) {}
    Variable(void* address) noexcept : type(VarType::Pointer), pointer_(address) {}
    Variable(std::string text) : Variable(makeRef<ScriptText>(std::move(text))) {}
    Variable(std::string_view text) : Variable(std::string(text)) {}
    Variable(const char* text) : Variable(std::string(text)) {}
    Variable(std::vector<char> bytes)
        : type(VarType::Raw), object_(makeRef<std::vector<char>>(std::move(bytes)).release()) {}
    Variable(Ref<ScriptText> text) noexcept : type(VarType::String), object_(text.release()) {}
    Variable(Ref<Elements> array) noexcept : type(VarType::Array), object_(array.release()) {}
    Variable(Ref<Table> table) noexcept : type(VarType::Table), object_(table.release()) {}
    Variable(Ref<ScriptCallable> callable) noexcept : type(VarType::Function), object_(callable.release()) {}
    Variable(Ref<MultiResult> values) noexcept : type(VarType::Multi), object_(values.release()) {}
    Variable(double) = delete; // no double is a script value: narrow it where the rule for narrowing is known

    Variable(const Variable& other) noexcept : type(other.type), word_(other.word_) {
        if (!isPlain()) hold();
    }
    Variable(Variable&& other) noexcept : type(other.type), word_(other.word_) {
        other.type = VarType::Nil;
        other.word_ = 0;
    }
    Variable& operator=(const Variable& other) noexcept {
        if (isPlain() && other.isPlain()) {
            type = other.type;
            word_ = other.word_;
        } else {
            Variable copy(other); // the old value may be what keeps `other` alive, so it is let go of last
            swap(copy);
        }
        return *this;
    }
    Variable& operator=(Variable&& other) noexcept {
        Variable taken(std::move(other));
        swap(taken);
        return *this;
    }
    ~Variable() { clear(); }

    void swap(Variable& other) noexcept {
        std::swap(type, other.type);
        std::swap(word_, other.word_);
    }

    /// True for the types that the tag and one word hold: no ownership, nothing to release.
    bool isPlain() const noexcept { return ((1U << static_cast<unsigned>(type)) & plainTypes) != 0; }
    bool isNil() const noexcept { return type == VarType::Nil; }
    /// True for what arithmetic takes: integer, float and boolean.
    bool isNumeric() const noexcept { return ((1U << static_cast<unsigned>(type)) & numericTypes) != 0; }
    bool isString() const noexcept { return type == VarType::String; }
    bool isArray() const noexcept { return type == VarType::Array; }
    bool isTable() const noexcept { return type == VarType::Table; }
    bool isFunction() const noexcept { return type == VarType::Function; }
    bool isMulti() const noexcept { return type == VarType::Multi; }

    // The alternative of that type; std::bad_variant_access if the value is of another. Nil reads as the integer 0.
    int asInt() const { return type == VarType::Nil ? 0 : expect(VarType::Integer).int_; }
    float asFloat() const { return expect(VarType::Float).float_; }
    bool asBool() const { return expect(VarType::Boolean).bool_; }
    void* asPointer() const { return expect(VarType::Pointer).pointer_; }
    const std::string& asString() const { return asText().text; }
    const ScriptText& asText() const { return *object<ScriptText>(VarType::String); }
    /// The text for writing, this value's alone.
    std::string& editString();
    const std::vector<char>& asRaw() const { return *object<std::vector<char>>(VarType::Raw); }
    Ref<Elements> asArray() const { return Ref<Elements>::ofHead(expect(VarType::Array).object_); }
    Ref<Table> asTable() const { return Ref<Table>::ofHead(expect(VarType::Table).object_); }
    Ref<ScriptCallable> asFunction() const { return Ref<ScriptCallable>::ofHead(expect(VarType::Function).object_); }
    Ref<MultiResult> asMulti() const { return Ref<MultiResult>::ofHead(expect(VarType::Multi).object_); }

    // What an array, table, function or string holds, without another hold on it; the type was tested before.
    Elements& elements() const noexcept { return *static_cast<Shared<Elements>*>(object_); }
    template <typename TableType = Table> TableType& table() const noexcept {
        return *static_cast<Shared<TableType>*>(object_);
    }
    template <typename Callable = ScriptCallable> Callable* callable() const noexcept {
        return static_cast<Shared<Callable>*>(object_);
    }
    Ref<ScriptText> sharedText() const noexcept { return Ref<ScriptText>::ofHead(object_); }
    const ScriptText& text() const noexcept { return *static_cast<Shared<ScriptText>*>(object_); }

    /// Becomes a number or nil in place, without building another Variable.
    void setNil() noexcept {
        clear();
        type = VarType::Nil;
        word_ = 0;
    }
    void setInt(int number) noexcept {
        clear();
        type = VarType::Integer;
        int_ = number;
    }
    void setFloat(float number) noexcept {
        clear();
        type = VarType::Float;
        float_ = number;
    }
    void setBool(bool truth) noexcept {
        clear();
        type = VarType::Boolean;
        bool_ = truth;
    }

    /// The value's text: "not", decimal digits, six decimals, "[a, b]", "{k: v}" and so on. A container inside itself
    /// prints as "...". Fails with "native stack exhausted" on data nested too deeply to be walked.
    std::string toString() const;
    /// Appends what toString gives.
    void appendTo(std::string& out) const;

private:
    static constexpr unsigned plainTypes =
        (1U << static_cast<unsigned>(VarType::Nil)) | (1U << static_cast<unsigned>(VarType::Integer)) |
        (1U << static_cast<unsigned>(VarType::Float)) | (1U << static_cast<unsigned>(VarType::Boolean)) |
        (1U << static_cast<unsigned>(VarType::Pointer));
    static constexpr unsigned numericTypes = (1U << static_cast<unsigned>(VarType::Integer)) |
                                             (1U << static_cast<unsigned>(VarType::Float)) |
                                             (1U << static_cast<unsigned>(VarType::Boolean));

    const Variable& expect(VarType expected) const {
        if (type != expected) failAccess();
        return *this;
    }
    template <typename T> const T* object(VarType expected) const {
        return static_cast<const Shared<T>*>(expect(expected).object_);
    }
    [[noreturn]] static void failAccess();

    void hold() noexcept {
        if (object_ != nullptr) ++object_->holds;
    }
    /// Gives up what the value owns; the caller gives it a new type and word.
    void clear() noexcept {
        if (!isPlain() && object_ != nullptr && --object_->holds == 0) destroy(type, object_);
    }
    /// Destroys an object without holds.
    static void destroy(VarType type, SharedHead* object) noexcept;
    static void destroyObject(VarType type, SharedHead* object) noexcept;
    static void takeNested(VarType type, SharedHead* object, std::vector<Variable>& out);
    /// The value becomes nil; its object is given away if this was the only hold on it, else null comes back.
    SharedHead* giveUp() noexcept;

    union {
        std::uint64_t word_; // all of it
        int int_;
        float float_;
        bool bool_;
        void* pointer_;
        SharedHead* object_; // of the types that own something; null is a function that is none
    };
};

/// What a function returns that returns several values. One opaque value everywhere but where assignment, the last
/// value of `return`, `select` and the host's argument lists take it apart.
struct MultiResult {
    explicit MultiResult(std::vector<Variable> list) : values(std::move(list)) {}

    std::vector<Variable> values;
};

/// A multi value of these values.
Variable makeMulti(std::vector<Variable> values);
/// A new array of these elements.
Variable makeArray(Elements elements);
/// A new, empty table.
Variable makeTable();

/// An array becomes a table with the keys "1", "2", ... in this one Variable; others that share the array keep it.
/// Anything else stays as it is.
void promoteArrayVariableToTable(Variable& variable);

/// The number as a 32-bit integer: a boolean is 0 or 1, a float is truncated and held to the integer range (not a
/// number gives 0). Anything else fails with "Expected a numeric value".
int toInt(const Variable& variable);
/// The number as a double, with the same failure.
double toDouble(const Variable& variable);
/// A double truncated towards zero and held to the integer range; not a number gives 0.
int saturateToInt(double number);

/// The text of a float: six decimals, as the C library's "%f" writes them.
std::string floatText(float number);

/// True for a key that a container keeps in array form: an integer above 0, or a finite float without fraction,
/// above 0 and at most 2147483648.
bool prefersArrayStorage(const Variable& key);
/// True if the key is an integer (then `out` is it, also below 1) or a float as prefersArrayStorage wants it.
bool tryGetArrayIndex(const Variable& key, int& out);

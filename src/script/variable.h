#pragma once

// The one value type of OstrelScript.
//
// A `Variable` is a type and a union that holds the alternative of that type. Numbers are 32 bits wide, and there are
// only two kinds of them. Strings are values: a copy is a copy. Arrays, tables, functions and multi values are shared:
// a copy is another hold on the same object, and nothing but reference counts decides how long it lives.
//
// Most values that a script touches are numbers, so copying, moving and destroying test the type first: a plain value
// is one word, and only the others go on to functions of their own. That is why this is a union of our own making and
// not the standard variant: a frame loop copies millions of them. Letting go of a container is the one operation that
// could nest as deep as the data does; it is done with a list instead of recursion, so no script can overflow the stack
// by building a deep value and dropping it.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

class Table;
struct MultiResult;
struct ScriptCallable;
struct Variable;

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

struct Variable {
    VarType type = VarType::Nil; // read by everyone, changed only in here

    Variable() noexcept : word_(0) {}
    Variable(int number) noexcept : type(VarType::Integer), int_(number) {}
    Variable(float number) noexcept : type(VarType::Float), float_(number) {}
    Variable(bool truth) noexcept : type(VarType::Boolean), bool_(truth) {}
    Variable(void* address) noexcept : type(VarType::Pointer), pointer_(address) {}
    Variable(std::string text) noexcept : type(VarType::String), string_(std::move(text)) {}
    Variable(std::string_view text) : type(VarType::String), string_(text) {}
    Variable(const char* text) : type(VarType::String), string_(text) {}
    Variable(std::vector<char> bytes) noexcept : type(VarType::Raw), raw_(std::move(bytes)) {}
    Variable(std::shared_ptr<Elements> array) noexcept : type(VarType::Array), array_(std::move(array)) {}
    Variable(std::shared_ptr<Table> table) noexcept : type(VarType::Table), table_(std::move(table)) {}
    Variable(std::shared_ptr<ScriptCallable> callable) noexcept
        : type(VarType::Function), function_(std::move(callable)) {}
    Variable(std::shared_ptr<MultiResult> values) noexcept : type(VarType::Multi), multi_(std::move(values)) {}
    Variable(double) = delete; // no double is a script value: narrow it where the rule for narrowing is known

    Variable(const Variable& other) : type(other.type), word_(other.word_) {
        if (!isPlain()) copyOwned(other);
    }
    Variable(Variable&& other) noexcept : type(other.type), word_(other.word_) {
        if (!isPlain()) takeOwned(other);
    }
    Variable& operator=(const Variable& other) {
        if (isPlain() && other.isPlain()) {
            type = other.type;
            word_ = other.word_;
        } else {
            assignOwned(other);
        }
        return *this;
    }
    Variable& operator=(Variable&& other) noexcept {
        if (isPlain() && other.isPlain()) {
            type = other.type;
            word_ = other.word_;
        } else {
            assignOwned(std::move(other));
        }
        return *this;
    }
    ~Variable() {
        if (!isPlain()) release();
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
    const std::string& asString() const { return expect(VarType::String).string_; }
    std::string& asString() { return const_cast<std::string&>(expect(VarType::String).string_); }
    const std::vector<char>& asRaw() const { return expect(VarType::Raw).raw_; }
    const std::shared_ptr<Elements>& asArray() const { return expect(VarType::Array).array_; }
    const std::shared_ptr<Table>& asTable() const { return expect(VarType::Table).table_; }
    const std::shared_ptr<ScriptCallable>& asFunction() const { return expect(VarType::Function).function_; }
    const std::shared_ptr<MultiResult>& asMulti() const { return expect(VarType::Multi).multi_; }

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
    [[noreturn]] static void failAccess();
    void clear() noexcept {
        if (!isPlain()) release();
    }

    // For the types that own something. `word_` then holds no value of its own until these have made one.
    void copyOwned(const Variable& other);
    void takeOwned(Variable& other) noexcept;
    void assignOwned(const Variable& other);
    void assignOwned(Variable&& other) noexcept;
    /// Lets go of what the value owns and leaves nil.
    void release() noexcept;
    void dropHold() noexcept;
    bool isLastHold() const noexcept;
    void takeNested(std::vector<Variable>& out);

    union {
        std::uint64_t word_; // all of a plain value
        int int_;
        float float_;
        bool bool_;
        void* pointer_;
        std::string string_;
        std::vector<char> raw_;
        std::shared_ptr<Elements> array_;
        std::shared_ptr<Table> table_;
        std::shared_ptr<ScriptCallable> function_;
        std::shared_ptr<MultiResult> multi_;
    };
};

/// What a function returns that returns several values. One opaque value everywhere but where assignment, the last
/// value of `return`, `select` and the host's argument lists take it apart.
struct MultiResult {
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

#pragma once

// How native functions are given to scripts: reading arguments, failing, returning, and making the tables.
//
// A table entry gets its arguments in an `Arguments` object that already knows the entry's qualified name, so that
// every failure reads "Table.entry: what is wrong" without the entry naming itself. Arguments are read one by one in
// the order in which the entry wants them, and a missing one is noticed when it is read: of several faults the first
// in that order is reported. There is no coercion between text and numbers.

#include "script/ostrel_script.h"

#include <cstddef>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// Fails with `function` + ": " + `message`.
[[noreturn]] void bindingError(std::string_view function, const std::string& message);

/// An integer, float or boolean (0 or 1); anything else fails with `argument` + " must be numeric".
double numericValue(const Variable& value, std::string_view function, std::string_view argument);
/// A string; anything else fails with `argument` + " must be a string".
std::string stringValue(const Variable& value, std::string_view function, std::string_view argument);
/// An address, null for nil; anything else fails with `argument` + " must be a pointer".
void* pointerValue(const Variable& value, std::string_view function, std::string_view argument);
/// A flag: nil is false, a boolean is itself, any other value is true.
bool flagValue(const Variable& value);

/// Several values as one result.
Variable returnValues(std::initializer_list<Variable> values);

/// The arguments of one call of a table entry. Borrows both the name and the values for the length of the call.
class Arguments {
public:
    Arguments(std::string_view function, const std::vector<Variable>& values) : function_(function), values_(values) {}

    std::size_t count() const { return values_.size(); }

    /// The argument at a position counted from 0. A missing one fails with "missing argument " and the position
    /// counted from 1.
    const Variable& at(std::size_t index) const;
    double number(std::size_t index, std::string_view name) const { return numericValue(at(index), function_, name); }
    /// A number without its fraction, held to the range of an integer.
    int integer(std::size_t index, std::string_view name) const { return saturateToInt(number(index, name)); }
    std::string text(std::size_t index, std::string_view name) const { return stringValue(at(index), function_, name); }
    void* pointer(std::size_t index, std::string_view name) const { return pointerValue(at(index), function_, name); }
    /// A missing flag is false.
    bool flag(std::size_t index) const { return index < values_.size() && flagValue(values_[index]); }

    /// Fails under the name of the entry.
    [[noreturn]] void fail(const std::string& message) const { bindingError(function_, message); }

private:
    std::string_view function_;
    const std::vector<Variable>& values_;
};

/// What stands behind a key of a native table.
using NativeEntry = Variable (*)(const Arguments& arguments);

/// No parameter of the entry takes any value.
constexpr std::size_t noAnyValue = ~std::size_t{0};

/// One key of a native table. A multi value in the last position of a call is taken apart before the entry sees it,
/// unless that is the position, from 0, of the parameter that takes any value as it stands.
struct ModuleEntry {
    const char* key;
    NativeEntry function;
    std::size_t anyValuePosition = noAnyValue;
};

/// A table of native functions. Each knows itself as `name` + "." + its key.
Variable makeModule(std::string_view name, std::span<const ModuleEntry> entries);
/// Adds functions to the global table `name`, or publishes them as one. A table may so be made by several files; of
/// two entries with one key the later one stands.
void extendModule(const std::string& name, std::span<const ModuleEntry> entries);

#pragma once

// What the files of the library share: how a table of functions is given to the engine, how a function fails, and the
// few functions and rules that are reached under two names.
//
// A library function is a free function over a pointer and a count, so that nothing is allocated between a call and its
// body. It checks the count first, then the types, and fails with its own text; where only "a number" is wanted, the
// conversions `toInt` and `toDouble` do the failing. Strings and lists that a call makes are bounded: a script that
// asks for more is told so instead of taking the machine's memory.

#include "script/ostrel_script.h"
#include "script/result_size.h"

#include <cmath>
#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>

/// Ends a library function with this text as the script's error.
[[noreturn]] void fail(const char* message);
[[noreturn]] void fail(const std::string& message);

/// A function of one of the library's tables.
struct LibraryEntry {
    const char* name;
    LibraryFunction function;
};

/// Publishes the functions as a global table; each knows itself by its qualified name ("string.sub").
void registerLibraryTable(OstrelScript& engine, std::string_view tableName,
                          std::initializer_list<LibraryEntry> entries);

// --- Functions that are registered in another file than the one that holds them ---

Variable toNumberFunction(OstrelScript& engine, const Variable* arguments, std::size_t count);
Variable randomFunction(OstrelScript& engine, const Variable* arguments, std::size_t count);
Variable randomSeedFunction(OstrelScript& engine, const Variable* arguments, std::size_t count);

Variable arrayFunction(OstrelScript& engine, const Variable* arguments, std::size_t count);
Variable lenFunction(OstrelScript& engine, const Variable* arguments, std::size_t count);
Variable pushFunction(OstrelScript& engine, const Variable* arguments, std::size_t count);
Variable popFunction(OstrelScript& engine, const Variable* arguments, std::size_t count);
Variable reserveFunction(OstrelScript& engine, const Variable* arguments, std::size_t count);
Variable getFunction(OstrelScript& engine, const Variable* arguments, std::size_t count);
Variable setFunction(OstrelScript& engine, const Variable* arguments, std::size_t count);
Variable clearFunction(OstrelScript& engine, const Variable* arguments, std::size_t count);
Variable eraseFunction(OstrelScript& engine, const Variable* arguments, std::size_t count);
Variable containsFunction(OstrelScript& engine, const Variable* arguments, std::size_t count);
Variable keysFunction(OstrelScript& engine, const Variable* arguments, std::size_t count);
Variable valuesFunction(OstrelScript& engine, const Variable* arguments, std::size_t count);

Variable pairsFunction(OstrelScript& engine, const Variable* arguments, std::size_t count);
Variable ipairsFunction(OstrelScript& engine, const Variable* arguments, std::size_t count);
Variable nextFunction(OstrelScript& engine, const Variable* arguments, std::size_t count);

/// Gives scripts the table `os`.
void registerOsTable(OstrelScript& engine);

Variable formatFunctionImpl(OstrelScript& engine, const Variable* arguments, std::size_t count);
Variable findFunctionImpl(OstrelScript& engine, const Variable* arguments, std::size_t count);
Variable matchFunctionImpl(OstrelScript& engine, const Variable* arguments, std::size_t count);
Variable gmatchFunctionImpl(OstrelScript& engine, const Variable* arguments, std::size_t count);
Variable gsubImpl(OstrelScript& engine, const Variable* arguments, std::size_t count);
Variable exportStateFunction(OstrelScript& engine, const Variable* arguments, std::size_t count);
Variable importStateFunction(OstrelScript& engine, const Variable* arguments, std::size_t count);
Variable jumpToFunction(OstrelScript& engine, const Variable* arguments, std::size_t count);
Variable killFunction(OstrelScript& engine, const Variable* arguments, std::size_t count);
Variable sortFunction(OstrelScript& engine, const Variable* arguments, std::size_t count);

// --- Rules that a general function and its scalar form share ---

/// The positions, from 0, that a pair of 1-based byte positions selects: from `first` up to but without `last`.
struct ByteRange {
    std::size_t first = 0;
    std::size_t last = 0;

    bool isEmpty() const { return first >= last; }
    std::size_t size() const { return isEmpty() ? 0 : last - first; }
};

/// Reads two positions of which negative ones count from the end; what lies outside the text is cut off.
ByteRange selectBytes(std::size_t length, int from, int to);

int floorOf(double number);
int ceilingOf(double number);
int absoluteOf(int number);
float sineOf(double radians);
float cosineOf(double radians);
float radiansOf(double degrees);
/// False where the logarithm is not defined.
bool canTakeLogarithm(double number);
bool isLogarithmBase(double base);
float naturalLogarithmOf(double number);
float logarithmOf(double number, double base);
bool canTakeSquareRoot(double number);
float squareRootOf(double number);
/// Which of at least one argument is the smallest or largest; the first one if several are.
std::size_t smallestOf(const Variable* arguments, std::size_t count);
std::size_t largestOf(const Variable* arguments, std::size_t count);

/// Bytes that begin a character: all that are not continuations.
int countCharacters(std::string_view text);

/// The pure numeric functions without a Variable in between; Invalid if `id` is none of them or the arguments are not
/// for it, in which case the general function is to be called and raises what there is to raise.
FastScalarValue nativeBuiltinScalar(const OstrelScript& engine, BuiltinId id, const Variable* arguments,
                                    std::size_t count);

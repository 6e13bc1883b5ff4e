#pragma once

// The two forms in which an input describes calls of native entries: words, for seeds that people write, and bytes,
// of which every one means something.

#include "entries.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <sstream>
#include <string>
#include <vector>

/// The words of one line: an entry's name and its arguments.
///
/// A number is a number; `nil`, `true`, `array`, `raw` and their kin are values of their types; `$2` is the result of
/// the third line, be it an image, a killed one or several values; `many` puts the words behind it into a multi value.
/// Every other word is a string.
class WordCall {
public:
    /// @param results  of the lines before; borrowed
    WordCall(const std::string& line, const std::vector<Variable>& results) : words_(line), results_(results) {}

    std::string entryName();
    std::vector<Variable> arguments();

private:
    Variable valueOf(const std::string& word);
    Variable manyOf();
    Variable earlierResult(const std::string& place) const;

    std::istringstream words_;
    const std::vector<Variable>& results_;
};

/// Calls made of bytes. Mostly each parameter gets what it wants, of the odd kind: NaN, numbers far out, freed handles;
/// now and then it gets something else, or one argument is too few or too many.
class ByteCalls {
public:
    /// @param images  every image handle that the calls so far gave or were given, freed ones among them; borrowed
    ByteCalls(FuzzedDataProvider& bytes, const std::vector<Variable>& images) : bytes_(bytes), images_(images) {}

    bool more() const { return bytes_.remaining_bytes() > 0; }
    const Entry& entry(const std::vector<Entry>& entries);
    std::vector<Variable> arguments(const Entry& entry);

private:
    Variable wanted(Want want);
    Variable number();
    Variable text();
    Variable image();
    Variable anything(int depth);

    FuzzedDataProvider& bytes_;
    const std::vector<Variable>& images_;
};

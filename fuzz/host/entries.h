#pragma once

// The native entries as the fuzzer knows them: by name, with what each of their parameters wants.
//
// Nobody writes that down here. An entry is called with too few arguments, says "missing argument 3", gets a table,
// says "width must be numeric", gets a number, and so on until it has nothing more to ask for. A new entry is so known
// on the day on which it is registered.

#include "script/variable.h"

#include <string>
#include <vector>

/// What a parameter wants. A flag, and whatever else takes any value, is `Anything`.
enum class Want { Number, Text, Image, Anything };

/// A native function, and how it is called without a fault.
struct Entry {
    std::string name; // "Table.key", or the bare name of a global function
    Variable function;
    std::vector<Want> wants;
};

/// Takes the entries out of the engine, so that no script finds them, and asks each what it wants.
std::vector<Entry> takeEntries();

/// Puts a directory of the fuzzer's own behind every path, a few names behind every variable, and what would wait or
/// fill the memory within bounds.
void tame(const Entry& entry, std::vector<Variable>& arguments);

/// Makes the directory for the files.
void makeDirectory();

/// Ends the run as a finding.
[[noreturn]] void give(const std::string& complaint);

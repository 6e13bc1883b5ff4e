#pragma once

#include "script/bytecode.h"

#include <string>

/// The program as text for people: the header, the lines with their numbers and tokens, the instructions chunk by
/// chunk, and every side table. Any program that a file can hold has a dump, also one whose indexes point nowhere, and
/// its length grows with the file's only.
std::string dumpBytecode(const BytecodeProgram& program);

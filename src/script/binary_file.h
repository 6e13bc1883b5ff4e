#pragma once

// Whole binary files of the script engine: bytecode and state. `kind` is the file's kind in the messages.

#include <string>
#include <vector>

/// All bytes of a file. Fails with "Failed to open KIND file for reading: ", "Failed to size KIND file: " or "Invalid
/// KIND file (truncated data): " and the path.
std::vector<unsigned char> readBinaryFile(const std::string& path, const std::string& kind);
/// Replaces the file. Fails with "Failed to open KIND file for writing: " or "Failed to write KIND file: " and the
/// path.
void writeBinaryFile(const std::string& path, const std::string& kind, const std::vector<unsigned char>& bytes);

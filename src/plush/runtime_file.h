#pragma once

// Files that a running game reads and writes in one piece, as bytes. Their paths are normalised as those of scripts
// are: a backslash stands for a slash.

#include <cstdint>
#include <span>
#include <string>
#include <vector>

/// Reads the file `path` whole. False if that is not possible or it has more than `limit` bytes; `bytes` is then
/// unspecified.
bool readRuntimeFile(const std::string& path, std::vector<std::uint8_t>& bytes, std::uint64_t limit);

/// Makes `bytes` the whole content of the file `path`. False if it could not be written whole.
bool writeRuntimeFile(const std::string& path, std::span<const std::uint8_t> bytes);

#pragma once

// Files that are read in one piece.

#include <optional>
#include <string>

/// All bytes of a file; nothing if it can't be opened or read, or is larger than a script's text may be (1 GiB).
std::optional<std::string> readWholeFile(const std::string& filePath);

#pragma once

// Paths as scripts write them: bytes, with slashes or backslashes.

#include <string>

/// True if something of that name exists.
bool pathExists(const std::string& path);
/// The part before the last slash, without it; empty if there is none. Backslashes count as slashes.
std::string pathDirectory(const std::string& path);
/// Both sides with one slash between; an empty side gives the other.
std::string joinPath(const std::string& left, const std::string& right);

#pragma once

#include <span>

/// The startup library as a bytecode file, with the source path "lua.os". It lives as long as the process.
std::span<const unsigned char> startupImage();

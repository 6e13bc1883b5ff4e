#pragma once

// The checksum that goes with a saved game.

#include <cstdint>
#include <string_view>

/// A sum over the bytes, each weighted with its position from 1, in which the sum so far is turned right by 29 bits
/// before a byte is added. 0 for an empty text.
std::uint32_t textChecksum(std::string_view text);

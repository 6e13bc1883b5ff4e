#pragma once

// The texts that the platform queries hand out, in the caller's buffer.

#include <cstring>
#include <string>

/// The text without the white space at both ends.
inline std::string trimmed(const std::string& text) {
    constexpr const char* whiteSpace = " \t\n\v\f\r";
    const std::size_t first = text.find_first_not_of(whiteSpace);
    if (first == std::string::npos) return {};
    return text.substr(first, text.find_last_not_of(whiteSpace) - first + 1);
}

/// Writes `text` with its closing zero into a buffer of `size` bytes and returns 1. If it does not fit the buffer
/// becomes the empty text and the result is 0; a null or empty buffer is left alone and gives 0.
inline int writeText(const std::string& text, char* buffer, unsigned size) {
    if (!buffer || size == 0) return 0;
    buffer[0] = '\0';
    if (text.size() >= size) return 0;
    std::memcpy(buffer, text.c_str(), text.size() + 1);
    return 1;
}

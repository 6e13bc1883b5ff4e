#pragma once

// The writer of the script engine's binary files: the mirror of ScriptByteReader.

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

/// Gathers little-endian numbers and texts in one block of bytes.
class ScriptByteWriter {
public:
    void u8(std::uint8_t number) { bytes_.push_back(number); }
    void u16(std::uint16_t number) { little(number, 2); }
    void u32(std::uint32_t number) { little(number, 4); }
    void boolean(bool truth) { u8(truth ? 1 : 0); }

    /// The bytes as they are, without a length.
    void bytes(std::string_view text) { bytes_.insert(bytes_.end(), text.begin(), text.end()); }
    /// The text behind its length.
    void text(std::string_view text) {
        count(text.size());
        bytes(text);
    }
    /// A count or length in 32 bits; a block as long as 4 GiB does not come about.
    void count(std::size_t number) { u32(static_cast<std::uint32_t>(number)); }

    /// Bytes gathered so far.
    std::size_t size() const { return bytes_.size(); }
    /// Gives the block away.
    std::vector<unsigned char> take() { return std::move(bytes_); }

private:
    void little(std::uint32_t number, unsigned size) {
        for (unsigned byte = 0; byte < size; ++byte) u8(static_cast<std::uint8_t>(number >> (8 * byte)));
    }

    std::vector<unsigned char> bytes_;
};

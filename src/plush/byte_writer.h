#pragma once

// The counterpart of the bounded reader: a block of bytes that grows at its end.

#include <cstdint>
#include <cstring>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

/// Puts numbers and stretches of bytes one behind another.
class ByteWriter {
public:
    /// Bytes written so far; also the offset of the next one.
    std::size_t size() const { return bytes_.size(); }

    void reserve(std::size_t size) { bytes_.reserve(size); }

    void u8(std::uint8_t value) { bytes_.push_back(value); }
    void u16le(std::uint16_t value) { little(value, 2); }
    void u32le(std::uint32_t value) { little(value, 4); }
    void u64le(std::uint64_t value) { little(value, 8); }
    void u16be(std::uint16_t value) { big(value, 2); }
    void u32be(std::uint32_t value) { big(value, 4); }

    /// Writes over the number of 32 bits at `offset`, which must have been written before.
    void u32beAt(std::size_t offset, std::uint32_t value) {
        for (std::size_t i = 0; i < 4; ++i) bytes_[offset + i] = static_cast<std::uint8_t>(value >> (24 - 8 * i));
    }

    void bytes(std::span<const std::uint8_t> data) { std::memcpy(extend(data.size()), data.data(), data.size()); }
    void text(std::string_view letters) { std::memcpy(extend(letters.size()), letters.data(), letters.size()); }
    void zeros(std::size_t count) { bytes_.resize(bytes_.size() + count); }

    /// What was written; the writer is empty then.
    std::vector<std::uint8_t> take() { return std::exchange(bytes_, {}); }

    /// Appends `count` bytes to be filled in; valid until the next call.
    std::uint8_t* extend(std::size_t count) {
        bytes_.resize(bytes_.size() + count);
        return bytes_.data() + bytes_.size() - count;
    }

private:
    void little(std::uint64_t value, unsigned count) {
        for (unsigned i = 0; i < count; ++i) u8(static_cast<std::uint8_t>(value >> (8 * i)));
    }

    void big(std::uint64_t value, unsigned count) {
        for (unsigned i = count; i > 0; --i) u8(static_cast<std::uint8_t>(value >> (8 * (i - 1))));
    }

    std::vector<std::uint8_t> bytes_;
};

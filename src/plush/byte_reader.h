#pragma once

// The bounded reader through which every file format of the engine is read.
//
// It walks a block of bytes that it borrows. Each read takes what it asks for or fails; after the first failure every
// further read fails too and gives zeros or nothing. A decoder can therefore read a whole header field by field and
// ask once, at the end, whether all of it was there, and no field read by mistake ever comes from outside the block.

#include <cstddef>
#include <cstdint>
#include <span>

/// Reads numbers and stretches of bytes from a borrowed block, in order. Fails once, stays failed.
class ByteReader {
public:
    explicit ByteReader(std::span<const std::uint8_t> data) : rest_(data) {}

    /// Whether any read asked for more than there was.
    bool failed() const { return failed_; }

    /// Bytes that are left; 0 after a failure.
    std::size_t remaining() const { return rest_.size(); }

    /// The next `count` bytes, borrowed from the block; empty on failure.
    std::span<const std::uint8_t> bytes(std::size_t count) {
        if (count > rest_.size()) {
            failed_ = true;
            rest_ = {};
            return {};
        }
        const auto taken = rest_.first(count);
        rest_ = rest_.subspan(count);
        return taken;
    }

    /// Passes over `count` bytes.
    void skip(std::size_t count) { bytes(count); }

    std::uint8_t u8() { return static_cast<std::uint8_t>(little(1)); }
    std::uint16_t u16le() { return static_cast<std::uint16_t>(little(2)); }
    std::uint32_t u32le() { return static_cast<std::uint32_t>(little(4)); }
    std::uint64_t u64le() { return little(8); }
    std::uint16_t u16be() { return static_cast<std::uint16_t>(big(2)); }
    std::uint32_t u32be() { return static_cast<std::uint32_t>(big(4)); }
    std::uint64_t u64be() { return big(8); }

private:
    std::uint64_t little(std::size_t count) {
        std::uint64_t value = 0;
        unsigned shift = 0;
        for (const std::uint8_t byte : bytes(count)) {
            value |= std::uint64_t{byte} << shift;
            shift += 8;
        }
        return value;
    }

    std::uint64_t big(std::size_t count) {
        std::uint64_t value = 0;
        for (const std::uint8_t byte : bytes(count)) value = value << 8 | byte;
        return value;
    }

    std::span<const std::uint8_t> rest_;
    bool failed_ = false;
};

#pragma once

// The bounded reader of the script engine's binary files.
//
// It walks a block of bytes that it borrows: little-endian numbers, texts with their length in front, counts of
// records. Each read takes what it asks for or fails; after the first failure every further read fails too and gives
// zeros or nothing, so a decoder may read a whole record and ask once whether all of it was there. A count is believed
// only if that many records could stand in the bytes that are left, whatever they hold: nothing is ever allocated for
// records that the file cannot have.

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

/// Reads a borrowed block in order. Fails once, stays failed.
class ScriptByteReader {
public:
    explicit ScriptByteReader(std::span<const unsigned char> data) : rest_(data) {}

    /// Whether any read asked for more than there was.
    bool failed() const { return failed_; }
    /// Bytes that are left; 0 after a failure.
    std::size_t remaining() const { return rest_.size(); }

    std::uint8_t u8() { return static_cast<std::uint8_t>(little(1)); }
    std::uint16_t u16() { return static_cast<std::uint16_t>(little(2)); }
    std::uint32_t u32() { return little(4); }
    /// One byte; every value but 0 is true.
    bool boolean() { return u8() != 0; }

    /// The next `count` bytes as text; empty on failure.
    std::string bytes(std::size_t count) {
        const auto taken = take(count);
        return {reinterpret_cast<const char*>(taken.data()), taken.size()};
    }
    /// A text behind its length of 32 bits.
    std::string text() { return bytes(u32()); }

    /// A count of records of at least `smallestRecord` bytes each; fails if so many cannot follow.
    std::uint32_t count(std::size_t smallestRecord) {
        const std::uint32_t records = u32();
        if (records <= remaining() / smallestRecord) return records;
        fail();
        return 0;
    }

private:
    void fail() {
        failed_ = true;
        rest_ = {};
    }

    std::span<const unsigned char> take(std::size_t count) {
        if (count > rest_.size()) {
            fail();
            return {};
        }
        const auto taken = rest_.first(count);
        rest_ = rest_.subspan(count);
        return taken;
    }

    std::uint32_t little(std::size_t count) {
        std::uint32_t value = 0;
        unsigned shift = 0;
        for (const unsigned char byte : take(count)) {
            value |= std::uint32_t{byte} << shift;
            shift += 8;
        }
        return value;
    }

    std::span<const unsigned char> rest_;
    bool failed_ = false;
};

// A set of bytes: what a class, a bracket or a single letter of a pattern matches.
//
// 256 bits, so that every operation is four word operations and a set is a value that can be copied, compared and used
// as a key. The matcher doesn't test these bits; it reads tables with a byte for each byte, which the compiler of the
// pattern makes once from a finished set.

#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

namespace pattern {

using Byte = std::uint8_t;

class ByteSet {
public:
    constexpr ByteSet() = default;

    /// The set of `byte` alone.
    static constexpr ByteSet of(Byte byte) {
        ByteSet set;
        set.add(byte);
        return set;
    }

    /// The set of all bytes from `low` to `high`, both included.
    static constexpr ByteSet range(Byte low, Byte high) {
        ByteSet set;
        for (unsigned byte = low; byte <= high; ++byte) set.add(static_cast<Byte>(byte));
        return set;
    }

    static constexpr ByteSet all() { return ~ByteSet{}; }

    constexpr void add(Byte byte) { words_[byte / wordBits] |= bitOf(byte); }

    constexpr bool contains(Byte byte) const { return (words_[byte / wordBits] & bitOf(byte)) != 0; }

    constexpr ByteSet& operator|=(const ByteSet& other) {
        for (std::size_t i = 0; i < words_.size(); ++i) words_[i] |= other.words_[i];
        return *this;
    }

    constexpr ByteSet& operator&=(const ByteSet& other) {
        for (std::size_t i = 0; i < words_.size(); ++i) words_[i] &= other.words_[i];
        return *this;
    }

    friend constexpr ByteSet operator|(ByteSet a, const ByteSet& b) { return a |= b; }
    friend constexpr ByteSet operator&(ByteSet a, const ByteSet& b) { return a &= b; }

    constexpr ByteSet operator~() const {
        ByteSet set;
        for (std::size_t i = 0; i < words_.size(); ++i) set.words_[i] = ~words_[i];
        return set;
    }

    friend constexpr bool operator==(const ByteSet&, const ByteSet&) = default;
    friend constexpr auto operator<=>(const ByteSet&, const ByteSet&) = default;

    constexpr bool empty() const { return *this == ByteSet{}; }

    constexpr bool intersects(const ByteSet& other) const { return !(*this & other).empty(); }

    constexpr std::size_t count() const {
        std::size_t members = 0;
        for (const std::uint64_t word : words_) members += static_cast<std::size_t>(std::popcount(word));
        return members;
    }

    /// The smallest member. The set must not be empty.
    constexpr Byte lowest() const {
        std::size_t word = 0;
        while (words_[word] == 0) ++word;
        return static_cast<Byte>(word * wordBits + static_cast<std::size_t>(std::countr_zero(words_[word])));
    }

    /// The largest member. The set must not be empty.
    constexpr Byte highest() const {
        std::size_t word = words_.size() - 1;
        while (words_[word] == 0) --word;
        return static_cast<Byte>((word + 1) * wordBits - 1 - static_cast<std::size_t>(std::countl_zero(words_[word])));
    }

private:
    static constexpr std::size_t wordBits = 64;

    static constexpr std::uint64_t bitOf(Byte byte) { return std::uint64_t{1} << (byte % wordBits); }

    std::array<std::uint64_t, 4> words_{};
};

} // namespace pattern

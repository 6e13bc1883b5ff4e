// What a search may have to come back to.
//
// An entry is an untried way through the program, or the old value of a slot that must be there again once an earlier
// entry is taken. Some need a second number, which lies in an entry of its own below; that keeps the common ones at
// sixteen bytes. The memory grows by doubling up to a limit, is kept between searches as long as it is small, and is
// given back after a search that needed much.

#pragma once

#include "pattern/faults.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>

namespace pattern {

struct BacktrackEntry {
    enum class Kind : std::uint32_t {
        Bottom,    // nothing is left to try
        Way,       // on with instruction `index` at `place`
        OldSlot,   // slot `index` had the value `place`
        Round,     // a further round of the loop at instruction `index`, at `place`, if the loop's mark allows it
        GreedyRun, // the run of instruction `index` gave bytes back down to `place`, and may to the Second below
        LazyRun,   // the run of instruction `index` took bytes up to `place`, and may to the Second below
        Ahead,     // below is the outside of a look ahead that began at `place`; `index` goes on behind it.
        NotAhead,  // The Second below is the height of the entry of the look ahead around this one
        Second,    // `place` is a number of the entry above
    };

    Kind kind;
    std::uint32_t index;
    std::size_t place;
};

class BacktrackStack {
public:
    std::size_t size() const { return size_; }

    BacktrackEntry& top() { return entries_[size_ - 1]; }
    BacktrackEntry& at(std::size_t height) { return entries_[height]; }

    void push(const BacktrackEntry& entry) {
        if (size_ == capacity_) [[unlikely]]
            grow();
        entries_[size_++] = entry;
    }

    /// Pushes `entry` with its second number.
    void push(const BacktrackEntry& entry, std::size_t second) {
        push({BacktrackEntry::Kind::Second, 0, second});
        push(entry);
    }

    /// The second number of the top entry.
    std::size_t second() const { return entries_[size_ - 2].place; }

    void pop() { --size_; }
    void popWithSecond() { size_ -= 2; }

    /// Drops all entries from `height` on.
    void cutTo(std::size_t height) { size_ = height; }

    /// Gives back memory beyond what an ordinary search needs.
    void trim() {
        size_ = 0;
        if (capacity_ <= keptCapacity) return;
        entries_.reset();
        capacity_ = 0;
    }

private:
    static constexpr std::size_t firstCapacity = 64;
    static constexpr std::size_t keptCapacity = std::size_t{1} << 15; // 512 KiB
    static constexpr std::size_t maxCapacity = std::size_t{1} << 24;  // 256 MiB

    struct Free {
        void operator()(BacktrackEntry* entries) const { std::free(entries); }
    };

    void grow() {
        if (capacity_ == maxCapacity) throw PatternTooComplex();
        const std::size_t larger = capacity_ == 0 ? firstCapacity : capacity_ * 2;
        // realloc can often grow a large block in place, where new would hold old and new at once.
        void* const grown = std::realloc(entries_.get(), larger * sizeof(BacktrackEntry));
        if (grown == nullptr) throw PatternTooComplex();
        static_cast<void>(entries_.release());
        entries_.reset(static_cast<BacktrackEntry*>(grown));
        capacity_ = larger;
    }

    std::unique_ptr<BacktrackEntry[], Free> entries_;
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
};

} // namespace pattern

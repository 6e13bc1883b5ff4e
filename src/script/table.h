#pragma once

// The script table: a hash map from text keys to values, and the orders in which its keys are walked.
//
// All keys are text; a number is stored under its decimal digits. The hash map knows no order, but `pairs`, `next` and
// `#` promise one, so a table carries a remembered listing of its keys and its numeric length. Both are made on
// first need, they hold keys and not values, and they stay true until a key is added or removed: replacing the value
// of a key disturbs nothing. Every function here that adds or removes a key notes that by itself.

#include "script/variable.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

/// Lets the map be searched by a piece of text without making a std::string of it.
struct TextHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const noexcept { return std::hash<std::string_view>{}(text); }
};

class Table {
public:
    using Entries = std::unordered_map<std::string, Variable, TextHash, std::equal_to<>>;

    Table() = default;
    Table(const Table&) = delete;
    Table& operator=(const Table&) = delete;

    /// The value under the key, or null.
    Variable* find(std::string_view key);
    const Variable* find(std::string_view key) const;
    /// The value under the decimal text of a number, or null.
    Variable* find(int key);
    bool contains(std::string_view key) const { return find(key) != nullptr; }

    /// Replaces the value of the key or adds the key.
    void set(std::string_view key, Variable value);
    void set(int key, Variable value);
    /// The value under the key, added as nil if it is missing.
    Variable& findOrAdd(std::string_view key);
    /// Removes the key; says whether it was there.
    bool erase(std::string_view key);
    bool erase(int key);
    void clear();

    std::size_t size() const { return entries_.size(); }
    bool empty() const { return entries_.empty(); }
    void reserve(std::size_t count) { entries_.reserve(count); }
    const Entries& entries() const { return entries_; }

    /// The keys in byte order, so that "10" comes before "9". Valid until a key is added or removed.
    const std::vector<std::string>& sortedKeys() const;
    /// The same keys in their best reading: an integer, else a float, else the text.
    const std::vector<Variable>& sortedKeyValues() const;
    /// The place of a key in `sortedKeys`, or `noPlace`.
    std::size_t placeOf(std::string_view key) const;
    /// The largest n such that the keys "1" to "n" all exist.
    unsigned numericLength() const;

    /// Raised by one whenever a key is added or removed.
    std::uint64_t mutationVersion() const { return mutationVersion_; }

    /// Gives the containers among the values away to `out`; used to let go of deep data without recursion.
    void moveSharedValuesTo(std::vector<Variable>& out);

    static constexpr std::size_t noPlace = ~std::size_t{0};

private:
    struct KeyCache;
    struct KeyCacheDeleter {
        void operator()(KeyCache* cache) const;
    };

    KeyCache& cache() const;
    const KeyCache& listedKeys() const;
    void markMutated() { ++mutationVersion_; }

    Entries entries_;
    std::uint64_t mutationVersion_ = 0;
    mutable std::unique_ptr<KeyCache, KeyCacheDeleter> keyCache_; // null until an order or length is asked for
};

/// A key in its best reading: an integer if the whole text is one in decimal, else a float if the whole text is one
/// and is not out of range, else the text itself.
Variable keyReading(const std::string& key);

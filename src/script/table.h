#pragma once

// The script table: a hash map from text keys to values, and the orders in which its keys are walked.
//
// All keys are text; a number is stored under its decimal digits. The entries lie in one row, and behind it stands an
// index of their places by hash; a small table does without the index, because comparing a few hashes is faster. A key
// is a hold on the text that it came with, so a key that stands in the source is found by its address: the engine has
// one text for all literals that read the same, and a place in the source may remember where it found its key last.
//
// The row knows no order, but `pairs`, `next` and `#` promise one, so a table carries a remembered listing of its keys
// and its numeric length. Both are made on first need, they hold keys and not values, and they stay true until a key is
// added or removed: replacing the value of a key disturbs nothing. Every function here that adds or removes a key notes
// that by itself, and each of them may move the values of the others.

#include "script/variable.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

class Table {
public:
    struct Entry {
        Ref<ScriptText> key;
        std::uint32_t hash = 0;
        Variable value;
    };
    using Entries = std::vector<Entry>;

    Table() = default;
    Table(const Table&) = delete;
    Table& operator=(const Table&) = delete;

    /// The value under the key, or null.
    Variable* find(std::string_view key);
    const Variable* find(std::string_view key) const;
    Variable* find(const ScriptText& key) {
        Entry* entry = findEntry(key.text, hashOf(key));
        return entry == nullptr ? nullptr : &entry->value;
    }
    /// The same for a key in the source. `hint` is where it was found last in whatever table, and is brought up to
    /// date.
    Variable* find(const ScriptText& key, std::uint32_t& hint) {
        if (hint < entries_.size() && entries_[hint].key.get() == &key) return &entries_[hint].value;
        Entry* entry = findEntry(key.text, hashOf(key));
        if (entry == nullptr) return nullptr;
        hint = static_cast<std::uint32_t>(entry - entries_.data());
        return &entry->value;
    }
    /// The value under the decimal text of a number, or null.
    Variable* find(int key);
    bool contains(std::string_view key) const { return find(key) != nullptr; }

    /// Replaces the value of the key or adds the key.
    void set(std::string_view key, Variable value);
    void set(int key, Variable value);
    /// The value under the key, added as nil if it is missing.
    Variable& findOrAdd(std::string_view key);
    /// The same under a key that is shared from now on.
    Variable& findOrAdd(const Ref<ScriptText>& key);
    /// Removes the key; says whether it was there.
    bool erase(std::string_view key);
    bool erase(int key);
    void clear();

    std::size_t size() const { return entries_.size(); }
    bool empty() const { return entries_.empty(); }
    void reserve(std::size_t count);
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

    // An index place holds the entry's number plus 1, or 0 if it is free. The index is a power of two in size, at most
    // three quarters full, and searched forwards from the hash's place.
    static constexpr std::size_t mostWithoutIndex = 8;

    static std::uint32_t hashOf(std::string_view text);
    static std::uint32_t hashOf(const ScriptText& text) {
        if (text.hash == 0) text.hash = hashOf(std::string_view(text.text));
        return text.hash;
    }
    Entry* findEntry(std::string_view key, std::uint32_t hash) const;
    Variable& add(Ref<ScriptText> key, std::uint32_t hash);
    /// The index place that holds the entry's number.
    std::size_t indexPlaceOf(std::size_t entry) const;
    void enterInIndex(std::size_t entry);
    void removeFromIndex(std::size_t place);
    void rebuildIndex(std::size_t capacity);

    KeyCache& cache() const;
    const KeyCache& listedKeys() const;
    void markMutated() { ++mutationVersion_; }

    Entries entries_;
    std::vector<std::uint32_t> index_; // empty while the table is small
    std::uint64_t mutationVersion_ = 0;
    mutable std::unique_ptr<KeyCache, KeyCacheDeleter> keyCache_; // null until an order or length is asked for
};

/// A key in its best reading: an integer if the whole text is one in decimal, else a float if the whole text is one
/// and is not out of range, else the text itself.
Variable keyReading(const std::string& key);

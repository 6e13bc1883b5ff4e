#include "script/table.h"

#include "script/token.h"

#include <algorithm>
#include <charconv>

namespace {

/// The decimal text of a number, in place.
class DecimalKey {
public:
    explicit DecimalKey(int number) {
        const auto result = std::to_chars(buffer_, buffer_ + sizeof buffer_, number);
        length_ = static_cast<std::size_t>(result.ptr - buffer_);
    }
    operator std::string_view() const { return {buffer_, length_}; }

private:
    char buffer_[12];
    std::size_t length_;
};

constexpr std::uint64_t neverListed = ~std::uint64_t{0};

} // namespace

/// Both listings of one table and its numeric length, each with the version of the key set that it shows.
struct Table::KeyCache {
    std::uint64_t listedVersion = neverListed;
    std::vector<std::string> keys;
    std::vector<Variable> keyValues;
    std::unordered_map<std::string_view, std::size_t> places; // keys point into `keys`; filled on first need
    std::uint64_t lengthVersion = neverListed;
    unsigned numericLength = 0;
};

void Table::KeyCacheDeleter::operator()(KeyCache* cache) const { delete cache; }

Variable keyReading(const std::string& key) {
    int number = 0;
    if (parseIntStrict(key, number)) return number;
    float fraction = 0;
    if (parseFloatStrict(key, fraction)) return fraction;
    return key;
}

// ---------------------------------------------------------------------------------------------------------------------
// Entries and their index
// ---------------------------------------------------------------------------------------------------------------------

/// Never 0, which stands for a hash that is not known yet.
std::uint32_t Table::hashOf(std::string_view text) {
    const std::size_t wide = std::hash<std::string_view>{}(text);
    const auto hash = static_cast<std::uint32_t>(wide ^ (wide >> 32));
    return hash == 0 ? 1 : hash;
}

Table::Entry* Table::findEntry(std::string_view key, std::uint32_t hash) const {
    const auto isHere = [key, hash](const Entry& entry) { return entry.hash == hash && entry.key->text == key; };
    auto* const entries = const_cast<Entry*>(entries_.data());
    if (index_.empty()) {
        for (std::size_t i = 0; i < entries_.size(); ++i)
            if (isHere(entries[i])) return &entries[i];
        return nullptr;
    }
    const std::size_t mask = index_.size() - 1;
    for (std::size_t place = hash & mask; index_[place] != 0; place = (place + 1) & mask)
        if (isHere(entries[index_[place] - 1])) return &entries[index_[place] - 1];
    return nullptr;
}

void Table::enterInIndex(std::size_t entry) {
    const std::size_t mask = index_.size() - 1;
    std::size_t place = entries_[entry].hash & mask;
    while (index_[place] != 0) place = (place + 1) & mask;
    index_[place] = static_cast<std::uint32_t>(entry + 1);
}

void Table::rebuildIndex(std::size_t capacity) {
    std::size_t size = 16;
    while (size * 3 / 4 < capacity) size *= 2;
    index_.assign(size, 0);
    for (std::size_t i = 0; i < entries_.size(); ++i) enterInIndex(i);
}

void Table::reserve(std::size_t count) {
    entries_.reserve(count);
    if (count > mostWithoutIndex && count > index_.size() * 3 / 4) rebuildIndex(count);
}

Variable& Table::add(Ref<ScriptText> key, std::uint32_t hash) {
    markMutated();
    Entry& entry = entries_.emplace_back();
    entry.key = std::move(key);
    entry.hash = hash;
    const std::size_t count = entries_.size();
    if (!index_.empty() && count <= index_.size() * 3 / 4)
        enterInIndex(count - 1);
    else if (count > mostWithoutIndex)
        rebuildIndex(count * 2);
    return entry.value;
}

std::size_t Table::indexPlaceOf(std::size_t entry) const {
    const std::size_t mask = index_.size() - 1;
    std::size_t place = entries_[entry].hash & mask;
    while (index_[place] != entry + 1) place = (place + 1) & mask;
    return place;
}

/// Frees a place and draws those behind it forward that would not be found any more.
void Table::removeFromIndex(std::size_t place) {
    const std::size_t mask = index_.size() - 1;
    index_[place] = 0;
    for (std::size_t next = (place + 1) & mask; index_[next] != 0; next = (next + 1) & mask) {
        const std::size_t home = entries_[index_[next] - 1].hash & mask;
        const bool isReachable = ((next - home) & mask) < ((next - place) & mask);
        if (isReachable) continue;
        index_[place] = index_[next];
        index_[next] = 0;
        place = next;
    }
}

// ---------------------------------------------------------------------------------------------------------------------
// Keys and values
// ---------------------------------------------------------------------------------------------------------------------

Variable* Table::find(std::string_view key) {
    Entry* const entry = findEntry(key, hashOf(key));
    return entry == nullptr ? nullptr : &entry->value;
}

const Variable* Table::find(std::string_view key) const {
    const Entry* const entry = findEntry(key, hashOf(key));
    return entry == nullptr ? nullptr : &entry->value;
}

Variable* Table::find(int key) { return find(std::string_view(DecimalKey(key))); }

void Table::set(std::string_view key, Variable value) { findOrAdd(key) = std::move(value); }

void Table::set(int key, Variable value) { set(std::string_view(DecimalKey(key)), std::move(value)); }

Variable& Table::findOrAdd(std::string_view key) {
    const std::uint32_t hash = hashOf(key);
    if (Entry* const entry = findEntry(key, hash)) return entry->value;
    return add(makeRef<ScriptText>(std::string(key)), hash);
}

Variable& Table::findOrAdd(const Ref<ScriptText>& key) {
    const std::uint32_t hash = hashOf(*key);
    if (Entry* const entry = findEntry(key->text, hash)) return entry->value;
    return add(key, hash);
}

bool Table::erase(std::string_view key) {
    Entry* const found = findEntry(key, hashOf(key));
    if (found == nullptr) return false;
    const auto hole = static_cast<std::size_t>(found - entries_.data());
    const std::size_t last = entries_.size() - 1;
    if (!index_.empty()) {
        removeFromIndex(indexPlaceOf(hole));
        if (hole != last) index_[indexPlaceOf(last)] = static_cast<std::uint32_t>(hole + 1);
    }
    // The value may hold this very table, so it is let go of when all is in order.
    const Entry gone = std::move(entries_[hole]);
    if (hole != last) entries_[hole] = std::move(entries_[last]);
    entries_.pop_back();
    markMutated();
    return true;
}

bool Table::erase(int key) { return erase(std::string_view(DecimalKey(key))); }

void Table::clear() {
    const Entries gone = std::move(entries_);
    entries_.clear();
    index_.clear();
    markMutated();
}

void Table::moveSharedValuesTo(std::vector<Variable>& out) {
    for (Entry& entry : entries_)
        if (entry.value.isArray() || entry.value.isTable() || entry.value.isMulti())
            out.push_back(std::move(entry.value));
}

// ---------------------------------------------------------------------------------------------------------------------
// Listings
// ---------------------------------------------------------------------------------------------------------------------

Table::KeyCache& Table::cache() const {
    if (!keyCache_) keyCache_.reset(new KeyCache);
    return *keyCache_;
}

const Table::KeyCache& Table::listedKeys() const {
    KeyCache& listing = cache();
    if (listing.listedVersion == mutationVersion_) return listing;
    listing.places.clear();
    listing.keys.clear();
    listing.keys.reserve(entries_.size());
    for (const Entry& entry : entries_) listing.keys.push_back(entry.key->text);
    std::sort(listing.keys.begin(), listing.keys.end());
    listing.keyValues.clear();
    listing.keyValues.reserve(listing.keys.size());
    for (const std::string& key : listing.keys) listing.keyValues.push_back(keyReading(key));
    listing.listedVersion = mutationVersion_;
    return listing;
}

const std::vector<std::string>& Table::sortedKeys() const { return listedKeys().keys; }

const std::vector<Variable>& Table::sortedKeyValues() const { return listedKeys().keyValues; }

std::size_t Table::placeOf(std::string_view key) const {
    listedKeys();
    KeyCache& listing = cache();
    if (listing.places.empty())
        for (std::size_t i = 0; i < listing.keys.size(); ++i) listing.places.emplace(listing.keys[i], i);
    const auto place = listing.places.find(key);
    return place == listing.places.end() ? noPlace : place->second;
}

unsigned Table::numericLength() const {
    KeyCache& listing = cache();
    if (listing.lengthVersion != mutationVersion_) {
        unsigned length = 0;
        while (contains(DecimalKey(static_cast<int>(length) + 1))) ++length;
        listing.numericLength = length;
        listing.lengthVersion = mutationVersion_;
    }
    return listing.numericLength;
}

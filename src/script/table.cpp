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

Variable* Table::find(std::string_view key) {
    const auto place = entries_.find(key);
    return place == entries_.end() ? nullptr : &place->second;
}

const Variable* Table::find(std::string_view key) const {
    const auto place = entries_.find(key);
    return place == entries_.end() ? nullptr : &place->second;
}

Variable* Table::find(int key) { return find(std::string_view(DecimalKey(key))); }

void Table::set(std::string_view key, Variable value) { findOrAdd(key) = std::move(value); }

void Table::set(int key, Variable value) { set(std::string_view(DecimalKey(key)), std::move(value)); }

Variable& Table::findOrAdd(std::string_view key) {
    const auto place = entries_.find(key);
    if (place != entries_.end()) return place->second;
    markMutated();
    return entries_.emplace(std::string(key), Variable()).first->second;
}

bool Table::erase(std::string_view key) {
    const auto place = entries_.find(key);
    if (place == entries_.end()) return false;
    entries_.erase(place);
    markMutated();
    return true;
}

bool Table::erase(int key) { return erase(std::string_view(DecimalKey(key))); }

void Table::clear() {
    entries_.clear();
    markMutated();
}

void Table::moveSharedValuesTo(std::vector<Variable>& out) {
    for (auto& [key, value] : entries_)
        if (value.isArray() || value.isTable() || value.isMulti()) out.push_back(std::move(value));
}

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
    for (const auto& [key, value] : entries_) listing.keys.push_back(key);
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

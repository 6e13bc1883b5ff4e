// Tables of bytes.

#include "pattern/program.h"

namespace pattern {

namespace {

/// The ranges that `set` is made of, at most one more than a table holds.
std::vector<ByteTable::Range> rangesOf(const ByteSet& set) {
    std::vector<ByteTable::Range> ranges;
    for (unsigned code = 0; code < 256 && ranges.size() <= ByteTable::maxRanges; ++code) {
        const Byte byte = static_cast<Byte>(code);
        if (!set.contains(byte)) continue;
        if (!ranges.empty() && ranges.back().high + 1U == code)
            ranges.back().high = byte;
        else
            ranges.push_back({byte, byte});
    }
    return ranges;
}

} // namespace

ByteTable::ByteTable(const ByteSet& set) {
    for (std::size_t byte = 0; byte < has.size(); ++byte) has[byte] = set.contains(static_cast<Byte>(byte));
    const std::vector<Range> members = rangesOf(set);
    const std::vector<Range> others = rangesOf(~set);
    rangesAreOthers = others.size() < members.size() && !others.empty();
    const std::vector<Range>& fewer = rangesAreOthers ? others : members;
    if (fewer.size() > maxRanges) return;
    rangeCount = fewer.size();
    std::copy(fewer.begin(), fewer.end(), ranges.begin());
}

} // namespace pattern

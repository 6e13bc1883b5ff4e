// Deflate streams, written as the format is described and no faster.

#include "deflate_maker.h"

#include <algorithm>

namespace png_test {

namespace {

CodeLengths fixedLiterals() {
    CodeLengths lengths(288, 8);
    std::fill(lengths.begin() + 144, lengths.begin() + 256, std::uint8_t{9});
    std::fill(lengths.begin() + 256, lengths.begin() + 280, std::uint8_t{7});
    return lengths;
}

} // namespace

Bytes expand(const std::vector<Token>& tokens, Bytes before) {
    for (const Token& token : tokens) {
        if (token.length == 0) before.push_back(token.literal);
        for (std::uint32_t i = 0; i < token.length; ++i) before.push_back(before[before.size() - token.distance]);
    }
    return before;
}

std::uint32_t plainAdler(const Bytes& data) {
    std::uint32_t a = 1;
    std::uint32_t b = 0;
    for (const std::uint8_t byte : data) {
        a = (a + byte) % 65521;
        b = (b + a) % 65521;
    }
    return b << 16 | a;
}

ExtraSymbol lengthSymbol(std::uint32_t length) {
    if (length == 258) return {285, 0, 0};
    std::uint32_t symbol = 257;
    std::uint32_t least = 3;
    for (;; ++symbol) {
        const std::uint32_t extraBits = symbol < 265 ? 0 : (symbol - 261) / 4;
        if (length < least + (1U << extraBits)) return {symbol, extraBits, length - least};
        least += 1U << extraBits;
    }
}

ExtraSymbol distanceSymbol(std::uint32_t distance) {
    std::uint32_t symbol = 0;
    std::uint32_t least = 1;
    for (;; ++symbol) {
        const std::uint32_t extraBits = symbol < 4 ? 0 : (symbol - 2) / 2;
        if (distance < least + (1U << extraBits)) return {symbol, extraBits, distance - least};
        least += 1U << extraBits;
    }
}

CodeLengths randomCode(Random& random, const std::vector<bool>& used, unsigned longest) {
    const auto count = static_cast<std::size_t>(std::count(used.begin(), used.end(), true));
    std::vector<std::uint8_t> leaves = {1, 1}; // depths of a tree's leaves; a leaf that is split leaves two
    // Splitting the deepest leaf now and then makes long codes, which pure chance seldom does.
    while (leaves.size() < count) {
        std::size_t chosen = random() % 3 == 0 ? leaves.size() - 1 : random() % leaves.size();
        while (leaves[chosen] >= longest) chosen = (chosen + 1) % leaves.size();
        ++leaves[chosen];
        leaves.push_back(leaves[chosen]);
    }
    std::shuffle(leaves.begin(), leaves.end(), random);
    CodeLengths lengths(used.size());
    for (std::size_t symbol = 0; symbol < used.size(); ++symbol)
        if (used[symbol]) {
            lengths[symbol] = leaves.back();
            leaves.pop_back();
        }
    return lengths;
}

DeflateMaker& DeflateMaker::bits(std::uint32_t value, unsigned count) {
    for (unsigned i = 0; i < count; ++i) {
        if (used_ == 8) {
            bytes_.push_back(0);
            used_ = 0;
        }
        bytes_.back() = static_cast<std::uint8_t>(bytes_.back() | (value >> i & 1U) << used_++);
    }
    return *this;
}

DeflateMaker& DeflateMaker::align() {
    used_ = 8;
    return *this;
}

DeflateMaker& DeflateMaker::streamHeader(std::uint8_t method, std::uint8_t flags) {
    return bits(method, 8).bits(flags, 8);
}

DeflateMaker& DeflateMaker::stored(const Bytes& data, bool last) {
    const auto size = static_cast<std::uint32_t>(data.size());
    blockHeader(last, 0).align().bits(size, 16).bits(~size & 0xFFFFU, 16);
    bytes_.insert(bytes_.end(), data.begin(), data.end());
    return *this;
}

DeflateMaker& DeflateMaker::fixed(const std::vector<Token>& tokens, bool last) {
    return blockHeader(last, 1).symbols(tokens, fixedLiterals(), CodeLengths(32, 5));
}

DeflateMaker& DeflateMaker::dynamic(const std::vector<Token>& tokens, bool last, const CodeLengths& literals,
                                    const CodeLengths& distances) {
    return blockHeader(last, 2).dynamicTables(literals, distances).symbols(tokens, literals, distances);
}

DeflateMaker& DeflateMaker::trailer(std::uint32_t adler) {
    align();
    for (unsigned shift = 32; shift > 0; shift -= 8) bits(adler >> (shift - 8) & 0xFFU, 8);
    return *this;
}

DeflateMaker& DeflateMaker::dynamicTables(const CodeLengths& literals, const CodeLengths& distances) {
    constexpr std::uint8_t order[] = {16, 17, 18, 0, 8, 7, 9, 6, 10, 5, 11, 4, 12, 3, 13, 2, 14, 1, 15};
    bits(static_cast<std::uint32_t>(literals.size()) - 257, 5);
    bits(static_cast<std::uint32_t>(distances.size()) - 1, 5);
    bits(19 - 4, 4);
    // A code for the lengths 0 to 15 and the three repetitions: thirteen codes of four bits and six of five.
    CodeLengths lengthCode(19, 4);
    for (std::size_t symbol = 13; symbol < 19; ++symbol) lengthCode[symbol] = 5;
    for (const std::uint8_t symbol : order) bits(lengthCode[symbol], 3);

    CodeLengths all = literals;
    all.insert(all.end(), distances.begin(), distances.end());
    for (std::size_t at = 0; at < all.size();) {
        std::size_t run = 1;
        while (at + run < all.size() && all[at + run] == all[at]) ++run;
        if (all[at] == 0 && run >= 11) {
            run = std::min<std::size_t>(run, 138);
            code(lengthCode, 18).bits(static_cast<std::uint32_t>(run) - 11, 7);
        } else if (all[at] == 0 && run >= 3) {
            code(lengthCode, 17).bits(static_cast<std::uint32_t>(run) - 3, 3);
        } else if (at > 0 && all[at] == all[at - 1] && run >= 3) {
            run = std::min<std::size_t>(run, 6);
            code(lengthCode, 16).bits(static_cast<std::uint32_t>(run) - 3, 2);
        } else {
            run = 1;
            code(lengthCode, all[at]);
        }
        at += run;
    }
    return *this;
}

DeflateMaker& DeflateMaker::symbols(const std::vector<Token>& tokens, const CodeLengths& literals,
                                    const CodeLengths& distances) {
    for (const Token& token : tokens) {
        if (token.length == 0) {
            code(literals, token.literal);
            continue;
        }
        const ExtraSymbol length = lengthSymbol(token.length);
        const ExtraSymbol distance = distanceSymbol(token.distance);
        code(literals, length.symbol).bits(length.extra, length.extraBits);
        code(distances, distance.symbol).bits(distance.extra, distance.extraBits);
    }
    return code(literals, 256);
}

/// The code is counted up from the first symbol each time: codes of the same length follow each other, and a longer
/// code goes on from the shorter ones.
DeflateMaker& DeflateMaker::code(const CodeLengths& lengths, std::uint32_t symbol) {
    const std::uint8_t length = lengths.at(symbol);
    std::uint32_t value = 0;
    for (unsigned shorter = 1; shorter <= length; ++shorter) {
        value *= 2;
        const std::size_t end = shorter == length ? symbol : lengths.size();
        value += static_cast<std::uint32_t>(
            std::count(lengths.begin(), lengths.begin() + static_cast<std::ptrdiff_t>(end), shorter));
    }
    for (unsigned bit = length; bit > 0; --bit) bits(value >> (bit - 1) & 1U, 1);
    return *this;
}

Bytes storedStream(const Bytes& data, std::size_t blockSize) {
    DeflateMaker maker;
    maker.streamHeader();
    std::size_t at = 0;
    do {
        const std::size_t size = std::min(blockSize, data.size() - at);
        const auto begin = data.begin() + static_cast<std::ptrdiff_t>(at);
        maker.stored(Bytes(begin, begin + static_cast<std::ptrdiff_t>(size)), at + size == data.size());
        at += size;
    } while (at < data.size());
    return maker.trailer(plainAdler(data)).finish();
}

} // namespace png_test

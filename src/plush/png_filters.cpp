// Row filters, several bytes at a time.
//
// To filter a row all neighbours are known, so sixteen bytes go at once whatever the filter. To undo one, each pixel
// waits for the pixel to its left; only its channels are independent. They lie in the lanes of one vector, as 16-bit
// numbers, so that sums and differences fit, and what counts is how many operations lie between a pixel and the next.
// Where a pixel has one or two bytes and the filter is a plain sum, single bytes are quicker.
//
// The vectors are those of the compilers' own extension, which knows no particular processor.

#include "plush/png_filters.h"

#include "plush/byte_vectors.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <limits>

namespace wm::png {

namespace {

using Bytes8 = std::uint8_t __attribute__((vector_size(8)));
using Longs2 = std::uint64_t __attribute__((vector_size(16)));
using Lanes = std::int16_t __attribute__((vector_size(16)));

// ---- undoing ----

/// Bytes that are loaded and stored for a pixel: for 3 and 6 a little more than it has.
template <std::size_t pixel> constexpr std::size_t pixelBlock = std::bit_ceil(pixel);

/// The channels of the pixel at `from`, a lane for each; further lanes may hold anything.
template <std::size_t pixel> inline Lanes loadPixel(const std::uint8_t* from) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, from, pixelBlock<pixel>);
    return reinterpret_cast<Lanes>(widenLow(reinterpret_cast<Bytes16>(Longs2{bits, 0})));
}

/// Stores lanes of 0 to 255 as bytes.
template <std::size_t pixel> inline void storePixel(std::uint8_t* to, Lanes lanes) {
    const Bytes8 bytes = __builtin_convertvector(lanes, Bytes8);
    std::memcpy(to, &bytes, pixelBlock<pixel>);
}

/// Undoes a filter pixel by pixel, where `predict` gives the prediction from a, b and c.
template <std::size_t pixel, typename Predict>
void unfilterPixels(std::uint8_t* target, const std::uint8_t* filtered, const std::uint8_t* above, std::size_t size,
                    Predict predict) {
    Lanes a{};
    Lanes c{};
    for (std::size_t at = 0; at < size; at += pixel) {
        const Lanes b = loadPixel<pixel>(above + at);
        a = predict(loadPixel<pixel>(filtered + at), a, b, c) & 0xFF;
        storePixel<pixel>(target + at, a);
        c = b;
    }
}

/// The same for pixels of one or two bytes and predictions that take no more than plain arithmetic.
template <std::size_t pixel, typename Predict>
void unfilterBytes(std::uint8_t* target, const std::uint8_t* filtered, const std::uint8_t* above, std::size_t size,
                   Predict predict) {
    std::array<std::uint8_t, pixel> a{};
    for (std::size_t at = 0; at < size; at += pixel)
        for (std::size_t channel = 0; channel < pixel; ++channel) {
            const int predicted = predict(a[channel], above[at + channel]);
            a[channel] = static_cast<std::uint8_t>(filtered[at + channel] + predicted);
            target[at + channel] = a[channel];
        }
}

/// A byte plus its Paeth prediction: the neighbour that is nearest to a + b - c, where of equally near ones a comes
/// before b and b before c.
///
/// Counted from c, the neighbours are x, y and 0, and what they shall be near to is x + y. If its negative is at least
/// the larger of x and y, the smaller one is nearest; if it is at most the smaller, the larger; between them 0 is.
inline Lanes addPaeth(Lanes byte, Lanes a, Lanes b, Lanes c) {
    const Lanes x = a - c;
    const Lanes y = b - c;
    const Lanes low = x < y ? x : y;
    const Lanes high = x < y ? y : x;
    const Lanes negative = (c - y) - a;
    return (byte + c) + ((low & ~(high > negative)) | (high & ~(negative > low)));
}

template <std::size_t pixel>
void unfilterRow(std::uint8_t* target, const std::uint8_t* filtered, const std::uint8_t* above, std::size_t size,
                 std::uint8_t filter) {
    if (filter == filterPaeth) return unfilterPixels<pixel>(target, filtered, above, size, addPaeth);
    if constexpr (pixel <= 2) {
        if (filter == filterSub)
            unfilterBytes<pixel>(target, filtered, above, size, [](int a, int) { return a; });
        else
            unfilterBytes<pixel>(target, filtered, above, size, [](int a, int b) { return (a + b) / 2; });
    } else {
        if (filter == filterSub)
            unfilterPixels<pixel>(target, filtered, above, size,
                                  [](Lanes byte, Lanes a, Lanes, Lanes) { return byte + a; });
        else
            unfilterPixels<pixel>(target, filtered, above, size,
                                  [](Lanes byte, Lanes a, Lanes b, Lanes) { return byte + ((a + b) >> 1); });
    }
}

void unfilterUp(std::uint8_t* target, const std::uint8_t* filtered, const std::uint8_t* above, std::size_t size) {
    std::size_t at = 0;
    for (; at + 16 <= size; at += 16) storeBytes16(target + at, loadBytes16(filtered + at) + loadBytes16(above + at));
    for (; at < size; ++at) target[at] = static_cast<std::uint8_t>(filtered[at] + above[at]);
}

// ---- filtering ----

constexpr std::size_t rgbaPixel = 4;
constexpr std::size_t shortestVectorRow = rgbaPixel + 16; // bytes; from here on a row can end with a whole vector

inline Bytes16 smaller(Bytes16 x, Bytes16 y) { return x < y ? x : y; }
inline Bytes16 larger(Bytes16 x, Bytes16 y) { return x > y ? x : y; }

/// (a + b) / 2 without a ninth bit.
inline Bytes16 average(Bytes16 a, Bytes16 b) { return (a & b) + ((a ^ b) >> 1); }

/// The Paeth prediction without a ninth bit.
///
/// Let `over` be how far the larger of a and b lies above c, and `under` how far the smaller lies below it, 0 where it
/// lies on the other side. a + b - c is nearest to the larger one if `over` is at least twice `under`, to the smaller
/// one if `under` is at least twice `over`, else to c.
inline Bytes16 paethBytes(Bytes16 a, Bytes16 b, Bytes16 c) {
    const Bytes16 over = larger(larger(a, b), c) - c;
    const Bytes16 under = c - smaller(smaller(a, b), c);
    const Bytes16 further = larger(over, under);
    const Bytes16 up = over & reinterpret_cast<Bytes16>(further - under >= under);
    const Bytes16 down = under & reinterpret_cast<Bytes16>(further - over >= over);
    return c + up - down;
}

/// Sixteen filtered bytes from `row` on, where a whole pixel lies to the left.
template <std::uint8_t filter> inline Bytes16 filteredBytes(const std::uint8_t* row, const std::uint8_t* above) {
    const Bytes16 bytes = loadBytes16(row);
    if constexpr (filter == filterNone) return bytes;
    if constexpr (filter == filterSub) return bytes - loadBytes16(row - rgbaPixel);
    if constexpr (filter == filterUp) return bytes - loadBytes16(above);
    if constexpr (filter == filterAverage) return bytes - average(loadBytes16(row - rgbaPixel), loadBytes16(above));
    if constexpr (filter == filterPaeth)
        return bytes - paethBytes(loadBytes16(row - rgbaPixel), loadBytes16(above), loadBytes16(above - rgbaPixel));
}

constexpr int paethPrediction(int a, int b, int c) {
    const int toA = b > c ? b - c : c - b;
    const int toB = a > c ? a - c : c - a;
    const int sum = a + b - 2 * c;
    const int toC = sum < 0 ? -sum : sum;
    if (toA <= toB && toA <= toC) return a;
    return toB <= toC ? b : c;
}

inline std::uint8_t predictByte(std::uint8_t filter, int a, int b, int c) {
    switch (filter) {
    case filterSub: return static_cast<std::uint8_t>(a);
    case filterUp: return static_cast<std::uint8_t>(b);
    case filterAverage: return static_cast<std::uint8_t>((a + b) / 2);
    case filterPaeth: return static_cast<std::uint8_t>(paethPrediction(a, b, c));
    default: return 0;
    }
}

/// The filtered byte at `at`, where the byte to the left may lie outside the row.
inline std::uint8_t filteredByte(std::uint8_t filter, const std::uint8_t* row, const std::uint8_t* above,
                                 std::size_t at) {
    const bool first = at < rgbaPixel;
    const int a = first ? 0 : row[at - rgbaPixel];
    const int c = first ? 0 : above[at - rgbaPixel];
    return static_cast<std::uint8_t>(row[at] - predictByte(filter, a, above[at], c));
}

constexpr unsigned absoluteOfSigned(std::uint8_t byte) { return byte < 128 ? byte : 256U - byte; }

/// The sum of the absolute values of bytes that are read as signed, a vector at a time.
class AbsoluteSum {
public:
    static constexpr std::size_t mostVectors = 65535 / (2 * 128); // after which a lane may be full

    void add(Bytes16 bytes) {
        const Words8 absolute = reinterpret_cast<Words8>(smaller(bytes, -bytes));
        pairs_ += absolute;
        upper_ += absolute >> 8;
    }

    std::uint64_t total() const {
        const Words8 both = pairs_ - (upper_ << 8) + upper_;
        std::uint64_t sum = 0;
        for (int lane = 0; lane < 8; ++lane) sum += both[lane];
        return sum;
    }

private:
    Words8 pairs_{}; // of the bytes in each word, the upper ones counting 256 times, modulo 65536
    Words8 upper_{}; // of the upper bytes
};

/// A mask of the last `count` bytes of a vector.
inline Bytes16 lastBytes(std::size_t count) {
    static constexpr std::array<std::uint8_t, 32> zerosAndOnes = [] {
        std::array<std::uint8_t, 32> bytes{};
        std::fill(bytes.begin() + 16, bytes.end(), std::uint8_t{0xFF});
        return bytes;
    }();
    return loadBytes16(zerosAndOnes.data() + count);
}

/// The sum of absolute values that one filter leaves of a row; anything above `limit` if it is more than that.
template <std::uint8_t filter>
std::uint64_t sumOfRow(const std::uint8_t* row, const std::uint8_t* above, std::size_t size, std::uint64_t limit) {
    constexpr std::size_t mostSteps = 64; // between two looks at the limit
    static_assert(mostSteps <= AbsoluteSum::mostVectors);
    std::uint64_t sum = 0;
    std::size_t at = 0;
    for (; at < rgbaPixel; ++at) sum += absoluteOfSigned(filteredByte(filter, row, above, at));
    while (at + 16 <= size && sum <= limit) {
        const std::size_t steps = std::min((size - at) / 16, mostSteps);
        AbsoluteSum part;
        for (std::size_t step = 0; step < steps; ++step, at += 16)
            part.add(filteredBytes<filter>(row + at, above + at));
        sum += part.total();
    }
    if (at == size || sum > limit) return sum;
    if (size >= shortestVectorRow) {
        AbsoluteSum part;
        part.add(filteredBytes<filter>(row + size - 16, above + size - 16) & lastBytes(size - at));
        return sum + part.total();
    }
    for (; at < size; ++at) sum += absoluteOfSigned(filteredByte(filter, row, above, at));
    return sum;
}

/// The filter that leaves the smallest sum; of equal ones the first.
class FilterChoice {
public:
    FilterChoice(const std::uint8_t* row, const std::uint8_t* above, std::size_t size)
        : row_(row), above_(above), size_(size) {}

    template <std::uint8_t filter> void consider() {
        const bool winsTies = filter < filter_;
        if (best_ == 0 && !winsTies) return;
        const std::uint64_t limit = winsTies ? best_ : best_ - 1;
        const std::uint64_t sum = sumOfRow<filter>(row_, above_, size_, limit);
        if (sum > limit) return;
        best_ = sum;
        filter_ = filter;
    }
    std::uint8_t filter() const { return filter_; }

private:
    const std::uint8_t* row_;
    const std::uint8_t* above_;
    std::size_t size_;
    std::uint64_t best_ = std::numeric_limits<std::uint64_t>::max();
    std::uint8_t filter_ = filterCount;
};

/// What usually wins comes first, so that the others are given up early.
std::uint8_t chooseFilter(const std::uint8_t* row, const std::uint8_t* above, std::size_t size) {
    FilterChoice choice(row, above, size);
    choice.consider<filterUp>();
    choice.consider<filterPaeth>();
    choice.consider<filterAverage>();
    choice.consider<filterSub>();
    choice.consider<filterNone>();
    return choice.filter();
}

template <std::uint8_t filter>
void filterRow(std::uint8_t* target, const std::uint8_t* row, const std::uint8_t* above, std::size_t size) {
    std::size_t at = 0;
    for (; at < rgbaPixel; ++at) target[at] = filteredByte(filter, row, above, at);
    const auto filterVector = [&](std::size_t from) {
        storeBytes16(target + from, filteredBytes<filter>(row + from, above + from));
    };
    for (; at + 16 <= size; at += 16) filterVector(at);
    if (size >= shortestVectorRow) return filterVector(size - 16); // some bytes twice, with the same result
    for (; at < size; ++at) target[at] = filteredByte(filter, row, above, at);
}

} // namespace

bool unfilter_row_to(std::uint8_t* target, const std::uint8_t* filtered, const std::uint8_t* above, std::size_t size,
                     std::size_t bytesPerPixel, std::uint8_t filter) {
    switch (filter) {
    case filterNone: std::memcpy(target, filtered, size); return true;
    case filterUp: unfilterUp(target, filtered, above, size); return true;
    case filterSub:
    case filterAverage:
    case filterPaeth: break;
    default: return false;
    }
    switch (bytesPerPixel) {
    case 1: unfilterRow<1>(target, filtered, above, size, filter); return true;
    case 2: unfilterRow<2>(target, filtered, above, size, filter); return true;
    case 3: unfilterRow<3>(target, filtered, above, size, filter); return true;
    case 4: unfilterRow<4>(target, filtered, above, size, filter); return true;
    case 6: unfilterRow<6>(target, filtered, above, size, filter); return true;
    default: unfilterRow<8>(target, filtered, above, size, filter); return true;
    }
}

void filter_rgba_row_to(std::uint8_t* target, const std::uint8_t* row, const std::uint8_t* above, std::size_t size) {
    const std::uint8_t filter = chooseFilter(row, above, size);
    *target++ = filter;
    switch (filter) {
    case filterSub: return filterRow<filterSub>(target, row, above, size);
    case filterUp: return filterRow<filterUp>(target, row, above, size);
    case filterAverage: return filterRow<filterAverage>(target, row, above, size);
    case filterPaeth: return filterRow<filterPaeth>(target, row, above, size);
    default: std::memcpy(target, row, size);
    }
}

} // namespace wm::png

// The row filters, against their definitions.

#include "plush/png_filters.h"
#include "png_maker.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

namespace {

using namespace png_test;

/// The Paeth predictor as the format's text has it.
int paeth(int a, int b, int c) {
    const int p = a + b - c;
    const int pa = std::abs(p - a);
    const int pb = std::abs(p - b);
    const int pc = std::abs(p - c);
    if (pa <= pb && pa <= pc) return a;
    return pb <= pc ? b : c;
}

int prediction(unsigned filter, int a, int b, int c) {
    switch (filter) {
    case 1: return a;
    case 2: return b;
    case 3: return (a + b) / 2;
    case 4: return paeth(a, b, c);
    default: return 0;
    }
}

/// The row filtered by the definition.
Bytes filtered(const Bytes& row, const Bytes& above, std::size_t pixel, unsigned filter) {
    Bytes result(row.size());
    for (std::size_t i = 0; i < row.size(); ++i) {
        const int a = i >= pixel ? row[i - pixel] : 0;
        const int c = i >= pixel ? above[i - pixel] : 0;
        result[i] = static_cast<std::uint8_t>(row[i] - prediction(filter, a, above[i], c));
    }
    return result;
}

/// The row that was filtered, by the code under test. No value if it refuses.
std::optional<Bytes> unfiltered(Bytes row, Bytes above, std::size_t pixel, unsigned filter) {
    const std::size_t size = row.size();
    Bytes target(size + wm::png::filterSlack);
    row.resize(size + wm::png::filterSlack);
    above.resize(size + wm::png::filterSlack);
    if (!wm::png::unfilter_row_to(target.data(), row.data(), above.data(), size, pixel,
                                  static_cast<std::uint8_t>(filter)))
        return std::nullopt;
    target.resize(size);
    return target;
}

/// Random bytes; in half of all cases only few values occur, so that predictions tie.
Bytes randomRow(Random& random, std::size_t size) {
    Bytes row(size);
    const bool coarse = random() % 2 == 0;
    for (auto& byte : row) byte = static_cast<std::uint8_t>(coarse ? random() % 3 * 100 : random());
    return row;
}

TEST(Filters, UnfilteringUndoesEveryFilterAtEveryPixelSizeAndWidth) {
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    Random random(seed);
    for (const std::size_t pixel : {1U, 2U, 3U, 4U, 6U, 8U})
        for (unsigned filter = 0; filter < wm::png::filterCount; ++filter)
            for (std::size_t width = 1; width <= 70; ++width) {
                const Bytes row = randomRow(random, width * pixel);
                const Bytes above = randomRow(random, width * pixel);
                ASSERT_EQ(unfiltered(filtered(row, above, pixel, filter), above, pixel, filter), row)
                    << pixel << ' ' << filter << ' ' << width;
            }
}

TEST(Filters, EveryPaethPredictionIsRightWhenReading) {
    // All (a, b) for a spread of c. The first pixel sets a and c, the second is predicted.
    for (int c = 0; c < 256; c += 15)
        for (int a = 0; a < 256; ++a) {
            Bytes row(512);
            Bytes above(512);
            for (std::size_t b = 0; b < 256; ++b) {
                above[b] = static_cast<std::uint8_t>(c);
                above[256 + b] = static_cast<std::uint8_t>(b);
                row[b] = static_cast<std::uint8_t>(a);
                row[256 + b] = static_cast<std::uint8_t>(a * 3 + static_cast<int>(b));
            }
            for (std::size_t lane = 0; lane < 256; lane += 8) {
                const auto two = [lane](const Bytes& bytes) {
                    const auto from = [&](std::size_t at) { return bytes.begin() + static_cast<std::ptrdiff_t>(at); };
                    Bytes pixels(from(lane), from(lane + 8));
                    pixels.insert(pixels.end(), from(256 + lane), from(256 + lane + 8));
                    return pixels;
                };
                ASSERT_EQ(unfiltered(filtered(two(row), two(above), 8, 4), two(above), 8, 4), two(row))
                    << a << ' ' << lane << ' ' << c;
            }
        }
}

TEST(Filters, EverySumAndAverageWraps) {
    const Bytes row(40, 255);
    const Bytes above(40, 255);
    for (const std::size_t pixel : {1U, 2U, 4U, 8U})
        for (unsigned filter = 0; filter < wm::png::filterCount; ++filter)
            EXPECT_EQ(unfiltered(filtered(row, above, pixel, filter), above, pixel, filter), row) << filter;
}

TEST(Filters, AnUnknownFilterIsRefused) {
    const Bytes row(8);
    for (unsigned filter = wm::png::filterCount; filter < 256; ++filter)
        EXPECT_EQ(unfiltered(row, row, 4, filter), std::nullopt) << filter;
}

/// The filter byte and row that the writer shall choose: the least sum, of equal ones the first.
Bytes bestFiltered(const Bytes& row, const Bytes& above) {
    std::size_t least = SIZE_MAX;
    Bytes best;
    for (unsigned filter = 0; filter < wm::png::filterCount; ++filter) {
        const Bytes result = filtered(row, above, 4, filter);
        std::size_t sum = 0;
        for (const std::uint8_t v : result) sum += v < 128 ? v : 256U - v;
        if (sum >= least) continue;
        least = sum;
        best = Bytes{static_cast<std::uint8_t>(filter)} + result;
    }
    return best;
}

Bytes chosen(const Bytes& row, const Bytes& above) {
    Bytes target(1 + row.size());
    wm::png::filter_rgba_row_to(target.data(), row.data(), above.data(), row.size());
    return target;
}

TEST(Filters, TheWriterTakesTheFilterWithTheLeastSum) {
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    Random random(seed);
    std::array<int, wm::png::filterCount> counts{};
    for (int round = 0; round < 4000; ++round) {
        const std::size_t size = 4 * (1 + random() % 60);
        Bytes above = randomRow(random, size);
        Bytes row = randomRow(random, size);
        // Rows that one of the filters predicts well, with a little noise.
        const auto filter = static_cast<unsigned>(random() % wm::png::filterCount);
        for (std::size_t i = 0; i < size; ++i) {
            const int a = i >= 4 ? row[i - 4] : 0;
            const int c = i >= 4 ? above[i - 4] : 0;
            row[i] = static_cast<std::uint8_t>(prediction(filter, a, above[i], c) + static_cast<int>(random() % 5) - 2);
        }
        const Bytes result = chosen(row, above);
        ASSERT_EQ(result, bestFiltered(row, above)) << round;
        ++counts[result[0]];
    }
    for (unsigned filter = 0; filter < wm::png::filterCount; ++filter) EXPECT_GT(counts[filter], 20) << filter;
}

TEST(Filters, ARowWhoseEndsDisagreeIsJudgedAsAWhole) {
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    Random random(seed);
    std::array<int, wm::png::filterCount> counts{};
    for (int round = 0; round < 300; ++round) {
        const std::size_t size = 4 * (300 + random() % 900);
        const std::size_t seam = random() % size;
        const std::array<std::uint64_t, 2> filters = {random() % wm::png::filterCount, random() % wm::png::filterCount};
        const Bytes above = randomRow(random, size);
        Bytes row = randomRow(random, size);
        for (std::size_t i = 0; i < size; ++i) {
            const int a = i >= 4 ? row[i - 4] : 0;
            const int c = i >= 4 ? above[i - 4] : 0;
            const auto filter = static_cast<unsigned>(filters[i < seam ? 0 : 1]);
            row[i] = static_cast<std::uint8_t>(prediction(filter, a, above[i], c) + static_cast<int>(random() % 3) - 1);
        }
        const Bytes result = chosen(row, above);
        ASSERT_EQ(result, bestFiltered(row, above)) << round;
        ++counts[result[0]];
    }
    for (unsigned filter = 0; filter < wm::png::filterCount; ++filter) EXPECT_GT(counts[filter], 0) << filter;
}

TEST(Filters, EveryPaethPredictionIsRightWhenWriting) {
    // All (a, b) for a spread of c, in pairs of pixels: the first sets a and c, the second is what is predicted.
    int rows = 0;
    int paethRows = 0;
    for (int c = 0; c < 256; c += 15)
        for (int a = 0; a < 256; ++a) {
            Bytes row;
            Bytes above;
            for (int b = 0; b < 256; b += 4) {
                row.insert(row.end(), 4, static_cast<std::uint8_t>(a));
                above.insert(above.end(), 4, static_cast<std::uint8_t>(c));
                for (int channel = 0; channel < 4; ++channel) {
                    row.push_back(static_cast<std::uint8_t>(paeth(a, b + channel, c)));
                    above.push_back(static_cast<std::uint8_t>(b + channel));
                }
            }
            const Bytes result = chosen(row, above);
            ASSERT_EQ(result, bestFiltered(row, above)) << a << ' ' << c;
            ++rows;
            if (result[0] == wm::png::filterPaeth) ++paethRows;
        }
    EXPECT_GT(paethRows, rows / 2);
}

TEST(Filters, OfEqualSumsTheFirstFilterIsTaken) {
    const Bytes zeros(64);
    EXPECT_EQ(chosen(zeros, zeros)[0], wm::png::filterNone);
    // One grey pixel: every filter that looks to the left or above sees zeros.
    EXPECT_EQ(chosen(Bytes(4, 9), Bytes(4))[0], wm::png::filterNone);
    // Rows that repeat: up and Paeth are both perfect.
    EXPECT_EQ(chosen(Bytes{1, 2, 3, 4, 90, 80, 70, 60}, Bytes{1, 2, 3, 4, 90, 80, 70, 60})[0], wm::png::filterUp);
}

TEST(Filters, AByteOf128CountsAs128) {
    // Unfiltered: 128, so a sum of 128. Up: 128 - 1 = 127.
    EXPECT_EQ(chosen(Bytes{128, 0, 0, 0}, Bytes{1, 0, 0, 0})[0], wm::png::filterUp);
    // Up leaves 128 as well; the first wins.
    EXPECT_EQ(chosen(Bytes{128, 0, 0, 0}, Bytes{0, 0, 0, 0})[0], wm::png::filterNone);
}

TEST(Filters, SumsOfWideRowsDoNotOverflow) {
    // Unfiltered bytes are 64 or -64; minus the byte to the left or above all are 128, the most there is.
    for (const std::size_t pixels : {2000U, 20000U, 100000U}) {
        Bytes row(pixels * 4);
        Bytes above(pixels * 4);
        for (std::size_t i = 0; i < row.size(); ++i) {
            row[i] = i / 4 % 2 == 0 ? 64 : 192;
            above[i] = static_cast<std::uint8_t>(row[i] ^ 128U);
        }
        EXPECT_EQ(chosen(row, above)[0], wm::png::filterNone);
        EXPECT_EQ(chosen(row, above), bestFiltered(row, above));
    }
}

} // namespace

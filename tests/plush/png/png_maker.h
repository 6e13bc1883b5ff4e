#pragma once

// A plain writer of PNG files for tests, and a plain reference of what their pixels become. Both follow the format's
// text bit by bit and share nothing with the code under test.

#include "deflate_maker.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace png_test {

/// The CRC-32 of `data`, bit by bit.
std::uint32_t plainCrc(const Bytes& data);

/// `value` as four bytes, the highest first.
Bytes bigEndian(std::uint32_t value);

/// Concatenates.
Bytes operator+(Bytes left, const Bytes& right);

/// Builds a file chunk by chunk; nothing is checked, so that files can be wrong.
class FileMaker {
public:
    FileMaker();
    FileMaker& chunk(const std::string& type, const Bytes& data);
    FileMaker& badChunk(const std::string& type, const Bytes& data, std::uint32_t crcError);
    FileMaker& header(std::uint32_t width, std::uint32_t height, std::uint8_t depth, std::uint8_t colourType,
                      std::uint8_t interlace = 0);
    FileMaker& bytes(const Bytes& data);
    FileMaker& end() { return chunk("IEND", {}); }
    /// The chunks of an animation. The sequence number is 0 throughout; nobody reads it.
    FileMaker& animation(std::uint32_t frames) { return chunk("acTL", bigEndian(frames) + bigEndian(0)); }
    FileMaker& frame(std::uint32_t width, std::uint32_t height, std::uint32_t x, std::uint32_t y, std::uint8_t blend,
                     std::uint8_t dispose = 0);
    FileMaker& frameData(const Bytes& data) { return chunk("fdAT", bigEndian(0) + data); }
    const Bytes& file() const { return file_; }

private:
    Bytes file_;
};

/// A picture as samples: what a PNG file can hold exactly.
struct Samples {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    unsigned depth = 8; // bits
    std::uint8_t colourType = 6;
    std::vector<std::uint16_t> values; // rows from the top, channels of a pixel side by side
    std::vector<std::array<std::uint8_t, 3>> palette;
    std::optional<Bytes> transparency; // of the tRNS chunk

    unsigned channels() const;
    std::uint16_t at(std::uint32_t x, std::uint32_t y, unsigned channel) const {
        return values[(std::size_t{y} * width + x) * channels() + channel];
    }
};

/// Random samples over the whole range of the depth; palette indices stay inside a palette of random size.
Samples randomSamples(Random& random, std::uint32_t width, std::uint32_t height, std::uint8_t colourType,
                      unsigned depth);

/// What the samples become: RGBA, eight bits.
Bytes expectedPixels(const Samples& samples);

/// Which filter each row gets.
enum class RowFilter { none, sub, up, average, paeth, mixed };

/// The filtered rows of the picture, in seven passes if interlaced.
Bytes filteredRows(const Samples& samples, bool interlaced, RowFilter filter, Random& random);

/// A whole file with one IDAT chunk of stored blocks.
Bytes pngFile(const Samples& samples, bool interlaced, RowFilter filter, Random& random);

/// A file of `width` by `height` RGBA pixels, unfiltered.
Bytes rgbaFile(std::uint32_t width, std::uint32_t height, const Bytes& pixels);

/// The zlib stream of RGBA pixels, unfiltered and stored.
Bytes rgbaStream(std::uint32_t width, std::uint32_t height, const Bytes& pixels);

/// All combinations of colour type and depth that the format has.
struct Kind {
    std::uint8_t colourType;
    unsigned depth;
};
inline constexpr std::array<Kind, 15> allKinds = {{{0, 1},
                                                   {0, 2},
                                                   {0, 4},
                                                   {0, 8},
                                                   {0, 16},
                                                   {2, 8},
                                                   {2, 16},
                                                   {3, 1},
                                                   {3, 2},
                                                   {3, 4},
                                                   {3, 8},
                                                   {4, 8},
                                                   {4, 16},
                                                   {6, 8},
                                                   {6, 16}}};

/// Loads a file; no value if that fails.
std::optional<Bytes> loadedPixels(const Bytes& file);

} // namespace png_test

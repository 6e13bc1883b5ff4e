// PNG files and their pixels, the long way round.

#include "png_maker.h"

#include "plush/png.h"

#include <cstdlib>

namespace png_test {

namespace {

constexpr std::array<unsigned, 7> passX = {0, 4, 0, 2, 0, 1, 0};
constexpr std::array<unsigned, 7> passY = {0, 0, 4, 0, 2, 0, 1};
constexpr std::array<unsigned, 7> passWidth = {8, 8, 4, 4, 2, 2, 1};
constexpr std::array<unsigned, 7> passHeight = {8, 8, 8, 4, 4, 2, 2};

std::uint8_t paeth(int a, int b, int c) {
    const int p = a + b - c;
    const int pa = std::abs(p - a);
    const int pb = std::abs(p - b);
    const int pc = std::abs(p - c);
    if (pa <= pb && pa <= pc) return static_cast<std::uint8_t>(a);
    return static_cast<std::uint8_t>(pb <= pc ? b : c);
}

/// The bytes of one row: samples of 16 bits as two bytes, of less than 8 packed from the high end.
Bytes packedRow(const Samples& samples, std::uint32_t y, unsigned x0, unsigned dx) {
    Bytes row;
    unsigned used = 8;
    for (std::uint32_t x = x0; x < samples.width; x += dx)
        for (unsigned channel = 0; channel < samples.channels(); ++channel) {
            const unsigned value = samples.at(x, y, channel);
            if (samples.depth == 16) row.push_back(static_cast<std::uint8_t>(value >> 8));
            if (samples.depth >= 8) {
                row.push_back(static_cast<std::uint8_t>(value));
                continue;
            }
            if (used == 8) {
                row.push_back(0);
                used = 0;
            }
            used += samples.depth;
            row.back() = static_cast<std::uint8_t>(row.back() | value << (8 - used));
        }
    return row;
}

void appendPass(Bytes& out, const Samples& samples, unsigned x0, unsigned y0, unsigned dx, unsigned dy,
                RowFilter filter, Random& random) {
    if (x0 >= samples.width) return;
    const std::size_t pixelBytes = std::max(samples.channels() * samples.depth / 8, 1U);
    Bytes above;
    for (std::uint32_t y = y0; y < samples.height; y += dy) {
        const Bytes row = packedRow(samples, y, x0, dx);
        above.resize(row.size());
        const unsigned chosen = filter == RowFilter::mixed ? random() % 5 : static_cast<unsigned>(filter);
        out.push_back(static_cast<std::uint8_t>(chosen));
        for (std::size_t i = 0; i < row.size(); ++i) {
            const int a = i >= pixelBytes ? row[i - pixelBytes] : 0;
            const int b = above[i];
            const int c = i >= pixelBytes ? above[i - pixelBytes] : 0;
            const int predictions[] = {0, a, b, (a + b) / 2, paeth(a, b, c)};
            out.push_back(static_cast<std::uint8_t>(row[i] - predictions[chosen]));
        }
        above = row;
    }
}

} // namespace

std::uint32_t plainCrc(const Bytes& data) {
    std::uint32_t crc = 0xFFFFFFFFU;
    for (const std::uint8_t byte : data) {
        crc ^= byte;
        for (int bit = 0; bit < 8; ++bit) crc = (crc & 1U) != 0 ? crc >> 1 ^ 0xEDB88320U : crc >> 1;
    }
    return ~crc;
}

Bytes bigEndian(std::uint32_t value) {
    return {static_cast<std::uint8_t>(value >> 24), static_cast<std::uint8_t>(value >> 16),
            static_cast<std::uint8_t>(value >> 8), static_cast<std::uint8_t>(value)};
}

Bytes operator+(Bytes left, const Bytes& right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

FileMaker::FileMaker() : file_{0x89, 0x50, 0x4E, 0x47, 0x0D, 0x0A, 0x1A, 0x0A} {}

FileMaker& FileMaker::chunk(const std::string& type, const Bytes& data) { return badChunk(type, data, 0); }

FileMaker& FileMaker::badChunk(const std::string& type, const Bytes& data, std::uint32_t crcError) {
    const Bytes content = Bytes(type.begin(), type.end()) + data;
    file_ =
        file_ + bigEndian(static_cast<std::uint32_t>(data.size())) + content + bigEndian(plainCrc(content) ^ crcError);
    return *this;
}

FileMaker& FileMaker::header(std::uint32_t width, std::uint32_t height, std::uint8_t depth, std::uint8_t colourType,
                             std::uint8_t interlace) {
    return chunk("IHDR", bigEndian(width) + bigEndian(height) + Bytes{depth, colourType, 0, 0, interlace});
}

FileMaker& FileMaker::bytes(const Bytes& data) {
    file_ = file_ + data;
    return *this;
}

FileMaker& FileMaker::frame(std::uint32_t width, std::uint32_t height, std::uint32_t x, std::uint32_t y,
                            std::uint8_t blend, std::uint8_t dispose) {
    const Bytes delay = {0, 1, 0, 10};
    return chunk("fcTL", bigEndian(0) + bigEndian(width) + bigEndian(height) + bigEndian(x) + bigEndian(y) + delay +
                             Bytes{dispose, blend});
}

unsigned Samples::channels() const {
    constexpr std::array<unsigned, 7> counts = {1, 0, 3, 1, 2, 0, 4};
    return counts[colourType];
}

Samples randomSamples(Random& random, std::uint32_t width, std::uint32_t height, std::uint8_t colourType,
                      unsigned depth) {
    Samples samples;
    samples.width = width;
    samples.height = height;
    samples.colourType = colourType;
    samples.depth = depth;
    std::uint32_t range = 1U << depth;
    if (colourType == 3) {
        range = 1 + random() % range;
        for (std::uint32_t i = 0; i < range; ++i)
            samples.palette.push_back({static_cast<std::uint8_t>(random()), static_cast<std::uint8_t>(random()),
                                       static_cast<std::uint8_t>(random())});
    }
    samples.values.resize(std::size_t{width} * height * samples.channels());
    for (auto& value : samples.values) value = static_cast<std::uint16_t>(random() % range);
    return samples;
}

Bytes expectedPixels(const Samples& samples) {
    Bytes pixels;
    const unsigned brightest = (1U << samples.depth) - 1;
    const auto eightBits = [&](unsigned value) {
        if (samples.depth == 16) return static_cast<std::uint8_t>((value * 255 + 32767) / 65535);
        return static_cast<std::uint8_t>(value * 255 / brightest);
    };
    const auto keySample = [&](unsigned channel) {
        return static_cast<unsigned>((*samples.transparency)[2 * channel] << 8 |
                                     (*samples.transparency)[2 * channel + 1]);
    };
    for (std::uint32_t y = 0; y < samples.height; ++y)
        for (std::uint32_t x = 0; x < samples.width; ++x) {
            const unsigned channels = samples.channels();
            if (samples.colourType == 3) {
                const std::uint16_t index = samples.at(x, y, 0);
                const auto& colour = samples.palette[index];
                const bool listed = samples.transparency && index < samples.transparency->size();
                const std::uint8_t alpha = listed ? (*samples.transparency)[index] : std::uint8_t{255};
                pixels = pixels + Bytes{colour[0], colour[1], colour[2], alpha};
                continue;
            }
            std::uint8_t alpha = 255;
            if (samples.colourType >= 4) {
                alpha = eightBits(samples.at(x, y, channels - 1));
            } else if (samples.transparency) {
                bool isKey = true;
                for (unsigned channel = 0; channel < channels; ++channel)
                    isKey = isKey && samples.at(x, y, channel) == keySample(channel);
                if (isKey) alpha = 0;
            }
            const bool coloured = channels >= 3;
            for (unsigned channel = 0; channel < 3; ++channel)
                pixels.push_back(eightBits(samples.at(x, y, coloured ? channel : 0)));
            pixels.push_back(alpha);
        }
    return pixels;
}

Bytes filteredRows(const Samples& samples, bool interlaced, RowFilter filter, Random& random) {
    Bytes rows;
    if (!interlaced) {
        appendPass(rows, samples, 0, 0, 1, 1, filter, random);
        return rows;
    }
    for (std::size_t pass = 0; pass < passX.size(); ++pass)
        appendPass(rows, samples, passX[pass], passY[pass], passWidth[pass], passHeight[pass], filter, random);
    return rows;
}

Bytes pngFile(const Samples& samples, bool interlaced, RowFilter filter, Random& random) {
    FileMaker maker;
    maker.header(samples.width, samples.height, static_cast<std::uint8_t>(samples.depth), samples.colourType,
                 interlaced ? 1 : 0);
    Bytes palette;
    for (const auto& colour : samples.palette) palette.insert(palette.end(), colour.begin(), colour.end());
    if (!palette.empty()) maker.chunk("PLTE", palette);
    if (samples.transparency) maker.chunk("tRNS", *samples.transparency);
    return maker.chunk("IDAT", storedStream(filteredRows(samples, interlaced, filter, random))).end().file();
}

Bytes rgbaStream(std::uint32_t width, std::uint32_t height, const Bytes& pixels) {
    Bytes rows;
    for (std::uint32_t y = 0; y < height; ++y) {
        rows.push_back(0);
        const auto begin = pixels.begin() + static_cast<std::ptrdiff_t>(std::size_t{y} * width * 4);
        rows.insert(rows.end(), begin, begin + static_cast<std::ptrdiff_t>(width * 4));
    }
    return storedStream(rows);
}

Bytes rgbaFile(std::uint32_t width, std::uint32_t height, const Bytes& pixels) {
    return FileMaker().header(width, height, 8, 6).chunk("IDAT", rgbaStream(width, height, pixels)).end().file();
}

std::optional<Bytes> loadedPixels(const Bytes& file) {
    wm::png::Image image;
    if (!wm::png::load_memory(file.data(), file.size(), image)) return std::nullopt;
    return image.pixels;
}

} // namespace png_test

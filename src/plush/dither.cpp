// A noise laid over an image.
//
// The noise of a pixel is a hash of its column and row, brought into range by a remainder. The remainder is a division
// by the same number for every pixel, so it is done by multiplying with the reciprocal: the quotient found in that way
// is right or one too small, which one comparison tells. The noise of a stretch of pixels is written down as what is to
// be added and what is to be taken away, one of them always 0, and then both are applied to sixteen bytes at a time.

#include "plush/dither.h"

#include "plush/byte_vectors.h"
#include "plush/pixels.h"
#include "plush/registry.h"
#include "plush/rows.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <memory>

namespace {

constexpr std::uint32_t columnFactor = 92837111;
constexpr std::uint32_t rowFactor = 689287499;
constexpr std::uint32_t hashFactor = 1664525;
constexpr std::uint32_t hashAddend = 1013904223;
constexpr std::int64_t channelMaximum = 255;
constexpr std::uint32_t allChannels = 0x01010101; // times a byte: that byte in all channels
constexpr int stretch = 256;                      // pixels whose noise is worked out before it is applied

/// Hashes brought into the range from -`amount` to `amount`.
class NoiseRange {
public:
    explicit NoiseRange(int amount)
        : amount_(amount), values_(2 * static_cast<std::uint32_t>(amount) + 1),
          reciprocal_((std::uint64_t{1} << 32) / values_) {}

    std::int64_t noise(std::uint32_t hash) const {
        const auto quotient = static_cast<std::uint32_t>((hash * reciprocal_) >> 32);
        const std::uint32_t remainder = hash - quotient * values_;
        return std::int64_t{remainder >= values_ ? remainder - values_ : remainder} - amount_;
    }

private:
    int amount_;
    std::uint32_t values_;     // how many there are; at least 3
    std::uint64_t reciprocal_; // 2 to the 32nd, divided by that
};

/// What a stretch of pixels is to gain and to lose in each of its bytes.
struct Noise {
    alignas(16) std::array<std::uint32_t, stretch> gain;
    alignas(16) std::array<std::uint32_t, stretch> loss;
};

void prepare(Noise& noise, const NoiseRange& range, int x, int y, int count) {
    const std::uint32_t rowPart = static_cast<std::uint32_t>(y) * rowFactor;
    for (int at = 0; at < count; ++at) {
        const std::uint32_t columnPart = static_cast<std::uint32_t>(x + at) * columnFactor;
        const std::int64_t value = range.noise((columnPart ^ rowPart) * hashFactor + hashAddend);
        const auto index = static_cast<std::size_t>(at);
        noise.gain[index] =
            static_cast<std::uint32_t>(std::clamp<std::int64_t>(value, 0, channelMaximum)) * allChannels;
        noise.loss[index] =
            static_cast<std::uint32_t>(std::clamp<std::int64_t>(-value, 0, channelMaximum)) * allChannels;
    }
}

/// Sixteen bytes after gain and loss, each held to a byte's range.
Bytes16 applied(Bytes16 bytes, Bytes16 gain, Bytes16 loss) {
    const Bytes16 sum = bytes + gain;
    const Bytes16 gained = sum | reinterpret_cast<Bytes16>(sum < gain); // what ran over becomes 255
    return (gained - loss) & reinterpret_cast<Bytes16>(gained >= loss);
}

void apply(const Noise& noise, PixelByte* pixels, int count) {
    const auto* gain = reinterpret_cast<const std::uint8_t*>(noise.gain.data());
    const auto* loss = reinterpret_cast<const std::uint8_t*>(noise.loss.data());
    const std::size_t bytes = static_cast<std::size_t>(count) * bytesPerPixel;
    std::size_t at = 0;
    for (; at + sizeof(Bytes16) <= bytes; at += sizeof(Bytes16)) {
        const Bytes16 result = applied(loadBytes16(pixels + at), loadBytes16(gain + at), loadBytes16(loss + at));
        storeBytes16(pixels + at, result);
    }
    for (; at < bytes; ++at) {
        pixels[at] =
            static_cast<PixelByte>(std::clamp(pixels[at] + gain[at] - loss[at], 0, static_cast<int>(channelMaximum)));
    }
}

void ditherRows(PlushImage& image, const NoiseRange& range, RowRange rows) {
    Noise noise;
    for (int y = rows.first; y < rows.last; ++y) {
        for (int x = 0; x < image.width; x += stretch) {
            const int count = std::min(image.width - x, stretch);
            prepare(noise, range, x, y, count);
            apply(noise, pixelAt(image, x, y), count);
        }
    }
}

/// Makes four pixels of each.
void doubleImage(PlushImage& image) {
    const std::size_t sourceRowBytes = static_cast<std::size_t>(image.width) * bytesPerPixel;
    const std::size_t rowBytes = 2 * sourceRowBytes;
    auto doubled = std::make_unique_for_overwrite<PixelByte[]>(2 * rowBytes * static_cast<std::size_t>(image.height));
    const PixelByte* source = image.pixels;
    PixelByte* target = doubled.get();
    for (int row = 0; row < image.height; ++row, source += sourceRowBytes, target += 2 * rowBytes) {
        for (std::size_t at = 0; at < sourceRowBytes; at += bytesPerPixel) {
            std::memcpy(target + 2 * at, source + at, bytesPerPixel);
            std::memcpy(target + 2 * at + bytesPerPixel, source + at, bytesPerPixel);
        }
        std::memcpy(target + rowBytes, target, rowBytes);
    }
    delete[] image.pixels;
    image.pixels = doubled.release();
    image.width *= 2;
    image.height *= 2;
}

} // namespace

bool ditherImage(PlushImage& image, int amount, bool pixelate) {
    if (!image.pixels || image.width < 1 || image.height < 1) return true;
    if (pixelate) {
        if (!imageSizeAllowed(image.width, image.height) || !imageSizeAllowed(2 * image.width, 2 * image.height)) {
            return false;
        }
        doubleImage(image);
    }
    if (amount < 1) return true;
    const NoiseRange range(amount);
    splitRows(image.height, std::min(image.height, AllowedThreads), RowSplit::Ceiling,
              [&](RowRange rows) { ditherRows(image, range, rows); });
    return true;
}

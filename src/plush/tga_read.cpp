// The TGA reader.
//
// All kinds of pixels come down to one question, what colour the next bytes stand for, so there is one routine that
// answers it, and two loops around it: one for plain pixels, one for packets. A packet may run on into the next row.
//
// The header says how many bits of a pixel are alpha, and many a writer says none and means eight. So where a whole
// byte is to spare it counts unless it is 0 in every pixel; the single bit beside fifteen of colour counts only if the
// header says so.

#include "plush/tga_read.h"

#include "plush/byte_reader.h"
#include "plush/masked_sample.h"
#include "plush/unused_alpha.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <vector>

namespace wm::png {

namespace {

constexpr std::size_t headerSize = 18;
constexpr std::uint8_t opaque = 255;

enum Type : std::uint8_t { mapped = 1, trueColour = 2, grey = 3 };
constexpr std::uint8_t runLength = 8; // added to a type

// The bits of the descriptor.
enum Descriptor : std::uint8_t { alphaBits = 0x0F, fromRight = 0x10, fromTop = 0x20, interleaving = 0xC0 };

// The first byte of a packet: whether one pixel is repeated, and how many there are, less one.
enum Packet : std::uint8_t { repeated = 0x80, packetCount = 0x7F };

using Colour = std::array<std::uint8_t, rgbaSize>;

constexpr Colour opaqueBlack = {0, 0, 0, opaque};

/// The fields of the header that matter.
struct Header {
    std::uint8_t idLength = 0; // bytes of free text behind the header
    std::uint8_t mapKind = 0;  // 1 if there is a colour map
    std::uint8_t type = 0;
    std::uint16_t mapFirst = 0; // index of the first colour in the map
    std::uint16_t mapLength = 0;
    std::uint8_t mapDepth = 0; // bits of a colour in the map
    std::uint16_t width = 0;
    std::uint16_t height = 0;
    std::uint8_t depth = 0; // bits of a pixel
    std::uint8_t descriptor = 0;

    unsigned kind() const { return type & ~unsigned{runLength}; }
    bool isRunLength() const { return (type & runLength) != 0; }
    bool hasAlpha() const { return (descriptor & alphaBits) != 0; }
    bool alphaMayBeUnused() const {
        const bool byteToSpare = kind() == grey ? depth == 16 : (kind() == mapped ? mapDepth : depth) == 32;
        return byteToSpare && !hasAlpha();
    }
};

Header readHeader(ByteReader& file) {
    Header header;
    header.idLength = file.u8();
    header.mapKind = file.u8();
    header.type = file.u8();
    header.mapFirst = file.u16le();
    header.mapLength = file.u16le();
    header.mapDepth = file.u8();
    file.skip(4); // position on a screen
    header.width = file.u16le();
    header.height = file.u16le();
    header.depth = file.u8();
    header.descriptor = file.u8();
    return header;
}

bool isColourDepth(unsigned bits) { return bits == 15 || bits == 16 || bits == 24 || bits == 32; }

bool isPlausible(const Header& header) {
    if (header.width == 0 || header.height == 0 || header.mapKind > 1) return false;
    const bool hasMap = header.mapKind == 1;
    if (hasMap && (header.mapLength == 0 || !isColourDepth(header.mapDepth))) return false;
    switch (header.kind()) {
    case mapped: return hasMap && (header.depth == 8 || header.depth == 15 || header.depth == 16);
    case trueColour: return isColourDepth(header.depth);
    case grey: return header.depth == 8 || header.depth == 15 || header.depth == 16;
    default: return false;
    }
}

unsigned bytesOf(unsigned bits) { return (bits + 7) / 8; }

/// A colour of 15 to 32 bits.
/// @param bitIsAlpha  whether the highest bit of 16 is alpha
Colour readColour(const std::uint8_t* bytes, unsigned bits, bool bitIsAlpha) {
    if (bits >= 24) return {bytes[2], bytes[1], bytes[0], bits == 32 ? bytes[3] : opaque};
    constexpr std::uint32_t largest = 31;
    constexpr std::uint32_t alphaBit = 0x8000;
    const std::uint32_t pixel = bytes[0] | std::uint32_t{bytes[1]} << 8;
    const bool transparent = bits == 16 && bitIsAlpha && (pixel & alphaBit) == 0;
    return {scale_masked_sample(pixel >> 10 & largest, largest), scale_masked_sample(pixel >> 5 & largest, largest),
            scale_masked_sample(pixel & largest, largest), transparent ? std::uint8_t{0} : opaque};
}

/// Reads pixels one by one, whatever the file holds.
class PixelReader {
public:
    PixelReader(ByteReader& file, const Header& header)
        : file_(file), header_(header), kind_(header.kind()), pixelSize_(bytesOf(header.depth)),
          hasAlpha_(header.hasAlpha()) {}

    unsigned pixelSize() const { return pixelSize_; }

    /// Reads the map, or passes over one that nobody needs.
    void readMap() {
        if (header_.mapKind == 0) return;
        const unsigned size = bytesOf(header_.mapDepth);
        const auto bytes = file_.bytes(std::size_t{header_.mapLength} * size);
        if (kind_ != mapped || file_.failed()) return;
        map_.reserve(header_.mapLength);
        for (std::size_t at = 0; at < bytes.size(); at += size)
            map_.push_back(readColour(&bytes[at], header_.mapDepth, hasAlpha_));
    }

    /// The next pixel; any colour once the file has failed.
    Colour take() {
        const auto bytes = file_.bytes(pixelSize_);
        return bytes.empty() ? opaqueBlack : colourOf(bytes.data());
    }

private:
    Colour colourOf(const std::uint8_t* bytes) const {
        switch (kind_) {
        case mapped: return fromMap(pixelSize_ == 1 ? bytes[0] : bytes[0] | unsigned{bytes[1]} << 8);
        case grey: return {bytes[0], bytes[0], bytes[0], pixelSize_ == 2 ? bytes[1] : opaque};
        default: return readColour(bytes, header_.depth, hasAlpha_);
        }
    }

    /// Indices that are not in the map are opaque black.
    Colour fromMap(unsigned index) const {
        const unsigned first = header_.mapFirst;
        return index >= first && index - first < map_.size() ? map_[index - first] : opaqueBlack;
    }

    ByteReader& file_;
    const Header& header_;
    unsigned kind_;
    unsigned pixelSize_; // bytes
    bool hasAlpha_;
    std::vector<Colour> map_;
};

/// Puts pixels where the next one belongs, from the corner that the file names.
class PixelPlacer {
public:
    PixelPlacer(const Header& header, std::uint8_t* pixels)
        : width_(header.width), height_(header.height), fromRight_((header.descriptor & fromRight) != 0),
          fromTop_((header.descriptor & fromTop) != 0), pixels_(pixels) {}

    void put(const Colour& colour) {
        const std::size_t column = fromRight_ ? width_ - 1 - x_ : x_;
        const std::size_t row = fromTop_ ? y_ : height_ - 1 - y_;
        std::memcpy(pixels_ + (row * width_ + column) * rgbaSize, colour.data(), rgbaSize);
        if (++x_ < width_) return;
        x_ = 0;
        ++y_;
    }

    std::size_t left() const { return (height_ - y_) * width_ - x_; }

private:
    std::size_t width_;
    std::size_t height_;
    bool fromRight_;
    bool fromTop_;
    std::uint8_t* pixels_;
    std::size_t x_ = 0; // how many pixels of the row are there
    std::size_t y_ = 0; // how many rows
};

bool decodePackets(ByteReader& file, PixelReader& reader, PixelPlacer& placer) {
    while (placer.left() > 0) {
        const std::uint8_t packet = file.u8();
        const std::size_t count = (packet & packetCount) + std::size_t{1};
        if (file.failed() || count > placer.left()) return false;
        if ((packet & repeated) != 0) {
            const Colour colour = reader.take();
            for (std::size_t i = 0; i < count; ++i) placer.put(colour);
        } else {
            for (std::size_t i = 0; i < count; ++i) placer.put(reader.take());
        }
        if (file.failed()) return false;
    }
    return true;
}

} // namespace

bool looks_like_tga(std::span<const std::uint8_t> data) {
    if (data.size() < headerSize) return false;
    ByteReader file(data);
    return isPlausible(readHeader(file));
}

bool decode_tga(std::span<const std::uint8_t> data, const PixelAllocator& allocate) {
    ByteReader file(data);
    const Header header = readHeader(file);
    if (file.failed() || !isPlausible(header) || (header.descriptor & interleaving) != 0) return false;
    if (header.kind() == grey && header.depth == 15) return false; // a depth of colours, not of greys
    file.skip(header.idLength);
    PixelReader reader(file, header);
    reader.readMap();
    if (file.failed()) return false;

    // A packet that takes one byte and a pixel gives 128 pixels at most.
    const std::size_t count = std::size_t{header.width} * header.height;
    const std::size_t fewest =
        header.isRunLength() ? count / (packetCount + 1) * (1 + reader.pixelSize()) : count * reader.pixelSize();
    if (file.remaining() < fewest || !picture_fits(header.width, header.height, data.size())) return false;
    std::uint8_t* pixels = allocate(header.width, header.height);
    PixelPlacer placer(header, pixels);
    if (header.isRunLength()) {
        if (!decodePackets(file, reader, placer)) return false;
    } else {
        for (std::size_t i = 0; i < count; ++i) placer.put(reader.take());
    }
    if (header.alphaMayBeUnused()) settle_unused_alpha({pixels, count * rgbaSize});
    return true;
}

} // namespace wm::png

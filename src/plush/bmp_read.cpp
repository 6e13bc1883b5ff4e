// The BMP reader.
//
// The format grew for decades and each header is the one before it with more fields behind, so one function reads them
// all and stops where the stated size ends. What it finds is reduced to three ways of decoding: indices into a palette,
// numbers under masks, and bytes in the order blue, green, red. Run lengths give indices, too.
//
// Rows lie from the bottom up unless the height is negative. Pixels that a run-length file leaves out have index 0.

#include "plush/bmp_read.h"

#include "plush/byte_reader.h"
#include "plush/masked_sample.h"
#include "plush/unused_alpha.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <optional>

namespace wm::png {

namespace {

enum HeaderSize : std::uint32_t {
    coreHeader = 12,     // OS/2 1
    shortOs2Header = 16, // OS/2 2, the rest of it zeros
    infoHeader = 40,     // Windows 3
    infoHeader2 = 52,    // with masks of three colours
    infoHeader3 = 56,    // and of alpha
    os2Header = 64,      // OS/2 2, a line of its own
    infoHeader4 = 108,   // with a colour space
    infoHeader5 = 124,   // and a profile
};

enum Compression : std::uint32_t {
    noCompression = 0,
    runLength8 = 1,
    runLength4 = 2,
    bitFields = 3,
    alphaBitFields = 6
};

// What follows a 0 in run-length data; larger numbers count bytes that stand for themselves.
enum Escape : std::uint8_t { endOfRow = 0, endOfPicture = 1, delta = 2 };

constexpr std::uint8_t opaque = 255;

using Colour = std::array<std::uint8_t, rgbaSize>;

constexpr Colour opaqueBlack = {0, 0, 0, opaque};

/// The bits of each sample in a pixel that is one number.
struct Masks {
    std::uint32_t red = 0;
    std::uint32_t green = 0;
    std::uint32_t blue = 0;
    std::uint32_t alpha = 0;
};

/// What the headers say.
struct Bmp {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    bool topDown = false;
    unsigned depth = 0; // bits of a pixel
    std::uint32_t compression = noCompression;
    Masks masks;                             // for 16 and 32 bits
    bool alphaMayBeUnused = false;           // the alpha byte counts only if any of them is not 0
    std::array<Colour, 256> palette{};       // for up to 8 bits
    std::span<const std::uint8_t> pixelData; // all that lies behind the offset of the pixels
};

bool isHeaderSize(std::uint32_t size) {
    switch (size) {
    case coreHeader:
    case shortOs2Header:
    case infoHeader:
    case infoHeader2:
    case infoHeader3:
    case os2Header:
    case infoHeader4:
    case infoHeader5: return true;
    default: return false;
    }
}

bool isOs2(std::uint32_t headerSize) {
    return headerSize == coreHeader || headerSize == shortOs2Header || headerSize == os2Header;
}

/// Whether the way of compression, the depth and the direction of rows go together.
bool isKnownLayout(const Bmp& bmp, std::uint32_t headerSize) {
    switch (bmp.compression) {
    case noCompression:
        return bmp.depth == 1 || bmp.depth == 4 || bmp.depth == 8 || bmp.depth == 16 || bmp.depth == 24 ||
               bmp.depth == 32;
    case runLength8: return bmp.depth == 8 && !bmp.topDown;
    case runLength4: return bmp.depth == 4 && !bmp.topDown;
    case bitFields:
    case alphaBitFields: return (bmp.depth == 16 || bmp.depth == 32) && !isOs2(headerSize);
    default: return false;
    }
}

/// Reads width, height and depth.
bool readSize(ByteReader& header, std::uint32_t headerSize, Bmp& bmp) {
    if (headerSize == coreHeader) {
        bmp.width = header.u16le();
        bmp.height = header.u16le();
    } else {
        const std::int64_t width = static_cast<std::int32_t>(header.u32le());
        const std::int64_t height = static_cast<std::int32_t>(header.u32le());
        if (width < 0) return false;
        bmp.width = static_cast<std::uint32_t>(width);
        bmp.topDown = height < 0;
        bmp.height = static_cast<std::uint32_t>(bmp.topDown ? -height : height);
    }
    const unsigned planes = header.u16le();
    bmp.depth = header.u16le();
    return planes == 1 && bmp.width > 0 && bmp.height > 0;
}

/// The masks: those of the file, which lie in the newer headers and behind the older one, or those that always hold.
void readMasks(ByteReader& header, std::uint32_t headerSize, Bmp& bmp) {
    if (bmp.compression == noCompression) {
        bmp.alphaMayBeUnused = bmp.depth == 32;
        bmp.masks =
            bmp.depth == 16 ? Masks{0x7C00, 0x03E0, 0x001F, 0} : Masks{0xFF0000, 0x00FF00, 0x0000FF, 0xFF000000};
        return;
    }
    bmp.masks.red = header.u32le();
    bmp.masks.green = header.u32le();
    bmp.masks.blue = header.u32le();
    const bool hasAlpha = headerSize == infoHeader ? bmp.compression == alphaBitFields : headerSize >= infoHeader3;
    if (hasAlpha) bmp.masks.alpha = header.u32le();
}

/// Reads a palette as long as it is said to be, as far as there is room for it in front of the pixels. Indices beyond
/// it are opaque black.
void readPalette(ByteReader& file, std::uint32_t headerSize, std::uint32_t usedColours, std::size_t room, Bmp& bmp) {
    const std::size_t most = std::size_t{1} << bmp.depth;
    const std::size_t stated = usedColours == 0 ? most : std::min<std::size_t>(usedColours, most);
    const bool isShort = headerSize == coreHeader || (isOs2(headerSize) && room == stated * 3);
    const std::size_t entrySize = isShort ? 3 : 4;
    bmp.palette.fill(opaqueBlack);
    for (std::size_t i = 0; i < std::min(stated, room / entrySize); ++i) {
        const auto entry = file.bytes(entrySize);
        if (!entry.empty()) bmp.palette[i] = {entry[2], entry[1], entry[0], opaque};
    }
}

bool readHeaders(std::span<const std::uint8_t> data, Bmp& bmp) {
    ByteReader file(data);
    file.skip(10); // the magic, the file's size, which many a writer gets wrong, and two reserved numbers
    const std::size_t pixelOffset = file.u32le();
    const std::uint32_t headerSize = file.u32le();
    if (file.failed() || !isHeaderSize(headerSize)) return false;

    // The fields of the headers are read from here on; an older header simply has no more of them.
    ByteReader header = file;
    file.skip(headerSize - sizeof headerSize);
    if (file.failed() || !readSize(header, headerSize, bmp)) return false;
    std::uint32_t usedColours = 0;
    if (headerSize >= infoHeader) {
        bmp.compression = header.u32le();
        header.skip(12); // the size of the data, and the resolution on both axes
        usedColours = header.u32le();
        header.skip(4); // how many of them matter
    }
    if (!isKnownLayout(bmp, headerSize)) return false;
    readMasks(header, headerSize, bmp);
    if (headerSize == infoHeader) {
        if (bmp.compression == bitFields) file.skip(3 * sizeof(std::uint32_t));
        if (bmp.compression == alphaBitFields) file.skip(4 * sizeof(std::uint32_t));
    }

    const std::size_t read = data.size() - file.remaining();
    if (file.failed() || header.failed() || pixelOffset < read || pixelOffset > data.size()) return false;
    if (bmp.depth <= 8) readPalette(file, headerSize, usedColours, pixelOffset - read, bmp);
    bmp.pixelData = data.subspan(pixelOffset);
    return true;
}

bool isRunLength(const Bmp& bmp) { return bmp.compression == runLength8 || bmp.compression == runLength4; }

/// Bytes of a row in the file, filled up to four.
std::uint64_t rowSize(const Bmp& bmp) { return (std::uint64_t{bmp.width} * bmp.depth + 31) / 32 * 4; }

inline void store(std::uint8_t* target, const Colour& colour) { std::memcpy(target, colour.data(), rgbaSize); }

// ---- rows of plain pixels ----

void expandIndices(const Bmp& bmp, std::uint8_t* target, const std::uint8_t* row) {
    const unsigned perByte = 8 / bmp.depth;
    const unsigned indexBits = (1U << bmp.depth) - 1;
    for (std::uint32_t x = 0; x < bmp.width; ++x, target += rgbaSize) {
        const unsigned shift = 8 - bmp.depth * (x % perByte + 1);
        store(target, bmp.palette[row[x / perByte] >> shift & indexBits]);
    }
}

void expandBytes(const Bmp& bmp, std::uint8_t* target, const std::uint8_t* row) {
    for (std::uint32_t x = 0; x < bmp.width; ++x, target += rgbaSize, row += 3)
        store(target, {row[2], row[1], row[0], opaque});
}

void expandAlphaBytes(const Bmp& bmp, std::uint8_t* target, const std::uint8_t* row) {
    for (std::uint32_t x = 0; x < bmp.width; ++x, target += rgbaSize, row += rgbaSize)
        store(target, {row[2], row[1], row[0], row[3]});
}

/// Pixels that are numbers.
class MaskedExpander {
public:
    explicit MaskedExpander(const Bmp& bmp)
        : width_(bmp.width), pixelSize_(bmp.depth / 8), hasAlpha_(bmp.masks.alpha != 0), red_(bmp.masks.red),
          green_(bmp.masks.green), blue_(bmp.masks.blue), alpha_(bmp.masks.alpha) {}

    void expand(std::uint8_t* target, const std::uint8_t* row) const {
        for (std::uint32_t x = 0; x < width_; ++x, target += rgbaSize, row += pixelSize_) {
            std::uint32_t pixel = row[0] | std::uint32_t{row[1]} << 8;
            if (pixelSize_ == 4) pixel |= std::uint32_t{row[2]} << 16 | std::uint32_t{row[3]} << 24;
            store(target, {red_.of(pixel), green_.of(pixel), blue_.of(pixel), hasAlpha_ ? alpha_.of(pixel) : opaque});
        }
    }

private:
    std::uint32_t width_;
    unsigned pixelSize_; // bytes
    bool hasAlpha_;
    MaskedSample red_;
    MaskedSample green_;
    MaskedSample blue_;
    MaskedSample alpha_;
};

void decodeRows(const Bmp& bmp, std::uint8_t* pixels) {
    const auto stride = static_cast<std::size_t>(rowSize(bmp));
    const std::size_t targetStride = std::size_t{bmp.width} * rgbaSize;
    std::optional<MaskedExpander> masked;
    if (bmp.depth == 16 || (bmp.depth == 32 && !bmp.alphaMayBeUnused)) masked.emplace(bmp);
    for (std::uint32_t y = 0; y < bmp.height; ++y) {
        std::uint8_t* target = pixels + (bmp.topDown ? y : bmp.height - 1 - y) * targetStride;
        const std::uint8_t* row = bmp.pixelData.data() + y * stride;
        if (bmp.depth <= 8) {
            expandIndices(bmp, target, row);
        } else if (masked) {
            masked->expand(target, row);
        } else if (bmp.depth == 24) {
            expandBytes(bmp, target, row);
        } else {
            expandAlphaBytes(bmp, target, row);
        }
    }
}

// ---- run lengths ----

/// Lays indices down from the bottom row up.
class RunLengthDecoder {
public:
    RunLengthDecoder(const Bmp& bmp, std::uint8_t* pixels)
        : bmp_(bmp), data_(bmp.pixelData), perByte_(8 / bmp.depth), pixels_(pixels) {}

    /// False if the data end before they say so, or leave the picture.
    bool decode() {
        const std::size_t count = std::size_t{bmp_.width} * bmp_.height;
        for (std::size_t i = 0; i < count; ++i) store(pixels_ + i * rgbaSize, bmp_.palette[0]);
        while (!data_.failed() && !ended_) {
            const std::uint8_t count8 = data_.u8();
            const std::uint8_t value = data_.u8();
            if (data_.failed() || !(count8 > 0 ? putRun(count8, value) : follow(value))) return false;
        }
        return !data_.failed();
    }

private:
    /// The index at a place in a byte: the whole byte, or first its upper and then its lower half.
    std::uint8_t indexIn(std::uint8_t byte, std::uint32_t place) const {
        if (perByte_ == 1) return byte;
        return place % 2 == 0 ? byte >> 4 : byte & 15;
    }

    bool hasRoomFor(std::uint32_t count) const { return y_ < bmp_.height && count <= bmp_.width - x_; }

    void put(std::uint8_t index) {
        const std::size_t row = bmp_.height - 1 - y_;
        store(pixels_ + (row * bmp_.width + x_) * rgbaSize, bmp_.palette[index]);
        ++x_;
    }

    bool putRun(std::uint32_t count, std::uint8_t value) {
        if (!hasRoomFor(count)) return false;
        for (std::uint32_t i = 0; i < count; ++i) put(indexIn(value, i));
        return true;
    }

    bool putBytes(std::uint32_t count) {
        const std::uint32_t size = (count + perByte_ - 1) / perByte_;
        const auto bytes = data_.bytes(size);
        data_.skip(size % 2); // filled up to two bytes
        if (data_.failed() || !hasRoomFor(count)) return false;
        for (std::uint32_t i = 0; i < count; ++i) put(indexIn(bytes[i / perByte_], i));
        return true;
    }

    bool follow(std::uint8_t escape) {
        switch (escape) {
        case endOfRow:
            x_ = 0;
            ++y_;
            return y_ <= bmp_.height;
        case endOfPicture: ended_ = true; return true;
        case delta:
            x_ += data_.u8();
            y_ += data_.u8();
            return x_ <= bmp_.width && y_ <= bmp_.height;
        default: return putBytes(escape);
        }
    }

    const Bmp& bmp_;
    ByteReader data_;
    std::uint32_t perByte_; // indices
    std::uint8_t* pixels_;
    std::uint32_t x_ = 0;
    std::uint32_t y_ = 0; // rows from the bottom
    bool ended_ = false;
};

} // namespace

bool decode_bmp(std::span<const std::uint8_t> data, const PixelAllocator& allocate) {
    Bmp bmp;
    if (!readHeaders(data, bmp) || !picture_fits(bmp.width, bmp.height, data.size())) return false;
    if (!isRunLength(bmp) && bmp.pixelData.size() / rowSize(bmp) < bmp.height) return false;
    std::uint8_t* pixels = allocate(static_cast<std::int32_t>(bmp.width), static_cast<std::int32_t>(bmp.height));
    if (isRunLength(bmp)) return RunLengthDecoder(bmp, pixels).decode();
    decodeRows(bmp, pixels);
    if (bmp.alphaMayBeUnused) settle_unused_alpha({pixels, std::size_t{bmp.width} * bmp.height * rgbaSize});
    return true;
}

} // namespace wm::png

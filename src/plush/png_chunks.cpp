// The chunk walk.
//
// Each chunk is cut from the rest by its stated length, tested against its checksum, and only then looked at. What
// depends on more than one chunk, such as a palette that must be there, is asked once at the end.

#include "plush/png_chunks.h"

#include "plush/byte_reader.h"
#include "plush/png.h"
#include "plush/png_checksums.h"

#include <algorithm>
#include <limits>

namespace wm::png {

namespace {

using Bytes = std::span<const std::uint8_t>;

constexpr std::size_t leastFileSize = 20;
constexpr std::size_t chunkTypeSize = 4;
constexpr std::size_t headerSize = 13;
constexpr std::size_t animationSize = 8;
constexpr std::size_t frameControlSize = 26;
constexpr std::size_t sequenceNumberSize = 4;
constexpr std::size_t colourSize = 3; // bytes of a palette entry
constexpr std::size_t mostColours = 256;
constexpr std::size_t greyKeySize = 2;
constexpr std::size_t rgbKeySize = 6;
constexpr std::uint32_t longestSide = std::numeric_limits<std::int32_t>::max();

// A vector that grows holds its old block and one of twice the size for a moment.
constexpr std::uint64_t growthFactor = 3;

/// Whether PNG knows samples of `bitDepth` bits in this colour type.
bool isKnownDepth(std::uint8_t colourType, std::uint8_t bitDepth) {
    const bool wide = bitDepth == 8 || bitDepth == 16;
    const bool narrow = bitDepth == 1 || bitDepth == 2 || bitDepth == 4;
    switch (colourType) {
    case grey: return narrow || wide;
    case palette: return narrow || bitDepth == 8;
    case rgb:
    case greyAlpha:
    case rgba: return wide;
    default: return false;
    }
}

/// Sorts chunks into a `ParsedPng`. Each `take` function gives false if its chunk is at fault.
class ChunkWalk {
public:
    explicit ChunkWalk(ParsedPng& png) : png_(png) {}

    bool take(std::string_view type, Bytes data);
    bool finish();
    bool ended() const { return ended_; }

private:
    bool takeHeader(Bytes data);
    bool takePalette(Bytes data);
    bool takeTransparency(Bytes data);
    bool takeAnimation(Bytes data);
    bool takeFrameControl(Bytes data);
    bool takeImageData(Bytes data);
    bool takeFrameData(Bytes data);
    bool append(CompressedData& to, Bytes data);
    bool charge(std::uint64_t size);

    ParsedPng& png_;
    bool headerSeen_ = false;
    bool paletteSeen_ = false;
    bool transparencySeen_ = false;
    bool ended_ = false;
};

bool ChunkWalk::take(std::string_view type, Bytes data) {
    if (!headerSeen_ && type != chunk::header) return false;
    if (type == chunk::header) return takeHeader(data);
    if (type == chunk::palette) return takePalette(data);
    if (type == chunk::transparency) return takeTransparency(data);
    if (type == chunk::animation) return takeAnimation(data);
    if (type == chunk::frameControl) return takeFrameControl(data);
    if (type == chunk::imageData) return takeImageData(data);
    if (type == chunk::frameData) return takeFrameData(data);
    if (type == chunk::end) ended_ = true;
    return true;
}

bool ChunkWalk::takeHeader(Bytes data) {
    if (headerSeen_ || data.size() != headerSize) return false;
    headerSeen_ = true;
    ByteReader reader(data);
    Header& header = png_.header;
    header.width = reader.u32be();
    header.height = reader.u32be();
    header.bitDepth = reader.u8();
    header.colourType = reader.u8();
    header.compression = reader.u8();
    header.filterMethod = reader.u8();
    header.interlaceMethod = reader.u8();
    return header.width >= 1 && header.width <= longestSide && header.height >= 1 && header.height <= longestSide &&
           isKnownDepth(header.colourType, header.bitDepth) && header.compression == 0 && header.filterMethod == 0 &&
           header.interlaceMethod <= adam7;
}

bool ChunkWalk::takePalette(Bytes data) {
    if (png_.header.colourType != palette) return true; // a mere suggestion for poor displays
    if (paletteSeen_ || data.empty() || data.size() % colourSize != 0 || data.size() / colourSize > mostColours)
        return false;
    paletteSeen_ = true;
    png_.palette.assign(data.begin(), data.end());
    return true;
}

bool ChunkWalk::takeTransparency(Bytes data) {
    if (transparencySeen_) return false;
    transparencySeen_ = true;
    switch (png_.header.colourType) {
    case grey:
        if (data.size() != greyKeySize) return false;
        break;
    case rgb:
        if (data.size() != rgbKeySize) return false;
        break;
    case palette:
        if (data.size() > png_.palette.size() / colourSize) return false;
        break;
    default: return true; // has an alpha channel of its own
    }
    png_.transparency = data;
    return true;
}

bool ChunkWalk::takeAnimation(Bytes data) {
    if (png_.animated || data.size() != animationSize) return false;
    png_.animated = true;
    return true;
}

bool ChunkWalk::takeFrameControl(Bytes data) {
    if (data.size() != frameControlSize) return false;
    ByteReader reader(data);
    reader.skip(sequenceNumberSize);
    Frame frame;
    frame.width = reader.u32be();
    frame.height = reader.u32be();
    frame.xOffset = reader.u32be();
    frame.yOffset = reader.u32be();
    reader.skip(4); // how long the frame is shown
    frame.disposeOperation = reader.u8();
    frame.blendOperation = reader.u8();
    const Header& header = png_.header;
    const bool onCanvas = frame.width >= 1 && frame.height >= 1 &&
                          std::uint64_t{frame.xOffset} + frame.width <= header.width &&
                          std::uint64_t{frame.yOffset} + frame.height <= header.height;
    if (!onCanvas || frame.blendOperation > blendOver) return false;
    // A frame before this one that got no data is no frame.
    if (!png_.frames.empty() && png_.frames.back().data.pieces.empty()) png_.frames.pop_back();
    if (!charge(sizeof(Frame))) return false;
    png_.frames.push_back(std::move(frame));
    return true;
}

bool ChunkWalk::takeImageData(Bytes data) {
    if (!append(png_.imageData, data)) return false;
    if (png_.frames.empty() || data.empty()) return true;
    Frame& frame = png_.frames.back();
    frame.takesImageData = true;
    return append(frame.data, data);
}

bool ChunkWalk::takeFrameData(Bytes data) {
    if (png_.frames.empty() || data.size() < sequenceNumberSize) return false;
    return append(png_.frames.back().data, data.subspan(sequenceNumberSize));
}

bool ChunkWalk::append(CompressedData& to, Bytes data) {
    if (data.empty()) return true;
    if (!charge(sizeof(Bytes))) return false;
    to.pieces.push_back(data);
    to.size += data.size();
    return true;
}

/// Counts a record of `size` bytes that is about to be added to a list.
bool ChunkWalk::charge(std::uint64_t size) {
    png_.memoryUsed += growthFactor * size;
    return png_.memoryUsed <= memoryLimit;
}

bool ChunkWalk::finish() {
    if (!png_.frames.empty() && png_.frames.back().data.pieces.empty()) png_.frames.pop_back();
    return png_.header.colourType != palette || paletteSeen_;
}

} // namespace

bool parse_png(Bytes data, ParsedPng& png) {
    if (data.size() < leastFileSize || data.size() > memoryLimit) return false;
    ByteReader reader(data);
    if (!std::ranges::equal(reader.bytes(pngSignature.size()), pngSignature)) return false;

    png = {};
    png.memoryUsed = data.size();
    ChunkWalk walk(png);
    while (!walk.ended()) {
        const std::uint32_t length = reader.u32be();
        const Bytes rest(data.last(reader.remaining()));
        const Bytes type = reader.bytes(chunkTypeSize);
        const Bytes content = reader.bytes(length);
        const std::uint32_t statedCrc = reader.u32be();
        if (reader.failed() || crc32(rest.data(), chunkTypeSize + content.size()) != statedCrc) return false;
        const std::string_view name(reinterpret_cast<const char*>(type.data()), type.size());
        if (!walk.take(name, content)) return false;
    }
    return walk.finish();
}

} // namespace wm::png

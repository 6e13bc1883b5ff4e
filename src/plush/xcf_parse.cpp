// Walking the structure of an XCF file.
//
// A property is a kind, a length and that many bytes, so that readers can pass over those they don't know. We know the
// few that decide what a pixel looks like.

#include "plush/xcf_parse.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace wm::png::xcf {

namespace {

constexpr std::uint32_t mostColours = 256;
constexpr std::size_t deepestPath = 64; // groups in groups; far more than an editor can show

/// Reads the four letters of the version: "file" for the first, else a "v" and a number.
bool parseVersion(ByteReader& reader, unsigned& version) {
    const auto bytes = reader.bytes(versionSize);
    if (bytes.empty() || reader.u8() != 0 || reader.failed()) return false;
    const std::string_view letters(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    version = 0;
    if (letters == "file") return true;
    std::string_view digits = letters.substr(1);
    digits = digits.substr(0, digits.find('\0'));
    if (letters.front() != 'v' || digits.empty()) return false;
    for (const char digit : digits) {
        if (digit < '0' || digit > '9') return false;
        version = version * 10 + static_cast<unsigned>(digit - '0');
    }
    return true;
}

/// Reads a colour map. Its length counts too few bytes in some files, but its number of colours is always right.
bool parseColourMap(ByteReader& reader, Picture& picture) {
    const std::uint32_t count = reader.u32be();
    if (count > mostColours) return false;
    picture.colours.resize(count);
    if (picture.version < firstWithColourMap) {
        reader.skip(count);
        for (std::uint32_t i = 0; i < count; ++i) picture.colours[i].fill(static_cast<std::uint8_t>(i));
    } else {
        for (auto& colour : picture.colours)
            for (std::uint8_t& sample : colour) sample = reader.u8();
    }
    return !reader.failed();
}

/// False if the property is beyond all measure.
bool parseLayerProperty(std::uint32_t kind, ByteReader content, Layer& layer) {
    constexpr float largest = 255;
    switch (kind) {
    case opacity: layer.opacity = static_cast<std::uint8_t>(std::min<std::uint32_t>(content.u32be(), 255)); break;
    case floatOpacity: {
        const auto part = std::bit_cast<float>(content.u32be());
        const float whole = part > 0 ? std::min(part, 1.0F) : 0; // what is no number is 0, too
        layer.opacity = static_cast<std::uint8_t>(std::lround(whole * largest));
        break;
    }
    case visible: layer.visible = content.u32be() != 0; break;
    case applyMask: layer.masked = content.u32be() != 0; break;
    case offsets:
        layer.x = static_cast<std::int32_t>(content.u32be());
        layer.y = static_cast<std::int32_t>(content.u32be());
        break;
    case groupItem: layer.isGroup = true; break;
    case itemPath:
        if (content.remaining() / sizeof(std::uint32_t) > deepestPath) return false;
        layer.path.clear();
        while (content.remaining() >= sizeof(std::uint32_t)) layer.path.push_back(content.u32be());
        break;
    default: break;
    }
    return true;
}

bool parseLayerProperties(ByteReader& reader, Layer& layer) {
    for (;;) {
        const std::uint32_t kind = reader.u32be();
        const std::uint32_t length = reader.u32be();
        const auto content = reader.bytes(length);
        if (reader.failed()) return false;
        if (kind == endOfProperties) return true;
        if (!parseLayerProperty(kind, ByteReader(content), layer)) return false;
    }
}

/// Passes over a name: a length, and that many bytes.
void skipName(ByteReader& reader) { reader.skip(reader.u32be()); }

} // namespace

bool xcf_parse_head(ByteReader& reader, Picture& picture) {
    reader.skip(magic.size());
    if (!parseVersion(reader, picture.version)) return false;
    picture.width = reader.u32be();
    picture.height = reader.u32be();
    picture.baseType = reader.u32be();
    if (reader.failed() || picture.baseType > indexedBase) return false;
    if (picture.version >= firstWithPrecision && !xcf_sample_format(reader.u32be(), picture.version, picture.samples))
        return false;
    if (picture.baseType == indexedBase && !picture.samples.isPlain()) return false; // an index is a byte
    return !reader.failed() && xcf_parse_image_properties(reader, picture);
}

bool xcf_parse_image_properties(ByteReader& reader, Picture& picture) {
    for (;;) {
        const std::uint32_t kind = reader.u32be();
        const std::uint32_t length = reader.u32be();
        if (reader.failed()) return false;
        if (kind == colourMap) {
            if (!parseColourMap(reader, picture)) return false;
            continue;
        }
        const auto content = reader.bytes(length);
        if (reader.failed()) return false;
        if (kind == endOfProperties) return true;
        if (kind == compression) {
            if (content.empty() || content.front() > zlibStreams) return false;
            picture.compression = content.front();
        }
    }
}

std::size_t xcf_pointer_size(const Picture& picture) { return picture.version >= firstWithWidePointers ? 8 : 4; }

std::uint64_t xcf_take_pointer(ByteReader& reader, const Picture& picture) {
    return xcf_pointer_size(picture) == 8 ? reader.u64be() : reader.u32be();
}

ByteReader xcf_reader_at(const Picture& picture, std::uint64_t offset) {
    ByteReader reader(picture.file);
    reader.skip(static_cast<std::size_t>(std::min<std::uint64_t>(offset, picture.file.size() + 1)));
    return reader;
}

bool xcf_parse_layer(const Picture& picture, std::uint64_t offset, Layer& layer) {
    ByteReader reader = xcf_reader_at(picture, offset);
    layer.width = reader.u32be();
    layer.height = reader.u32be();
    layer.type = reader.u32be();
    skipName(reader);
    if (reader.failed() || layer.width == 0 || layer.height == 0 || layer.type / 2 != picture.baseType) return false;
    if (!parseLayerProperties(reader, layer)) return false;
    layer.hierarchy = xcf_take_pointer(reader, picture);
    layer.mask = xcf_take_pointer(reader, picture);
    return !reader.failed();
}

bool xcf_parse_mask(const Picture& picture, const Layer& layer, std::uint64_t& hierarchy) {
    ByteReader reader = xcf_reader_at(picture, layer.mask);
    const std::uint32_t width = reader.u32be();
    const std::uint32_t height = reader.u32be();
    skipName(reader);
    Layer unused; // a mask has the properties of a layer, but none that would matter
    if (reader.failed() || !parseLayerProperties(reader, unused)) return false;
    hierarchy = xcf_take_pointer(reader, picture);
    return !reader.failed() && width == layer.width && height == layer.height;
}

Channels xcf_channels(std::uint32_t layerType) {
    const bool hasAlpha = layerType % 2 == 1;
    return {layerType / 2 == rgbBase ? 3U : 1U, hasAlpha ? 1U : 0U};
}

unsigned xcf_expected_bpp(const Picture& picture, Channels channels) {
    return channels.count() * picture.samples.bytes;
}

} // namespace wm::png::xcf

// The XCF reader: from layers to one picture.
//
// Layers are listed from the top down and laid from the bottom up. Every layer is laid as a normal one, with its
// opacity and its mask, whatever mode it has. The layers of a group are laid one by one; the group's own pixels are
// only a copy of them, but its visibility and its opacity hold for all that is in it.
//
// Layers that are not to be seen are decoded as well: a file is right as a whole or not at all. The pixels of all
// layers together are bounded like those of one picture, so that a small file whose layers share their tiles can't keep
// us busy for hours.

#include "plush/xcf_read.h"

#include "plush/straight_over.h"
#include "plush/xcf_parse.h"
#include "plush/xcf_tiles.h"

#include <algorithm>
#include <cstring>
#include <map>

namespace wm::png {

namespace {

using namespace xcf;

constexpr unsigned opaque = 255;

/// The product of two parts of 255, rounded.
std::uint8_t scaled(unsigned value, unsigned part) { return static_cast<std::uint8_t>((value * part + 127) / 255); }

/// What a group passes on to what is in it.
struct Group {
    bool visible = true;
    std::uint8_t opacity = opaque;
};

/// Gives the layers of groups what the groups pass on. Groups stand in front of what is in them.
void settleGroups(std::vector<Layer>& layers) {
    std::map<std::vector<std::uint32_t>, Group> groups;
    std::uint32_t outside = 0; // layers so far that are in no group; such a layer's path is its number
    for (Layer& layer : layers) {
        std::vector<std::uint32_t> path = layer.path;
        if (path.empty()) path.push_back(outside);
        if (path.size() == 1) ++outside;
        const auto parent = groups.find({path.begin(), path.end() - 1});
        if (parent != groups.end()) {
            layer.visible = layer.visible && parent->second.visible;
            layer.opacity = scaled(layer.opacity, parent->second.opacity);
        }
        if (layer.isGroup) groups[path] = {layer.visible, layer.opacity};
    }
}

/// The colour and alpha of a layer's pixel.
void readPixel(const Picture& picture, const Layer& layer, const std::uint8_t* from, std::uint8_t* pixel) {
    const bool hasAlpha = layer.type % 2 == 1;
    switch (picture.baseType) {
    case rgbBase: std::memcpy(pixel, from, 3); break;
    case greyBase: std::memset(pixel, from[0], 3); break;
    default:
        if (from[0] < picture.colours.size())
            std::ranges::copy(picture.colours[from[0]], pixel);
        else
            std::memset(pixel, 0, 3); // beyond the map: black
    }
    pixel[3] = hasAlpha ? from[xcf_expected_bpp(layer.type) - 1] : opaque;
}

/// The pixels of a layer and of its mask, as they are stored.
struct LayerPixels {
    std::vector<std::uint8_t> colours;
    std::vector<std::uint8_t> mask; // empty if there is none, or it does not count
};

bool decodeLayer(const Picture& picture, const Layer& layer, LayerPixels& pixels) {
    const std::size_t count = std::size_t{layer.width} * layer.height;
    const unsigned bpp = xcf_expected_bpp(layer.type);
    pixels.colours.resize(count * bpp);
    pixels.mask.clear();
    if (!xcf_decode_layer_pixels(picture, layer.hierarchy, layer.width, layer.height, bpp, pixels.colours.data()))
        return false;
    if (layer.mask == 0) return true;
    std::uint64_t hierarchy = 0;
    if (!xcf_parse_mask(picture, layer, hierarchy)) return false;
    pixels.mask.resize(count);
    if (!xcf_decode_layer_pixels(picture, hierarchy, layer.width, layer.height, 1, pixels.mask.data())) return false;
    if (!layer.masked) pixels.mask.clear();
    return true;
}

void layLayer(const Picture& picture, const Layer& layer, const LayerPixels& pixels, std::uint8_t* canvas) {
    const std::int64_t left = std::max<std::int64_t>(layer.x, 0);
    const std::int64_t right = std::min<std::int64_t>(layer.x + layer.width, picture.width);
    const std::int64_t top = std::max<std::int64_t>(layer.y, 0);
    const std::int64_t bottom = std::min<std::int64_t>(layer.y + layer.height, picture.height);
    const unsigned bpp = xcf_expected_bpp(layer.type);
    for (std::int64_t y = top; y < bottom; ++y) {
        for (std::int64_t x = left; x < right; ++x) {
            const auto at = static_cast<std::size_t>((y - layer.y) * layer.width + x - layer.x);
            std::uint8_t pixel[rgbaSize];
            readPixel(picture, layer, &pixels.colours[at * bpp], pixel);
            pixel[3] = scaled(pixel[3], layer.opacity);
            if (!pixels.mask.empty()) pixel[3] = scaled(pixel[3], pixels.mask[at]);
            lay_over(canvas + static_cast<std::size_t>(y * picture.width + x) * rgbaSize, pixel);
        }
    }
}

/// Pixels of a layer and its mask as they count against the limit: whole tiles, so that layers of a single pixel have
/// a limit, too.
std::uint64_t tiledPixels(const Layer& layer) {
    const auto tiled = [](std::uint32_t side) { return (std::uint64_t{side} + tileSide - 1) / tileSide * tileSide; };
    return tiled(layer.width) * tiled(layer.height) * (layer.mask == 0 ? 1 : 2);
}

/// Reads all layers but their pixels, from the top one down. Behind their pointers lie those of channels, which hold
/// selections and are no part of the picture.
bool readLayers(ByteReader& reader, const Picture& picture, std::vector<Layer>& layers) {
    std::uint64_t pixels = 0;
    while (const std::uint64_t offset = xcf_take_pointer(reader, picture)) {
        Layer& layer = layers.emplace_back();
        if (!xcf_parse_layer(picture, offset, layer) || !picture_fits(layer.width, layer.height, picture.file.size()))
            return false;
        pixels += tiledPixels(layer);
        if (pixels > memoryLimit / rgbaSize) return false;
    }
    while (xcf_take_pointer(reader, picture) != 0) {
    }
    return !reader.failed();
}

} // namespace

bool decode_xcf(std::span<const std::uint8_t> data, const PixelAllocator& allocate) {
    Picture picture;
    picture.file = data;
    ByteReader reader(data);
    std::vector<Layer> layers;
    if (!xcf_parse_head(reader, picture) || !readLayers(reader, picture, layers)) return false;
    if (picture.baseType == indexedBase && picture.colours.empty()) return false;
    settleGroups(layers);

    // The largest layer is held beside the canvas, four bytes a pixel and one for its mask at most.
    std::uint64_t largest = 0;
    for (const Layer& layer : layers) largest = std::max(largest, std::uint64_t{layer.width} * layer.height);
    const std::uint64_t spent = data.size() + largest * (rgbaSize + 1);
    if (!picture_fits(picture.width, picture.height, spent)) return false;
    std::uint8_t* canvas =
        allocate(static_cast<std::int32_t>(picture.width), static_cast<std::int32_t>(picture.height));
    std::memset(canvas, 0, std::size_t{picture.width} * picture.height * rgbaSize);

    LayerPixels pixels;
    for (auto layer = layers.crbegin(); layer != layers.crend(); ++layer) {
        if (!decodeLayer(picture, *layer, pixels)) return false;
        if (layer->visible && !layer->isGroup) layLayer(picture, *layer, pixels, canvas);
    }
    return true;
}

} // namespace wm::png

// The XCF reader: from layers to one picture.
//
// Layers are listed from the top down and laid from the bottom up. Every layer is laid as a normal one, with its
// opacity and its mask, whatever mode it has. A group that is opaque and has no mask makes no difference to the layers
// in it, so these are laid straight on what lies below. Any other group becomes a picture of its own first, which is
// then laid like a layer. The pixels that a file holds for the group itself are only a copy, and nobody reads them.
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

/// The layers that lie in something, as their places in the file's list; from the top down.
using Places = std::vector<std::size_t>;

/// Which layers lie in which.
struct Tree {
    Places outside;             // those in no group
    std::vector<Places> inside; // for each layer, those in it
};

/// Finds the group of each layer. Groups stand in front of what is in them; what names no such group is in none.
Tree plant(const std::vector<Layer>& layers) {
    Tree tree;
    tree.inside.resize(layers.size());
    std::map<std::vector<std::uint32_t>, std::size_t> groups; // by their paths
    for (std::size_t place = 0; place < layers.size(); ++place) {
        std::vector<std::uint32_t> path = layers[place].path;
        if (path.empty()) path.push_back(static_cast<std::uint32_t>(tree.outside.size()));
        const auto group = groups.find({path.begin(), path.end() - 1});
        (group == groups.end() ? tree.outside : tree.inside[group->second]).push_back(place);
        if (layers[place].isGroup) groups[path] = place;
    }
    return tree;
}

/// Whether a layer is a group that must become a picture of its own.
bool isApart(const Layer& layer) {
    return layer.isGroup && layer.visible && (layer.opacity < opaque || (layer.mask != 0 && layer.masked));
}

/// How many groups that are pictures of their own lie in each other at most.
std::size_t deepestApart(const std::vector<Layer>& layers, const Tree& tree, const Places& places) {
    std::size_t deepest = 0;
    for (const std::size_t place : places) {
        const std::size_t own = isApart(layers[place]) ? 1 : 0;
        deepest = std::max(deepest, own + deepestApart(layers, tree, tree.inside[place]));
    }
    return deepest;
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
    pixel[3] = hasAlpha ? from[xcf_channels(layer.type).count() - 1] : opaque;
}

/// Decodes the mask of a layer. It stays empty if there is none, or it does not count.
bool decodeMask(const Picture& picture, const Layer& layer, std::vector<std::uint8_t>& mask) {
    mask.clear();
    if (layer.mask == 0) return true;
    constexpr Channels alphaAlone = {0, 1};
    std::uint64_t hierarchy = 0;
    if (!xcf_parse_mask(picture, layer, hierarchy)) return false;
    mask.resize(std::size_t{layer.width} * layer.height);
    if (!xcf_decode_layer_pixels(picture, hierarchy, layer.width, layer.height, alphaAlone, mask.data())) return false;
    if (!layer.masked) mask.clear();
    return true;
}

/// Lays layers over each other.
class Compositor {
public:
    Compositor(const Picture& picture, const std::vector<Layer>& layers)
        : picture_(picture), layers_(layers), tree_(plant(layers)) {}

    /// How many canvases are needed at once, beside the one that is given.
    std::size_t furtherCanvases() const { return deepestApart(layers_, tree_, tree_.outside); }

    /// Lays all layers on `canvas`, which has the size of the picture. False if any of them can't be decoded.
    bool lay(std::uint8_t* canvas) { return layAll(tree_.outside, canvas); }

private:
    /// @param canvas  null if nothing of them is to be seen
    bool layAll(const Places& places, std::uint8_t* canvas) {
        for (auto place = places.crbegin(); place != places.crend(); ++place) {
            const Layer& layer = layers_[*place];
            std::uint8_t* target = layer.visible ? canvas : nullptr;
            if (!(layer.isGroup ? layGroup(layer, tree_.inside[*place], target) : layLayer(layer, target)))
                return false;
        }
        return true;
    }

    bool layLayer(const Layer& layer, std::uint8_t* canvas) {
        const Channels channels = xcf_channels(layer.type);
        pixels_.resize(std::size_t{layer.width} * layer.height * channels.count());
        if (!xcf_decode_layer_pixels(picture_, layer.hierarchy, layer.width, layer.height, channels, pixels_.data()) ||
            !decodeMask(picture_, layer, mask_))
            return false;
        if (canvas == nullptr) return true;
        layArea(layer, canvas, [&](std::size_t, std::size_t at, std::uint8_t* pixel) {
            readPixel(picture_, layer, &pixels_[at * channels.count()], pixel);
        });
        return true;
    }

    bool layGroup(const Layer& layer, const Places& inside, std::uint8_t* canvas) {
        if (canvas == nullptr || !isApart(layer)) return layAll(inside, canvas) && decodeMask(picture_, layer, mask_);
        std::vector<std::uint8_t> own(std::size_t{picture_.width} * picture_.height * rgbaSize);
        if (!layAll(inside, own.data()) || !decodeMask(picture_, layer, mask_)) return false;
        Layer area = layer;
        if (mask_.empty()) { // its pixels may lie anywhere
            area.x = area.y = 0;
            area.width = picture_.width;
            area.height = picture_.height;
        }
        layArea(area, canvas, [&](std::size_t place, std::size_t, std::uint8_t* pixel) {
            std::memcpy(pixel, &own[place * rgbaSize], rgbaSize);
        });
        return true;
    }

    /// Lays the part of a layer that is on the canvas, through the mask.
    /// @param pixelAt  called with a pixel's place on the canvas, its place in the layer, and where to write it
    template <typename PixelAt> void layArea(const Layer& layer, std::uint8_t* canvas, const PixelAt& pixelAt) const {
        const std::int64_t left = std::max<std::int64_t>(layer.x, 0);
        const std::int64_t right = std::min<std::int64_t>(layer.x + layer.width, picture_.width);
        const std::int64_t top = std::max<std::int64_t>(layer.y, 0);
        const std::int64_t bottom = std::min<std::int64_t>(layer.y + layer.height, picture_.height);
        for (std::int64_t y = top; y < bottom; ++y) {
            for (std::int64_t x = left; x < right; ++x) {
                const auto place = static_cast<std::size_t>(y * picture_.width + x);
                const auto at = static_cast<std::size_t>((y - layer.y) * layer.width + x - layer.x);
                std::uint8_t pixel[rgbaSize];
                pixelAt(place, at, pixel);
                pixel[3] = scaled(pixel[3], layer.opacity);
                if (!mask_.empty()) pixel[3] = scaled(pixel[3], mask_[at]);
                lay_over(canvas + place * rgbaSize, pixel);
            }
        }
    }

    const Picture& picture_;
    const std::vector<Layer>& layers_;
    Tree tree_;
    std::vector<std::uint8_t> pixels_; // of the layer that is being laid
    std::vector<std::uint8_t> mask_;   // likewise; empty without
};

std::uint64_t tilesOf(const Layer& layer) {
    const auto across = [](std::uint32_t side) { return (std::uint64_t{side} + tileSide - 1) / tileSide; };
    return across(layer.width) * across(layer.height);
}

/// Pixels of a layer and its mask as they count against the limit: whole tiles, so that layers of a single pixel have
/// a limit, too.
std::uint64_t tiledPixels(const Layer& layer) {
    return tilesOf(layer) * tileSide * tileSide * (layer.mask == 0 ? 1 : 2);
}

/// Whether the file has room for the pointers to the layer's tiles. Tiles may be shared, but their pointers are not, so
/// a small file can't ask for large layers.
bool hasRoomForTiles(const Picture& picture, const Layer& layer) {
    const bool hasNoTiles = layer.isGroup && layer.mask == 0;
    return hasNoTiles || tilesOf(layer) <= picture.file.size() / xcf_pointer_size(picture);
}

/// Reads all layers but their pixels, from the top one down. Behind their pointers lie those of channels, which hold
/// selections and are no part of the picture.
bool readLayers(ByteReader& reader, const Picture& picture, std::vector<Layer>& layers) {
    std::uint64_t pixels = 0;
    while (const std::uint64_t offset = xcf_take_pointer(reader, picture)) {
        Layer& layer = layers.emplace_back();
        if (!xcf_parse_layer(picture, offset, layer) || !picture_fits(layer.width, layer.height, picture.file.size()) ||
            !hasRoomForTiles(picture, layer))
            return false;
        pixels += tiledPixels(layer);
        if (isApart(layer)) pixels += std::uint64_t{picture.width} * picture.height;
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

    Compositor compositor(picture, layers);

    // The largest layer is held beside the canvases, four bytes a pixel and one for its mask at most.
    std::uint64_t largest = 0;
    for (const Layer& layer : layers) largest = std::max(largest, std::uint64_t{layer.width} * layer.height);
    const std::uint64_t spent = data.size() + largest * (rgbaSize + 1);
    const std::uint64_t canvases = 1 + compositor.furtherCanvases();
    if (!picture_fits(picture.width, picture.height * canvases, spent)) return false;
    std::uint8_t* canvas =
        allocate(static_cast<std::int32_t>(picture.width), static_cast<std::int32_t>(picture.height));
    std::memset(canvas, 0, std::size_t{picture.width} * picture.height * rgbaSize);
    return compositor.lay(canvas);
}

} // namespace wm::png

// Decoding pictures.
//
// A picture is one pass over all its pixels or, interlaced, seven passes over pixels that lie ever closer together. A
// pass is a little picture of its own: rows of filtered bytes behind a filter byte. So one loop serves both: take a row
// from the inflater, undo its filter, expand it, and put its pixels where they belong. Where the unfiltered row is
// already what belongs there, it is unfiltered in place.
//
// Sizes are summed up before anything is allocated, in 64 bits and with the product of the sides bounded first.

#include "plush/png_decode.h"

#include "plush/inflate.h"
#include "plush/png.h"
#include "plush/png_expand.h"
#include "plush/png_filters.h"
#include "plush/straight_over.h"

#include <algorithm>
#include <cstring>
#include <memory>

namespace wm::png {

namespace {

/// Where the pixels of a pass lie: every `xStep`th from `xStart`, in every `yStep`th row from `yStart`.
struct Pass {
    std::uint32_t xStart;
    std::uint32_t yStart;
    std::uint32_t xStep;
    std::uint32_t yStep;
};

constexpr std::array<Pass, 1> wholePicture = {{{0, 0, 1, 1}}};
constexpr std::array<Pass, 7> adam7Passes = {
    {{0, 0, 8, 8}, {4, 0, 8, 8}, {0, 4, 4, 8}, {2, 0, 4, 4}, {0, 2, 2, 4}, {1, 0, 2, 2}, {0, 1, 1, 2}}};

std::span<const Pass> passesOf(const Header& header) {
    if (header.interlaceMethod == adam7) return adam7Passes;
    return wholePicture;
}

/// How many of `size` positions a pass has, beginning at `start`.
constexpr std::uint32_t countIn(std::uint32_t size, std::uint32_t start, std::uint32_t step) {
    return size > start ? (size - start - 1) / step + 1 : 0;
}

unsigned bitsPerPixel(const Header& header) { return channel_count(header.colourType) * header.bitDepth; }

/// Bytes of a row of `width` pixels, without the filter byte.
std::uint64_t rowSize(const Header& header, std::uint32_t width) {
    return (std::uint64_t{width} * bitsPerPixel(header) + 7) / 8;
}

std::uint64_t pixelSize(std::uint32_t width, std::uint32_t height) { return std::uint64_t{width} * height * rgbaSize; }

/// The rows that a decoder keeps beside the picture.
class RowBuffers {
public:
    RowBuffers(std::size_t rowBytes, std::size_t width)
        : rowBytes_(rowBytes), rows_(2 * (rowBytes + filterSlack)), expanded_(width * rgbaSize) {}

    /// Begins a pass: the row above the first is zeros.
    void clear() { std::fill(rows_.begin(), rows_.end(), std::uint8_t{0}); }

    std::uint8_t* current() { return rows_.data() + (odd_ ? rowBytes_ + filterSlack : 0); }
    const std::uint8_t* above() const { return rows_.data() + (odd_ ? 0 : rowBytes_ + filterSlack); }
    void swap() { odd_ = !odd_; }

    /// Room for a row of RGBA pixels.
    std::uint8_t* expanded() { return expanded_.data(); }

    static std::uint64_t memory_needed(std::uint64_t rowBytes, std::uint64_t width) {
        return 2 * (rowBytes + filterSlack) + width * rgbaSize;
    }

private:
    std::size_t rowBytes_;
    std::vector<std::uint8_t> rows_;
    std::vector<std::uint8_t> expanded_;
    bool odd_ = false;
};

/// What decoding a picture of this size takes beside its pixels.
std::uint64_t workingMemory(const Header& header, std::uint32_t width, std::uint32_t height) {
    const std::uint64_t row = rowSize(header, width);
    return RowBuffers::memory_needed(row, width) + Inflater::memory_needed(raw_size(header, width, height), row + 1) +
           sizeof(RowExpander);
}

bool isLongEnough(const Header& header, const CompressedData& data, std::uint32_t width, std::uint32_t height) {
    return data.size >= least_deflated_size(raw_size(header, width, height));
}

/// Spreads a row of pixels over every `step`th pixel of the target.
void scatter(std::uint8_t* target, const std::uint8_t* pixels, std::uint32_t count, std::uint32_t step) {
    for (std::uint32_t i = 0; i < count; ++i)
        std::memcpy(target + std::size_t{i} * step * rgbaSize, pixels + std::size_t{i} * rgbaSize, rgbaSize);
}

/// Decodes the rows of one picture, pass by pass.
class PictureDecoder {
public:
    PictureDecoder(const ParsedPng& png, const CompressedData& data, std::uint32_t width, std::uint32_t height,
                   std::uint8_t* pixels)
        : header_(png.header), width_(width), height_(height), pixels_(pixels), expander_(png),
          inflater_(data.pieces, raw_size(header_, width, height), rowSize(header_, width) + 1),
          rows_(rowSize(header_, width), width), pixelBytes_(std::max(bitsPerPixel(header_) / 8, 1U)) {}

    bool decode() {
        for (const Pass& pass : passesOf(header_))
            if (!decodePass(pass)) return false;
        return inflater_.finish();
    }

private:
    bool decodePass(const Pass& pass);

    const Header& header_;
    const std::uint32_t width_;
    const std::uint32_t height_;
    std::uint8_t* const pixels_;
    const RowExpander expander_;
    Inflater inflater_;
    RowBuffers rows_;
    const std::size_t pixelBytes_; // at least 1, as the filters count
};

bool PictureDecoder::decodePass(const Pass& pass) {
    const std::uint32_t columns = countIn(width_, pass.xStart, pass.xStep);
    if (columns == 0) return true; // such a pass has no rows at all
    const std::size_t size = rowSize(header_, columns);
    const bool inPlace = expander_.isPlainCopy() && pass.xStep == 1;

    rows_.clear();
    const std::uint8_t* above = rows_.above();
    for (std::uint32_t y = pass.yStart; y < height_; y += pass.yStep) {
        const std::uint8_t* filtered = inflater_.take(size + 1);
        if (filtered == nullptr) return false;
        std::uint8_t* target = pixels_ + (std::size_t{y} * width_ + pass.xStart) * rgbaSize;
        std::uint8_t* row = inPlace ? target : rows_.current();
        if (!unfilter_row_to(row, filtered + 1, above, size, pixelBytes_, filtered[0])) return false;
        above = row;
        if (inPlace) continue;
        rows_.swap();
        if (pass.xStep == 1) {
            expander_.expand(target, row, columns);
        } else {
            expander_.expand(rows_.expanded(), row, columns);
            scatter(target, rows_.expanded(), columns, pass.xStep);
        }
    }
    return true;
}

void layFrame(std::uint8_t* canvas, std::uint32_t canvasWidth, const Frame& frame, const std::uint8_t* pixels) {
    const std::size_t rowBytes = std::size_t{frame.width} * rgbaSize;
    for (std::uint32_t y = 0; y < frame.height; ++y, pixels += rowBytes) {
        const std::size_t start = (std::size_t{frame.yOffset} + y) * canvasWidth + frame.xOffset;
        std::uint8_t* target = canvas + start * rgbaSize;
        if (frame.blendOperation == blendSource) {
            std::memcpy(target, pixels, rowBytes);
        } else {
            for (std::size_t at = 0; at < rowBytes; at += rgbaSize) lay_over(target + at, pixels + at);
        }
    }
}

/// Bytes of pixels of the largest frame.
std::uint64_t largestFrame(const ParsedPng& png) {
    std::uint64_t largest = 0;
    for (const Frame& frame : png.frames) largest = std::max(largest, pixelSize(frame.width, frame.height));
    return largest;
}

bool isComposed(const ParsedPng& png) { return png.animated && !png.frames.empty(); }

bool defaultImageIsFrame(const ParsedPng& png) {
    return std::ranges::any_of(png.frames, [](const Frame& frame) { return frame.takesImageData; });
}

} // namespace

std::uint64_t raw_size(const Header& header, std::uint32_t width, std::uint32_t height) {
    if (pixelSize(width, height) > memoryLimit) return 0;
    std::uint64_t size = 0;
    for (const Pass& pass : passesOf(header)) {
        const std::uint32_t columns = countIn(width, pass.xStart, pass.xStep);
        if (columns == 0) continue;
        size += (1 + rowSize(header, columns)) * countIn(height, pass.yStart, pass.yStep);
    }
    return size;
}

bool is_decodable(const ParsedPng& png) {
    const Header& header = png.header;
    if (raw_size(header, header.width, header.height) == 0) return false;
    std::uint64_t memory = pixelSize(header.width, header.height) + workingMemory(header, header.width, header.height);
    if (isComposed(png)) {
        for (const Frame& frame : png.frames)
            if (!isLongEnough(header, frame.data, frame.width, frame.height)) return false;
        memory += largestFrame(png);
    }
    const bool needsDefault = !isComposed(png) || !defaultImageIsFrame(png);
    if (needsDefault && !isLongEnough(header, png.imageData, header.width, header.height)) return false;
    return png.memoryUsed + memory <= memoryLimit;
}

bool decode_png_frame(const ParsedPng& png, const CompressedData& data, std::uint32_t width, std::uint32_t height,
                      std::uint8_t* pixels) {
    return PictureDecoder(png, data, width, height, pixels).decode();
}

bool decode_apng_squashed(const ParsedPng& png, std::uint8_t* pixels) {
    const Header& header = png.header;
    if (defaultImageIsFrame(png)) {
        std::fill_n(pixels, pixelSize(header.width, header.height), std::uint8_t{0});
    } else if (!decode_png_frame(png, png.imageData, header.width, header.height, pixels)) {
        return false;
    }
    const auto framePixels = std::make_unique_for_overwrite<std::uint8_t[]>(largestFrame(png));
    for (const Frame& frame : png.frames) {
        if (!decode_png_frame(png, frame.data, frame.width, frame.height, framePixels.get())) return false;
        layFrame(pixels, header.width, frame, framePixels.get());
    }
    return true;
}

bool decode_png(const ParsedPng& png, std::uint8_t* pixels) {
    if (isComposed(png)) return decode_apng_squashed(png, pixels);
    return decode_png_frame(png, png.imageData, png.header.width, png.header.height, pixels);
}

} // namespace wm::png

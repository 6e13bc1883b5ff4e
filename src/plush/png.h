#pragma once

// Picture files: what they become, and the ways in and out.
//
// Everything that is loaded becomes eight-bit RGBA, whatever the file held; the format is told from the content and
// never from a file's name. Loading has no messages: a file is either read whole and right, or not at all.
//
// Functions of `wm::png` are spelt like those of the platform boundary that they stand behind, with underscores.

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace wm::png {

constexpr std::size_t rgbaSize = 4; // bytes of a pixel

/// The most memory that loading a picture may take in all, the file's own bytes included. What would need more is
/// refused before it is allocated.
constexpr std::uint64_t memoryLimit = std::uint64_t{1} << 30;

/// A loaded picture: `width * height` pixels of four bytes R, G, B, A, straight alpha, top row first, no padding.
struct Image {
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::vector<std::uint8_t> pixels;
};

/// The formats that are told apart by content.
enum Format : int { unknownFormat = 0, pngFormat = 1, bmpFormat = 2, tgaFormat = 3, xcfFormat = 4 };

/// Which format `data` has, judging by its beginning alone. Null or empty data is of no known format.
int detect_format(const std::uint8_t* data, std::size_t size);

/// Decodes the picture file that `data` holds. False on any fault; `image` is then unspecified.
bool load_memory(const std::uint8_t* data, std::size_t size, Image& image);

/// Decodes the picture file `path`. False on any fault; `image` is then unspecified.
bool load_file(const std::string& path, Image& image);

/// Writes `width * height` RGBA pixels to the PNG file `path`. False without pixels, with a side below 1, or if the
/// file cannot be written whole.
bool save_png_rgba8_file(const std::string& path, const std::uint8_t* pixels, std::int32_t width, std::int32_t height);

/// The same for a BMP file of 32 bits with alpha. False, too, if the file's size does not fit its field.
bool save_bmp_rgba8_file(const std::string& path, const std::uint8_t* pixels, std::int32_t width, std::int32_t height);

/// The same for a TGA file of 32 bits with alpha. False, too, if a side is beyond 65535 pixels.
bool save_tga_rgba8_file(const std::string& path, const std::uint8_t* pixels, std::int32_t width, std::int32_t height);

/// The same for an XCF file of one layer. False, too, if the file would be beyond 4 GiB.
bool save_xcf_rgba8_file(const std::string& path, const std::uint8_t* pixels, std::int32_t width, std::int32_t height);

/// Another name of `save_png_rgba8_file`.
bool save_rgba8_file(const std::string& path, const std::uint8_t* pixels, std::int32_t width, std::int32_t height);

} // namespace wm::png

#pragma once

// From chunks to pixels: inflating, undoing filters and interlacing, and laying the frames of an animation together.

#include "plush/png_chunks.h"

#include <cstdint>

namespace wm::png {

/// The bytes that the compressed data of a `width` by `height` picture must give: its rows with their filter bytes, in
/// all passes if it is interlaced. 0 if the number would be beyond all sense.
std::uint64_t raw_size(const Header& header, std::uint32_t width, std::uint32_t height);

/// Whether the picture can be decoded within the memory limit, and its data are long enough to hold it at all. To be
/// asked before the pixels are allocated.
bool is_decodable(const ParsedPng& png);

/// Decodes one picture of a file: the default image or a frame.
/// @param data           its compressed data
/// @param width, height  its size, which for a frame is not the header's
/// @param pixels         receives `width * height` RGBA pixels; unspecified on failure
/// @return false if the data are damaged or not of exactly this size
bool decode_png_frame(const ParsedPng& png, const CompressedData& data, std::uint32_t width, std::uint32_t height,
                      std::uint8_t* pixels);

/// Decodes an animated file into one picture: all its frames, laid on the canvas in file order and never cleared away.
/// @param pixels  receives the canvas, of the header's size
bool decode_apng_squashed(const ParsedPng& png, std::uint8_t* pixels);

/// Decodes a file of either kind. Only for files that are decodable.
/// @param pixels  receives a picture of the header's size
bool decode_png(const ParsedPng& png, std::uint8_t* pixels);

} // namespace wm::png

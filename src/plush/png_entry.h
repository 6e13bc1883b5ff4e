#pragma once

// The flat entry points of the image codec, as the platform boundary offers them: paths and bare blocks of pixels, no
// types. Paths are byte strings in the local file system.

#include <cstdint>

/// Reads the picture file `path`, of any format that the codec knows by its content, as RGBA, top row first.
/// @param width, height  receive the size in pixels; untouched on failure
/// @return a block that the caller frees with `delete[]`, or null on any fault
std::uint8_t* wm_load_png(const char* path, int* width, int* height);

/// Writes `width * height` RGBA pixels, top row first, to the PNG file `path`. False if there is nothing to write or
/// it could not be written whole.
bool wm_save_png(const char* path, const std::uint8_t* pixels, int width, int height);

/// The same for a BMP file, a TGA file and an XCF file of one layer. A picture that is too large for the format's
/// fields is not written.
bool wm_save_bmp(const char* path, const std::uint8_t* pixels, int width, int height);
bool wm_save_tga(const char* path, const std::uint8_t* pixels, int width, int height);
bool wm_save_xcf(const char* path, const std::uint8_t* pixels, int width, int height);

/// Whether pixels from `wm_load_png` still need a pass over them before they can be used. Never, on our platforms.
bool wm_png_requires_postprocess();

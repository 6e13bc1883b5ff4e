#pragma once

// The engine's own image file: the bare pixels of an image and of its reflection map, each behind its size. It is the
// only format that keeps the map. All numbers are of 64 bits, little-endian:
//
//     width, height, 4 * width * height bytes of pixels,
//     reflectWidth, reflectHeight, 4 * reflectWidth * reflectHeight bytes of the map
//
// There is no magic, so the file is known by its name alone, which must end in ".pmg".

#include "plush/image.h"

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// Whether the path ends in ".pmg", in small letters.
bool hasPMGExtension(std::string_view path);

/// The bytes of a file that holds this image. False if the image is none that can be written: a size below 0, or a
/// size without pixels.
bool writePMG(const PlushImage& image, std::vector<std::uint8_t>& bytes);

/// Frees an image that no register knows yet.
struct ImageDeleter {
    void operator()(PlushImage* image) const;
};
using OwnedImage = std::unique_ptr<PlushImage, ImageDeleter>;

/// The image that the bytes of a file hold; null if they are cut short or hold more than an image may have. What
/// stands behind the map is ignored.
OwnedImage readPMG(std::span<const std::uint8_t> bytes);

/// Writes an image to a file. False for a null image or one that cannot be written, for another extension than ".pmg",
/// or if the file cannot be written whole.
bool savePlushImage(const PlushImage* image, const std::string& path);

/// Reads a file into a new live image. Null for another extension than ".pmg" or on any fault.
PlushImage* loadPlushImage(const std::string& path);

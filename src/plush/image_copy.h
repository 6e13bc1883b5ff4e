#pragma once

// A copy of an image's pixels for the length of one operation.
//
// An operation that reads one image and draws on another is sometimes given the same image twice. What it reads must
// not depend on what it has drawn already, or on which thread came first, so it reads a copy then.

#include "plush/image.h"

#include <vector>

class ImageCopy {
public:
    /// The image must have pixels.
    explicit ImageCopy(const PlushImage& image)
        : bytes_(image.pixels, image.pixels + static_cast<std::size_t>(image.width) *
                                                  static_cast<std::size_t>(image.height) * bytesPerPixel) {
        record_.width = image.width;
        record_.height = image.height;
        record_.pixels = bytes_.data();
    }
    ImageCopy(const ImageCopy&) = delete;
    ImageCopy& operator=(const ImageCopy&) = delete;

    const PlushImage& image() const { return record_; }

private:
    std::vector<PixelByte> bytes_;
    PlushImage record_;
};

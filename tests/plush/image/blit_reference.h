#pragma once

// The blit as its rules say it, one pixel after the other, and images to try it on.

#include "plush/blit.h"
#include "plush/image.h"

#include <random>
#include <vector>

/// An image that owns its pixels.
class OwnedImage {
public:
    OwnedImage(int width, int height);
    OwnedImage(const OwnedImage& other);
    OwnedImage& operator=(const OwnedImage&) = delete;

    PlushImage& image() { return record_; }
    const PlushImage& image() const { return record_; }
    const std::vector<PixelByte>& bytes() const { return bytes_; }
    PixelByte* pixel(int x, int y);

    /// Random bytes; a third each of the alphas are 0, 255 and anything.
    void fillAtRandom(std::mt19937& random);

private:
    PlushImage record_;
    std::vector<PixelByte> bytes_;
};

/// One pixel drawn over another.
void referenceBlend(PixelByte* target, const PixelByte* source);

/// The whole blit.
void referenceBlit(PlushImage& target, const PlushImage& image, int x, int y, Blend blend, float scale, float rotation);

#pragma once

// A live image for one test, and random ones.

#include "operation_reference.h"
#include "plush/registry.h"
#include "random_cases.h"

#include <algorithm>

/// A live image that is freed with this.
class LiveImage {
public:
    explicit LiveImage(const Picture& picture)
        : image_(createSolidColourImage(picture.width, picture.height, 0, 0, 0, 0)) {
        std::copy(picture.bytes.begin(), picture.bytes.end(), image_->pixels);
    }
    LiveImage(const LiveImage&) = delete;
    LiveImage& operator=(const LiveImage&) = delete;
    ~LiveImage() { killImage(image_); }

    PlushImage& operator*() const { return *image_; }
    PlushImage* operator->() const { return image_; }
    PlushImage* get() const { return image_; }

private:
    PlushImage* image_;
};

/// Random bytes; every other image has only the extremes 0 and 255.
inline Picture randomPicture(std::mt19937& random, int mostColumns, int mostRows) {
    Picture picture(between(random, 1, mostColumns), between(random, 1, mostRows));
    const bool extremes = random() % 2 == 0;
    for (PixelByte& byte : picture.bytes) {
        byte = static_cast<PixelByte>(extremes ? (random() % 2) * 255 : random());
    }
    return picture;
}

/// Each pixel's first two bytes are its column and row from 1; opaque.
inline Picture numberedPicture(int width, int height) {
    Picture picture(width, height);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            PixelByte* pixel = picture.at(x, y);
            pixel[0] = static_cast<PixelByte>(x + 1);
            pixel[1] = static_cast<PixelByte>(y + 1);
            pixel[3] = 255;
        }
    }
    return picture;
}

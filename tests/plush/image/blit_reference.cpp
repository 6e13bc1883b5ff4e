// The blit as its rules say it. Nothing here is clever: each target pixel is worked out from the formula alone.

#include "blit_reference.h"

#include <algorithm>
#include <cmath>
#include <cstring>

OwnedImage::OwnedImage(int width, int height)
    : bytes_(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * bytesPerPixel) {
    record_.width = width;
    record_.height = height;
    record_.pixels = bytes_.data();
}

OwnedImage::OwnedImage(const OwnedImage& other) : record_(other.record_), bytes_(other.bytes_) {
    record_.pixels = bytes_.data();
}

PixelByte* OwnedImage::pixel(int x, int y) {
    return bytes_.data() + (static_cast<std::size_t>(x) + static_cast<std::size_t>(record_.width) * y) * bytesPerPixel;
}

void OwnedImage::fillAtRandom(std::mt19937& random) {
    for (PixelByte& byte : bytes_) byte = static_cast<PixelByte>(random());
    for (std::size_t at = 3; at < bytes_.size(); at += bytesPerPixel) {
        switch (random() % 3) {
        case 0: bytes_[at] = 0; break;
        case 1: bytes_[at] = 255; break;
        default: break;
        }
    }
}

void referenceBlend(PixelByte* target, const PixelByte* source) {
    const int a = source[3];
    if (a == 0) return;
    if (a == 255) {
        std::memcpy(target, source, bytesPerPixel);
        return;
    }
    for (int channel = 0; channel < 3; ++channel) {
        target[channel] = static_cast<PixelByte>((a * source[channel] + (255 - a) * target[channel]) / 255);
    }
    target[3] = static_cast<PixelByte>(std::min(target[3] + a - target[3] * a / 255, 255));
}

namespace {

void draw(PlushImage& target, int px, int py, const PlushImage& image, int column, int row, Blend blend) {
    if (px < 0 || py < 0 || px >= target.width || py >= target.height) return;
    if (column < 0 || row < 0 || column >= image.width || row >= image.height) return;
    PixelByte* to = target.pixels + (px + static_cast<std::ptrdiff_t>(target.width) * py) * bytesPerPixel;
    const PixelByte* from = image.pixels + (column + static_cast<std::ptrdiff_t>(image.width) * row) * bytesPerPixel;
    if (blend == Blend::Over) {
        referenceBlend(to, from);
    } else {
        std::memcpy(to, from, bytesPerPixel);
    }
}

} // namespace

void referenceBlit(PlushImage& target, const PlushImage& image, int x, int y, Blend blend, float scale,
                   float rotation) {
    if (x >= target.width || y >= target.height || image.width + x < 1 || image.height + y < 1) return;
    if (scale == 0.0F) return;
    float normalised = std::fmod(rotation, 360.0F);
    if (normalised < 0.0F) normalised += 360.0F;
    const bool turned = !(normalised < 1e-5F || normalised > 359.999F);

    if (scale == 1.0F && !turned) {
        for (int row = 0; row < image.height; ++row) {
            for (int column = 0; column < image.width; ++column) {
                draw(target, x + column, y + row, image, column, row, blend);
            }
        }
        return;
    }

    const auto w = static_cast<float>(image.width);
    const auto h = static_cast<float>(image.height);
    const float left = static_cast<float>(x);
    const float top = static_cast<float>(y);
    const float scaledW = scale * w;
    const float scaledH = scale * h;
    const float cx = left + scaledW * 0.5F;
    const float cy = top + scaledH * 0.5F;
    float c = 1.0F;
    float s = 0.0F;
    float minX = left;
    float minY = top;
    float maxX = std::ceil(left + scaledW);
    float maxY = std::ceil(top + scaledH);
    if (turned) {
        const float angle = rotation * 0.017453292F;
        c = static_cast<float>(std::cos(static_cast<double>(angle)));
        s = static_cast<float>(std::sin(static_cast<double>(angle)));
        bool first = true;
        for (const float cornerX : {left, left + scaledW}) {
            for (const float cornerY : {top, top + scaledH}) {
                const float dx = cornerX - cx;
                const float dy = cornerY - cy;
                const float turnedX = cx + (dx * c - dy * s);
                const float turnedY = cy + (dx * s + dy * c);
                minX = first ? turnedX : std::min(minX, turnedX);
                maxX = first ? turnedX : std::max(maxX, turnedX);
                minY = first ? turnedY : std::min(minY, turnedY);
                maxY = first ? turnedY : std::max(maxY, turnedY);
                first = false;
            }
        }
        minX = std::floor(minX);
        minY = std::floor(minY);
        maxX = std::ceil(maxX);
        maxY = std::ceil(maxY);
    }

    for (int py = 0; py < target.height; ++py) {
        for (int px = 0; px < target.width; ++px) {
            const auto tx = static_cast<float>(px);
            const auto ty = static_cast<float>(py);
            if (tx < minX || ty < minY || tx >= maxX || ty >= maxY) continue;
            float srcX = (tx - left) / scale;
            float srcY = (ty - top) / scale;
            if (turned) {
                const float dx = tx - cx;
                const float dy = ty - cy;
                srcX = (dx * c + dy * s) / scale + w * 0.5F;
                srcY = (-dx * s + dy * c) / scale + h * 0.5F;
            }
            const float column = std::round(srcX);
            const float row = std::round(srcY);
            if (!(column >= 0.0F && row >= 0.0F && column < w && row < h)) continue;
            draw(target, px, py, image, static_cast<int>(column), static_cast<int>(row), blend);
        }
    }
}

// Made-up pictures, the same in every run.

#include "png_pictures.h"

#include <algorithm>
#include <cmath>

namespace velmaris::bench {

namespace {

/// A cheap hash of a lattice point, 0 to 255.
std::uint32_t lattice(std::uint32_t x, std::uint32_t y, std::uint32_t seed) {
    std::uint32_t h = x * 0x9E3779B1U ^ y * 0x85EBCA77U ^ seed * 0xC2B2AE3DU;
    h = (h ^ h >> 15) * 0x2C1B3C6DU;
    h = (h ^ h >> 12) * 0x297A2D39U;
    return (h ^ h >> 15) & 0xFFU;
}

/// Value noise: lattice values every `cell` pixels with smooth ways between them.
double noise(std::uint32_t x, std::uint32_t y, std::uint32_t cell, std::uint32_t seed) {
    const std::uint32_t column = x / cell;
    const std::uint32_t row = y / cell;
    const auto smooth = [cell](std::uint32_t at) {
        const double t = static_cast<double>(at % cell) / cell;
        return t * t * (3 - 2 * t);
    };
    const double u = smooth(x);
    const double v = smooth(y);
    const double top = std::lerp(lattice(column, row, seed), lattice(column + 1, row, seed), u);
    const double bottom = std::lerp(lattice(column, row + 1, seed), lattice(column + 1, row + 1, seed), u);
    return std::lerp(top, bottom, v);
}

void fill(Picture& picture, std::uint32_t left, std::uint32_t top, std::uint32_t width, std::uint32_t height,
          const std::uint8_t (&colour)[4]) {
    const std::uint32_t right = std::min(left + width, picture.width);
    const std::uint32_t bottom = std::min(top + height, picture.height);
    for (std::uint32_t y = top; y < bottom; ++y)
        for (std::uint32_t x = left; x < right; ++x)
            std::copy_n(colour, 4, picture.pixels.data() + (std::size_t{y} * picture.width + x) * 4);
}

} // namespace

Picture photo(std::uint32_t width, std::uint32_t height) {
    Picture picture{width, height, std::vector<std::uint8_t>(std::size_t{width} * height * 4)};
    std::uint8_t* out = picture.pixels.data();
    for (std::uint32_t y = 0; y < height; ++y)
        for (std::uint32_t x = 0; x < width; ++x) {
            const double shape = 0.55 * noise(x, y, 256, 1) + 0.25 * noise(x, y, 64, 2) + 0.12 * noise(x, y, 16, 3) +
                                 0.05 * noise(x, y, 4, 4);
            for (std::uint32_t channel = 0; channel < 3; ++channel) {
                const double tint = 0.25 * noise(x, y, 128, 10 + channel);
                const double sensor = (lattice(x, y, 20 + channel) % 5) - 2.0;
                *out++ = static_cast<std::uint8_t>(std::clamp(0.8 * shape + tint + sensor, 0.0, 255.0));
            }
            *out++ = 255;
        }
    return picture;
}

Picture flat(std::uint32_t width, std::uint32_t height) {
    Picture picture{width, height, std::vector<std::uint8_t>(std::size_t{width} * height * 4)};
    for (std::uint32_t y = 0; y < height; ++y) {
        const auto shade = static_cast<std::uint8_t>(30 + y * 60 / height);
        fill(picture, 0, y, width, 1, {shade, static_cast<std::uint8_t>(shade + 10), 80, 255});
    }
    for (std::uint32_t panel = 0; panel < 24; ++panel) {
        const std::uint32_t left = lattice(panel, 0, 31) * width / 300;
        const std::uint32_t top = lattice(panel, 1, 31) * height / 300;
        const std::uint32_t wide = 60 + lattice(panel, 2, 31);
        const std::uint32_t high = 40 + lattice(panel, 3, 31) / 2;
        const auto tone = static_cast<std::uint8_t>(lattice(panel, 4, 31) & 0xF0U);
        fill(picture, left, top, wide, high, {240, 240, 245, 255});
        fill(picture, left + 2, top + 2, wide - 4, high - 4,
             {tone, 60, 120, static_cast<std::uint8_t>(panel % 3 ? 255 : 128)});
        for (std::uint32_t line = top + 8; line + 10 < top + high; line += 12)
            for (std::uint32_t letter = left + 8; letter + 8 < left + wide; letter += 7)
                for (std::uint32_t stroke = 0; stroke < 4; ++stroke) {
                    const std::uint32_t shape = lattice(lattice(letter, line, 32) % 26, stroke, 33);
                    fill(picture, letter + shape % 4, line + shape / 4 % 6, 1 + shape % 2, 2, {255, 255, 255, 255});
                }
    }
    return picture;
}

} // namespace velmaris::bench

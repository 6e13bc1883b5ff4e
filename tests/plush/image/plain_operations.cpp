// The plainest loops that do what an operation does. Nothing here is clever: each pixel is worked out alone.

#include "plain_operations.h"

#include "plush/pixels.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>

void plainUpscale(std::vector<PixelByte>& result, const PlushImage& image, float factor) {
    const int width = static_cast<int>(factor * static_cast<float>(image.width));
    const int height = static_cast<int>(factor * static_cast<float>(image.height));
    result.assign(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * bytesPerPixel, 0);
    PixelByte* target = result.data();
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x, target += bytesPerPixel) {
            const float srcX = (static_cast<float>(x) + 0.5F) / factor - 0.5F;
            const float srcY = (static_cast<float>(y) + 0.5F) / factor - 0.5F;
            const int x0 = std::clamp(static_cast<int>(srcX), 0, image.width - 1);
            const int x1 = std::clamp(static_cast<int>(srcX) + 1, 0, image.width - 1);
            const int y0 = std::clamp(static_cast<int>(srcY), 0, image.height - 1);
            const int y1 = std::clamp(static_cast<int>(srcY) + 1, 0, image.height - 1);
            const float fx = srcX - static_cast<float>(x0);
            const float fy = srcY - static_cast<float>(y0);
            const PixelByte* c00 = pixelAt(image, x0, y0);
            const PixelByte* c10 = pixelAt(image, x1, y0);
            const PixelByte* c01 = pixelAt(image, x0, y1);
            const PixelByte* c11 = pixelAt(image, x1, y1);
            for (int channel = 0; channel < bytesPerPixel; ++channel) {
                const float sum = c00[channel] * (1 - fx) * (1 - fy) + c10[channel] * fx * (1 - fy) +
                                  c01[channel] * (1 - fx) * fy + c11[channel] * fx * fy;
                target[channel] = static_cast<PixelByte>(static_cast<int>(sum));
            }
        }
    }
}

void plainGridFill(PlushImage& image, int step) {
    for (int y = 0; y < image.height; ++y) {
        for (int x = 0; x < image.width; ++x) {
            const int rx = x % step;
            const int ry = y % step;
            if (rx == 0 && ry == 0) continue;
            const int gx = x - rx;
            const int gy = y - ry;
            const int nx = gx < image.width - step ? gx + step : gx;
            const int ny = gy < image.height - step ? gy + step : gy;
            const float wx = nx == gx ? 0.0F : static_cast<float>(rx) / static_cast<float>(nx - gx);
            const float wy = ny == gy ? 0.0F : static_cast<float>(ry) / static_cast<float>(ny - gy);
            PixelByte* target = pixelAt(image, x, y);
            for (int channel = 0; channel < bytesPerPixel; ++channel) {
                const float top = pixelAt(image, gx, gy)[channel] * (1 - wx) + pixelAt(image, nx, gy)[channel] * wx;
                const float bottom = pixelAt(image, gx, ny)[channel] * (1 - wx) + pixelAt(image, nx, ny)[channel] * wx;
                target[channel] = static_cast<PixelByte>(std::round(top * (1 - wy) + bottom * wy));
            }
        }
    }
}

void plainDither(PlushImage& image, int amount) {
    for (int y = 0; y < image.height; ++y) {
        for (int x = 0; x < image.width; ++x) {
            const std::uint32_t hash =
                ((static_cast<std::uint32_t>(x) * 92837111U) ^ (static_cast<std::uint32_t>(y) * 689287499U)) *
                    1664525U +
                1013904223U;
            const std::int64_t value = std::int64_t{hash % (2 * static_cast<std::uint32_t>(amount) + 1)} - amount;
            const int noise = static_cast<int>(std::clamp<std::int64_t>(value, -255, 255)); // more changes nothing
            PixelByte* target = pixelAt(image, x, y);
            for (int channel = 0; channel < bytesPerPixel; ++channel) {
                target[channel] = static_cast<PixelByte>(std::clamp(target[channel] + noise, 0, 255));
            }
        }
    }
}

void plainSkew(const Corners& corners, const PlushImage& input, PlushImage& output) {
    const auto ltx = static_cast<float>(corners.leftTop.x);
    const auto lty = static_cast<float>(corners.leftTop.y);
    const auto rtx = static_cast<float>(corners.rightTop.x);
    const auto rty = static_cast<float>(corners.rightTop.y);
    const auto lbx = static_cast<float>(corners.leftBottom.x);
    const auto lby = static_cast<float>(corners.leftBottom.y);
    const auto rbx = static_cast<float>(corners.rightBottom.x);
    const auto rby = static_cast<float>(corners.rightBottom.y);
    const float area1 = (rtx - ltx) * (lby - lty) - (lbx - ltx) * (rty - lty);
    const float area2 = (rbx - rtx) * (lby - rty) - (lbx - rtx) * (rby - rty);
    const float inv1 = std::fabs(area1) < 1e-5F ? 0.0F : 1.0F / area1;
    const float inv2 = std::fabs(area2) < 1e-5F ? 0.0F : 1.0F / area2;
    const auto maxX = static_cast<float>(input.width - 1);
    const auto maxY = static_cast<float>(input.height - 1);
    const auto copy = [&](int px, int py, float srcX, float srcY) {
        const int column = static_cast<int>(std::clamp(std::round(srcX), 0.0F, maxX));
        const int row = static_cast<int>(std::clamp(std::round(srcY), 0.0F, maxY));
        std::memcpy(pixelAt(output, px, py), pixelAt(input, column, row), bytesPerPixel);
    };
    for (int py = 0; py < output.height; ++py) {
        for (int px = 0; px < output.width; ++px) {
            const auto x = static_cast<float>(px);
            const auto y = static_cast<float>(py);
            float u = inv1 * ((x - ltx) * (lby - lty) - (y - lty) * (lbx - ltx));
            if (inv1 != 0.0F && u >= 0.0F) {
                const float t = inv1 * ((rtx - x) * (lby - y) - (lbx - x) * (rty - y));
                const float v = 1.0F - t - u;
                if (t >= 0.0F && v >= 0.0F) {
                    copy(px, py, u * maxX, v * maxY);
                    continue;
                }
            }
            u = inv2 * ((x - rtx) * (lby - rty) - (y - rty) * (lbx - rtx));
            if (inv2 == 0.0F || !(u >= 0.0F)) continue;
            const float t = inv2 * ((rbx - x) * (lby - y) - (lbx - x) * (rby - y));
            const float w = 1.0F - t - u;
            if (t >= 0.0F && w >= 0.0F) copy(px, py, (t + u) * maxX, (u + w) * maxY);
        }
    }
}

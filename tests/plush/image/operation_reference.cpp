// The operations on images as their rules say them. Nothing here is clever: each pixel is worked out alone.

#include "operation_reference.h"

#include "blit_reference.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>

Picture::Picture(const PlushImage& image) : Picture(image.width, image.height) {
    std::memcpy(bytes.data(), image.pixels, bytes.size());
}

Picture referenceBlitRect(Picture target, const Picture& image, const PixelRect& rect, int x, int y, Blend blend,
                          float scale) {
    using Wide = std::int64_t;
    if (rect.width < 1 || rect.height < 1 || scale == 0.0F) return target;
    const int sx0 = std::max(rect.x, 0);
    const auto sx1 = static_cast<int>(std::min<Wide>(Wide{rect.x} + rect.width, image.width));
    const int sy0 = std::max(rect.y, 0);
    const auto sy1 = static_cast<int>(std::min<Wide>(Wide{rect.y} + rect.height, image.height));
    if (sx0 >= sx1 || sy0 >= sy1) return target;
    const int rw = sx1 - sx0;
    const int rh = sy1 - sy0;
    if (x >= target.width || y >= target.height) return target;
    const double dw = std::max(std::round(scale * static_cast<float>(rw)), 1.0F);
    const double dh = std::max(std::round(scale * static_cast<float>(rh)), 1.0F);
    if (x + dw < 1 || y + dh < 1) return target;
    for (int py = 0; py < target.height; ++py) {
        for (int px = 0; px < target.width; ++px) {
            if (px < x || py < y || px >= x + dw || py >= y + dh) continue;
            const float column = std::trunc(static_cast<float>(Wide{px} - x) / scale);
            const float row = std::trunc(static_cast<float>(Wide{py} - y) / scale);
            const int shownColumn = column > static_cast<float>(rw - 1) ? rw - 1 : static_cast<int>(column);
            const int shownRow = row > static_cast<float>(rh - 1) ? rh - 1 : static_cast<int>(row);
            const PixelByte* source = image.at(sx0 + shownColumn, sy0 + shownRow);
            if (blend == Blend::Over) {
                referenceBlend(target.at(px, py), source);
            } else {
                std::copy_n(source, bytesPerPixel, target.at(px, py));
            }
        }
    }
    return target;
}

Picture referenceSkew(const Corners& corners, const Picture& input, Picture output) {
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
        const float column = std::clamp(std::round(srcX), 0.0F, maxX);
        const float row = std::clamp(std::round(srcY), 0.0F, maxY);
        std::copy_n(input.at(static_cast<int>(column), static_cast<int>(row)), bytesPerPixel, output.at(px, py));
    };
    for (int py = 0; py < output.height; ++py) {
        for (int px = 0; px < output.width; ++px) {
            const auto x = static_cast<float>(px);
            const auto y = static_cast<float>(py);
            if (inv1 != 0.0F) {
                const float u = inv1 * ((x - ltx) * (lby - lty) - (y - lty) * (lbx - ltx));
                const float t = inv1 * ((rtx - x) * (lby - y) - (lbx - x) * (rty - y));
                const float v = 1.0F - t - u;
                if (u >= 0.0F && t >= 0.0F && v >= 0.0F) {
                    copy(px, py, u * maxX, v * maxY);
                    continue;
                }
            }
            if (inv2 != 0.0F) {
                const float u = inv2 * ((x - rtx) * (lby - rty) - (y - rty) * (lbx - rtx));
                const float t = inv2 * ((rbx - x) * (lby - y) - (lbx - x) * (rby - y));
                const float w = 1.0F - t - u;
                if (u >= 0.0F && t >= 0.0F && w >= 0.0F) copy(px, py, (t + u) * maxX, (u + w) * maxY);
            }
        }
    }
    return output;
}

Picture referenceDither(const Picture& image, int amount, bool pixelate) {
    Picture result = image;
    if (pixelate) {
        result = Picture(image.width * 2, image.height * 2);
        for (int y = 0; y < result.height; ++y) {
            for (int x = 0; x < result.width; ++x) std::copy_n(image.at(x / 2, y / 2), bytesPerPixel, result.at(x, y));
        }
    }
    if (amount < 1) return result;
    for (int y = 0; y < result.height; ++y) {
        for (int x = 0; x < result.width; ++x) {
            const std::uint32_t hash =
                ((static_cast<std::uint32_t>(x) * 92837111U) ^ (static_cast<std::uint32_t>(y) * 689287499U)) *
                    1664525U +
                1013904223U;
            const std::int64_t noise = std::int64_t{hash} % (2 * std::int64_t{amount} + 1) - amount;
            for (int channel = 0; channel < bytesPerPixel; ++channel) {
                PixelByte& byte = result.at(x, y)[channel];
                byte = static_cast<PixelByte>(std::clamp<std::int64_t>(byte + noise, 0, 255));
            }
        }
    }
    return result;
}

Picture referenceUpscale(const Picture& image, float factor) {
    if (factor <= 1.0F) return image;
    Picture result(static_cast<int>(factor * static_cast<float>(image.width)),
                   static_cast<int>(factor * static_cast<float>(image.height)));
    for (int y = 0; y < result.height; ++y) {
        for (int x = 0; x < result.width; ++x) {
            const float srcX = (static_cast<float>(x) + 0.5F) / factor - 0.5F;
            const float srcY = (static_cast<float>(y) + 0.5F) / factor - 0.5F;
            const int x0 = std::clamp(static_cast<int>(srcX), 0, image.width - 1);
            const int x1 = std::clamp(static_cast<int>(srcX) + 1, 0, image.width - 1);
            const int y0 = std::clamp(static_cast<int>(srcY), 0, image.height - 1);
            const int y1 = std::clamp(static_cast<int>(srcY) + 1, 0, image.height - 1);
            const float fx = srcX - static_cast<float>(x0);
            const float fy = srcY - static_cast<float>(y0);
            for (int channel = 0; channel < bytesPerPixel; ++channel) {
                const float c00 = image.at(x0, y0)[channel];
                const float c10 = image.at(x1, y0)[channel];
                const float c01 = image.at(x0, y1)[channel];
                const float c11 = image.at(x1, y1)[channel];
                const float sum = c00 * (1 - fx) * (1 - fy) + c10 * fx * (1 - fy) + c01 * (1 - fx) * fy + c11 * fx * fy;
                result.at(x, y)[channel] = static_cast<PixelByte>(static_cast<int>(sum) & 255);
            }
        }
    }
    return result;
}

Picture referenceGridFill(const Picture& image, int step) {
    Picture result = image;
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
            for (int channel = 0; channel < bytesPerPixel; ++channel) {
                const auto c = [&](int column, int row) -> float { return image.at(column, row)[channel]; };
                const float top = c(gx, gy) * (1 - wx) + c(nx, gy) * wx;
                const float bottom = c(gx, ny) * (1 - wx) + c(nx, ny) * wx;
                result.at(x, y)[channel] = static_cast<PixelByte>(std::round(top * (1 - wy) + bottom * wy));
            }
        }
    }
    return result;
}

Picture referenceTrim(const Picture& image, int width, int height) {
    if (width < 1 || height < 1 || width > image.width || height > image.height) return image;
    Picture result(width, height);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) std::copy_n(image.at(x, y), bytesPerPixel, result.at(x, y));
    }
    return result;
}

Picture referenceMirror(const Picture& image, bool horizontal) {
    Picture result = image;
    for (int y = 0; y < image.height; ++y) {
        for (int x = 0; x < image.width; ++x) {
            const int column = horizontal ? image.width - 1 - x : x;
            const int row = horizontal ? y : image.height - 1 - y;
            std::copy_n(image.at(column, row), bytesPerPixel, result.at(x, y));
        }
    }
    return result;
}

std::string referenceAsciiArt(const Picture& image, int columns, int rows) {
    const std::string ramp = " .`\",;li~_?]}1(|/fjxuczYJCQOmwpbka*MW8B$";
    const double virtualH = rows * 1.5;
    const double fit = std::min(static_cast<double>(columns) / image.width, virtualH / image.height);
    const double drawnW = fit * image.width;
    const double drawnH = fit * image.height;
    const double offX = (columns - drawnW) * 0.5;
    const double offY = (virtualH - drawnH) * 0.5;
    std::string text;
    for (int r = 0; r < rows; ++r) {
        const double cy = r * 1.5 + 0.75;
        for (int c = 0; c < columns; ++c) {
            const double cx = c + 0.5;
            if (cy < offY || cy > offY + drawnH || cx < offX || cx > offX + drawnW) {
                text += ' ';
                continue;
            }
            const double x = std::round(std::clamp((cx - offX) / fit, 0.0, image.width - 1.0));
            const double y = std::round(std::clamp((cy - offY) / fit, 0.0, image.height - 1.0));
            const PixelByte* pixel = image.at(static_cast<int>(x), static_cast<int>(y));
            const float lum = 0.55F * static_cast<float>(pixel[0]) * 1.0F +
                              0.65F * static_cast<float>(pixel[1]) * 1.457F +
                              0.475F * static_cast<float>(pixel[2]) * 2.0F;
            const int index = static_cast<int>(lum / 3 * 39 / 255 + 0.5F);
            text += ramp[static_cast<std::size_t>(std::clamp(index, 0, 39))];
        }
        text += '\n';
    }
    return text;
}

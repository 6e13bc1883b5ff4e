// The operations on images as their rules say them. Nothing here is clever: each pixel is worked out alone.

#include "operation_reference.h"

#include "blit_reference.h"
#include "plain_operations.h"

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

Picture referenceSkew(const Corners& corners, Picture input, Picture output) {
    PlushImage target = output.image();
    plainSkew(corners, input.image(), target);
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
    PlushImage target = result.image();
    plainDither(target, amount);
    return result;
}

Picture referenceUpscale(Picture image, float factor) {
    if (factor <= 1.0F) return image;
    Picture result(static_cast<int>(factor * static_cast<float>(image.width)),
                   static_cast<int>(factor * static_cast<float>(image.height)));
    plainUpscale(result.bytes, image.image(), factor);
    return result;
}

Picture referenceGridFill(Picture image, int step) {
    PlushImage target = image.image();
    plainGridFill(target, step);
    return image;
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

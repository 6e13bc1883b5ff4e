#pragma once

// Drawing pixels over others.
//
// The engine blends straight alpha in whole numbers, and games rely on its exact results. With source alpha a:
//
//     colour = (a * source + (255 - a) * target) / 255
//     alpha  = min(target + a - target * a / 255, 255)
//
// where every division drops the remainder. A source alpha of 0 leaves the target as it is and one of 255 copies the
// source; both follow from the formula, they are only quicker said.

#include "plush/image.h"

#include <cstddef>

/// Draws one pixel over another.
void blendPixel(PixelByte* target, const PixelByte* source);

/// Draws `count` pixels over as many others. The rows must not overlap.
void blendRow(PixelByte* target, const PixelByte* source, std::size_t count);

/// A way of doing what `blendRow` does.
using BlendRow = void(PixelByte* target, const PixelByte* source, std::size_t count);

/// The way that any processor has.
BlendRow blendRowByFours;

/// The way with the widest vectors that this processor has.
BlendRow* widestBlendRow();

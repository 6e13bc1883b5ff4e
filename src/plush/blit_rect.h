#pragma once

// Drawing a rectangle of one image on another, at its size or scaled.
//
// Each target pixel shows the source pixel that its distance from the corner, divided by the scale, falls into. That
// rounds down, where a blit of a whole image rounds to the nearest: here every source pixel of an enlarged rectangle
// has the same size, as tiles cut from a sheet need it.

#include "plush/blit.h"
#include "plush/image.h"

/// A rectangle in an image, in pixels.
struct PixelRect {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
};

/// Draws what lies of `rect` inside `image` on `target`, with its top left corner at (x, y); what falls outside the
/// target is cut off. An image drawn on itself is read as it was before.
/// @param scale  factor on both sides, rounded to whole pixels, of which there is at least one; 0 and what is not
///               finite draw nothing
void blitImageRect(PlushImage& target, const PlushImage& image, const PixelRect& rect, int x, int y, Blend blend,
                   float scale);

#pragma once

// Drawing one image on another: at its size, scaled, or scaled and turned.
//
// Sampling takes the nearest pixel and filters nothing. An image at its own size is moved row by row. In every other
// case each target pixel in the bounding box of the drawn rectangle asks which source pixel it shows; pixel centres
// are not shifted by a half, so an image that is enlarged shows only half of its first row and column, and ends half an
// enlarged pixel early.

#include "plush/image.h"

/// What becomes of the target's pixel under a drawn one.
enum class Blend {
    Replace, // all four bytes are replaced, also by transparent ones
    Over,    // the source is drawn over it by its alpha
};

/// False if the image at its own size, with its top left corner at (x, y), lies wholly outside the target. Blits test
/// this whatever their scale.
bool touches(const PlushImage& target, const PlushImage& image, int x, int y);

/// Draws `image` on `target` with its top left corner at (x, y), in target pixels; what falls outside is cut off. An
/// image drawn on itself is read as it was before. Large blits are shared out to threads.
/// @param scale     factor on both sides; 0 and what is not finite draw nothing
/// @param rotation  degrees, clockwise as the rows run, about the centre of the drawn rectangle
void blitImage(PlushImage& target, const PlushImage& image, int x, int y, Blend blend, float scale, float rotation);

#pragma once

// A noise laid over an image.

#include "plush/image.h"

/// Adds to all four bytes of each pixel one number from -`amount` to `amount`, which depends on nothing but the pixel's
/// place; bytes stop at 0 and 255. An amount below 1 adds nothing. Does nothing without pixels.
/// @param pixelate  doubles the image in both directions first, each pixel becoming four
/// @return  false if the doubled image would be larger than an image may be; nothing is changed then
bool ditherImage(PlushImage& image, int amount, bool pixelate);

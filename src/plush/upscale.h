#pragma once

// Enlarging an image with bilinear filtering.

#include "plush/image.h"

/// Replaces the image by one `factor` times as wide and as high, rounded down; a factor of 1 or below, or an image
/// without pixels, changes nothing. The reflection map stays as it is.
///
/// Between its four neighbours a pixel is weighted in single precision and its fraction dropped. In front of the first
/// row and column the weights go on in the same straight line, so that sharp edges there may overshoot; a channel then
/// keeps its low 8 bits.
/// @return  false if the result would be larger than an image may be; nothing is changed then
bool upscalePlushImage(PlushImage& image, float factor);

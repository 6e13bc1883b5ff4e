#pragma once

// Filling an image in between the pixels of a coarse grid.
//
// The scene renderers work out only every `samplingStep`-th pixel of every `samplingStep`-th row. This fills in all the
// others from the four grid pixels around them.

#include "plush/image.h"

/// The distance between the pixels that the scene renderers work out, in pixels. Scripts set it to whatever they like.
inline int samplingStep = 4;

/// Interpolates every pixel that is not on the grid, in place. Behind the last grid row and column, those two are
/// continued. Does nothing without pixels, and while `samplingStep` or `AllowedThreads` is below 1.
void bilinearInPlace(PlushImage& image);

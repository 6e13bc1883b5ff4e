#pragma once

// The plainest loops that do what an operation does: one pixel after the other, straight from its formula. Tests
// compare the operations' results with theirs, benchmarks the operations' time.

#include "plush/image.h"
#include "plush/skew.h"

#include <vector>

/// @param result  becomes the pixels of the enlarged image
void plainUpscale(std::vector<PixelByte>& result, const PlushImage& image, float factor);
void plainGridFill(PlushImage& image, int step);
void plainDither(PlushImage& image, int amount);
void plainSkew(const Corners& corners, const PlushImage& input, PlushImage& output);

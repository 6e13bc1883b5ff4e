#pragma once

// The register of the images that scripts hold.
//
// A script's handle to an image is the image's bare address, so nothing in the handle says whether the image still
// exists. The register does: each image enters it when it is made for a script and leaves it when it is freed, and an
// address is looked up here before anything is read through it. Only the script's thread touches the register, so it
// has no lock. What is still in it when the process ends is freed then.

#include "plush/image.h"

#include <cstddef>
#include <unordered_set>

/// Every image that a script may hold.
extern std::unordered_set<PlushImage*> livePlushImages;

/// The largest block of pixels that an image may have, in bytes. A script that asks for more has miscalculated, and
/// the machine is better told than drained.
constexpr std::size_t maximumImageBytes = std::size_t{1} << 30;

/// Whether an image of this size, both sides raised to at least 1, stays within `maximumImageBytes`.
bool imageSizeAllowed(int width, int height);

/// A new live image with all pixels of one colour; both sides are raised to at least 1. The size must be allowed.
PlushImage* createSolidColourImage(int width, int height, PixelByte r, PixelByte g, PixelByte b, PixelByte a);

/// Makes an image live. The register owns it from here on; a null image is ignored.
void registerImage(PlushImage* image);

/// Whether this address is that of a live image. Any address may be asked about.
bool isLiveImage(const PlushImage* image);

/// Frees a live image; any other address is left alone.
void killImage(PlushImage* image);

/// Whether the image can be used: it is live, and either 0 by 0 or of positive size with pixels. A live image in any
/// other state is emptied in passing and counts as unusable this once.
bool cleanImage(PlushImage* image);

#pragma once

// Cropping and mirroring an image, and giving it a reflection map.

#include "plush/image.h"

/// The line about which an image is mirrored.
enum class Mirror {
    Columns, // the first column becomes the last one
    Rows,    // the first row becomes the last one
};

/// Keeps the top left part of this size. A side below 1 or longer than the image's changes nothing.
void trimPlushImage(PlushImage& image, int width, int height);

/// Mirrors the image in place and returns it. Does nothing without pixels or with a side below 1.
PlushImage& mirrorPlushImage(PlushImage& image, Mirror mirror);

/// Gives `image` a copy of the pixels of `map` to be reflected in it, in place of any earlier map. Both must have
/// pixels.
void insertReflection(PlushImage& image, const PlushImage& map);

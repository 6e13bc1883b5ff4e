#pragma once

// Drawing an image on a quadrilateral.
//
// The quadrilateral is cut from its right top to its left bottom corner into two triangles, and each shows its half of
// the image with its own affine mapping. Straight lines of the image therefore stay straight within a triangle and may
// bend at the cut. Sampling takes the nearest pixel.

#include "plush/image.h"

/// A corner, in output pixels.
struct Corner {
    int x = 0;
    int y = 0;
};

/// Where the corners of the image are drawn.
struct Corners {
    Corner leftTop;
    Corner rightTop;
    Corner leftBottom;
    Corner rightBottom;
};

/// Draws the whole of `input` on `output`. All four bytes are replaced; pixels outside the quadrilateral stay as they
/// are. Does nothing if either image has no pixels or all corners lie on one line. An image drawn on itself is read as
/// it was before.
void skewImage(const Corners& corners, const PlushImage& input, PlushImage& output);

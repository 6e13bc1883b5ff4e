#pragma once

// Images and the files they come from.

#include "plush/image.h"

#include <string>

/// Reads a picture file into a new live image and makes its size the render size. Null on any fault.
PlushImage* loadImageFile(const std::string& path);

/// Writes the image as a PNG file. The image must have pixels. False if the file could not be written whole.
bool saveImageFile(const PlushImage& image, const std::string& path);

#pragma once

// An image as text, for terminals.

#include "plush/image.h"

#include <optional>
#include <string>

/// The picture in characters, dark to bright, fitted and centred in a grid whose cells are 1 wide and 1.5 high. Each of
/// the `rows` lines has `columns` characters and ends with a newline. Brightness follows the colour grading. Nothing if
/// the image is null or has no pixels, or a side of it or of the grid is below 1.
std::optional<std::string> asciiArt(const PlushImage* image, int columns, int rows);

/// Prints that text on the standard output, all at once. Where there is none, the error stream says so.
void printAsciiArt(const PlushImage* image, int columns, int rows);

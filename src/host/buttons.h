#pragma once

// The rectangles on the screen that a script declares clickable.

#include <vector>

/// A rectangle between two pairs of coordinates, each in either order, and what a hit on it means.
struct ButtonRectangle {
    int x1 = 0;
    int x2 = 0;
    int y1 = 0;
    int y2 = 0;
    int result = 0;
};

/// The result of the first rectangle that holds the point strictly inside, or 0.
int checkButtons(const std::vector<ButtonRectangle>& rectangles, double x, double y);

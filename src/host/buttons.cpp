// The rectangles on the screen that a script declares clickable.

#include "host/buttons.h"

#include <algorithm>

namespace {

bool strictlyBetween(double position, int one, int other) {
    return position > std::min(one, other) && position < std::max(one, other);
}

} // namespace

int checkButtons(const std::vector<ButtonRectangle>& rectangles, double x, double y) {
    for (const ButtonRectangle& button : rectangles) {
        if (strictlyBetween(x, button.x1, button.x2) && strictlyBetween(y, button.y1, button.y2)) return button.result;
    }
    return 0;
}

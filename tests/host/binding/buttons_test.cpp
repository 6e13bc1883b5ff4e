// Clickable rectangles.

#include "host/buttons.h"

#include <gtest/gtest.h>

namespace {

TEST(Buttons, APointStrictlyInsideHits) {
    const std::vector<ButtonRectangle> buttons = {{10, 20, 30, 40, 7}};
    EXPECT_EQ(checkButtons(buttons, 15, 35), 7);
    EXPECT_EQ(checkButtons(buttons, 11, 31), 7);
    EXPECT_EQ(checkButtons(buttons, 19, 39), 7);
    EXPECT_EQ(checkButtons(buttons, 10.5, 39.5), 7);
}

TEST(Buttons, APointOnAnEdgeMisses) {
    const std::vector<ButtonRectangle> buttons = {{10, 20, 30, 40, 7}};
    EXPECT_EQ(checkButtons(buttons, 10, 35), 0);
    EXPECT_EQ(checkButtons(buttons, 20, 35), 0);
    EXPECT_EQ(checkButtons(buttons, 15, 30), 0);
    EXPECT_EQ(checkButtons(buttons, 15, 40), 0);
}

TEST(Buttons, TheCornersMayComeInEitherOrder) {
    EXPECT_EQ(checkButtons({{20, 10, 40, 30, 7}}, 15, 35), 7);
    EXPECT_EQ(checkButtons({{20, 10, 40, 30, 7}}, 25, 35), 0);
}

TEST(Buttons, TheFirstOfOverlappingOnesDecides) {
    const std::vector<ButtonRectangle> buttons = {{0, 10, 0, 10, 1}, {0, 20, 0, 20, 2}};
    EXPECT_EQ(checkButtons(buttons, 5, 5), 1);
    EXPECT_EQ(checkButtons(buttons, 15, 15), 2);
    EXPECT_EQ(checkButtons(buttons, 25, 25), 0);
    EXPECT_EQ(checkButtons({}, 5, 5), 0);
}

} // namespace

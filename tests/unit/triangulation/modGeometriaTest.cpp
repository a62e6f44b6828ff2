#include "triangulation/modGeometria.h"

#include <gtest/gtest.h>

namespace terravo {
namespace {

using modGeometria::DiagonalChoice;
using modGeometria::SideOfLine;

TEST(SideOfLine, TellsLeftFromRightHoweverCloseThePointLies) {
    EXPECT_EQ(SideOfLine(0, 1, 0, 0, 1, 0, 0), -1);
    EXPECT_EQ(SideOfLine(0, -1, 0, 0, 1, 0, 0), 1);
    EXPECT_EQ(SideOfLine(0.5, 0, 0, 0, 1, 0, 0), 0);
    EXPECT_EQ(SideOfLine(3, 3, 1, 1, 2, 2, 0), 0);
    EXPECT_EQ(SideOfLine(0.5, 1e-300, 0, 0, 1, 0, 0), -1);
    EXPECT_EQ(SideOfLine(0.5, -1e-300, 0, 0, 1, 0, 0), 1);
    // Magnitudes whose squares leave the range of doubles.
    EXPECT_EQ(SideOfLine(1e160, 1, 0, 0, 2e160, 0, 0), -1);
}

TEST(SideOfLine, MovesTheLineToItsLeft) {
    EXPECT_EQ(SideOfLine(0, 1, 0, 0, 1, 0, 2), 1);
    EXPECT_EQ(SideOfLine(0, 3, 0, 0, 1, 0, 2), -1);
}

TEST(DiagonalChoice, FollowsTheEmptyCircle) {
    EXPECT_EQ(DiagonalChoice(0, 0, 1, 0, 1, 1, 0, 1), 0) << "a square lies on one circle";
    EXPECT_EQ(DiagonalChoice(0, 0, 2, -1, 4, 0, 2, 1), -1) << "flat: the short diagonal 1-3";
    EXPECT_EQ(DiagonalChoice(2, -1, 4, 0, 2, 1, 0, 0), 1) << "the same, corners renumbered";
    EXPECT_EQ(DiagonalChoice(0, 0, 1, 0, 1.5, 1.5, 0, 1), -1) << "corner 2 outside, angles mixed";
    EXPECT_EQ(DiagonalChoice(0, 0, 1, 0, 0.9, 0.9, 0, 1), 1) << "corner 2 inside, angles mixed";
}

TEST(RoundHalfEven, RoundsHalvesToEvenAndKeepsToTheRange) {
    EXPECT_EQ(modUtilita::RoundHalfEven(2.5), 2);
    EXPECT_EQ(modUtilita::RoundHalfEven(3.5), 4);
    EXPECT_EQ(modUtilita::RoundHalfEven(-2.5), -2);
    EXPECT_EQ(modUtilita::RoundHalfEven(1e300), 2147483647);
    EXPECT_EQ(modUtilita::RoundHalfEven(-1e300), -2147483647 - 1);
}

} // namespace
} // namespace terravo

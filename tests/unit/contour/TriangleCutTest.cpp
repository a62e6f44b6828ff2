#include "contour/TriangleCut.h"

#include <gtest/gtest.h>

namespace terravo {
namespace {

CutPoints CutAt(double level, double z1, double z2, double z3) {
    return CutTriangleByPlane({SpacePoint{0, 0, z1}, SpacePoint{4, 0, z2}, SpacePoint{0, 4, z3}},
                              Plane::AtLevel(level));
}

TEST(CutTriangleByPlane, TakesCornersOnTheLevelAsTheyAre) {
    EXPECT_EQ(CutAt(9, 0, 1, 2).Count(), 0);
    EXPECT_EQ(CutAt(5, 5, 5, 5).Count(), 3) << "lying flat at the level";

    const CutPoints touch = CutAt(0, 0, 1, 2);
    ASSERT_EQ(touch.Count(), 1);
    EXPECT_EQ(touch[1], (SpacePoint{0, 0, 0}));

    const CutPoints edge = CutAt(1, 1, 0, 1);
    ASSERT_EQ(edge.Count(), 2);
    EXPECT_EQ(edge[1], (SpacePoint{0, 0, 1}));
    EXPECT_EQ(edge[2], (SpacePoint{0, 4, 1}));

    // From a corner on the level to the opposite edge, whichever corner it is.
    for (const auto& cut : {CutAt(1, 1, 0, 2), CutAt(1, 0, 1, 2), CutAt(1, 0, 2, 1)}) {
        ASSERT_EQ(cut.Count(), 2);
    }
    EXPECT_EQ(CutAt(1, 0, 1, 2)[1], (SpacePoint{4, 0, 1})) << "the corner comes first";
    EXPECT_EQ(CutAt(1, 0, 1, 2)[2], (SpacePoint{0, 2, 1}));
}

TEST(CutTriangleByPlane, StartsBothCutsAtTheCornerThatLiesAlone) {
    const CutPoints first = CutAt(1, 0, 4, 2);
    ASSERT_EQ(first.Count(), 2);
    EXPECT_EQ(first[1], (SpacePoint{1, 0, 1}));
    EXPECT_EQ(first[2], (SpacePoint{0, 2, 1}));
    const CutPoints second = CutAt(1, 0, 2, 0);
    EXPECT_EQ(second[1], (SpacePoint{2, 0, 1}));
    EXPECT_EQ(second[2], (SpacePoint{2, 2, 1}));
    const CutPoints third = CutAt(1, 0, 0, 2);
    EXPECT_EQ(third[1], (SpacePoint{0, 2, 1}));
    EXPECT_EQ(third[2], (SpacePoint{2, 2, 1}));
}

TEST(CutTriangleByPlane, CutsBySlantedPlanesToo) {
    // x = 1, whatever the heights.
    const CutPoints cut = CutTriangleByPlane(
        {SpacePoint{0, 0, 7}, SpacePoint{4, 0, 3}, SpacePoint{0, 4, 7}}, Plane{1, 0, 0, -1});
    ASSERT_EQ(cut.Count(), 2);
    EXPECT_EQ(cut[1], (SpacePoint{1, 0, 6}));
    EXPECT_EQ(cut[2], (SpacePoint{1, 3, 6}));
}

TEST(CutEdgeByPlane, AddsOnePointAtMost) {
    const SpacePoint p{0, 0, 0};
    const SpacePoint q{2, 4, 8};
    const struct {
        double sP;
        double sQ;
        int count;
        SpacePoint point;
    } cases[] = {
        {0, 5, 1, p},
        {5, 0, 1, q},
        {0, 0, 1, p},
        {-1, 3, 1, {0.5, 1, 2}},
        {1, 3, 0, {}},
        // Values whose product is too small for a double still have opposite signs.
        {-1e-200, 1e-200, 1, {1, 2, 4}},
    };
    for (const auto& c : cases) {
        CutPoints cut;
        CutEdgeByPlane(p, q, c.sP, c.sQ, cut);
        ASSERT_EQ(cut.Count(), c.count) << c.sP << " " << c.sQ;
        if (c.count == 1) {
            EXPECT_EQ(cut[1], c.point) << c.sP << " " << c.sQ;
        }
    }
}

} // namespace
} // namespace terravo

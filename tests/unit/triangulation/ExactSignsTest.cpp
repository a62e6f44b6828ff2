#include "triangulation/exact/ExactSigns.h"

#include "support/ExactCheck.h"
#include "support/PointClouds.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace terravo {
namespace {

// A point beside the others with far finer digits, so that whole numbers cannot serve.
constexpr PlanPoint kFine{0x1p-190, -0x1p-190};

std::vector<test::PointCloud> Clouds() {
    std::vector<test::PointCloud> clouds = test::HardClouds(60, 5);
    const Array1<PlanPoint> lattice = test::GridPoints(6);
    const Array1<PlanPoint> random = test::RandomPoints(60, 4);
    clouds.push_back({"random", random});
    clouds.push_back({"national grid", test::Moved(random, 5e5, 4.52e6, 1e-3)});
    clouds.push_back({"lattice", lattice});
    clouds.push_back({"lattice with fine digits", test::Followed(lattice, {kFine})});
    clouds.push_back({"decimal lattice", test::Moved(lattice, 500000.1, 4520000.3, 0.01)});
    clouds.push_back({"circle", test::Moved(test::CirclePoints(60), 5e5, 4.52e6, 1)});
    clouds.push_back({"least magnitudes", test::Moved(lattice, 0, 0, 0x1p-200)});
    clouds.push_back({"greatest magnitudes", test::Moved(random, 0, 0, 0x1p240)});
    return clouds;
}

TEST(ExactSigns, AreThoseOfRationalArithmetic) {
    for (const test::PointCloud& cloud : Clouds()) {
        std::mt19937 engine(7);
        const auto any = [&] {
            const auto count = static_cast<unsigned>(cloud.points.UpperBound());
            return cloud.points[static_cast<Index>(engine() % count) + 1];
        };
        const ExactSigns signs(cloud.points);
        int zeroTurns = 0;
        int zeroCircles = 0;
        for (int round = 0; round < 1500; ++round) {
            const PlanPoint a = any();
            const PlanPoint b = any();
            const PlanPoint c = any();
            const PlanPoint d = any();
            const int turn = signs.Turn(a, b, c);
            ASSERT_EQ(turn, test::RationalTurn(a, b, c)) << cloud.name;
            zeroTurns += turn == 0 ? 1 : 0;
            if (turn != 0) {
                const int circle = turn > 0 ? signs.Circle(a, b, c, d) : signs.Circle(a, c, b, d);
                ASSERT_EQ(circle, turn * test::RationalCircle(a, b, c, d)) << cloud.name;
                zeroCircles += circle == 0 ? 1 : 0;
            }
        }
        if (cloud.name.starts_with("lattice")) {
            EXPECT_GT(zeroTurns, 100) << cloud.name;
            EXPECT_GT(zeroCircles, 100) << cloud.name;
        }
    }
}

TEST(ExactSigns, TakeInPointsThatComeLater) {
    const Array1<PlanPoint> square{{0, 0}, {4, 0}, {4, 4}, {0, 4}};
    const PlanPoint justInside{0x1p-40, 0x1p-40};
    const PlanPoint far{1e9 + 0x1p-20, 1e9};
    ExactSigns signs(square);
    EXPECT_EQ(signs.Circle(square[1], square[2], square[3], square[4]), 0);
    for (const PlanPoint point : {justInside, far}) {
        signs.Admit(point);
        EXPECT_EQ(signs.Circle(square[2], square[3], square[4], point),
                  test::RationalCircle(square[2], square[3], square[4], point));
        EXPECT_EQ(signs.Turn(square[1], square[3], point),
                  test::RationalTurn(square[1], square[3], point));
    }
}

} // namespace
} // namespace terravo

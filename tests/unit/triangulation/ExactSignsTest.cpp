#include "triangulation/exact/ExactSigns.h"

#include "support/ExactCheck.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace terravo {
namespace {

double Unit(std::mt19937& engine) {
    return static_cast<double>(engine()) / 4294967296.0;
}

struct Kind {
    std::string name;
    std::function<PlanPoint(std::mt19937&)> point;
    // A point beside the others: far finer digits, so that whole numbers cannot serve.
    bool hasFinePoint = false;
};

PlanPoint OnCircle(std::mt19937& engine, PlanPoint centre, double radius) {
    const double angle = 0.01 * static_cast<double>(engine() % 629);
    return {centre.x + radius * std::cos(angle), centre.y + radius * std::sin(angle)};
}

const std::vector<Kind>& Kinds() {
    using Engine = std::mt19937;
    static const auto whole = [](Engine& engine, unsigned most) {
        return static_cast<double>(engine() % most);
    };
    static const std::vector<Kind> kinds{
        {"random",
         [](Engine& e) {
             return PlanPoint{Unit(e), Unit(e)};
         }},
        {"national grid",
         [](Engine& e) {
             return PlanPoint{5e5 + Unit(e), 4.52e6 + Unit(e)};
         }},
        {"lattice",
         [](Engine& e) {
             return PlanPoint{whole(e, 6), whole(e, 6)};
         }},
        {"lattice with fine digits",
         [](Engine& e) {
             return PlanPoint{whole(e, 6), whole(e, 6)};
         },
         true},
        {"decimal lattice at a national grid",
         [](Engine& e) {
             return PlanPoint{500000.1 + 0.1 * whole(e, 5), 4520000.3 + 0.1 * whole(e, 5)};
         }},
        {"turned lattice",
         [](Engine& e) {
             const double x = whole(e, 5);
             const double y = whole(e, 5);
             return PlanPoint{3 + x * 0.8 - y * 0.6, 2 + x * 0.6 + y * 0.8};
         }},
        {"near a line",
         [](Engine& e) {
             const double x = whole(e, 50) / 7;
             return PlanPoint{x, 0.3 * x + 1e-16 * whole(e, 3)};
         }},
        {"circle",
         [](Engine& e) {
             return OnCircle(e, {10, 20}, 3);
         }},
        {"circle at a national grid",
         [](Engine& e) {
             return OnCircle(e, {5e5, 4.52e6}, 100);
         }},
        {"parabola",
         [](Engine& e) {
             const double x = whole(e, 40) / 3;
             return PlanPoint{x, x * x};
         }},
        {"least magnitudes",
         [](Engine& e) {
             return PlanPoint{0x1p-200 * (1 + whole(e, 4)), 0x1p-200 * (1 + whole(e, 4))};
         },
         true},
        {"greatest magnitudes",
         [](Engine& e) {
             return PlanPoint{0x1p248 * whole(e, 4), 0x1p248 * (1 + Unit(e))};
         }},
    };
    return kinds;
}

TEST(ExactSigns, AreThoseOfRationalArithmetic) {
    for (const Kind& kind : Kinds()) {
        std::mt19937 engine(7);
        int zeroTurns = 0;
        int zeroCircles = 0;
        for (int round = 0; round < 1500; ++round) {
            Array1<PlanPoint> points(4);
            for (PlanPoint& point : points) {
                point = kind.point(engine);
            }
            const PlanPoint a = points[1];
            const PlanPoint b = points[2];
            const PlanPoint c = points[3];
            const PlanPoint d = points[4];
            if (kind.hasFinePoint) {
                points.Append({0x1p-190, -0x1p-190});
            }
            const ExactSigns signs(points);
            const int turn = signs.Turn(a, b, c);
            ASSERT_EQ(turn, test::RationalTurn(a, b, c)) << kind.name;
            zeroTurns += turn == 0 ? 1 : 0;
            if (turn != 0) {
                const int circle = turn > 0 ? signs.Circle(a, b, c, d) : signs.Circle(a, c, b, d);
                ASSERT_EQ(circle, turn * test::RationalCircle(a, b, c, d)) << kind.name;
                zeroCircles += circle == 0 ? 1 : 0;
            }
        }
        if (kind.name.find("lattice") != std::string::npos && kind.name[0] == 'l') {
            EXPECT_GT(zeroTurns, 100) << kind.name;
            EXPECT_GT(zeroCircles, 100) << kind.name;
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

TEST(ExactSigns, ReachFromTheSmallestToTheGreatestMagnitudes) {
    for (const double within : {0.0, -0.0, 1.0, -4.52e6, 0x1p-200, 0x1p250, -0x1p250}) {
        EXPECT_TRUE(IsWithinReach(within)) << within;
    }
    for (const double beyond : {0x1p-201, 5e-324, 0x1p251, std::numeric_limits<double>::infinity(),
                                std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_FALSE(IsWithinReach(beyond)) << beyond;
    }
}

} // namespace
} // namespace terravo

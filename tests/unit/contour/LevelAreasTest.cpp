#include "contour/LevelAreas.h"

#include "support/FakeServices.h"
#include "support/RecordingSurface.h"
#include "support/Surveys.h"

#include <gtest/gtest.h>

#include <cmath>

namespace terravo {
namespace {

using Kind = UserCall::Kind;

// One pixel a unit, y upwards from the bottom edge.
struct AreasTest : ::testing::Test {
    RecordingSurface surface{100, 100};
    FakeMessages messages;
    RunState state;
    StopToken stop;
    bool showTriangles = false;
    bool showPerimeter = false;

    AreasTest() { surface.Scale(0, 100, 100, 0); }

    std::string Draw(const PointSet& points, LevelSet levels) {
        const Survey survey(points);
        return DrawLevelAreas(surface, levels, {survey, state, showTriangles, showPerimeter, stop},
                              messages)
            .error;
    }
    // Colour and corners of every fill.
    std::vector<std::pair<Colour, std::vector<PixelPosition>>> Fills() const {
        std::vector<std::pair<Colour, std::vector<PixelPosition>>> fills;
        for (const UserCall& call : surface.UserCallsOf(Kind::Polygons)) {
            EXPECT_EQ(call.tools.penColour, call.tools.brush) << "outline and inside alike";
            fills.emplace_back(call.tools.penColour, call.corners);
        }
        return fills;
    }
    // Triangles go around either way.
    double DoubledAreaOfFills() const {
        double sum = 0;
        for (const auto& [colour, corners] : Fills()) {
            double area = 0;
            for (std::size_t i = 2; i < corners.size(); ++i) {
                area += (corners[i - 1].x - corners[0].x) * (corners[i].y - corners[0].y) -
                        (corners[i].x - corners[0].x) * (corners[i - 1].y - corners[0].y);
            }
            sum += std::fabs(area);
        }
        return sum;
    }
};

LevelRecord Level(double value, Colour colour) {
    return {value, colour, 1, {}, colour, 10};
}

TEST_F(AreasTest, CutsATriangleIntoLowestMiddleAndHighestPieces) {
    // Heights 0, 0 and 40 along y: the levels 10 and 30 cut at a quarter and three quarters.
    EXPECT_EQ(Draw(test::MakeSurvey({{10, 10, 0}, {50, 10, 0}, {10, 50, 40}}),
                   {Level(0, 1), Level(10, 2), Level(30, 3), Level(40, 4)}),
              "");
    const auto fills = Fills();
    // Level 0 holds the lower edge, so the first middle piece lies between 0 and 10; below it
    // there is nothing, and above 30 a triangle remains.
    ASSERT_EQ(fills.size(), 3U);
    EXPECT_EQ(fills[0].first, 1U);
    EXPECT_EQ(fills[0].second, (std::vector<PixelPosition>{{40, 80}, {10, 80}, {10, 90}, {50, 90}}))
        << "in angular order about the mean";
    EXPECT_EQ(fills[1].first, 2U);
    EXPECT_EQ(fills[2].first, 3U);
    EXPECT_EQ(fills[2].second.size(), 3U);
}

TEST_F(AreasTest, TakesTheTopColourOutsideTheLevels) {
    const LevelSet levels{Level(0, 1), Level(5, 2), Level(9, 3)};
    const struct {
        double height;
        Colour colour;
    } cases[] = {{-1, 3}, {0, 1}, {4.9, 1}, {5, 2}, {8.9, 2}, {9, 3}, {100, 3}};
    for (const auto& c : cases) {
        EXPECT_EQ(BandColour(levels, c.height), c.colour) << c.height;
    }
    EXPECT_EQ(BandColour(levels, -1, 7), 7U) << "or one of its own below";
    EXPECT_EQ(BandColour(levels, 9, 7), 3U);
    EXPECT_EQ(BandColour({Level(5, 1), Level(5, 2), Level(5, 3)}, 5), 3U) << "level ground";
}

TEST_F(AreasTest, CoversEveryPixelOfTheHullAtAnySize) {
    for (const bool wholeMetres : {false, true}) {
        const PointSet points = test::HillySurvey(test::RandomPoints(300, 6), wholeMetres);
        LevelSet levels;
        for (int k = 0; k < 7; ++k) {
            levels.Append(
                Level(points.extentZ.min + k * (points.extentZ.max - points.extentZ.min) / 6,
                      static_cast<Colour>(k + 1)));
        }
        EXPECT_EQ(Draw(points, levels), "");
        // The areas of all pieces sum to that of the triangles.
        const double pieces = DoubledAreaOfFills();
        surface.Forget();
        EXPECT_EQ(Draw(points, {Level(-1e9, 1), Level(1e9, 2)}), "");
        const double triangles = DoubledAreaOfFills();
        EXPECT_NEAR(pieces, triangles, 1e-9 * triangles) << "no corner is rounded";
        surface.Forget();
        // With surface below the first level and above the last, and levels on points.
        const double middle = std::round((points.extentZ.min + points.extentZ.max) / 2);
        EXPECT_EQ(Draw(points, {Level(middle, 1), Level(middle + 1, 2)}), "");
        EXPECT_NEAR(DoubledAreaOfFills(), triangles, 1e-9 * triangles);
        surface.Forget();
    }
}

TEST_F(AreasTest, DrawsTheOverlaysAfterTheFills) {
    showTriangles = true;
    showPerimeter = true;
    EXPECT_EQ(
        Draw(test::MakeSurvey({{10, 10, 1}, {50, 10, 2}, {10, 50, 3}}), {Level(0, 1), Level(9, 2)}),
        "");
    ASSERT_EQ(surface.userCalls.size(), 1U + 1U + 3U) << "a fill, an outline, the hull";
    EXPECT_TRUE(surface.userCalls[0].tools.brush.has_value());
    EXPECT_FALSE(surface.userCalls[1].tools.brush.has_value());
    EXPECT_EQ(surface.userCalls[1].colour, kWhite);
    EXPECT_EQ(surface.userCalls[4].colour, kWhite);
}

TEST_F(AreasTest, StopsAfterATriangleAndEndsOnTooFewLevels) {
    stop.RequestStop();
    const PointSet points = test::HillySurvey(test::RandomPoints(30, 6), false);
    EXPECT_EQ(Draw(points, {Level(-1000, 1), Level(1000, 2)}), "");
    EXPECT_EQ(Fills().size(), 1U);
    EXPECT_EQ(Draw(points, {Level(1, 1)}), "At least two levels are needed. NLiv = 1");
}

TEST_F(AreasTest, DrawsNothingWithoutATriangulation) {
    EXPECT_EQ(Draw(test::MakeSurvey({{1, 1, 0}, {2, 2, 1}, {3, 3, 2}}), {Level(0, 1), Level(9, 2)}),
              "");
    EXPECT_TRUE(Fills().empty());
}

} // namespace
} // namespace terravo

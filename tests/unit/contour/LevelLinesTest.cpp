#include "contour/LevelLines.h"

#include "contour/LevelLabels.h"
#include "support/RecordingSurface.h"
#include "support/Surveys.h"

#include <gtest/gtest.h>

namespace terravo {
namespace {

using Kind = UserCall::Kind;

// A drawing of a survey on a recording surface; y grows upwards as on a map.
struct Drawing {
    explicit Drawing(PointSet points) : survey(std::move(points)) {
        surface.Scale(-10, 20, 30, -10);
    }

    std::string Draw(LevelSet levelSet) {
        levels = std::move(levelSet);
        handedOn.clear();
        const ContourReport report =
            DrawLevelLines(surface, levels, {survey, state, showTriangles, showPerimeter, stop},
                           [this](double level, const std::vector<LevelPiece>& pieces) {
                               handedOn.emplace_back(level, pieces.size());
                           });
        EXPECT_EQ(report.levelCount, levels.UpperBound());
        return report.error;
    }
    std::vector<UserCall> Calls(Kind kind) const { return surface.UserCallsOf(kind); }

    Survey survey;
    RecordingSurface surface{400, 300};
    RunState state;
    LevelSet levels;
    bool showTriangles = false;
    bool showPerimeter = false;
    StopToken stop;
    std::vector<std::pair<double, std::size_t>> handedOn; // levels and their pieces
};

LevelRecord Level(double value, Colour colour = 0x00FF00, std::string label = {}) {
    return {value, colour, 1, std::move(label), colour, 10};
}

TEST(DrawLevelLines, DrawsTouchedCornersAsPointsAndCutsAsSegments) {
    Drawing drawing(test::MakeSurvey({{1, 1, 0}, {5, 1, 1}, {1, 5, 2}}));
    EXPECT_EQ(drawing.Draw({Level(0, 1), Level(1, 2), Level(2, 3)}), "");
    const auto lines = drawing.Calls(Kind::Line);
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_EQ(lines[0].colour, 2U);
    EXPECT_EQ((std::array{lines[0].x1, lines[0].y1, lines[0].x2, lines[0].y2}),
              (std::array{5.0, 1.0, 1.0, 3.0}));
    const auto dots = drawing.Calls(Kind::Point);
    ASSERT_EQ(dots.size(), 3U);
    EXPECT_EQ((std::array{dots[0].x1, dots[0].y1}), (std::array{1.0, 1.0}));
    EXPECT_EQ((std::array{dots[1].x1, dots[1].y1}), (std::array{1.0, 3.0})) << "the end pixel";
    EXPECT_EQ((std::array{dots[2].x1, dots[2].y1}), (std::array{1.0, 5.0}));
    EXPECT_EQ(drawing.handedOn,
              (std::vector<std::pair<double, std::size_t>>{{0, 1}, {1, 1}, {2, 1}}));
}

TEST(DrawLevelLines, SetsTheEndPixelOnlyWhereLinesLeaveItOut) {
    Drawing drawing(test::MakeSurvey({{1, 1, 0}, {5, 1, 1}, {1, 5, 2}}));
    drawing.surface.leavesOutLastPixel = false;
    EXPECT_EQ(drawing.Draw({Level(0), Level(1), Level(2)}), "");
    EXPECT_EQ(drawing.Calls(Kind::Line).size(), 1U);
    EXPECT_EQ(drawing.Calls(Kind::Point).size(), 2U) << "the corners that a level touches";
}

TEST(DrawLevelLines, DrawsASharedEdgeOnTheLevelTwiceAndWideLinesWithoutEndPixel) {
    Drawing drawing(test::MakeSurvey({{1, 1, 5}, {5, 1, 0}, {5, 5, 5}, {1, 5, 9}}));
    LevelSet levels{Level(5), Level(100)};
    levels[1].width = 3;
    levels[2].width = -4;
    EXPECT_EQ(drawing.Draw(levels), "");
    EXPECT_EQ(drawing.Calls(Kind::Line).size(), 2U);
    EXPECT_EQ(drawing.Calls(Kind::Line)[0].drawWidth, 3);
    EXPECT_TRUE(drawing.Calls(Kind::Point).empty());
    EXPECT_EQ(drawing.levels[2].width, 1) << "raised and stored back";
    EXPECT_EQ(drawing.surface.DrawWidth(), 1);
}

TEST(DrawLevelLines, StopsBetweenLevelsAndLeavesTheOverlayOut) {
    Drawing drawing(test::MakeSurvey({{1, 1, 0}, {5, 1, 1}, {1, 5, 2}}));
    drawing.stop.RequestStop();
    drawing.showTriangles = true;
    EXPECT_EQ(drawing.Draw({Level(0.5), Level(1), Level(1.5)}), "");
    EXPECT_EQ(drawing.Calls(Kind::Line).size(), 1U);
}

TEST(DrawLevelLines, DrawsTrianglesThenTheHullInWhite) {
    Drawing drawing(test::MakeSurvey({{1, 1, 0}, {5, 1, 0}, {5, 5, 0}, {1, 5, 0}}));
    drawing.showTriangles = true;
    drawing.showPerimeter = true;
    EXPECT_EQ(drawing.Draw({Level(50), Level(60)}), "");
    const std::vector<UserCall>& calls = drawing.surface.userCalls;
    ASSERT_EQ(calls.size(), 1U + 4U);
    EXPECT_EQ(calls[0].counts, (std::vector<std::int32_t>{3, 3}));
    EXPECT_EQ(calls[0].tools.penColour, 0xFFFFFFU);
    EXPECT_EQ(calls[0].tools.brush, std::nullopt) << "outlines";
    for (std::size_t i = 1; i < 5; ++i) {
        EXPECT_EQ(calls[i].colour, 0xFFFFFFU);
        EXPECT_EQ(calls[i].drawWidth, 1);
        EXPECT_TRUE(calls[i].x1 == calls[i].x2 || calls[i].y1 == calls[i].y2) << "a side";
    }
}

TEST(DrawLevelLines, RestoresTheFontAfterLabels) {
    Drawing drawing(test::MakeSurvey({{1, 1, 0}, {5, 1, 1}, {1, 5, 2}}));
    drawing.surface.SetFontName("Anything");
    drawing.surface.SetFontSize(17);
    drawing.surface.SetForeColor(0x123456);
    drawing.surface.SetFontTransparent(false);
    EXPECT_EQ(drawing.Draw({Level(0.5, 7, " 0.5 "), Level(1.5)}), "");
    const auto texts = drawing.Calls(Kind::Text);
    ASSERT_EQ(texts.size(), 1U);
    EXPECT_EQ(texts[0].text, " 0.5 ") << "untrimmed";
    EXPECT_EQ(texts[0].fontName, "Courier New");
    EXPECT_TRUE(texts[0].fontBold);
    EXPECT_TRUE(texts[0].fontTransparent);
    EXPECT_EQ(texts[0].colour, 7U);
    EXPECT_EQ(drawing.surface.FontName(), "Anything");
    EXPECT_EQ(drawing.surface.FontSize(), 17);
    EXPECT_EQ(drawing.surface.ForeColor(), 0x123456U);
    EXPECT_FALSE(drawing.surface.FontTransparent());
}

// 400 x 300 pixels over 40 x 30 units: a character is 0.7 wide and 1.3 high.
struct LabelsTest : ::testing::Test {
    RecordingSurface surface{400, 300};
    LevelSet levels{Level(0, 1, "1.000"), Level(1, 2, "2.000"), Level(2, 3, "   ")};

    LabelsTest() { surface.Scale(0.5, 30.5, 40.5, 0.5); }
};

TEST_F(LabelsTest, SizesBoxesByTheTrimmedTextAndTwoMore) {
    levels[2].label = "  2.0 ";
    levels[2].labelSize = 3;
    const LevelLabels labels(surface, levels);
    EXPECT_TRUE(labels.AreOn());
    EXPECT_NEAR(labels.Boxes()[1].width, 7 * 0.7, 1e-9);
    EXPECT_NEAR(labels.Boxes()[1].height, 1.3, 1e-9);
    EXPECT_NEAR(labels.Boxes()[2].width, 5 * 0.7, 1e-9);
    EXPECT_EQ(labels.Boxes()[3].width, 0) << "a blank label has no box";
    EXPECT_EQ(levels[2].labelSize, 8) << "raised and stored back";
}

TEST_F(LabelsTest, PlacesALabelOnceAtTheFirstPlaceThatIsInsideAndClear) {
    LevelLabels labels(surface, levels);
    labels.PlaceLabel(1, 36, 20);  // over the right edge
    labels.PlaceLabel(1, 10, 1.5); // under the bottom edge
    EXPECT_FALSE(labels.Boxes()[1].placed);
    labels.PlaceLabel(1, 10, 20);
    labels.PlaceLabel(1, 1, 10);
    EXPECT_EQ(labels.Boxes()[1].left, 10);
    EXPECT_EQ(labels.Boxes()[1].top, 20);
    labels.PlaceLabel(2, 14, 20.5); // overlaps the first
    EXPECT_FALSE(labels.Boxes()[2].placed);
    labels.PlaceLabel(2, 14.95, 20.5);
    EXPECT_TRUE(labels.Boxes()[2].placed);
    labels.PlaceLabel(3, 5, 5);
    EXPECT_FALSE(labels.Boxes()[3].placed) << "no box, no label";
    labels.DrawLabels();
    EXPECT_EQ(surface.userCalls.back().text, "2.000");
}

TEST_F(LabelsTest, LetsBoxesTouchButNotOverlapOnEverySide) {
    surface.Scale(0.5, 300.5, 400.5, 0.5); // a box of 49 x 13 units
    const struct {
        double x;
        double y;
        bool isClear;
    } cases[] = {{149, 200, true}, {148, 200, false}, {51, 200, true},  {52, 200, false},
                 {100, 187, true}, {100, 188, false}, {100, 213, true}, {100, 212, false}};
    for (const auto& c : cases) {
        LevelLabels labels(surface, levels);
        labels.PlaceLabel(1, 100, 200);
        labels.PlaceLabel(2, c.x, c.y);
        EXPECT_EQ(labels.Boxes()[2].placed, c.isClear) << c.x << ", " << c.y;
    }
}

TEST_F(LabelsTest, RefusesABoxOverTheOriginWhileAnotherLevelIsUnplaced) {
    surface.Scale(-20, 15, 20, -15);
    LevelLabels labels(surface, levels);
    labels.PlaceLabel(1, -2, 0.5);
    EXPECT_FALSE(labels.Boxes()[1].placed);
    labels.PlaceLabel(1, 0, 0.5);
    EXPECT_TRUE(labels.Boxes()[1].placed) << "touching the origin is no straddling";
}

} // namespace
} // namespace terravo

#include "plot2d/PlotFrame.h"

#include "support/FakeServices.h"
#include "support/RecordingSurface.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace terravo {
namespace {

using namespace PlotFrame;

class PlotFrameTest : public testing::Test {
protected:
    PlotFrameTest() {
        request.xMax = 100;
        request.yMax = 100;
        request.title = "Title";
        request.xTitle = "x";
        request.yTitle = "y";
        surface.SetBackColor(kBlack);
    }

    PlotFrameResult Draw() { return DrawPlotFrame(surface, request, run, clock); }

    // The lines of one style, without the box that clears the area.
    std::vector<UserCall> LinesOf(int drawStyle) const {
        auto lines = surface.UserCallsOf(UserCall::Kind::Line);
        std::erase_if(lines, [drawStyle](const UserCall& line) {
            return line.drawStyle != drawStyle || line.box != Box::None;
        });
        return lines;
    }

    RecordingSurface surface{640, 480};
    PlotFrameRequest request;
    RunState run;
    FakeClock clock;
};

TEST_F(PlotFrameTest, DrawsGridAxesAndTitlesInTheirOrder) {
    const PlotFrameResult result = Draw();
    EXPECT_EQ(result.failure, std::nullopt);
    EXPECT_EQ(result.xMaxUsed, 100.0F);
    EXPECT_FLOAT_EQ(result.xPixelSize, surface.ScaleWidth() / 640);
    EXPECT_FLOAT_EQ(result.yPixelSize, -surface.ScaleHeight() / 480);
    EXPECT_EQ(LinesOf(DrawStyles::kDash).size(), 22U) << "11 grid lines each way";
    EXPECT_EQ(LinesOf(DrawStyles::kSolid).size(), 6U) << "two axes with two barbs each";
    std::vector<std::string> expected;
    for (int i = 0; i <= 10; ++i) {
        expected.push_back(std::to_string(10 * i) + ".0");
    }
    auto all = expected;
    all.push_back("x");
    all.insert(all.end(), expected.begin(), expected.end());
    all.push_back("y");
    all.push_back("Title");
    EXPECT_EQ(surface.Texts(), all);

    const UserCall title = *surface.FindText("Title");
    EXPECT_EQ(title.colour, kRed);
    EXPECT_EQ(title.fontSize, 12.0F);
    EXPECT_TRUE(title.fontBold);
    EXPECT_EQ(title.newLine, NewLine::Yes);
    EXPECT_EQ(surface.FindText("y")->colour, kGreen);
    EXPECT_EQ(surface.FindText("y")->fontName, "MS Sans Serif");
    EXPECT_EQ(surface.DrawStyle(), DrawStyles::kSolid);
    EXPECT_LT(surface.ScaleHeight(), 0.0F);
}

TEST_F(PlotFrameTest, DrawsAxesOnlyWhereZeroLies) {
    request.xMin = 10;
    request.yMin = -40;
    Draw();
    const auto solid = LinesOf(DrawStyles::kSolid);
    ASSERT_EQ(solid.size(), 3U);
    EXPECT_EQ(solid[0].y1, 0);
    EXPECT_EQ(solid[0].y2, 0);
}

TEST_F(PlotFrameTest, SetsScaleAndClearsOnlyWithoutAxes) {
    request.drawAxes = false;
    request.autoRedrawAfter = false;
    EXPECT_FALSE(Draw().failure);
    EXPECT_EQ(surface.userCalls.size(), 1U);
    EXPECT_TRUE(surface.Texts().empty());
    EXPECT_FALSE(surface.AutoRedraw());
}

TEST_F(PlotFrameTest, LeavesOutXLabelsThatDoNotReadBack) {
    run.decimalSeparator = ',';
    request.xMax = 2; // step 0.25
    Draw();
    const auto texts = surface.Texts();
    const auto xTitle = std::find(texts.begin(), texts.end(), "x");
    EXPECT_EQ(std::vector<std::string>(texts.begin(), xTitle),
              (std::vector<std::string>{"0,0", "1,0", "2,0"}));
    EXPECT_NE(std::find(xTitle, texts.end(), "10,0"), texts.end()) << "y labels are all there";
}

TEST_F(PlotFrameTest, CutsATitleThatIsTooWide) {
    request.title.assign(100, 'a');
    request.title += "\xC3\xA8"; // 101 characters, 102 bytes
    Draw();
    const auto texts = surface.UserCallsOf(UserCall::Kind::Text);
    // 640 pixels hold 91 characters, 8 of them the mark.
    std::string shortened(83, 'a');
    shortened += " . . . .";
    EXPECT_EQ(texts.back().text, shortened);
    EXPECT_EQ(texts.back().x1, surface.UserCallsOf(UserCall::Kind::Line).front().x1);
    EXPECT_EQ(ShortenedTitle("\xC3\xA8\xC3\xA8\xC3\xA8", 30, 10, 30), "\xC3\xA8\xC3\xA8 . . . .");
    EXPECT_EQ(ShortenedTitle("abc", 30, 40, 20), " . . . .");
}

TEST_F(PlotFrameTest, RefusesReversedExtentsWithAMessage) {
    surface.Scale(1, 2, 3, 4);
    request.xMin = 1e38; // the extents of no points
    request.xMax = -1e38;
    request.yMin = 1e38;
    request.yMax = -1e38;
    EXPECT_EQ(Draw().failure, (Message{"Error Scale X.", "Error in: scale of the axes"}));
    request.xMin = 0;
    request.xMax = 0;
    EXPECT_EQ(Draw().failure, (Message{"Error Scale Y.", "Error in: scale of the axes"}));
    EXPECT_TRUE(surface.userCalls.empty());
    EXPECT_EQ(surface.ScaleLeft(), 1.0F);
    EXPECT_EQ(surface.ScaleHeight(), 2.0F);
}

TEST_F(PlotFrameTest, ReportsFaultsAndKeepsTheScale) {
    const double infinite = std::numeric_limits<double>::infinity();
    const struct {
        double xMax;
        double yMax;
        int width;
        const char* text;
    } cases[] = {
        {100, 100, 60, "The drawing area is too narrow for the axis labels."},
        {infinite, 100, 640, "The extents of the data are not finite numbers."},
        {100, std::nan(""), 640, "The extents of the data are not finite numbers."},
        {1e200, 100, 640, "The coordinates are too large for an axis."},
    };
    for (const auto& c : cases) {
        RecordingSurface area(c.width, 200);
        area.Scale(0, 7, 9, 0);
        request.xMax = c.xMax;
        request.yMax = c.yMax;
        const PlotFrameResult result = DrawPlotFrame(area, request, run, clock);
        EXPECT_EQ(result.failure, (Message{c.text, "Error in: DrawPlotFrame"}));
        EXPECT_EQ(area.ScaleMode(), ScaleUnit::User);
        EXPECT_EQ(area.ScaleWidth(), 9.0F);
        EXPECT_TRUE(area.pixelCalls.empty());
    }
}

TEST_F(PlotFrameTest, EndsAndStaysUsableOnASmallMapFarFromTheOrigin) {
    request.xMin = 500000;
    request.xMax = 500002;
    request.yMin = 4520000;
    request.yMax = 4520002;
    ASSERT_FALSE(Draw().failure);
    // The edges keep their place although single precision there is half a metre.
    const PixelPoint corner = surface.ToPixelPoint(500000, 4520000);
    const PixelPoint opposite = surface.ToPixelPoint(500002, 4520002);
    EXPECT_EQ(corner.x, 10 * 7) << "left of it the widest label, \"4520000.0W\"";
    const double shrink = 480.0 / (480 + 2 * (26 + 39)); // what adding the margins makes of them
    EXPECT_NEAR(480 - corner.y, 26 * shrink, 0.5);
    EXPECT_NEAR(opposite.y, 39 * shrink, 0.5);
}

TEST_F(PlotFrameTest, MeasuresTimeAcrossMidnight) {
    clock.now = 86399.5;
    clock.tick = -86398.5;
    EXPECT_FLOAT_EQ(Draw().elapsed, 1.5F);
}

} // namespace
} // namespace terravo

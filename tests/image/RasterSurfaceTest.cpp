#include "plot2d/RasterSurface.h"

#include "image/ImageCompare.h"
#include "plot2d/ColourScale.h"
#include "plot2d/PlotFrame.h"
#include "support/FakeServices.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <numbers>
#include <vector>

namespace terravo {
namespace {

constexpr int kWidth = 320;
constexpr int kHeight = 240;
constexpr Colour kYellow = RGB(255, 255, 0);

// Rays from the middle, every few degrees, reaching beyond the picture at the corners.
void DrawRays(DrawSurface& surface, double radius, int count, Colour colour) {
    for (int i = 0; i < count; ++i) {
        const double angle = 2 * std::numbers::pi * i / count;
        surface.Line(160, 120, 160 + radius * std::cos(angle), 120 + radius * std::sin(angle),
                     colour);
    }
}

class RasterSurfaceTest : public testing::Test {
protected:
    RasterSurfaceTest() {
        surface.SetBackColor(kBlack);
        surface.Resize(kWidth, kHeight);
    }

    RasterSurface surface{1, 1};
};

TEST_F(RasterSurfaceTest, ThinLinesInEveryDirection) {
    DrawRays(surface, 400, 48, kGreen);
    surface.Line(100, 60, 220, 180, kRed, Box::Outline);
    surface.Line(150, 110, 170, 130, kWhite, Box::Filled);
    EXPECT_TRUE(EqualsBaseline(surface.Image(), "lines-thin"));
}

TEST_F(RasterSurfaceTest, DrawStyles) {
    for (int style = 0; style <= 5; ++style) {
        surface.SetDrawStyle(style);
        surface.Line(10, 15 + 20 * style, 310, 15 + 20 * style, kGreen);
        surface.Line(20 + 50 * style, 130, 45 + 50 * style, 235, kYellow);
    }
    EXPECT_TRUE(EqualsBaseline(surface.Image(), "lines-styles"));
}

TEST_F(RasterSurfaceTest, WideLinesAndPoints) {
    for (int width = 1; width <= 9; ++width) {
        surface.SetDrawWidth(width);
        surface.PSet(30 * width, 20, kRed);
        surface.Line(30 * width, 50, 30 * width + 25, 130, kGreen);
        surface.Line(10, 140 + 10 * width, 30 * width, 138 + 11 * width, kWhite);
    }
    EXPECT_TRUE(EqualsBaseline(surface.Image(), "lines-wide"));
}

// A fan of bands in the plan colours, each filled with its own outline.
TEST_F(RasterSurfaceTest, NeighbouringPolygons) {
    const auto palette = ColourScale::MakePalette(256);
    const PixelPoint centre{163, 118};
    const int count = 40;
    const auto rim = [](int i) {
        const double angle = 2 * std::numbers::pi * i / 40;
        const double radius = 90 + 25 * std::sin(5 * angle);
        return PixelPoint{static_cast<int>(160 + 1.3 * radius * std::cos(angle)),
                          static_cast<int>(120 + radius * std::sin(angle))};
    };
    for (int i = 0; i < count; ++i) {
        PaintTools tools;
        tools.penColour = palette[static_cast<std::size_t>(i * 255 / (count - 1))];
        tools.brush = tools.penColour;
        surface.FillPolygon(std::array{centre, rim(i), rim(i + 1)}, tools);
    }
    EXPECT_TRUE(EqualsBaseline(surface.Image(), "polygons-fan"));
}

TEST_F(RasterSurfaceTest, DiscsHolesAndFlood) {
    PaintTools tools;
    tools.penColour = kWhite;
    tools.brush = RGB(0, 0, 160);
    const std::vector<PixelPoint> corners = {{20, 20},   {300, 40},  {280, 220}, {40, 200},
                                             {100, 80},  {220, 90},  {200, 170}, {110, 150},
                                             {140, 100}, {190, 110}, {160, 150}};
    surface.FillPolyPolygon(corners, std::vector<std::int32_t>{4, 4, 3}, tools);
    for (int radius = 0; radius <= 10; ++radius) {
        tools.brush = radius % 3 == 2 ? std::nullopt : std::optional(kRed);
        surface.FillDisc(PixelPoint{40 + 23 * radius, 60}, radius, tools);
    }
    tools.brush = RGB(0, 120, 0);
    surface.FloodFill(130, 100, kWhite, tools);
    surface.FloodFill(0, 0, kWhite, tools);
    EXPECT_TRUE(EqualsBaseline(surface.Image(), "polygons-discs-flood"));
}

TEST_F(RasterSurfaceTest, DrawModes) {
    surface.Line(0, 0, 160, 240, RGB(40, 90, 160), Box::Filled);
    const int modes[] = {DrawModes::kCopy, DrawModes::kXor, DrawModes::kNotXor, DrawModes::kInvert};
    for (int i = 0; i < 4; ++i) {
        surface.SetDrawMode(modes[i]);
        surface.Line(60, 10 + 55 * i, 260, 45 + 55 * i, kYellow, Box::Filled);
        surface.SetDrawWidth(7);
        surface.Line(20, 15 + 55 * i, 300, 40 + 55 * i, RGB(255, 0, 255));
        surface.SetDrawWidth(1);
    }
    EXPECT_TRUE(EqualsBaseline(surface.Image(), "draw-modes"));
}

// The one picture with text.
TEST_F(RasterSurfaceTest, FrameOfAPlan) {
    PlotFrame::PlotFrameRequest request;
    request.xMin = -20;
    request.xMax = 100;
    request.yMax = 60;
    request.title = std::string("Contours : hill.dat");
    request.xTitle = std::string("x");
    request.yTitle = std::string("y");
    const RunState run;
    const FakeClock clock;
    ASSERT_FALSE(PlotFrame::DrawPlotFrame(surface, request, run, clock).failure);
    surface.SetFontName("Courier New");
    surface.SetFontTransparent(false);
    surface.SetBackColor(RGB(0, 0, 128));
    surface.SetCurrentX(40);
    surface.SetCurrentY(35);
    surface.Print("12.500", NewLine::No);
    EXPECT_TRUE(EqualsBaseline(surface.Image(), "plot-frame"));
}

TEST_F(RasterSurfaceTest, ScreenDrawingsVanishAtRefresh) {
    surface.Line(0, 0, 320, 240, kGreen);
    const QImage persistent = surface.Image().copy();
    surface.SetAutoRedraw(false);
    surface.Line(0, 240, 320, 0, kRed);
    EXPECT_EQ(surface.Image(), persistent);
    EXPECT_NE(surface.VisibleImage(), persistent);
    surface.Refresh();
    EXPECT_EQ(surface.VisibleImage(), persistent);
    surface.SetAutoRedraw(true);
    surface.Line(0, 240, 320, 0, kRed);
    EXPECT_NE(surface.Image(), persistent);
}

TEST_F(RasterSurfaceTest, CopiesOfTheImageDoNotChange) {
    const QImage kept = surface.Image();
    surface.Line(0, 0, 320, 240, kGreen);
    EXPECT_EQ(kept.pixel(5, 4), qRgb(0, 0, 0));
    EXPECT_NE(surface.Image(), kept);
}

TEST_F(RasterSurfaceTest, AsksForOneRepaintUntilItIsShown) {
    int asked = 0;
    surface.SetRepaintCallback([&asked] { ++asked; });
    surface.Line(0, 0, 10, 10, kRed);
    surface.Print("x");
    EXPECT_EQ(asked, 1);
    surface.MarkShown();
    surface.PSet(5, 5, kRed);
    EXPECT_EQ(asked, 2);
}

TEST_F(RasterSurfaceTest, FontsGrowWithThePixelRatio) {
    RasterSurface fine(640, 480, 2.0);
    surface.SetFontSize(12);
    fine.SetFontSize(12);
    surface.SetScaleMode(ScaleUnit::Pixels);
    fine.SetScaleMode(ScaleUnit::Pixels);
    const double ratio = fine.TextWidth("0123456789") / surface.TextWidth("0123456789");
    EXPECT_NEAR(ratio, 2, 0.1);
    EXPECT_GT(surface.TextHeight("x"), 12);
}

} // namespace
} // namespace terravo

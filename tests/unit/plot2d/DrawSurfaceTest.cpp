#include "plot2d/DrawSurface.h"

#include "support/MemorySurface.h"
#include "support/RecordingSurface.h"
#include "util/AppError.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace terravo {
namespace {

TEST(DrawSurface, ScaleMapsItsEdgesToTheEdgesOfTheArea) {
    RecordingSurface surface(200, 100);
    surface.Scale(-10, 50, 10, -50);
    EXPECT_EQ(surface.ToPixelPoint(-10, 50), (PixelPoint{0, 0}));
    EXPECT_EQ(surface.ToPixelPoint(10, -50), (PixelPoint{200, 100}));
    EXPECT_EQ(surface.ScaleHeight(), -100.0F);
    const UserPosition back = surface.ToUser(150, 25);
    EXPECT_DOUBLE_EQ(back.x, 5);
    EXPECT_DOUBLE_EQ(back.y, 25);
    surface.Scale(0, 200, 400, 0);
    EXPECT_EQ(surface.ToPixelPoint(1, 199), (PixelPoint{0, 0})) << "halves go to even";
    EXPECT_EQ(surface.ToPixelPoint(3, 197), (PixelPoint{2, 2}));
}

TEST(DrawSurface, ScaleModesReadTheAreaInTheirUnit) {
    RecordingSurface surface(192, 96);
    surface.Scale(5, 1, 6, 0);
    surface.SetScaleMode(ScaleUnit::Pixels);
    EXPECT_EQ(surface.ScaleWidth(), 192.0F);
    EXPECT_EQ(surface.ScaleHeight(), 96.0F);
    EXPECT_EQ(surface.ScaleLeft(), 0.0F);
    EXPECT_EQ(surface.TextWidth("abc"), 21);
    EXPECT_EQ(surface.ToPixelPoint(3, 5), (PixelPoint{3, 5}));
    surface.SetScaleMode(ScaleUnit::Points);
    EXPECT_EQ(surface.ScaleWidth(), 144.0F);
    EXPECT_EQ(surface.ToPixelPoint(72, 36), (PixelPoint{96, 48}));
    surface.SetScaleMode(ScaleUnit::User);
    EXPECT_EQ(surface.ScaleLeft(), 5.0F);
    EXPECT_EQ(surface.ScaleHeight(), -1.0F);
    surface.SetScaleWidth(2);
    EXPECT_EQ(surface.ToPixelPoint(6, 0), (PixelPoint{96, 96}));
}

TEST(DrawSurface, ConvertsLengthsBetweenUnits) {
    RecordingSurface surface(200, 100);
    surface.Scale(0, 50, 400, 0);
    const auto user = ScaleUnit::User;
    const auto points = ScaleUnit::Points;
    const auto pixels = ScaleUnit::Pixels;
    EXPECT_DOUBLE_EQ(surface.ScaleX(1, pixels, user), 2);
    EXPECT_DOUBLE_EQ(surface.ScaleY(1, pixels, user), -0.5);
    EXPECT_DOUBLE_EQ(surface.ScaleX(3, points, pixels), 4);
    EXPECT_DOUBLE_EQ(surface.ScaleY(3, points, user), -2);
    EXPECT_DOUBLE_EQ(surface.ScaleX(surface.ScaleX(7, user, points), points, user), 7);
    surface.SetScaleMode(pixels);
    EXPECT_DOUBLE_EQ(surface.ScaleX(1, pixels, user), 2) << "the user system stays";
}

TEST(DrawSurface, RefusesAScaleWithoutExtent) {
    RecordingSurface surface;
    surface.Scale(0, 1, 2, 0);
    EXPECT_THROW(surface.Scale(3, 1, 3, 0), AppError);
    EXPECT_THROW(surface.Scale(0, 1, std::nan(""), 0), AppError);
    EXPECT_THROW(surface.SetScaleHeight(0), AppError);
    EXPECT_EQ(surface.ScaleWidth(), 2.0F);
}

TEST(DrawSurface, DrawsNothingAtPlacesThatAreNotFinite) {
    RecordingSurface surface(100, 100);
    for (const double bad : {std::nan(""), std::numeric_limits<double>::infinity()}) {
        surface.Line(0, bad, 5, 5, kRed);
        surface.Line(0, 0, bad, 5, kRed, Box::Filled);
        surface.PSet(bad, 5, kRed);
        surface.SetCurrentX(bad);
        surface.Print("text", NewLine::No);
    }
    EXPECT_TRUE(surface.pixelCalls.empty());
}

TEST(DrawSurface, LinesAndBoxesReachTheBackendWithThePen) {
    RecordingSurface surface(100, 100);
    surface.SetDrawWidth(3);
    surface.SetDrawStyle(DrawStyles::kDash);
    surface.SetDrawMode(DrawModes::kXor);
    surface.SetForeColor(kGreen);
    DrawSurface& drawing = surface;
    drawing.Line(1, 2, 30, 40);
    drawing.Line(1, 2, 30, 40, kRed, Box::Outline);
    drawing.Line(30, 40, 1, 2, kRed, Box::Filled);
    EXPECT_EQ(surface.CurrentX(), 1.0F);
    EXPECT_EQ(surface.CurrentY(), 2.0F);
    ASSERT_EQ(surface.pixelCalls.size(), 3U);
    const Pen pen{kGreen, 3, DrawStyles::kDash, DrawModes::kXor};
    EXPECT_EQ(surface.pixelCalls[0].pen, pen);
    const PixelCall& outline = surface.pixelCalls[1];
    EXPECT_EQ(outline.corners, (std::vector<PixelPosition>{{1, 2}, {30, 2}, {30, 40}, {1, 40}}));
    EXPECT_EQ(outline.background, std::nullopt);
    EXPECT_EQ(outline.pen.width, 3);
    EXPECT_EQ(surface.pixelCalls[2].kind, PixelCall::Kind::Rect);
    EXPECT_EQ(surface.pixelCalls[2].pen.mode, DrawModes::kXor);
}

TEST(DrawSurface, PlacesReachTheBackendAsFractionsOfAPixel) {
    RecordingSurface surface(100, 100);
    surface.Scale(0, 50, 50, 0);
    surface.Line(1.1, 49.9, 1.2, 49.8, kRed);
    surface.Line(1.1, 49.9, 1.2, 49.8, kRed, Box::Filled);
    surface.PSet(1.1, 49.9, kRed);
    surface.SetCurrentX(1.1);
    surface.SetCurrentY(49.9);
    surface.Print("text");
    const PixelPosition centre = surface.ToPixels(1.1, 49.9);
    surface.FillDisc(centre, 3, {});
    ASSERT_EQ(surface.pixelCalls.size(), 5U);
    for (const PixelCall& call : surface.pixelCalls) {
        EXPECT_NEAR(call.a.x, 2.2, 1e-9);
        EXPECT_NEAR(call.a.y, 0.2, 1e-9);
    }
    EXPECT_NEAR(surface.pixelCalls[0].b.x, 2.4, 1e-9) << "shorter than a pixel";
    EXPECT_NEAR(surface.pixelCalls[1].b.y, 0.4, 1e-9);
}

TEST(DrawSurface, PrintMovesTheCursorByTheTextOrToTheNextLine) {
    RecordingSurface surface(100, 130);
    surface.Scale(10, 260, 210, 0);
    DrawSurface& drawing = surface;
    drawing.SetCurrentX(50);
    drawing.SetCurrentY(200);
    drawing.Print("caffè", NewLine::No);
    EXPECT_FLOAT_EQ(surface.CurrentX(), 50 + 5 * 14);
    EXPECT_FLOAT_EQ(surface.CurrentY(), 200);
    drawing.Print("x");
    EXPECT_FLOAT_EQ(surface.CurrentX(), 10);
    EXPECT_FLOAT_EQ(surface.CurrentY(), 200 - 26) << "down is smaller y here";
    const auto texts = surface.PixelCallsOf(PixelCall::Kind::Text);
    ASSERT_EQ(texts.size(), 2U);
    EXPECT_EQ(texts[0].a, (PixelPosition{20, 30}));
    EXPECT_EQ(texts[0].background, std::nullopt);
    drawing.SetFontTransparent(false);
    drawing.SetBackColor(kGrey);
    drawing.Print("x");
    EXPECT_EQ(surface.pixelCalls.back().background, kGrey);
}

TEST(DrawSurface, PolygonFillsReachTheBackendWithPenAndBrush) {
    RecordingSurface surface;
    const std::vector<PixelPosition> corners = {{0, 0.25}, {9, 0},  {0, 9},
                                                {20, 0},   {29, 0}, {20, 9}};
    const std::vector<std::int32_t> counts = {3, 3};
    PaintTools tools;
    tools.penColour = kWhite;
    surface.FillPolyPolygon(corners, counts, tools);
    tools.brush = kRed;
    surface.FillPolygon(std::span(corners).first(3), tools);
    ASSERT_EQ(surface.pixelCalls.size(), 2U);
    EXPECT_EQ(surface.pixelCalls[0].corners, corners);
    EXPECT_EQ(surface.pixelCalls[0].counts, counts);
    EXPECT_EQ(surface.pixelCalls[0].background, std::nullopt);
    EXPECT_EQ(surface.pixelCalls[0].pen, Pen{kWhite});
    EXPECT_EQ(surface.pixelCalls[1].counts, std::vector<std::int32_t>{3});
    EXPECT_EQ(surface.pixelCalls[1].background, kRed);
    EXPECT_THROW(surface.FillPolyPolygon(corners, std::vector<std::int32_t>{3, 4}, tools),
                 AppError);
    EXPECT_THROW(surface.FillPolyPolygon(corners, std::vector<std::int32_t>{-3}, tools), AppError);
}

// Pixels painted in a colour, in reading order.
std::vector<PixelPoint> Painted(const MemorySurface& surface, Colour colour) {
    std::vector<PixelPoint> painted;
    for (std::size_t i = 0; i < surface.Words().size(); ++i) {
        if (surface.Words()[i] == PixelKernels::ToPixelWord(colour)) {
            const auto place = static_cast<std::int32_t>(i);
            painted.push_back({place % surface.PixelWidth(), place / surface.PixelWidth()});
        }
    }
    return painted;
}

TEST(PixelSurface, RoundsHalvesToEvenPixels) {
    MemorySurface surface(8, 8);
    surface.PSet(0.5, 1.5, kWhite);
    PaintTools tools;
    tools.penColour = kWhite;
    surface.FillDisc(PixelPosition{2.5, 3.5}, 0, tools);
    surface.Line(4.5, 5.5, 5.5, 5.5, kWhite);
    surface.Line(0.4, 6.6, 0.6, 7.4, kWhite, Box::Filled);
    surface.FillPolygon(std::vector<PixelPosition>{{5.6, 0.5}, {7.4, 0.5}, {7.4, 0.4}}, tools);
    EXPECT_EQ(
        Painted(surface, kWhite),
        (std::vector<PixelPoint>{{6, 0}, {7, 0}, {0, 2}, {2, 4}, {4, 6}, {5, 6}, {0, 7}, {1, 7}}));
}

} // namespace
} // namespace terravo

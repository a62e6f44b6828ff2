#include "view3d/Rendering.h"

#include "support/FakeServices.h"
#include "support/RecordingSurface.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace terravo {
namespace {

constexpr Colour kTurningFrame = RGB(128, 64, 64);

struct RenderingTest : testing::Test {
    RecordingSurface surface{640, 480};
    RunState run;
    FakeMessages messages;
    ViewData data;
    ViewParameters parameters;
    Drawing3D drawing;

    void Redraw() {
        surface.Forget();
        auto redrawn = Rendering::Redraw(surface, data, parameters, nullptr, run);
        ASSERT_TRUE(std::holds_alternative<Drawing3D>(redrawn));
        drawing = std::get<Drawing3D>(std::move(redrawn));
    }
    [[nodiscard]] PixelPosition PlaceOf(Index i) const {
        return drawing.projection.Project(data.X[i], data.Y[i], data.Z[i]);
    }
    void ShowTriangles() {
        Table<Index> triangles(2, 3);
        const Index corners[2][3] = {{1, 2, 3}, {2, 4, 3}};
        for (Index t = 0; t < 2; ++t) {
            for (Index j = 0; j < 3; ++j) {
                triangles(t + 1, j + 1) = corners[t][j];
            }
        }
        data = ViewData::Triangoli({0, 10, 0, 10}, {0, 0, 10, 10}, {1, 2, 3, 4}, triangles, "t");
    }
    void ShowGrid() {
        Table<double> z(3, 3);
        for (Index i = 1; i <= 3; ++i) {
            for (Index j = 1; j <= 3; ++j) {
                z(i, j) = i * i + j;
            }
        }
        data = ViewData::Superficie({0, 5, 10}, {0, 5, 10}, z, "g");
    }
    [[nodiscard]] std::vector<UserCall> Marks() const {
        return surface.UserCallsOf(UserCall::Kind::Disc);
    }
    // The lines of one colour and style, without those of the frame that are of another.
    [[nodiscard]] std::vector<UserCall> Lines(Colour colour, int style) const {
        auto lines = surface.UserCallsOf(UserCall::Kind::Line);
        std::erase_if(lines, [&](const UserCall& line) {
            return line.colour != colour || line.drawStyle != style || line.box != Box::None;
        });
        return lines;
    }
};

TEST_F(RenderingTest, MarksPointsFromTheFarthestEachInItsColourOrAllGrey) {
    data = ViewData::Punti({1, 2, 3}, {0, 10, 5}, {0, 8, 4}, "p", messages);
    for (const bool colour : {true, false}) {
        parameters.colour = colour;
        Redraw();
        const auto marks = Marks();
        ASSERT_EQ(marks.size(), 3U);
        for (Index i = 1; i <= 3; ++i) {
            const UserCall& mark = marks[static_cast<std::size_t>(i) - 1];
            EXPECT_EQ(mark.x1, PlaceOf(i).x);
            EXPECT_EQ(mark.y1, PlaceOf(i).y);
            EXPECT_EQ(drawing.screenPoint[i], NearestPixel(PlaceOf(i)));
            EXPECT_EQ(mark.radius, 3);
            EXPECT_EQ(mark.tools.penColour, kWhite);
            EXPECT_EQ(mark.tools.penWidth, 1);
            EXPECT_EQ(mark.tools.brush, colour ? data.pointColour[i] : kGrey);
        }
        EXPECT_LT(marks[0].y1, marks[2].y1) << "farther points are higher up";
    }
    EXPECT_TRUE(surface.UserCallsOf(UserCall::Kind::Polygons).empty());
    EXPECT_EQ(surface.pixelCalls.back().kind, PixelCall::Kind::Refresh);
}

TEST_F(RenderingTest, HandsAllTrianglesOverAtOnceHollowAndAfterTheMarks) {
    ShowTriangles();
    Redraw();
    EXPECT_EQ(Marks().size(), 4U);
    const auto polygons = surface.UserCallsOf(UserCall::Kind::Polygons);
    ASSERT_EQ(polygons.size(), 1U);
    EXPECT_EQ(surface.userCalls.back().kind, UserCall::Kind::Polygons);
    EXPECT_EQ(polygons[0].counts, (std::vector<std::int32_t>{3, 3}));
    EXPECT_EQ(polygons[0].corners,
              (std::vector<PixelPosition>{PlaceOf(1), PlaceOf(2), PlaceOf(3), PlaceOf(2),
                                          PlaceOf(4), PlaceOf(3)}));
    EXPECT_EQ(polygons[0].tools.penColour, kWhite);
    EXPECT_FALSE(polygons[0].tools.brush.has_value());

    data = ViewData::Triangoli({0, 1}, {0, 1}, {0, 1}, {}, "no triangle");
    Redraw();
    EXPECT_EQ(Marks().size(), 2U);
}

TEST_F(RenderingTest, DrawsGridCellsInTheOrderOfTheQuadrant) {
    ShowGrid();
    using Cells = std::vector<std::pair<Index, Index>>;
    const std::pair<float, Cells> quadrants[] = {
        {0.0F, {{1, 2}, {2, 2}, {1, 1}, {2, 1}}},    {1.5F, {{1, 2}, {2, 2}, {1, 1}, {2, 1}}},
        {kHalfPi, {{2, 2}, {2, 1}, {1, 2}, {1, 1}}}, {3.2F, {{2, 1}, {1, 1}, {2, 2}, {1, 2}}},
        {6.28F, {{1, 1}, {1, 2}, {2, 1}, {2, 2}}},
    };
    for (const bool rotating : {false, true}) {
        parameters.rotating = rotating;
        for (const auto& [theta, cells] : quadrants) {
            parameters.theta = theta;
            Redraw();
            const auto drawn = surface.UserCallsOf(UserCall::Kind::Polygons);
            ASSERT_EQ(drawn.size(), cells.size());
            for (std::size_t k = 0; k < cells.size(); ++k) {
                const auto [i, j] = cells[k];
                const auto node = [&](Index column, Index row) {
                    return drawing.projection.Project(data.X[column], data.Y[row],
                                                      data.gridZ(column, row));
                };
                EXPECT_EQ(drawn[k].corners,
                          (std::vector<PixelPosition>{node(i, j), node(i, j + 1),
                                                      node(i + 1, j + 1), node(i + 1, j)}))
                    << "theta " << theta << " cell " << k;
                EXPECT_EQ(drawn[k].tools.brush, data.cellColour(i, j));
                EXPECT_EQ(drawn[k].tools.penColour, kWhite);
            }
        }
    }
    parameters.colour = false;
    Redraw();
    for (const UserCall& cell : surface.UserCallsOf(UserCall::Kind::Polygons)) {
        EXPECT_EQ(cell.tools.brush, kGrey);
    }
}

TEST_F(RenderingTest, ThetaShowsOnlyWhileRotatingAndWithAFrameOfAnotherColour) {
    ShowTriangles();
    Redraw();
    const auto plain = drawing.screenPoint;
    EXPECT_FALSE(Lines(kGreen, DrawStyles::kSolid).empty());
    EXPECT_TRUE(Lines(kTurningFrame, DrawStyles::kSolid).empty());
    parameters.theta = 1;
    Redraw();
    EXPECT_EQ(drawing.screenPoint, plain);
    EXPECT_TRUE(Lines(kGreen, DrawStyles::kDashDot).empty()) << "no marker";
    parameters.rotating = true;
    Redraw();
    EXPECT_NE(drawing.screenPoint, plain);
    EXPECT_FALSE(Lines(kTurningFrame, DrawStyles::kSolid).empty());
    EXPECT_EQ(Lines(kGreen, DrawStyles::kSolid).size(), 1U) << "the marker alone is green";
}

TEST_F(RenderingTest, TheMarkerStandsInTheMiddleAndPointsAlongTheTurnedX) {
    ShowTriangles();
    parameters.rotating = true;
    for (const float theta : {0.0F, kHalfPi, 2.5F}) {
        parameters.theta = theta;
        Redraw();
        const auto axis = Lines(kGreen, DrawStyles::kDashDot);
        const auto pointer = Lines(kGreen, DrawStyles::kSolid);
        ASSERT_EQ(axis.size(), 1U);
        ASSERT_EQ(pointer.size(), 1U);
        // The same places by the projection to pixels, unturned.
        const Projection still({}, drawing.projection.Frame(), drawing.projection.Measures());
        const auto isAt = [&](double u, double v, double x, double y, double z) {
            const PixelPosition drawn = surface.ToPixels(u, v);
            const PixelPosition expected = still.Project(x, y, z);
            EXPECT_NEAR(drawn.x, expected.x, 1);
            EXPECT_NEAR(drawn.y, expected.y, 1);
        };
        const SpaceExtents& e = drawing.projection.Frame().extents;
        const double angle = static_cast<double>(theta);
        isAt(axis[0].x1, axis[0].y1, 5, 5, e.zmin);
        isAt(axis[0].x2, axis[0].y2, 5, 5, e.zmax);
        isAt(pointer[0].x1, pointer[0].y1, 5, 5, e.zmin);
        isAt(pointer[0].x2, pointer[0].y2, 5 + 5 * std::cos(angle), 5 + 5 * std::sin(angle),
             e.zmin);
        const UserCall& text = surface.userCalls.back();
        EXPECT_EQ(text.text, "x");
        EXPECT_EQ(text.x1, pointer[0].x2);
        EXPECT_EQ(text.y1, pointer[0].y2);
        EXPECT_EQ(text.colour, kGreen);
    }
}

} // namespace
} // namespace terravo

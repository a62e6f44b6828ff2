#include "view3d/AxonometricView.h"

#include "support/FakeServices.h"
#include "support/RecordingSurface.h"

#include <gtest/gtest.h>

#include <cmath>

namespace terravo {
namespace {

// A frame that can be followed by hand: 10 pixels to the x unit, the y axis along a 3-4-5 triangle,
// 3 pixels to the z unit.
Projection HandMade(const ViewParameters& parameters) {
    Frame3D frame;
    frame.extents = {0, 20, 2, 20, 0, 30};
    frame.scale = {5, 100, 10, 2, 3};
    FrameMeasures measures;
    measures.sinAlfa = 0.6F;
    measures.cosAlfa = 0.8F;
    measures.centreX = 4;
    measures.centreY = 2;
    return {parameters, frame, measures};
}

void ExpectNear(PixelPosition place, double x, double y) {
    EXPECT_NEAR(place.x, x, 1e-5) << "of a single-precision sine";
    EXPECT_NEAR(place.y, y, 1e-5);
}

TEST(Projection, TurnsPlacesOnlyWhileItRotates) {
    const PlanPlace turned = RotatePoint(7, 2, std::acos(-1.0) / 2, 4, 2);
    EXPECT_NEAR(turned.x, 4, 1e-12);
    EXPECT_NEAR(turned.y, 5, 1e-12);

    ViewParameters parameters;
    const PixelPosition plain = HandMade(parameters).Project(7, 2, 20);
    parameters.theta = kHalfPi;
    EXPECT_EQ(HandMade(parameters).Project(7, 2, 20), plain);
    parameters.rotating = true;
    ExpectNear(HandMade(parameters).Project(7, 2, 20), 49.8, 36.4); // as (4, 5) unturned
}

TEST(NearestPoint, ReadsOutTheLaterOfTwoPointsEquallyNear) {
    const ViewData data = ViewData::Triangoli({1, 2, 3}, {4, 5, 6}, {7000, 8000, 9000}, {}, "t");
    const Drawing3D drawing{{}, {{10, 10}, {14, 10}, {90, 10}}};
    EXPECT_EQ(FindNearest(data, drawing, {12, 10})->x, 2);
    const NearestPoint nearest = *FindNearest(data, drawing, {11, 10});
    EXPECT_EQ(nearest.x, 1);
    EXPECT_EQ(nearest.pixel, (PixelPoint{10, 10}));
    EXPECT_EQ(data.Z[1], 7);
    EXPECT_EQ(nearest.z, 7000) << "in the unit of the data";
    EXPECT_FALSE(FindNearest(ViewData{}, {}, {0, 0}));
}

TEST(NearestPoint, ReadsOutTheFrontAndLeftOfGridNodesEquallyNear) {
    Table<double> z(2, 3);
    for (Index i = 1; i <= 2; ++i) {
        for (Index j = 1; j <= 3; ++j) {
            z(i, j) = 10 * i + j;
        }
    }
    const ViewData data = ViewData::Superficie({0, 1}, {100, 104, 108}, z, "grid");
    Frame3D frame;
    frame.extents = {0, 1, 100, 110, 10, 30};
    const auto zNear = [&](std::initializer_list<PixelPoint> nodes) { // 11 12 13 21 22 23
        return FindNearest(data, {{{}, frame, {}}, nodes}, {10, 10})->z;
    };
    constexpr PixelPoint kFar{900, 900};
    EXPECT_EQ(zNear({{8, 10}, kFar, kFar, {12, 10}, kFar, kFar}), 11) << "one row";
    EXPECT_EQ(zNear({kFar, kFar, {8, 10}, kFar, {10, 12}, kFar}), 22) << "the nearer row";
    EXPECT_EQ(zNear({kFar, {10, 10}, kFar, {11, 11}, kFar, kFar}), 21) << "2 against 0 + 4";
    EXPECT_EQ(zNear({kFar, {10, 10}, kFar, {12, 11}, kFar, kFar}), 12) << "5 against 0 + 4";
}

struct AxonometricViewTest : testing::Test {
    RecordingSurface surface{640, 480};
    RunState run;
    AxonometricView view;

    AxonometricViewTest() {
        view.Show(ViewData::Triangoli({0, 10, 0}, {0, 0, 10}, {1, 2, 3}, {}, "t"));
    }
};

TEST_F(AxonometricViewTest, StandardViewsSetLengthAndSlantOfTheYAxis) {
    ASSERT_FALSE(view.Redraw(surface, true, run));
    const Projection& drawn = view.Drawing().projection;
    const double xPixels = drawn.Frame().LengthX();
    view.SetStandardView(StandardView::XY, 400);
    const double width = std::round((std::cos(std::acos(-1.0) / 6) + 1) * xPixels);
    EXPECT_FLOAT_EQ(view.Parameters().rayx, static_cast<float>(320 / width)) << "whole pixels";
    EXPECT_EQ(view.Parameters().alfa, kHalfPi);
    view.SetStandardView(StandardView::ZX, 400);
    EXPECT_EQ(view.Parameters().rayx, 0);
    EXPECT_EQ(view.Parameters().alfa, kHalfPi);
    view.SetStandardView(StandardView::ZY, 400);
    EXPECT_EQ(view.Parameters().rayx, 1000);
    EXPECT_EQ(view.Parameters().alfa, 0);
}

TEST_F(AxonometricViewTest, TheViewFromAboveIsTheSameWhateverCameBefore) {
    ASSERT_FALSE(view.Redraw(surface, true, run));
    view.SetStandardView(StandardView::XY, 480);
    const float length = view.Parameters().rayx;
    for (const auto& [alfa, rayx] :
         {std::pair{kHalfPi, length}, std::pair{2.8F, 3.0F}, std::pair{3.1415927F, 1.0F},
          std::pair{-2.4F, 2.0F}, std::pair{1.5F, 40.0F}, std::pair{0.0F, 1000.0F}}) {
        ViewParameters parameters;
        parameters.alfa = alfa;
        parameters.rayx = rayx;
        view.SetParameters(parameters);
        ASSERT_FALSE(view.Redraw(surface, true, run));
        view.SetStandardView(StandardView::XY, 480);
        EXPECT_EQ(view.Parameters().rayx, length) << "after a slant of " << alfa;
        EXPECT_EQ(view.Parameters().alfa, kHalfPi);
    }
}

TEST_F(AxonometricViewTest, ARedrawThatIsNotFullKeepsWhatWasMeasuredOfTheFrame) {
    ASSERT_FALSE(view.Redraw(surface, true, run));
    const FrameMeasures first = view.Drawing().projection.Measures();
    EXPECT_EQ(first.xRange, 10);
    ViewParameters parameters = view.Parameters();
    parameters.alfa = 1;
    parameters.rayx = 5000;
    view.SetParameters(parameters);
    view.Show(ViewData::Triangoli({0, 40, 0}, {0, 0, 40}, {1, 2, 3}, {}, "t"));
    ASSERT_FALSE(view.Redraw(surface, false, run));
    const Projection& kept = view.Drawing().projection;
    EXPECT_EQ(kept.Measures().xRange, 10);
    EXPECT_EQ(kept.Measures().sinAlfa, first.sinAlfa);
    EXPECT_EQ(kept.Measures().slantX, first.slantX);
    EXPECT_EQ(kept.Frame().extents.xmax, 40) << "the frame itself is new every time";
    EXPECT_EQ(view.Parameters().rayx, 1000) << "and its cap comes back";
    ASSERT_FALSE(view.Redraw(surface, true, run));
    EXPECT_EQ(view.Drawing().projection.Measures().xRange, 40);

    RecordingSurface wide(900, 480); // a window resized while it turns
    ASSERT_FALSE(view.Redraw(wide, false, run));
    const Projection& resized = view.Drawing().projection;
    EXPECT_EQ(resized.Measures().slantZ, MeasureFrame(resized.Frame(), 1).slantZ);
    RecordingSurface tiny(20, 20);
    view.Show(ViewData::Triangoli({0, 70, 0}, {0, 0, 40}, {1, 2, 3}, {}, "t"));
    ASSERT_TRUE(view.Redraw(tiny, true, run));
    ASSERT_FALSE(view.Redraw(wide, false, run));
    EXPECT_EQ(view.Drawing().projection.Measures().xRange, 70) << "after a drawing that failed";
}

TEST_F(AxonometricViewTest, ReadsOutNothingAfterADrawingThatFailed) {
    EXPECT_FALSE(view.FindNearest({1, 1})) << "not drawn yet";
    ASSERT_FALSE(view.Redraw(surface, true, run));
    EXPECT_TRUE(view.FindNearest({1, 1}));
    RecordingSurface tiny(20, 20);
    EXPECT_TRUE(view.Redraw(tiny, true, run));
    EXPECT_FALSE(view.FindNearest({1, 1}));
}

} // namespace
} // namespace terravo

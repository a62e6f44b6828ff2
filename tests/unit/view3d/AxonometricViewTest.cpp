#include "view3d/AxonometricView.h"

#include "plot2d/ColourScale.h"
#include "support/FakeServices.h"

#include <gtest/gtest.h>

#include <cmath>

namespace terravo {
namespace {

// Coefficients that can be followed by hand: 10 pixels to the x unit, the y axis along a 3-4-5
// triangle, 3 pixels to the z unit.
AxonometricView HandMadeView() {
    AxonometricView view;
    view.coefficients = {10, 5, 2, -4, -3, 100};
    view.sinAlfa = 0.6F;
    view.cosAlfa = 0.8F;
    return view;
}

struct AxonometricViewTest : testing::Test {
    FakeMessages messages;
    AxonometricView view;
    const std::vector<Colour> palette = ColourScale::MakePalette(ColourScale::kViewColours);

    void Heights(double a, double b, const SpaceExtents* extents = nullptr) {
        view.Triangoli({0, 1}, {0, 1}, {a, b}, {}, "t", extents);
    }
};

void ExpectNear(PixelPosition place, double x, double y) {
    EXPECT_NEAR(place.x, x, 1e-5) << "of single-precision coefficients";
    EXPECT_NEAR(place.y, y, 1e-5);
}

TEST_F(AxonometricViewTest, ProjectsToHandComputedPlaces) {
    view = HandMadeView();
    ExpectNear(view.Project(4, 7, 20), 53, 34);
    ExpectNear(view.Project(0, 2, 0), 5, 100); // ymin is where the slant starts
    ExpectNear(view.Project(-1.25, 2.25, 1.5), -7.1, 95.2);
}

TEST_F(AxonometricViewTest, TurnsPlacesOnlyWhileItRotates) {
    const PlanPlace turned = RotatePoint(7, 2, std::acos(-1.0) / 2, 4, 2);
    EXPECT_NEAR(turned.x, 4, 1e-12);
    EXPECT_NEAR(turned.y, 5, 1e-12);

    view = HandMadeView();
    view.centreX = 4;
    view.centreY = 2;
    const PixelPosition plain = view.Project(7, 2, 20);
    view.theta = kHalfPi;
    EXPECT_EQ(view.Project(7, 2, 20), plain);
    view.rotating = true;
    ExpectNear(view.Project(7, 2, 20), 49.8, 36.4); // as (4, 5) unturned
}

TEST_F(AxonometricViewTest, DividesLargeHeightsByAPowerOfAThousandAndReadsThemOutWhole) {
    struct Case {
        double low;
        double high;
        int exponent;
        const char* label;
    };
    for (const Case& c : {Case{-1000, 1000, 0, "z"}, Case{0, 1000.5, 3, "z [10^3]"},
                          Case{0, 2.5e7, 6, "z [10^6]"}, Case{-40000, 10, 3, "z [10^3]"},
                          Case{1, 7e9, 9, "z [10^9]"}, Case{0, 2.5e13, 12, "z [10^12]"}}) {
        Heights(c.low, c.high);
        const double divisor = std::pow(10.0, c.exponent);
        EXPECT_EQ(view.zExponent, c.exponent) << c.label;
        EXPECT_EQ(view.zLabel, c.label);
        EXPECT_EQ(view.dataExtents.zmin, static_cast<float>(c.low / divisor));
        EXPECT_EQ(view.dataExtents.zmax, static_cast<float>(c.high / divisor));
        EXPECT_EQ(view.pointColour[1], palette.front()) << c.label;
        EXPECT_EQ(view.pointColour[2], palette.back()) << c.label;
        view.screenPoint = {{0, 0}, {50, 0}};
        EXPECT_NEAR(view.FindNearest({50, 0}).z, c.high, c.high * 1e-14) << c.label;
    }
    view.Superficie({0, 1}, {0, 1}, Table<double>(2, 2, -5000), "grid");
    EXPECT_EQ(view.gridZ(2, 1), -5);
    Heights(10, 1);
    EXPECT_EQ(view.zLabel, "z") << "of the present data";
}

TEST_F(AxonometricViewTest, ColoursEveryHeightByItsPlaceBetweenTheExtents) {
    view.Triangoli({0, 1, 2, 3}, {0, 1, 2, 3}, {20, 40, 30, 25}, {}, "t");
    EXPECT_EQ(view.pointColour,
              (Array1<Colour>{palette[0], palette[1279], palette[640], palette[320]}));
    const SpaceExtents given{-1, 5, -2, 6, 2000, 5000};
    Heights(3500, 5000, &given);
    EXPECT_EQ(view.dataExtents, (SpaceExtents{-1, 5, -2, 6, 2, 5})) << "scaled with the heights";
    EXPECT_EQ(view.pointColour, (Array1<Colour>{palette[640], palette[1279]}));
    Heights(7, 7);
    EXPECT_EQ(view.pointColour, Array1<Colour>(2, palette[0])) << "flat data";

    Table<double> z(3, 2, 0);
    z(2, 1) = z(2, 2) = 10;
    z(3, 1) = z(3, 2) = 20;
    view.Superficie({4, 5, 8}, {1, 3}, z, "grid");
    EXPECT_EQ(view.dataExtents, (SpaceExtents{4, 8, 1, 3, 0, 20}));
    EXPECT_EQ(view.cellColour(1, 1), palette[320]) << "mean 5";
    EXPECT_EQ(view.cellColour(2, 1), palette[959]) << "mean 15";
    view.Superficie({0, 1}, {0, 1}, Table<double>(2, 2, 3), "flat");
    EXPECT_EQ(view.cellColour(1, 1), palette[0]);
}

TEST_F(AxonometricViewTest, SortsPointsFromTheFarthestAndKeepsThoseOfTriangles) {
    const Array1<double> x{1, 2, 3, 4};
    const Array1<double> y{10, 40, 20, 30};
    const Array1<double> z{0, 100, 50, 25};
    view.Punti(x, y, z, "p", messages);
    EXPECT_EQ(view.Y, (Array1<double>{40, 30, 20, 10}));
    EXPECT_EQ(view.X, (Array1<double>{2, 4, 3, 1}));
    EXPECT_EQ(view.Z, (Array1<double>{100, 25, 50, 0}));
    EXPECT_EQ(view.pointColour,
              (Array1<Colour>{palette[1279], palette[320], palette[640], palette[0]}));
    EXPECT_EQ(y[1], 10) << "the caller's array";
    view.Triangoli(x, y, z, {}, "t");
    EXPECT_EQ(view.Y, y);
}

TEST_F(AxonometricViewTest, CutsArraysOfDifferentLengthsToTheShortest) {
    Table<Index> triangles(2, 3);
    for (Index j = 1; j <= 3; ++j) {
        triangles(1, j) = j + 1; // 2 3 4: the last is cut off
        triangles(2, j) = j;
    }
    view.Triangoli({0, 1, 2, 9}, {0, 3, 1}, {5, 6, 7, 100, 200}, triangles, "t");
    EXPECT_EQ(view.pointCount, 3);
    EXPECT_EQ(view.dataExtents, (SpaceExtents{0, 2, 0, 3, 5, 7})) << "of what is used";
    ASSERT_EQ(view.triangles.Rows(), 1);
    EXPECT_EQ(view.triangles(1, 3), 3);
    view.Punti({}, {1}, {2}, "none", messages);
    EXPECT_EQ(view.pointCount, 0);
    EXPECT_FALSE(view.FindNearest({0, 0}).found);
}

TEST_F(AxonometricViewTest, ReadsOutTheLaterOfTwoPointsEquallyNear) {
    view.Triangoli({1, 2, 3}, {4, 5, 6}, {7, 8, 9}, {}, "t");
    view.screenPoint = {{10, 10}, {14, 10}, {90, 10}};
    EXPECT_EQ(view.FindNearest({12, 10}).x, 2);
    EXPECT_EQ(view.FindNearest({11, 10}).x, 1);
    EXPECT_EQ(view.FindNearest({11, 10}).pixel, (PixelPoint{10, 10}));
}

TEST_F(AxonometricViewTest, ReadsOutTheFrontAndLeftOfGridNodesEquallyNear) {
    Table<double> z(2, 3);
    for (Index i = 1; i <= 2; ++i) {
        for (Index j = 1; j <= 3; ++j) {
            z(i, j) = 10 * i + j;
        }
    }
    view.Superficie({0, 1}, {100, 104, 108}, z, "grid");
    view.extents = {0, 1, 100, 110, 10, 30};
    const auto zNear = [&](std::initializer_list<PixelPoint> nodes) { // 11 12 13 21 22 23
        view.screenPoint = nodes;
        return view.FindNearest({10, 10}).z;
    };
    constexpr PixelPoint kFar{900, 900};
    EXPECT_EQ(zNear({{8, 10}, kFar, kFar, {12, 10}, kFar, kFar}), 11) << "one row";
    EXPECT_EQ(zNear({kFar, kFar, {8, 10}, kFar, {10, 12}, kFar}), 22) << "the nearer row";
    EXPECT_EQ(zNear({kFar, {10, 10}, kFar, {11, 11}, kFar, kFar}), 21) << "2 against 0 + 4";
    EXPECT_EQ(zNear({kFar, {10, 10}, kFar, {12, 11}, kFar, kFar}), 12) << "5 against 0 + 4";
}

TEST_F(AxonometricViewTest, StandardViewsSetLengthAndSlantOfTheYAxis) {
    view.xRange = 10;
    view.coefficients.Ax = 20;
    view.SetStandardView(StandardView::XY, 400);
    EXPECT_FLOAT_EQ(view.rayx, 320.0F / 373.0F) << "(cos 30 + 1) 200 is 373 whole pixels";
    EXPECT_EQ(view.alfa, kHalfPi);
    view.SetStandardView(StandardView::ZX, 400);
    EXPECT_EQ(view.rayx, 0);
    EXPECT_EQ(view.alfa, kHalfPi);
    view.SetStandardView(StandardView::ZY, 400);
    EXPECT_EQ(view.rayx, 1000);
    EXPECT_EQ(view.alfa, 0);
}

} // namespace
} // namespace terravo

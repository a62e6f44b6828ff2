#include "view3d/ViewData.h"

#include "plot2d/ColourScale.h"
#include "support/FakeServices.h"

#include <gtest/gtest.h>

#include <cmath>

namespace terravo {
namespace {

struct ViewDataTest : testing::Test {
    FakeMessages messages;
    const std::vector<Colour> palette = ColourScale::MakePalette(ColourScale::kViewColours);

    static ViewData Heights(double a, double b, const SpaceExtents* extents = nullptr) {
        return ViewData::Triangoli({0, 1}, {0, 1}, {a, b}, {}, "t", extents);
    }
};

TEST_F(ViewDataTest, DividesLargeHeightsByAPowerOfAThousand) {
    struct Case {
        double low;
        double high;
        int exponent;
        const char* label;
    };
    for (const Case& c :
         {Case{-1000, 1000, 0, "z"}, Case{0, 1000.5, 3, "z [10^3]"}, Case{0, 2.5e7, 6, "z [10^6]"},
          Case{-40000, 10, 3, "z [10^3]"}, Case{1, 7e9, 9, "z [10^9]"},
          Case{0, 2.5e13, 12, "z [10^12]"}, Case{-4e301, 2e300, 300, "z [10^300]"}}) {
        const ViewData data = Heights(c.low, c.high);
        const double divisor = std::pow(10.0, c.exponent);
        EXPECT_EQ(data.zExponent, c.exponent) << c.label;
        EXPECT_EQ(data.zLabel, c.label);
        EXPECT_EQ(data.Z[2], c.high / divisor);
        EXPECT_EQ(data.extents.zmin, c.low / divisor);
        EXPECT_EQ(data.extents.Single().zmax, static_cast<float>(c.high / divisor));
        EXPECT_EQ(data.pointColour[1], palette.front()) << c.label;
        EXPECT_EQ(data.pointColour[2], palette.back()) << c.label;
    }
    const ViewData grid = ViewData::Superficie({0, 1}, {0, 1}, Table<double>(2, 2, -5000), "grid");
    EXPECT_EQ(grid.gridZ(2, 1), -5);
}

TEST_F(ViewDataTest, ColoursEveryHeightByItsPlaceBetweenTheExtents) {
    EXPECT_EQ(
        ViewData::Triangoli({0, 1, 2, 3}, {0, 1, 2, 3}, {20, 40, 30, 25}, {}, "t").pointColour,
        (Array1<Colour>{palette[0], palette[1279], palette[640], palette[320]}));
    const SpaceExtents given{-1, 5, -2, 6, 2000, 5000};
    const ViewData scaled = Heights(3500, 5000, &given);
    EXPECT_EQ(scaled.extents, (SpaceExtents{-1, 5, -2, 6, 2, 5})) << "scaled with the heights";
    EXPECT_EQ(scaled.pointColour, (Array1<Colour>{palette[640], palette[1279]}));
    EXPECT_EQ(Heights(7, 7).pointColour, Array1<Colour>(2, palette[0])) << "flat data";

    Table<double> z(3, 2, 0);
    z(2, 1) = z(2, 2) = 10;
    z(3, 1) = z(3, 2) = 20;
    const ViewData grid = ViewData::Superficie({4, 5, 8}, {1, 3}, z, "grid");
    EXPECT_EQ(grid.extents, (SpaceExtents{4, 8, 1, 3, 0, 20}));
    EXPECT_EQ(grid.cellColour(1, 1), palette[320]) << "mean 5";
    EXPECT_EQ(grid.cellColour(2, 1), palette[959]) << "mean 15";
    EXPECT_EQ(ViewData::Superficie({0, 1}, {0, 1}, Table<double>(2, 2, 3), "flat").cellColour(1, 1),
              palette[0]);
}

TEST_F(ViewDataTest, SortsPointsFromTheFarthestAndKeepsThoseOfTriangles) {
    const Array1<double> x{1, 2, 3, 4};
    const Array1<double> y{10, 40, 20, 30};
    const Array1<double> z{0, 100, 50, 25};
    const ViewData points = ViewData::Punti(x, y, z, "p", messages);
    EXPECT_EQ(points.Y, (Array1<double>{40, 30, 20, 10}));
    EXPECT_EQ(points.X, (Array1<double>{2, 4, 3, 1}));
    EXPECT_EQ(points.Z, (Array1<double>{100, 25, 50, 0}));
    EXPECT_EQ(points.pointColour,
              (Array1<Colour>{palette[1279], palette[320], palette[640], palette[0]}));
    EXPECT_EQ(y[1], 10) << "the caller's array";
    EXPECT_EQ(ViewData::Triangoli(x, y, z, {}, "t").Y, y);
}

TEST_F(ViewDataTest, CutsArraysOfDifferentLengthsToTheShortest) {
    Table<Index> triangles(2, 3);
    for (Index j = 1; j <= 3; ++j) {
        triangles(1, j) = j + 1; // 2 3 4: the last is cut off
        triangles(2, j) = j;
    }
    const ViewData data =
        ViewData::Triangoli({0, 1, 2, 9}, {0, 3, 1}, {5, 6, 7, 100, 200}, triangles, "t");
    EXPECT_EQ(data.PointCount(), 3);
    EXPECT_EQ(data.extents, (SpaceExtents{0, 2, 0, 3, 5, 7})) << "of what is used";
    ASSERT_EQ(data.triangles.Rows(), 1);
    EXPECT_EQ(data.triangles(1, 3), 3);
    EXPECT_EQ(ViewData::Punti({}, {1}, {2}, "none", messages).PointCount(), 0);
}

} // namespace
} // namespace terravo

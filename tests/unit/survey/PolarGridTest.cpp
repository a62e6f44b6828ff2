#include "survey/PolarGrid.h"

#include "support/TemporaryFolder.h"
#include "util/AppError.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace terravo {
namespace {

TEST(ConvertPolarGrid, MakesAPointForEveryHeightRadiusByRadius) {
    const test::TemporaryFolder folder;
    static_cast<void>(folder.Write("PolarData_02.txt", "angle\t2\t10 m\r\n"
                                                       "0\t1.5\t2,5\t99\r\n"
                                                       "1\tx\r\n"));
    PointSet points;
    points.Append(1e6, 1e6, 1e6);
    ConvertPolarGrid(folder.Path(), points);
    ASSERT_EQ(points.count, 4);
    EXPECT_EQ(points.x.UpperBound(), 4);
    // An angle of 1 is 57.29577951308232 radians, which is 0.74711 past nine full turns.
    const double cosine = 0.7336545584598283;
    const double sine = 0.6795226183513794;
    const double expected[4][3] = {
        {2, 0, 1.5}, {2 * cosine, 2 * sine, 0}, {10, 0, 2}, {10 * cosine, 10 * sine, 0}};
    for (Index i = 1; i <= 4; ++i) {
        EXPECT_NEAR(points.x[i], expected[i - 1][0], 1e-12) << i;
        EXPECT_NEAR(points.y[i], expected[i - 1][1], 1e-12) << i;
        EXPECT_EQ(points.z[i], expected[i - 1][2]) << i;
    }
    EXPECT_EQ(points.extentX, (Extent{points.x[2], 10}));
    EXPECT_EQ(points.extentZ, (Extent{0, 2}));
    const std::string listing = folder.Read("Quorin_Points.txt");
    EXPECT_TRUE(listing.starts_with(" 2             0             1.5 \r\n")) << listing;
    EXPECT_EQ(std::count(listing.begin(), listing.end(), '\n'), 4);
}

TEST(ConvertPolarGrid, LeavesThePointsWhenThereIsNoTable) {
    const test::TemporaryFolder folder;
    PointSet points;
    points.Append(1, 2, 3);
    EXPECT_THROW(ConvertPolarGrid(folder.Path(), points), AppError);
    EXPECT_EQ(points.count, 1);
    static_cast<void>(folder.Write("PolarData_02.txt", "angle\t1\t2\n"));
    ConvertPolarGrid(folder.Path(), points);
    EXPECT_EQ(points.count, 0);
    EXPECT_EQ(points.x.UpperBound(), 1) << "no point, so the arrays stay";
    EXPECT_EQ(folder.Read("Quorin_Points.txt"), "");
}

} // namespace
} // namespace terravo

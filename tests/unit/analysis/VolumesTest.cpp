#include "analysis/Volumes.h"

#include "analysis/AreaFigures.h"
#include "analysis/DifferenceSurface.h"
#include "analysis/MeasuredPolygon.h"
#include "contour/LevelBands.h"
#include "contour/LevelRule.h"
#include "plot2d/ColourScale.h"
#include "support/RationalVolume.h"
#include "support/Surveys.h"
#include "survey/Survey.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <numbers>

namespace terravo {
namespace {

using test::HillySurvey;
using test::MakeSurvey;

constexpr double kExact = 1e-12; // relative
constexpr double kGrid = 5e6;    // a national grid

void ExpectNear(double value, double wanted, double whole, const std::string& what) {
    EXPECT_LE(std::fabs(value - wanted), kExact * std::fabs(whole))
        << what << ": " << value << " instead of " << wanted;
}

PointSet Moved(const PointSet& points, double dx, double dy) {
    PointSet moved;
    for (Index i = 1; i <= points.count; ++i) {
        moved.Append(points.x[i] + dx, points.y[i] + dy, points.z[i]);
    }
    return moved;
}

MeasuredSurface SurfaceOf(const PointSet& points) {
    const Survey survey(points);
    return MeasureFrom(points, survey.Triangulation().triangles);
}

// Two surveys from one origin.
struct Pair {
    Survey first;
    Survey second;
    MeasuredSurface a;
    MeasuredSurface b;

    Pair(const PointSet& one, const PointSet& other) : first(one), second(other) {
        Extent x = one.extentX;
        Extent y = one.extentY;
        x.Include(other.extentX.min);
        x.Include(other.extentX.max);
        y.Include(other.extentY.min);
        y.Include(other.extentY.max);
        const PlanPoint origin = LocalOrigin(x, y);
        a = MeasureFrom(origin, one, first.Triangulation().triangles);
        b = MeasureFrom(origin, other, second.Triangulation().triangles);
    }
    [[nodiscard]] VolumeFigures Volume() const { return VolumeBetween(a, b); }
};

PointSet Pyramid() {
    return MakeSurvey({{0, 0, 0}, {10, 0, 0}, {10, 10, 0}, {0, 10, 0}, {5, 5, 6}});
}

// A regular polygon of n corners below, a smaller one above.
PointSet Frustum(int n, double below, double above, double height) {
    PointSet points;
    for (const auto& [radius, z] : {std::pair(below, 0.0), std::pair(above, height)}) {
        for (int k = 0; k < n; ++k) {
            const double angle = 2 * std::numbers::pi * k / n;
            points.Append(radius * std::cos(angle), radius * std::sin(angle), z);
        }
    }
    return points;
}

TEST(VolumesTest, AgreeWithClosedForms) {
    for (const double shift : {0.0, kGrid}) {
        SCOPED_TRACE(shift);
        const PointSet pyramid = Moved(Pyramid(), shift, shift / 2);
        const MeasuredSurface p = SurfaceOf(pyramid);
        const VolumeFigures whole = VolumeAgainst(p, 0);
        ExpectNear(whole.cut, 200, 200, "pyramid");
        EXPECT_EQ(whole.fill, 0);
        // At half its height a pyramid of an eighth stands above the plane.
        const VolumeFigures half = VolumeAgainst(p, 3);
        ExpectNear(half.cut, 25, 25, "tip");
        ExpectNear(half.fill, 300 - 175, 125, "foot");
        ExpectNear(half.net, 200 - 300, 100, "net");
        ExpectNear(half.cutArea, 25, 25, "tip's area");
        EXPECT_EQ(half.net, half.cut - half.fill);
        ExpectNear(MeasureAreas(p).surface, 4 * 5 * std::hypot(5, 6), 200, "faces");
        // The plane touches a vertex, and then edges.
        EXPECT_EQ(VolumeAgainst(p, 6).cut, 0);
        ExpectNear(VolumeAgainst(p, 6).fill, 400, 400, "from the top");

        const PointSet frustum = Frustum(12, 8, 4, 3);
        const MeasuredSurface f = SurfaceOf(frustum);
        const auto ring = [](double radius) { return 3 * radius * radius; }; // of 12 corners
        const double wanted = 3.0 / 3 * (ring(8) + ring(4) + std::sqrt(ring(8) * ring(4)));
        ExpectNear(VolumeAgainst(f, 0).cut, wanted, wanted, "frustum");

        // z = x + 2 y over an L.
        const Survey tilted(
            Moved(MakeSurvey({{-1, -1, -3}, {7, -1, 5}, {7, 7, 21}, {-1, 7, 13}}), shift, shift));
        const MeasuredSurface t = MeasureFrom(tilted.Points(), tilted.Triangulation().triangles);
        PlanRing ell;
        for (const auto& [x, y] : {std::pair(0, 0), {6, 0}, {6, 2}, {2, 2}, {2, 6}, {0, 6}}) {
            ell.push_back({shift + x, shift + y});
        }
        const PolygonReading ground = MakePolygon(t.origin, {ell});
        ASSERT_FALSE(ground.failure);
        const MeasuredSurface within = CutByPolygon(t, ground.ground);
        // 6 x 2 about (3, 1) and 2 x 4 about (1, 4).
        ExpectNear(VolumeAgainst(within, 0).net, 12 * 5 + 8 * 9, 132, "tilted plane");
        ExpectNear(MeasureAreas(within).plan, 20, 20, "the L");
        ExpectNear(MeasureAreas(within).surface, 20 * std::sqrt(6), 49, "the sloping L");
        ExpectNear(MeasureAreas(within).perimeter, 24, 24, "round the L");
        ExpectNear(MeasureAreas(within).meanSlope, std::sqrt(5), 3, "slope");

        // z = x and z = 10 - x over a square cross along x = 5.
        const auto plane = [&](double z0, double z1) {
            return Moved(MakeSurvey({{0, 0, z0}, {10, 0, z1}, {10, 10, z1}, {0, 10, z0}}), shift,
                         shift);
        };
        const VolumeFigures crossing = Pair(plane(0, 10), plane(10, 0)).Volume();
        ExpectNear(crossing.cut, 250, 250, "crossing planes");
        ExpectNear(crossing.fill, 250, 250, "crossing planes");
        ExpectNear(crossing.cutArea, 50, 50, "crossing planes");
    }
}

TEST(VolumesTest, AreThoseOfRationalArithmetic) {
    std::vector<std::pair<PointSet, PointSet>> pairs;
    std::vector<test::PointCloud> clouds = test::CloudsOfEveryKind(16, 7);
    for (test::PointCloud& hard : test::HardClouds(16, 7)) {
        clouds.push_back(std::move(hard));
    }
    for (const test::PointCloud& cloud : clouds) {
        const PointSet first = HillySurvey(cloud.points, false);
        // The same plan places with other heights, and other places.
        PointSet other = HillySurvey(cloud.points, true);
        pairs.emplace_back(first, other);
        pairs.emplace_back(first, HillySurvey(test::Turned(cloud.points, 0.3), true));
    }
    const PointSet lattice = HillySurvey(test::GridPoints(5), false);
    pairs.emplace_back(lattice, HillySurvey(test::Shuffled(test::GridPoints(5), 3), true));
    pairs.emplace_back(lattice, HillySurvey(test::Moved(test::GridPoints(5), 0.5, 0, 1), true));
    std::size_t compared = 0;
    for (const auto& [first, second] : pairs) {
        SCOPED_TRACE(compared);
        const Pair pair(first, second);
        const VolumeFigures volume = pair.Volume();
        const test::RationalVolumes wanted =
            test::RationalVolumeBetween(first, pair.first.Triangulation().triangles, second,
                                        pair.second.Triangulation().triangles);
        // Of a strip along a line the corners alone are rounded by more than the strip is wide.
        const double box =
            (first.extentX.max - first.extentX.min) * (first.extentX.max - first.extentX.min) +
            (first.extentY.max - first.extentY.min) * (first.extentY.max - first.extentY.min);
        const double whole = wanted.cut + wanted.fill + box;
        ExpectNear(volume.planArea, wanted.planArea, box, "area");
        ExpectNear(volume.cut, wanted.cut, whole, "cut");
        ExpectNear(volume.fill, wanted.fill, whole, "fill");
        compared += wanted.planArea > 0 ? 1 : 0;
    }
    EXPECT_GT(compared, 20U);
}

TEST(VolumesTest, OfASurveyAndItselfAreNoneAndTurnedAreOpposite) {
    for (const double shift : {0.0, kGrid}) {
        const PointSet first = Moved(HillySurvey(test::RandomPoints(2000, 3), false), shift, shift);
        const PointSet second = Moved(HillySurvey(test::RandomPoints(1500, 4), true), shift, shift);
        const VolumeFigures none = Pair(first, first).Volume();
        EXPECT_EQ(none.cut, 0);
        EXPECT_EQ(none.fill, 0);
        EXPECT_GT(none.planArea, 0);
        const VolumeFigures there = Pair(first, second).Volume();
        const VolumeFigures back = Pair(second, first).Volume();
        EXPECT_GT(there.cut, 0);
        EXPECT_EQ(there.cut, back.fill);
        EXPECT_EQ(there.fill, back.cut);
        EXPECT_EQ(there.net, -back.net);
        EXPECT_EQ(there.cutArea, back.fillArea);
    }
}

// The mesh holds together: its parts above and below 0 are the cut and the fill.
TEST(VolumesTest, OfADifferenceSurfaceAreThoseBetweenTheSurveys) {
    for (const double shift : {0.0, kGrid}) {
        const Pair pair(Moved(HillySurvey(test::RandomPoints(900, 5), false), shift, shift),
                        Moved(HillySurvey(test::RandomPoints(700, 6), true), shift, shift));
        const VolumeFigures volume = pair.Volume();
        const DifferenceSurface difference = MakeDifference(pair.a, pair.b);
        const MeasuredSurface mesh = MeasureFrom(difference.points, difference.triangles);
        const VolumeFigures again = VolumeAgainst(mesh, 0);
        const double accuracy = shift > 0 ? 1e-9 : 1e-11; // corners are rounded on the grid
        EXPECT_NEAR(again.fill / volume.cut, 1, accuracy);
        EXPECT_NEAR(again.cut / volume.fill, 1, accuracy);
        // One rim, as long as that of the common ground, so all inner sides are linked.
        const AreaFigures figures = MeasureAreas(mesh);
        EXPECT_NEAR(figures.plan / volume.planArea, 1, accuracy);
        EXPECT_LT(figures.perimeter, 4 * std::sqrt(std::numbers::pi * figures.plan));
        const LevelSet levels = MakeLevelSet(RuleByList({-5, 0, 5}), difference.points.extentZ,
                                             ColourScale::MakePalette(256), LevelRequest());
        const auto contours = MakeContourSet(difference.points, difference.triangles, levels);
        ASSERT_TRUE(contours);
        const Array1<LevelBand> bands =
            MakeLevelBands(difference.points, difference.triangles, *contours);
        EXPECT_NEAR((AreaOf(bands[3]) + AreaOf(bands[4])) / volume.fillArea, 1, 1e-6);
    }
}

TEST(AreaFiguresTest, TheHypsometricTableIsThatOfPlanes) {
    const MeasuredSurface hills =
        SurfaceOf(Moved(HillySurvey(test::RandomPoints(3000, 8), true), kGrid, kGrid));
    const std::vector<double> heights{75, 90, 100, 100.5, 110, 130, 500};
    const std::vector<HypsometryRow> rows = MeasureHypsometry(hills, heights);
    ASSERT_EQ(rows.size(), heights.size() + 1);
    const AreaFigures areas = MeasureAreas(hills);
    EXPECT_EQ(rows.front().height, areas.z.min);
    ExpectNear(rows.front().areaAbove, areas.plan, areas.plan, "all ground");
    double bandSum = 0;
    for (const HypsometryRow& row : rows) {
        const VolumeFigures above = VolumeAgainst(hills, row.height);
        ExpectNear(row.volumeAbove, above.cut, rows.front().volumeAbove, "above");
        bandSum += row.bandVolume;
    }
    ExpectNear(bandSum, rows.front().volumeAbove, bandSum, "bands");
    EXPECT_EQ(rows.back().areaAbove, 0);
    EXPECT_TRUE(MeasureHypsometry(MeasuredSurface(), heights).empty());
}

TEST(MeasuredPolygonTest, RefusesWhatHasNoInside) {
    const auto failureOf = [](PlanRing ring) { return MakePolygon({}, {std::move(ring)}).failure; };
    EXPECT_EQ(failureOf({{0, 0}, {1, 1}, {2, 2}}), Text::PolygonNoArea);
    EXPECT_EQ(failureOf({{0, 0}, {2, 2}, {2, 0}, {0, 2}}), Text::PolygonCrosses);
    EXPECT_TRUE(failureOf({{0, 0}, {1, 0}}));
    // A hole, and ground beside the surface.
    const PlanRing outer{{-5, 2}, {15, 2}, {15, 8}, {-5, 8}};
    const PlanRing hole{{4, 4}, {6, 4}, {6, 6}, {4, 6}};
    const PolygonReading ground = MakePolygon({}, {outer, hole});
    ASSERT_FALSE(ground.failure);
    const MeasuredSurface within = CutByPolygon(SurfaceOf(Pyramid()), ground.ground);
    ExpectNear(MeasureAreas(within).plan, 10 * 6 - 4, 56, "square with a hole");
}

} // namespace
} // namespace terravo

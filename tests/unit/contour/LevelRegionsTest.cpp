#include "contour/LevelRegions.h"

#include "contour/smoothing/FlattenContours.h"

#include "support/TestSurface.h"
#include "triangulation/HullRings.h"

#include <gtest/gtest.h>
#include <map>
#include <random>

namespace terravo {
namespace {

using test::AreaAbove;
using test::ContoursOf;
using test::LevelsOver;
using test::Surface;

Array1<LevelRegion> RegionsOf(const Surface& surface, const std::vector<double>& values) {
    return MakeLevelRegions(surface.points, surface.triangles, ContoursOf(surface, values));
}

// Repeated vertices and rings of less than three.
std::string RingFaultOf(const LevelRegion& region) {
    for (const RegionRing& ring : region.rings) {
        const auto vertices = region.VerticesOf(ring);
        if (vertices.size() < 3) {
            return "a ring without area";
        }
        for (std::size_t i = 0; i < vertices.size(); ++i) {
            const PlanPoint p = vertices[i];
            if (p == vertices[(i + 1) % vertices.size()] ||
                p == vertices[(i + 2) % vertices.size()]) {
                return "a ring goes nowhere or there and back";
            }
        }
    }
    return {};
}

std::string FaultOf(const Surface& surface, const std::vector<double>& levels) {
    const Array1<LevelRegion> regions = RegionsOf(surface, levels);
    const double whole = AreaAbove(surface, surface.points.extentZ.min);
    for (const LevelRegion& region : regions) {
        const double area = AreaAbove(surface, region.value);
        if (std::abs(AreaOf(region) - area) > 1e-9 * whole) {
            return "level " + std::to_string(region.value) + ": area " +
                   std::to_string(AreaOf(region)) + ", not " + std::to_string(area);
        }
        if (std::string fault = RingFaultOf(region); !fault.empty()) {
            return "level " + std::to_string(region.value) + ": " + fault;
        }
    }
    return {};
}

TEST(LevelRegions, HaveTheAreaOfTheGroundAboveTheLevel) {
    for (const Index count : {60, 900}) {
        for (const auto& clouds : {test::CloudsOfEveryKind(count, 7), test::HardClouds(count, 7)}) {
            for (const test::PointCloud& cloud : clouds) {
                for (const bool wholeMetres : {false, true}) {
                    const Surface surface(test::HillySurvey(cloud.points, wholeMetres));
                    EXPECT_EQ(FaultOf(surface, LevelsOver(surface.points)), "")
                        << cloud.name << ' ' << count << ' ' << wholeMetres;
                }
            }
        }
    }
}

TEST(LevelRegions, HoldWhereManyPointsAreAtTheLevel) {
    std::mt19937 engine(3);
    for (int round = 0; round < 600; ++round) {
        const auto side = static_cast<Index>(3 + engine() % 4);
        PointSet points;
        for (const PlanPoint& p : test::GridPoints(side)) {
            const double shift = round % 2 == 0 ? 1 : 4.5e6;
            // Rows half a step apart: six neighbours for each inner point.
            const double x = p.x + (static_cast<int>(p.y) % 20 == 0 ? 5 : 0);
            points.Append(x + shift, p.y + shift, 4 + static_cast<int>(engine() % 3));
        }
        const Surface surface(points);
        EXPECT_EQ(FaultOf(surface, {3, 4, 4.5, 5, std::nextafter(5, 6), 5.5, 6, 7}), "") << round;
    }
}

TEST(LevelRegions, TellPointsOfTheHullAtTheLevelFromPointsJustBelow) {
    const Surface surface(
        test::MakeSurvey({{1, 1, 5}, {9, 1, 8}, {9, 9, 5}, {1, 9, 8}, {5, 5.5, 6}}));
    EXPECT_EQ(FaultOf(surface, {5, std::nextafter(5, 6), std::nextafter(8, 6), 8}), "");
}

TEST(LevelRegions, HoldOnSurfacesWithHolesAndParts) {
    for (const bool wholeMetres : {false, true}) {
        const Surface holes = test::SurfaceWithHoles(wholeMetres);
        EXPECT_EQ(HullRings(holes.triangles).size(), 3U);
        EXPECT_EQ(FaultOf(holes, LevelsOver(holes.points)), "") << wholeMetres;
        const Surface parts = test::SurfaceInParts(wholeMetres);
        EXPECT_EQ(HullRings(parts.triangles).size(), 2U);
        EXPECT_EQ(FaultOf(parts, LevelsOver(parts.points)), "") << wholeMetres;
    }
}

// How often the rings of a region go round a place, and whether they do an odd number of times.
std::pair<int, bool> RoundsAbout(const LevelRegion& region, PlanPoint p) {
    int rounds = 0;
    int crossings = 0;
    for (const RegionRing& ring : region.rings) {
        const auto vertices = region.VerticesOf(ring);
        for (std::size_t i = 0; i < vertices.size(); ++i) {
            const PlanPoint a = vertices[i];
            const PlanPoint b = vertices[(i + 1) % vertices.size()];
            if ((a.y > p.y) == (b.y > p.y)) {
                continue;
            }
            if (a.x + (p.y - a.y) / (b.y - a.y) * (b.x - a.x) > p.x) {
                rounds += b.y > a.y ? 1 : -1;
                ++crossings;
            }
        }
    }
    return {rounds, crossings % 2 == 1};
}

// At a place in every third triangle, whose height is farther than this from a level.
void ExpectOnceRoundWhatIsAbove(const Surface& surface, const Array1<LevelRegion>& regions,
                                double near) {
    std::mt19937 engine(1);
    std::uniform_real_distribution<double> part(0.05, 0.45);
    for (Index t = 1; t <= surface.triangles.count; t += 3) {
        const double u = part(engine);
        const double v = part(engine);
        const auto mix = [&](double a, double b, double c) {
            return a + u * (b - a) + v * (c - a);
        };
        const PlanPoint a = surface.At(1, t);
        const PlanPoint b = surface.At(2, t);
        const PlanPoint c = surface.At(3, t);
        const PlanPoint p{mix(a.x, b.x, c.x), mix(a.y, b.y, c.y)};
        const double z = mix(surface.Height(1, t), surface.Height(2, t), surface.Height(3, t));
        for (const LevelRegion& region : regions) {
            if (std::abs(z - region.value) > near) {
                const bool isAbove = z > region.value;
                EXPECT_EQ(RoundsAbout(region, p), std::pair(isAbove ? 1 : 0, isAbove))
                    << t << ' ' << region.value;
            }
        }
    }
}

TEST(LevelRegions, GoOnceRoundWhatIsAboveAndNotRoundTheRest) {
    const Surface surface(test::HillySurvey(test::RandomPoints(700, 5), true));
    ExpectOnceRoundWhatIsAbove(surface, RegionsOf(surface, LevelsOver(surface.points)), 1e-9);
}

TEST(LevelRegions, HoldForSmoothLinesWithinWhatTheseLeaveTheirHeight) {
    for (const Surface& surface : {Surface(test::HillySurvey(test::RandomPoints(700, 5), true)),
                                   test::SurfaceWithHoles(true), test::SurfaceInParts(false)}) {
        LevelSet levels;
        const double lowest = surface.points.extentZ.min - 1;
        for (double value = lowest; value <= surface.points.extentZ.max + 3; value += 3) {
            levels.Append({value, 0, 1, {}, 0, 10});
        }
        const SmoothSet smooth =
            MakeSmoothContours({surface.points, surface.triangles, nullptr, levels}, {}).value();
        for (const double tolerance : {1e3, 0.01}) { // a chord a triangle, many
            const Array1<LevelRegion> regions = MakeLevelRegions(
                surface.points, surface.triangles, FlattenContours(smooth, tolerance));
            const double near = smooth.worst.height + 1e-9;
            ExpectOnceRoundWhatIsAbove(surface, regions, near);
            const double whole = AreaAbove(surface, lowest);
            double bands = 0;
            for (Index k = 1; k <= regions.UpperBound(); ++k) {
                const double area = AreaOf(regions[k]);
                EXPECT_EQ(RingFaultOf(regions[k]), "") << regions[k].value;
                EXPECT_LE(area, AreaAbove(surface, regions[k].value - near) + 1e-9 * whole);
                EXPECT_GE(area, AreaAbove(surface, regions[k].value + near) - 1e-9 * whole);
                const double next = k < regions.UpperBound() ? AreaOf(regions[k + 1]) : 0;
                EXPECT_GE(area, next);
                bands += area - next;
            }
            EXPECT_NEAR(bands, whole, 1e-9 * whole);
        }
    }
}

TEST(HullRings, GoRoundTheSurfaceOnce) {
    for (const test::PointCloud& cloud : test::CloudsOfEveryKind(400, 2)) {
        const Surface surface(test::HillySurvey(cloud.points, false));
        const std::vector<HullRing> rings = HullRings(surface.triangles);
        ASSERT_EQ(rings.size(), 1U) << cloud.name;
        LevelRegion hull;
        std::size_t edges = 0;
        for (const HullStep& step : rings[0]) {
            EXPECT_EQ(step.point, surface.triangles.Vertex(step.edge.edge, step.edge.triangle));
            hull.vertices.push_back({surface.points.x[step.point], surface.points.y[step.point]});
        }
        for (Index t = 1; t <= surface.triangles.count; ++t) {
            for (int j = 1; j <= 3; ++j) {
                edges += surface.triangles.Neighbour(j, t) < 0 ? 1 : 0;
            }
        }
        EXPECT_EQ(rings[0].size(), edges) << cloud.name;
        hull.rings = {{0, hull.vertices.size()}};
        const double whole = AreaAbove(surface, surface.points.extentZ.min);
        EXPECT_NEAR(AreaOf(hull), whole, 1e-12 * whole) << cloud.name;
    }
    EXPECT_TRUE(HullRings(TriangleList()).empty());
}

} // namespace
} // namespace terravo

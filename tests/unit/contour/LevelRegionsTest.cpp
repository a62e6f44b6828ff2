#include "contour/LevelRegions.h"

#include "support/Surveys.h"
#include "survey/Survey.h"
#include "triangulation/HullRings.h"

#include <gtest/gtest.h>
#include <map>
#include <random>

namespace terravo {
namespace {

struct Surface {
    PointSet points;
    TriangleList triangles;

    explicit Surface(PointSet survey) : points(std::move(survey)) {
        triangles = Survey(points).Triangulation().triangles;
    }

    [[nodiscard]] PlanPoint At(int j, Index t) const {
        const Index p = triangles.Vertex(j, t);
        return {points.x[p], points.y[p]};
    }
    [[nodiscard]] double Height(int j, Index t) const { return points.z[triangles.Vertex(j, t)]; }
    [[nodiscard]] double AreaOfTriangle(Index t) const {
        const PlanPoint a = At(1, t);
        const PlanPoint b = At(2, t);
        const PlanPoint c = At(3, t);
        return ((b.x - a.x) * (c.y - a.y) - (c.x - a.x) * (b.y - a.y)) / 2;
    }
};

// Of the part of a triangle at or above a level.
double AreaAbove(const Surface& surface, Index t, double level) {
    std::array z{surface.Height(1, t), surface.Height(2, t), surface.Height(3, t)};
    std::sort(z.begin(), z.end());
    const auto [low, middle, high] = z;
    const double area = surface.AreaOfTriangle(t);
    if (level <= low) {
        return area;
    }
    if (level > high) {
        return 0;
    }
    return level > middle
               ? area * (high - level) / (high - low) * ((high - level) / (high - middle))
               : area - area * (level - low) / (high - low) * ((level - low) / (middle - low));
}

double AreaAbove(const Surface& surface, double level) {
    double area = 0;
    for (Index t = 1; t <= surface.triangles.count; ++t) {
        area += AreaAbove(surface, t, level);
    }
    return area;
}

Array1<LevelRegion> RegionsOf(const Surface& surface, const std::vector<double>& values) {
    LevelSet levels;
    for (const double value : values) {
        levels.Append({value, 0, 1, {}, 0, 10});
    }
    const std::optional<ContourSet> contours =
        MakeContourSet(surface.points, surface.triangles, levels);
    return MakeLevelRegions(surface.points, surface.triangles, contours.value());
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

// Whole and broken ones, at and beyond both ends.
std::vector<double> LevelsOver(const PointSet& points) {
    const double low = points.extentZ.min;
    const double high = points.extentZ.max;
    std::vector<double> levels = {low - 1, low, std::nextafter(low, high), high, high + 1};
    for (int i = 1; i < 12; ++i) {
        levels.push_back(std::lerp(low, high, i / 12.0));
        levels.push_back(std::floor(levels.back()));
    }
    return levels;
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

// The surface without the triangles that are not wanted, linked anew.
template <class Wanted>
Surface Without(const Surface& surface, Wanted wanted) {
    Surface result = surface;
    std::map<std::pair<Index, Index>, TriangleEdge> edges; // by their points
    result.triangles.count = 0;
    for (Index t = 1; t <= surface.triangles.count; ++t) {
        const PlanPoint a = surface.At(1, t);
        if (wanted(a, surface.At(2, t), surface.At(3, t))) {
            const Index n = ++result.triangles.count;
            result.triangles.table[n].vertices = surface.triangles.table[t].vertices;
            for (int j = 1; j <= 3; ++j) {
                edges[{surface.triangles.Vertex(j, t), surface.triangles.Vertex(NextEdge(j), t)}] =
                    {n, j};
            }
        }
    }
    std::map<Index, TriangleEdge> hull; // by the point that they begin with
    for (const auto& [ends, edge] : edges) {
        if (!edges.contains({ends.second, ends.first})) {
            hull[ends.first] = edge;
        }
    }
    for (const auto& [ends, edge] : edges) {
        const auto across = edges.find({ends.second, ends.first});
        result.triangles.table[edge.triangle].SetNeighbour(
            edge.edge,
            across != edges.end() ? across->second.triangle : LinkToHullEdge(hull.at(ends.second)));
    }
    return result;
}

TEST(LevelRegions, TellPointsOfTheHullAtTheLevelFromPointsJustBelow) {
    const Surface surface(
        test::MakeSurvey({{1, 1, 5}, {9, 1, 8}, {9, 9, 5}, {1, 9, 8}, {5, 5.5, 6}}));
    EXPECT_EQ(FaultOf(surface, {5, std::nextafter(5, 6), std::nextafter(8, 6), 8}), "");
}

TEST(LevelRegions, HoldOnSurfacesWithHolesAndParts) {
    for (const bool wholeMetres : {false, true}) {
        const Surface all(test::HillySurvey(test::GridPoints(40), wholeMetres));
        // Points are 10 apart, up to 400.
        const auto isIn = [](PlanPoint p, double x1, double y1, double x2, double y2) {
            return p.x >= x1 && p.x <= x2 && p.y >= y1 && p.y <= y2;
        };
        const Surface holes = Without(all, [&](PlanPoint a, PlanPoint b, PlanPoint c) {
            for (const auto& [x1, y1, x2, y2] :
                 {std::array{50., 60., 150., 200.}, std::array{180., 30., 370., 80.},
                  std::array{200., 120., 230., 400.}}) {
                if (isIn(a, x1, y1, x2, y2) && isIn(b, x1, y1, x2, y2) && isIn(c, x1, y1, x2, y2)) {
                    return false;
                }
            }
            return true;
        });
        EXPECT_EQ(HullRings(holes.triangles).size(), 3U);
        EXPECT_EQ(FaultOf(holes, LevelsOver(holes.points)), "") << wholeMetres;
        const Surface parts = Without(all, [](PlanPoint a, PlanPoint b, PlanPoint c) {
            return (a.x <= 150 && b.x <= 150 && c.x <= 150) ||
                   (a.x >= 170 && b.x >= 170 && c.x >= 170);
        });
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

TEST(LevelRegions, GoOnceRoundWhatIsAboveAndNotRoundTheRest) {
    const Surface surface(test::HillySurvey(test::RandomPoints(700, 5), true));
    const Array1<LevelRegion> regions = RegionsOf(surface, LevelsOver(surface.points));
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
            if (std::abs(z - region.value) > 1e-9) {
                const bool isAbove = z > region.value;
                EXPECT_EQ(RoundsAbout(region, p), std::pair(isAbove ? 1 : 0, isAbove))
                    << t << ' ' << region.value;
            }
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

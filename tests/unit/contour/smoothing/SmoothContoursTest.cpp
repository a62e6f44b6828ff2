#include "contour/smoothing/SmoothContours.h"

#include "contour/LevelRegions.h"
#include "contour/smoothing/FlattenContours.h"
#include "contour/smoothing/LevelSpacing.h"
#include "contour/smoothing/SmoothCheck.h"
#include "contour/smoothing/SmoothRun.h"
#include "contour/smoothing/ThinContours.h"
#include "support/PointClouds.h"
#include "support/Surveys.h"
#include "survey/Survey.h"
#include "triangulation/constrained/VisibleSurface.h"

#include <array>
#include <gtest/gtest.h>
#include <map>
#include <random>
#include <thread>

namespace terravo {
namespace {

struct Terrain {
    PointSet points;
    TriangleList triangles;
    EdgeMarks marks;
};

LevelSet LevelsAt(const std::vector<double>& values) {
    LevelSet levels;
    for (const double value : values) {
        levels.Append({value, 0, 1, {}, 0, 10});
    }
    return levels;
}

LevelSet EveryMetre(double from, double to, double step = 1) {
    std::vector<double> values;
    for (double value = from; value <= to; value += step) {
        values.push_back(value);
    }
    return LevelsAt(values);
}

Terrain TerrainOf(PointSet points) {
    Terrain terrain;
    const Survey survey(std::move(points));
    terrain.points = survey.Points();
    terrain.triangles = survey.Triangulation().triangles;
    terrain.marks = EdgeMarks(terrain.triangles.count);
    return terrain;
}

std::optional<SmoothSet> Smooth(const Terrain& terrain, const LevelSet& levels,
                                const SmoothingOptions& options) {
    return smoothing::SmoothWithAnyFraction(
        {terrain.points, terrain.triangles, &terrain.marks, levels}, options,
        [](int count, const std::function<void(int)>& work) {
            for (int piece = 0; piece < count; ++piece) {
                work(piece);
            }
        });
}

std::string FaultOf(const Terrain& terrain, const LevelSet& levels, const SmoothingOptions& options,
                    double tolerance = 0.01) {
    const SmoothSet smooth = *Smooth(terrain, levels, options);
    if (smooth.worst.interval > options.fraction * (1 + 1e-9)) {
        return "the lines go " + std::to_string(smooth.worst.interval) + " of the way";
    }
    if (smooth.worst.height > options.limit * (1 + 1e-9)) {
        return "the lines leave their height by " + std::to_string(smooth.worst.height);
    }
    return SmoothFaultOf({terrain.points, terrain.triangles, &terrain.marks, levels}, smooth,
                         tolerance);
}

TEST(SmoothContours, KnowTheWayToTheNeighbouringLevels) {
    struct Case {
        std::vector<double> levels;
        std::vector<double> below;
        std::vector<double> above;
    };
    const std::vector<Case> cases = {
        {{4}, {10}, {10}},
        {{1, 2, 5}, {1, 1, 3}, {1, 3, 3}},
        {{5, 1, 2}, {3, 1, 1}, {3, 1, 3}},
        {{1, 1, 2}, {1, 1, 1}, {1, 1, 1}},
    };
    for (const Case& c : cases) {
        const auto spacings = smoothing::SpacingsOf(LevelsAt(c.levels), {0, 10});
        for (std::size_t k = 0; k < c.levels.size(); ++k) {
            const smoothing::LevelSpacing& spacing = spacings[static_cast<Index>(k) + 1];
            EXPECT_EQ(spacing.below, c.below[k]) << c.levels.size() << ", " << k;
            EXPECT_EQ(spacing.above, c.above[k]) << c.levels.size() << ", " << k;
        }
    }
}

// ---- Small awkward meshes ----

using Random = std::mt19937;

double Part(Random& engine) {
    return static_cast<double>(engine() % 1000) / 1000;
}

double WholeHeight(Random& engine) {
    return static_cast<double>(engine() % 5);
}

// Points of a lattice, some moved, at heights that are mostly levels.
PointSet Lattice(Random& engine, double jitter) {
    PointSet points;
    for (int y = 0; y < 6; ++y) {
        for (int x = 0; x < 6; ++x) {
            const double z = engine() % 5 == 0 ? 4 * Part(engine) : WholeHeight(engine);
            points.Append(x + jitter * Part(engine), y + jitter * Part(engine), z);
        }
    }
    return points;
}

PointSet WholeLattice(Random& engine) {
    PointSet points = Lattice(engine, 0.2);
    for (double& z : points.z) {
        z = std::floor(z);
    }
    return points;
}

PointSet Needles(Random& engine) {
    PointSet points;
    for (int i = 0; i < 30; ++i) {
        points.Append(6 * Part(engine), 1e-4 * Part(engine) + (i % 10 == 0 ? 3 : 0),
                      WholeHeight(engine));
    }
    return points;
}

// Links triangles that were made by hand and have one convex hull.
void Link(TriangleList& triangles) {
    std::map<std::pair<Index, Index>, TriangleEdge> edges; // by their ends
    for (Index t = 1; t <= triangles.count; ++t) {
        for (int j = 1; j <= 3; ++j) {
            edges[{triangles.Vertex(j, t), triangles.Vertex(NextEdge(j), t)}] = {t, j};
        }
    }
    const auto across = [&](std::pair<Index, Index> ends) {
        return edges.find({ends.second, ends.first});
    };
    std::map<Index, TriangleEdge> hull; // by the point that they begin with
    for (const auto& [ends, edge] : edges) {
        if (across(ends) == edges.end()) {
            hull[ends.first] = edge;
        }
    }
    for (const auto& [ends, edge] : edges) {
        const auto other = across(ends);
        triangles.table[edge.triangle].SetNeighbour(
            edge.edge,
            other == edges.end() ? LinkToHullEdge(hull[ends.second]) : other->second.triangle);
    }
}

// Triangles within triangles, each divided about a point that lies anywhere in it.
Terrain Divided(Random& engine) {
    Terrain terrain;
    for (const PlanPoint p : {PlanPoint{0, 0}, PlanPoint{7, 0}, PlanPoint{2, 6}}) {
        terrain.points.Append(p.x, p.y, WholeHeight(engine));
    }
    terrain.triangles = TriangleList(20);
    terrain.triangles.table[1].vertices = {1, 2, 3};
    terrain.triangles.count = 1;
    for (int round = 0; round < 12; ++round) {
        const Index t =
            1 + static_cast<Index>(engine() % static_cast<unsigned>(terrain.triangles.count));
        const auto [a, b, c] = terrain.triangles.table[t].vertices;
        const double u = 0.05 + 0.9 * Part(engine);
        const double v = (1 - u) * (0.05 + 0.9 * Part(engine));
        const auto mix = [&, i = a, j = b, k = c](const Array1<double>& from) {
            return u * from[i] + v * from[j] + (1 - u - v) * from[k];
        };
        terrain.points.Append(mix(terrain.points.x), mix(terrain.points.y), WholeHeight(engine));
        const Index p = terrain.points.count;
        terrain.triangles.table[t].vertices = {a, b, p};
        terrain.triangles.table[++terrain.triangles.count].vertices = {b, c, p};
        terrain.triangles.table[++terrain.triangles.count].vertices = {c, a, p};
    }
    Link(terrain.triangles);
    terrain.marks = EdgeMarks(terrain.triangles.count);
    return terrain;
}

Terrain WithHoles(Terrain terrain, Random& engine) {
    HiddenTriangles hidden(terrain.triangles.count);
    for (char& isHidden : hidden) {
        isHidden = engine() % 6 == 0 ? 1 : 0;
    }
    terrain.triangles = VisibleTriangles(terrain.triangles, hidden);
    terrain.marks = EdgeMarks(terrain.triangles.count);
    return terrain;
}

// Marks some edges on both sides.
Terrain WithBreaklines(Terrain terrain, Random& engine) {
    for (Index t = 1; t <= terrain.triangles.count; ++t) {
        for (int j = 1; j <= 3; ++j) {
            const Index across = terrain.triangles.Neighbour(j, t);
            if (across < t && engine() % 4 == 0) {
                terrain.marks[t] |= static_cast<std::uint8_t>(1U << (j - 1));
                for (int k = 1; across > 0 && k <= 3; ++k) {
                    if (terrain.triangles.Neighbour(k, across) == t) {
                        terrain.marks[across] |= static_cast<std::uint8_t>(1U << (k - 1));
                    }
                }
            }
        }
    }
    return terrain;
}

Terrain Awkward(int kind, Random& engine) {
    switch (kind) {
    case 0:
        return TerrainOf(Lattice(engine, 0));
    case 1:
        return TerrainOf(Lattice(engine, 0.4));
    case 2:
        return TerrainOf(Needles(engine));
    case 3:
        return Divided(engine);
    case 4:
        return WithHoles(TerrainOf(Lattice(engine, 0.3)), engine);
    default:
        return WithBreaklines(TerrainOf(Lattice(engine, 0.2)), engine);
    }
}

constexpr int kKinds = 6;

TEST(SmoothContours, NeverMeetOnAwkwardMeshes) {
    const std::vector<LevelSet> levels = {LevelsAt({0, 1, 2, 3, 4}), LevelsAt({2, 0.5, 3.9, 2, 1}),
                                          LevelsAt({2}), LevelsAt({1, 1 + 1e-8, 3})};
    for (int round = 0; round < 3000; ++round) {
        Random engine(static_cast<unsigned>(round));
        const Terrain terrain = Awkward(round % kKinds, engine);
        SmoothingOptions options;
        options.fraction = round % 2 == 0 ? 0.25 : 0.45;
        options.smoothness = 0.5 * static_cast<double>(engine() % 4);
        options.goal = engine() % 2 == 0 ? SmoothingGoal::Plain : SmoothingGoal::Surface;
        options.keepCornersOnBreaklines = engine() % 4 != 0;
        options.limit = engine() % 4 == 0 ? 0.1 : 10;
        ASSERT_EQ(FaultOf(terrain, levels[engine() % levels.size()], options), "")
            << "round " << round << ", kind " << round % kKinds;
    }
}

TEST(SmoothContours, WouldMeetBeyondHalfTheSpacing) {
    int faults = 0;
    for (int round = 0; round < 100; ++round) {
        Random engine(static_cast<unsigned>(round));
        SmoothingOptions options;
        options.fraction = 0.6;
        options.smoothness = 2;
        faults += FaultOf(Awkward(round % kKinds, engine), LevelsAt({0.5, 1, 1.5, 2, 2.5, 3, 3.5}),
                          options)
                          .empty()
                      ? 0
                      : 1;
    }
    EXPECT_GT(faults, 5);
}

// ---- Surveys ----

TEST(SmoothContours, HoldOnSurveysOfEveryKindAlsoFarFromZero) {
    std::vector<test::PointCloud> clouds = test::CloudsOfEveryKind(400, 7);
    for (const test::PointCloud& cloud : test::HardClouds(300, 8)) {
        clouds.push_back(cloud);
    }
    for (const test::PointCloud& cloud : clouds) {
        for (const bool wholeMetres : {false, true}) {
            const PointSet near = test::HillySurvey(cloud.points, wholeMetres);
            const Terrain terrain = TerrainOf(near);
            SmoothingOptions options;
            options.goal = wholeMetres ? SmoothingGoal::Plain : SmoothingGoal::Surface;
            const LevelSet levels = EveryMetre(50, 300, wholeMetres ? 5 : 7.5);
            const auto [left, right] = terrain.points.extentX;
            EXPECT_EQ(FaultOf(terrain, levels, options, 1e-3 * (right - left)), "")
                << cloud.name << (wholeMetres ? ", whole metres" : "");
        }
    }
}

TEST(SmoothContours, AreTheSameFarFromZero) {
    Array1<PlanPoint> plan = test::RoundedTo(1.0 / 1024, test::RandomPoints(500, 4));
    const PlanPoint far{512000, 4520000};
    const Terrain near = TerrainOf(test::HillySurvey(plan, false));
    Terrain moved = near;
    for (Index i = 1; i <= moved.points.count; ++i) {
        moved.points.x[i] += far.x;
        moved.points.y[i] += far.y;
    }
    for (Extent* extent : {&moved.points.extentX, &moved.points.extentY}) {
        const double by = extent == &moved.points.extentX ? far.x : far.y;
        *extent = {extent->min + by, extent->max + by};
    }
    const LevelSet levels = EveryMetre(50, 300);
    const SmoothSet here = *Smooth(near, levels, {});
    const SmoothSet there = *Smooth(moved, levels, {});
    ASSERT_EQ(here.vertices, there.vertices);
    double most = 0;
    for (Index k = 1; k <= levels.UpperBound(); ++k) {
        ASSERT_EQ(here.levels[k].controls.size(), there.levels[k].controls.size());
        for (std::size_t i = 0; i < here.levels[k].controls.size(); ++i) {
            const PlanPoint a = here.levels[k].controls[i];
            const PlanPoint b = there.levels[k].controls[i];
            most = std::max({most, std::fabs(a.x - b.x - (there.origin.x - far.x)),
                             std::fabs(a.y - b.y - (there.origin.y - far.y))});
        }
    }
    EXPECT_LT(most, 1e-6);
    EXPECT_EQ(FaultOf(moved, levels, {}), "");
}

TEST(SmoothContours, DoNotDependOnTheOrderOfTheWork) {
    const Terrain terrain = TerrainOf(test::HillySurvey(test::RandomPoints(30000, 6), false));
    const LevelSet levels = EveryMetre(50, 300, 5);
    SmoothingOptions options;
    options.goal = SmoothingGoal::Surface;
    const SmoothingSource source{terrain.points, terrain.triangles, nullptr, levels};
    const SmoothSet inOrder = *Smooth(terrain, levels, options);
    const SmoothSet together = *MakeSmoothContours(source, options);
    const SmoothSet onThreads = *smoothing::SmoothWithAnyFraction(
        source, options, [](int count, const std::function<void(int)>& work) {
            std::vector<std::thread> threads;
            threads.reserve(4);
            for (int first = 0; first < 4; ++first) {
                threads.emplace_back([=] {
                    for (int piece = count - 1 - first; piece >= 0; piece -= 4) {
                        work(piece);
                    }
                });
            }
            for (std::thread& thread : threads) {
                thread.join();
            }
        });
    for (const SmoothSet* other : {&together, &onThreads}) {
        EXPECT_EQ(inOrder.worst.height, other->worst.height);
        for (Index k = 1; k <= levels.UpperBound(); ++k) {
            EXPECT_TRUE(inOrder.levels[k].controls == other->levels[k].controls) << k;
            EXPECT_TRUE(inOrder.levels[k].edges == other->levels[k].edges) << k;
        }
    }
}

// ---- Fewer vertices ----

double DistanceFrom(PlanPoint p, const ContourVertex& a, const ContourVertex& b) {
    const PlanPoint chord{b.x - a.x, b.y - a.y};
    const double square = chord.x * chord.x + chord.y * chord.y;
    const double along =
        square > 0 ? ((p.x - a.x) * chord.x + (p.y - a.y) * chord.y) / square : 0.0;
    const double part = std::clamp(along, 0.0, 1.0);
    return std::hypot(p.x - a.x - part * chord.x, p.y - a.y - part * chord.y);
}

// From any vertex of the fine lines to the nearest piece of the others, of the same level.
double FarthestApart(const ContourSet& fine, const ContourSet& lines) {
    double most = 0;
    for (Index k = 1; k <= fine.UpperBound(); ++k) {
        for (const ContourVertex& v : fine[k].vertices) {
            double least = std::numeric_limits<double>::infinity();
            for (const ContourLine& line : lines[k].lines) {
                const auto on = lines[k].VerticesOf(line);
                for (std::size_t i = line.closed ? 0 : 1; i < on.size(); ++i) {
                    least = std::min(
                        least, DistanceFrom({v.x, v.y}, on[i > 0 ? i - 1 : on.size() - 1], on[i]));
                }
            }
            most = std::max(most, least);
        }
    }
    return most;
}

std::string FaultOfThin(const Terrain& terrain, const LevelSet& levels,
                        const SmoothingOptions& options, double tolerance) {
    const SmoothingSource source{terrain.points, terrain.triangles, &terrain.marks, levels};
    const SmoothSet smooth = *Smooth(terrain, levels, options);
    return StraightFaultOf(source, ThinContours(source, options, smooth, tolerance), smooth.origin,
                           {options.limit, options.fraction});
}

TEST(ThinContours, NeverMeetOnAwkwardMeshes) {
    const std::vector<LevelSet> levels = {LevelsAt({0, 1, 2, 3, 4}), LevelsAt({2, 0.5, 3.9, 2, 1}),
                                          LevelsAt({2})};
    for (int round = 0; round < 1500; ++round) {
        Random engine(static_cast<unsigned>(round));
        const Terrain terrain = Awkward(round % kKinds, engine);
        SmoothingOptions options;
        options.fraction = round % 2 == 0 ? 0.25 : 0.45;
        options.goal = engine() % 2 == 0 ? SmoothingGoal::Plain : SmoothingGoal::Surface;
        options.limit = engine() % 4 == 0 ? 0.1 : 10;
        const double tolerance = engine() % 2 == 0 ? 0.05 : 10;
        ASSERT_EQ(FaultOfThin(terrain, levels[engine() % levels.size()], options, tolerance), "")
            << "round " << round << ", kind " << round % kKinds << ", tolerance " << tolerance;
    }
}

TEST(ThinContours, HaveFewerVerticesNearTheCurve) {
    const Terrain terrain = TerrainOf(test::HillySurvey(test::RandomPoints(300, 4), false));
    const LevelSet levels = EveryMetre(50, 300, 20);
    const SmoothingSource source{terrain.points, terrain.triangles, nullptr, levels};
    const SmoothSet smooth = *Smooth(terrain, levels, {});
    const ContourSet fine = FlattenContours(smooth, 1e-3);
    const auto count = [](const ContourSet& lines) {
        std::size_t sum = 0;
        for (const ContourLevel& level : lines) {
            sum += level.vertices.size();
        }
        return sum;
    };
    for (const double part : {1e-5, 1e-4, 1e-3}) {
        const double tolerance = part * (terrain.points.extentX.max - terrain.points.extentX.min);
        const ContourSet thin = ThinContours(source, {}, smooth, tolerance);
        EXPECT_LT(FarthestApart(fine, thin), 1.001 * tolerance);
        EXPECT_LT(FarthestApart(thin, fine), 1.001 * tolerance);
        EXPECT_LT(count(thin), count(FlattenContours(smooth, tolerance)));
        EXPECT_EQ(FaultOfThin(terrain, levels, {}, tolerance), "");
    }
}

// Places in a file have the digits of their grid.
TEST(ThinContours, HoldFarFromZero) {
    for (unsigned seed = 1; seed <= 20; ++seed) {
        const PointSet near = test::HillySurvey(test::RandomPoints(300, seed), seed % 2 == 0);
        PointSet far;
        for (Index i = 1; i <= near.count; ++i) {
            far.Append(near.x[i] + 282000.3, near.y[i] + 3931000.7, near.z[i]);
        }
        SmoothingOptions options;
        options.fraction = 0.45;
        EXPECT_EQ(FaultOfThin(TerrainOf(far), EveryMetre(50, 300, 5), options, 0.5), "") << seed;
    }
}

// ---- What the lines are ----

// The lines before smoothing, without those that are but a point.
TEST(SmoothContours, PassTheEdgesThatTheContoursPass) {
    const LevelSet levels = LevelsAt({0, 1, 2, 3, 4});
    for (int round = 0; round < 60; ++round) {
        Random engine(static_cast<unsigned>(round));
        const Terrain terrain = WithHoles(TerrainOf(Lattice(engine, 0.2)), engine);
        const SmoothSet smooth = *Smooth(terrain, levels, {});
        const ContourSet contours =
            *MakeContourSet(terrain.points, terrain.triangles, levels, {}, Repeats::Keep);
        for (Index k = 1; k <= levels.UpperBound(); ++k) {
            auto line = smooth.levels[k].lines.begin();
            for (const ContourLine& raw : contours[k].lines) {
                const auto vertices = contours[k].VerticesOf(raw);
                const bool isPoint =
                    std::all_of(vertices.begin(), vertices.end(), [&](const ContourVertex& v) {
                        return v.x == vertices.front().x && v.y == vertices.front().y;
                    });
                if (isPoint) {
                    continue;
                }
                ASSERT_NE(line, smooth.levels[k].lines.end());
                const auto edges = smooth.levels[k].EdgesOf(*line++);
                ASSERT_EQ(edges.size(), vertices.size() + (raw.closed ? 1 : 0));
                for (std::size_t i = 0; i < vertices.size(); ++i) {
                    EXPECT_EQ(edges[i], vertices[i].edge);
                }
            }
            EXPECT_EQ(line, smooth.levels[k].lines.end());
        }
    }
}

TEST(SmoothContours, TreatWhatLiesAtTheLevel) {
    struct Case {
        const char* name;
        std::vector<std::string> rows; // heights, one point a metre
        std::string lines;             // at height 5: open or closed
    };
    const std::vector<Case> cases = {
        {"peak", {"000", "050", "000"}, ""},
        {"peak on the hull", {"000", "000", "500"}, ""},
        {"pit", {"999", "959", "999"}, ""},
        {"plateau", {"0000", "0550", "0550", "0000"}, "C"},
        {"ridge", {"0000", "0550", "0000"}, "C"},
        {"valley", {"9999", "9559", "9999"}, ""},
        {"saddle", {"909", "050", "909"}, ""},
        {"slope", {"000", "555", "999"}, "O"},
    };
    for (const Case& c : cases) {
        PointSet points;
        for (std::size_t y = 0; y < c.rows.size(); ++y) {
            for (std::size_t x = 0; x < c.rows[y].size(); ++x) {
                points.Append(static_cast<double>(x) + 0.1 * static_cast<double>(y),
                              static_cast<double>(y), c.rows[y][x] - '0');
            }
        }
        const Terrain terrain = TerrainOf(points);
        const LevelSet levels = LevelsAt({2.5, 5, 7.5});
        EXPECT_EQ(FaultOf(terrain, levels, {}), "") << c.name;
        std::string lines;
        const SmoothSet smooth = *Smooth(terrain, levels, {});
        for (const SmoothLine& line : smooth.levels[2].lines) {
            lines += line.closed ? 'C' : 'O';
        }
        if (std::string_view(c.name) != "saddle") {
            EXPECT_EQ(lines, c.lines) << c.name;
        } else {
            EXPECT_GE(lines.size(), 2U);
        }
    }
}

bool IsMarked(const Terrain& terrain, TriangleEdge edge) {
    return (terrain.marks[edge.triangle] >> static_cast<unsigned>(edge.edge - 1) & 1U) != 0;
}

PlanPoint RawPlace(const Terrain& terrain, TriangleEdge edge, double level) {
    const EdgeEnds ends = EndsOf(terrain.points, terrain.triangles, edge);
    return PlaceOnEdge(terrain.points, ends, PartOfEdge(terrain.points, ends, level));
}

// The sine of the corner at a control point that is a vertex; 0 where a handle has no length.
double CornerAt(std::span<const PlanPoint> controls, std::size_t i) {
    const PlanPoint in{controls[i].x - controls[i - 1].x, controls[i].y - controls[i - 1].y};
    const PlanPoint out{controls[i + 1].x - controls[i].x, controls[i + 1].y - controls[i].y};
    const double lengths = std::hypot(in.x, in.y) * std::hypot(out.x, out.y);
    return lengths < 1e-12 ? 0 : std::fabs(in.x * out.y - in.y * out.x) / lengths;
}

TEST(SmoothContours, HaveCornersOnBreaklinesAlone) {
    const LevelSet levels = LevelsAt({0.5, 1.5, 2.5, 3.5}); // no point has such a height
    for (const bool keepCorners : {true, false}) {
        int corners = 0;
        for (int round = 0; round < 30; ++round) {
            Random engine(static_cast<unsigned>(round));
            const Terrain terrain = WithBreaklines(TerrainOf(WholeLattice(engine)), engine);
            SmoothingOptions options;
            options.keepCornersOnBreaklines = keepCorners;
            const SmoothSet smooth = *Smooth(terrain, levels, options);
            for (const SmoothLevel& level : smooth.levels) {
                for (const SmoothLine& line : level.lines) {
                    const auto controls = level.ControlsOf(line);
                    const auto edges = level.EdgesOf(line);
                    for (std::size_t i = 1; i < line.pieces; ++i) {
                        const double corner = CornerAt(controls, 3 * i);
                        if (!keepCorners || !IsMarked(terrain, edges[i])) {
                            ASSERT_LT(corner, 1e-6) << round;
                            continue;
                        }
                        corners += corner > 0.1 ? 1 : 0;
                        const PlanPoint raw = RawPlace(terrain, edges[i], level.value);
                        ASSERT_NEAR(controls[3 * i].x, raw.x, 1e-12) << round;
                        ASSERT_NEAR(controls[3 * i].y, raw.y, 1e-12) << round;
                    }
                }
            }
        }
        EXPECT_EQ(corners > 100, keepCorners) << corners;
    }
}

// The ground above a smooth line is less than that above a lower level and more than that above a
// higher one.
TEST(SmoothContours, MadeStraightBoundTheGroundAboveThem) {
    SmoothingOptions options;
    options.fraction = 0.4;
    for (int round = 0; round < 60; ++round) {
        Random engine(static_cast<unsigned>(round));
        const Terrain terrain = Awkward(round % kKinds, engine);
        const std::vector<double> values = {0.5, 1.25, 2, 3, 3.75};
        const auto areasOf = [&](const ContourSet& contours) {
            std::vector<double> areas;
            for (const LevelRegion& region :
                 MakeLevelRegions(terrain.points, terrain.triangles, contours)) {
                areas.push_back(AreaOf(region));
            }
            return areas;
        };
        const auto areasAt = [&](double off) {
            std::vector<double> moved = values;
            for (double& value : moved) {
                value += off;
            }
            return areasOf(*MakeContourSet(terrain.points, terrain.triangles, LevelsAt(moved)));
        };
        const auto smooth =
            areasOf(FlattenContours(*Smooth(terrain, LevelsAt(values), options), 0.01));
        const std::vector<double> most = areasAt(-0.4);
        const std::vector<double> least = areasAt(0.4);
        for (std::size_t k = 0; k < values.size(); ++k) {
            EXPECT_LE(smooth[k], most[k] + 1e-9) << "round " << round << ", level " << k;
            EXPECT_GE(smooth[k], least[k] - 1e-9) << "round " << round << ", level " << k;
        }
    }
}

// ---- Closed forms ----

double FarthestFrom(const SmoothSet& smooth, const std::function<double(PlanPoint, double)>& off) {
    double most = 0;
    for (const ContourLevel& level : FlattenContours(smooth, 1e-3)) {
        for (const ContourVertex& v : level.vertices) {
            most = std::max(most, std::fabs(off({v.x, v.y}, level.value)));
        }
    }
    return most;
}

TEST(SmoothContours, OfAPlaneAreStraight) {
    PointSet points;
    for (const PlanPoint& p : test::RandomPoints(300, 9)) {
        points.Append(p.x, p.y, 0.03 * p.x - 0.04 * p.y);
    }
    const Terrain terrain = TerrainOf(points);
    const LevelSet levels = EveryMetre(-1000, 1000);
    for (const SmoothingGoal goal : {SmoothingGoal::Plain, SmoothingGoal::Surface}) {
        SmoothingOptions options;
        options.goal = goal;
        const SmoothSet smooth = *Smooth(terrain, levels, options);
        EXPECT_LT(FarthestFrom(smooth,
                               [](PlanPoint p, double level) {
                                   return (0.03 * p.x - 0.04 * p.y - level) / 0.05;
                               }),
                  1e-2 / 0.05)
            << static_cast<int>(goal);
    }
}

// A cone's lines are circles; smoothing comes nearer to them than the vertices of the raw lines.
TEST(SmoothContours, OfAConeComeNearToCircles) {
    PointSet points;
    for (const PlanPoint& p : test::RandomPoints(1500, 10)) {
        points.Append(p.x, p.y, 0.1 * std::hypot(p.x - 500, p.y - 500));
    }
    const Terrain terrain = TerrainOf(points);
    const LevelSet levels = EveryMetre(5, 19, 2);
    const auto offCircle = [](PlanPoint p, double level) {
        return std::hypot(p.x - 500, p.y - 500) - 10 * level;
    };
    // Over the length of the lines, not over their vertices.
    const auto meanOff = [&](const ContourSet& contours) {
        double sum = 0;
        double length = 0;
        for (const ContourLevel& level : contours) {
            for (const ContourLine& line : level.lines) {
                const auto vertices = level.VerticesOf(line);
                for (std::size_t i = 1; i < vertices.size(); ++i) {
                    const ContourVertex& a = vertices[i - 1];
                    const ContourVertex& b = vertices[i];
                    const double step = std::hypot(b.x - a.x, b.y - a.y);
                    for (const double t : {0.1, 0.3, 0.5, 0.7, 0.9}) {
                        const PlanPoint p{std::lerp(a.x, b.x, t), std::lerp(a.y, b.y, t)};
                        sum += step / 5 * std::fabs(offCircle(p, level.value));
                    }
                    length += step;
                }
            }
        }
        return sum / length;
    };
    const double raw = meanOff(*MakeContourSet(terrain.points, terrain.triangles, levels));
    const double plain = meanOff(FlattenContours(*Smooth(terrain, levels, {}), 0.01));
    SmoothingOptions surface;
    surface.goal = SmoothingGoal::Surface;
    surface.smoothness = 0.4;
    const double curved = meanOff(FlattenContours(*Smooth(terrain, levels, surface), 0.01));
    SmoothingOptions uneven;
    uneven.smoothness = 0;
    const double rounded = meanOff(FlattenContours(*Smooth(terrain, levels, uneven), 0.01));
    EXPECT_LT(rounded, raw);
    EXPECT_LT(plain, rounded);
    EXPECT_LT(curved, 0.5 * raw);
}

} // namespace
} // namespace terravo

#include "triangulation/QuickRoad.h"

#include "support/CheckTriangulation.h"
#include "support/PointClouds.h"
#include "triangulation/CurveOrder.h"
#include "triangulation/HullHistory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <random>

namespace terravo {
namespace {

using test::PointCloud;

// The corners of every triangle by number, so that it also shows which of two repeats was taken.
std::vector<std::array<Index, 3>> NumbersOf(const TriangleList& triangles) {
    std::vector<std::array<Index, 3>> set;
    for (Index t = 1; t <= triangles.count; ++t) {
        std::array<Index, 3> corners = triangles.table[t].vertices;
        std::rotate(corners.begin(), std::min_element(corners.begin(), corners.end()),
                    corners.end());
        set.push_back(corners);
    }
    std::sort(set.begin(), set.end());
    return set;
}

Index InFileOrder(const Array1<PlanPoint>& points, TriangleList& triangles) {
    Array1<Index> order(points.UpperBound());
    std::iota(order.begin(), order.end(), 1);
    return modDelaunay2D::Triangulate(points, order, triangles,
                                      modDelaunay2D::StartRule::NearbyTriangle);
}

Array1<PlanPoint> Turned(Array1<PlanPoint> points, double angle) {
    for (PlanPoint& p : points) {
        p = {3000 + p.x * std::cos(angle) - p.y * std::sin(angle),
             2000 + p.x * std::sin(angle) + p.y * std::cos(angle)};
    }
    return points;
}

Array1<PlanPoint> RoundedTo(double step, Array1<PlanPoint> points) {
    for (PlanPoint& p : points) {
        p = {std::round(p.x / step) * step, std::round(p.y / step) * step};
    }
    return points;
}

Array1<PlanPoint> Followed(Array1<PlanPoint> points, const Array1<PlanPoint>& more) {
    for (const PlanPoint& p : more) {
        points.Append(p);
    }
    return points;
}

// Sets on which single decisions are hard: lattices that are no lattice in doubles, circles,
// collinear runs, clusters, flat hulls.
std::vector<PointCloud> HardClouds(Index count, unsigned seed) {
    using namespace test;
    const auto side = static_cast<Index>(std::sqrt(static_cast<double>(count)));
    const double angle = 0.001 * seed;
    const auto random = [&](unsigned more) { return RandomPoints(count, seed + more); };
    const auto squashed = [&] {
        Array1<PlanPoint> points = random(9);
        for (PlanPoint& p : points) {
            p.y = 700 + 1e-7 * p.y + 0.3 * p.x;
        }
        return points;
    };
    return {
        {"decimal grid", Moved(GridPoints(side), 0.7, 0.3, 0.01)},
        {"decimal grid, shuffled", Moved(Shuffled(GridPoints(side), seed), 0.7, 0.3, 0.01)},
        {"turned grid", Turned(GridPoints(side), angle)},
        {"turned grid in millimetres", RoundedTo(1e-3, Turned(GridPoints(side), angle))},
        {"turned grid, then random", Followed(Turned(GridPoints(side), angle), random(3))},
        {"random, then turned grid",
         Followed(Moved(random(4), 0, 0, 9), Turned(GridPoints(side), angle))},
        {"few whole numbers", RoundedTo(100, random(5))},
        {"many whole numbers", RoundedTo(1, random(6))},
        {"decimetres", RoundedTo(0.1, random(7))},
        {"circle", CirclePoints(count)},
        {"circle among random", Followed(random(8), Moved(CirclePoints(20), 300, 200, 0.01))},
        {"almost a line", squashed()},
        {"two clusters", Followed(random(10), Moved(random(11), 90000, 1, 1e-3))},
        {"far stray point", Followed(Moved(random(12), 500000, 4520000, 1), {{1, 1}})},
        {"too small to tell", Moved(random(13), 1e-9, 1e-9, 1e-9)},
    };
}

// What is compared: the road along the curve either gives file order's triangles or refuses.
struct Tally {
    int taken = 0;
    int sets = 0;
};

void Compare(const PointCloud& cloud, Tally& tally) {
    SCOPED_TRACE(cloud.name + ", " + std::to_string(cloud.points.UpperBound()));
    TriangleList quick(cloud.points.UpperBound());
    ++tally.sets;
    if (!TriangulateAlongCurve(cloud.points, quick)) {
        return;
    }
    ++tally.taken;
    TriangleList plain(cloud.points.UpperBound());
    ASSERT_EQ(InFileOrder(cloud.points, plain), 0);
    ASSERT_EQ(NumbersOf(quick), NumbersOf(plain));
}

TEST(TriangulateAlongCurve, GivesTheTrianglesOfFileOrderOrRefuses) {
    Tally sound;
    Tally hard;
    for (const Index count : {4, 9, 30, 150, 2000}) {
        for (unsigned seed = 1; seed <= (count < 1000 ? 40 : 4); ++seed) {
            for (const PointCloud& cloud : test::CloudsOfEveryKind(count, 91 * seed)) {
                Compare(cloud, sound);
            }
            for (const PointCloud& cloud : HardClouds(count, 91 * seed)) {
                Compare(cloud, hard);
            }
        }
    }
    EXPECT_GT(sound.taken, sound.sets * 98 / 100) << "ordinary sets must take the quick road";
    EXPECT_GT(hard.taken, hard.sets / 3);
    EXPECT_LT(hard.taken, hard.sets * 9 / 10) << "the hard sets are not hard any more";
}

TEST(TriangulateAlongCurve, LinksItsTrianglesSoundly) {
    for (const PointCloud& cloud : test::CloudsOfEveryKind(5000, 8)) {
        SCOPED_TRACE(cloud.name);
        TriangleList triangles(cloud.points.UpperBound());
        ASSERT_TRUE(TriangulateAlongCurve(cloud.points, triangles));
        EXPECT_EQ(test::FaultOf(cloud.points, triangles), "");
    }
}

// In file order such a grid makes hulls whose sides are straight but for rounding errors, and the
// points after it hide them: the triangles at the end show nothing of it.
TEST(TriangulateAlongCurve, RefusesHullsOfThePastThatAreNotClear) {
    const Array1<PlanPoint> points =
        Followed(Turned(test::GridPoints(20), 0.3),
                 test::Moved(test::RandomPoints(400, 3), -4000, -4000, 20));
    TriangleList triangles(points.UpperBound());
    EXPECT_FALSE(TriangulateAlongCurve(points, triangles));
}

// Rounding errors on a turned grid once closed the hull only in its second round, the triangles
// beyond the first lying over the others.
TEST(TriangulateAlongCurve, RefusesTrianglesThatLieOverEachOther) {
    for (const unsigned seed : {121U, 918U}) {
        Array1<PlanPoint> grid = test::GridPoints(18);
        for (PlanPoint& p : grid) {
            const double angle = 0.001 * seed;
            const double x = p.x / 2;
            const double y = p.y / 2;
            p = {300 + x * std::cos(angle) - y * std::sin(angle),
                 200 + x * std::sin(angle) + y * std::cos(angle)};
        }
        const Array1<PlanPoint> points =
            Followed(test::Moved(test::RandomPoints(300, seed), -900, -900, 3), grid);
        TriangleList triangles(points.UpperBound());
        EXPECT_FALSE(TriangulateAlongCurve(points, triangles)) << seed;
    }
}

TEST(TriangulateQuickly, FallsBackToFileOrder) {
    const auto roadOf = [](const Array1<PlanPoint>& points) {
        TriangleList triangles(points.UpperBound());
        TriangleList plain(points.UpperBound());
        Road road{};
        EXPECT_EQ(TriangulateQuickly(points, triangles, {}, &road), InFileOrder(points, plain));
        EXPECT_EQ(NumbersOf(triangles), NumbersOf(plain));
        return road;
    };
    EXPECT_EQ(roadOf(test::RandomPoints(kLeastForCurve, 1)), Road::AlongCurve);
    EXPECT_EQ(roadOf(test::RandomPoints(kLeastForCurve - 1, 1)), Road::FileOrder);
    EXPECT_EQ(roadOf(test::CirclePoints(3000)), Road::FileOrder);
    EXPECT_EQ(roadOf(Followed({{3, 4}, {3, 4}}, test::RandomPoints(3000, 1))), Road::FileOrder);
    EXPECT_EQ(roadOf(test::Moved(test::RandomPoints(3000, 1), 0, 0, 1e200)), Road::FileOrder);
    Array1<PlanPoint> line(3000);
    for (Index i = 1; i <= 3000; ++i) {
        line[i] = {1.0 * i, 2.0 * i};
    }
    EXPECT_EQ(roadOf(line), Road::FileOrder);
}

// A row within three corners, then points over its middle that come nearer and nearer, along the
// curve as well: each takes the whole row over from the one before.
Array1<PlanPoint> RowThenApproach(Index count) {
    Array1<PlanPoint> points{{1000, 1000}, {5000, 1000}, {1000, 5000}};
    for (Index i = 0; i < count; ++i) {
        points.Append({2500 + 1000.0 * i / count, 1500});
    }
    for (Index i = 0; i < count; ++i) {
        points.Append({3000.1, 2900 - 1300.0 * i / count});
    }
    return points;
}

TEST(TriangulateQuickly, GoesInRoundsWhereEachPointChangesAllTriangles) {
    Array1<PlanPoint> points = RowThenApproach(2000);
    for (Index i = 10; i < 4000; i += 10) {
        points.Append(points[i]); // of equal points the first must still win
    }
    TriangleList triangles(points.UpperBound());
    Road road{};
    int reports = 0;
    const StopToken count([&reports](std::string_view, double) { ++reports; });
    EXPECT_EQ(TriangulateQuickly(points, triangles, count, &road), 0);
    EXPECT_EQ(road, Road::AlongCurve);
    EXPECT_LT(reports, 20) << "in rounds there is little to do";
    TriangleList plain(points.UpperBound());
    EXPECT_EQ(InFileOrder(points, plain), 0);
    EXPECT_EQ(NumbersOf(triangles), NumbersOf(plain));
    EXPECT_EQ(test::FaultOf(points, triangles), "");
}

TEST(Triangulate, CanBeStoppedWhileSinglePointsTakeLong) {
    const Array1<PlanPoint> points = RowThenApproach(2000);
    TriangleList triangles(points.UpperBound());
    Array1<Index> order(points.UpperBound());
    std::iota(order.begin(), order.end(), 1);
    int reports = 0;
    StopToken stopLater([&](std::string_view, double) {
        if (++reports == 10) {
            stopLater.RequestStop();
        }
    });
    EXPECT_EQ(modDelaunay2D::Triangulate(points, order, triangles,
                                         modDelaunay2D::StartRule::NearbyTriangle, stopLater),
              modDelaunay2D::Ierr::kStopped);
}

TEST(CurveOrder, KeepsNeighboursTogetherAndEveryPointOnce) {
    const Array1<PlanPoint> points = test::RandomPoints(4096, 6);
    const Array1<Index> order = CurveOrder(points, *ExtentOf(points));
    Array1<Index> sorted = order;
    std::sort(sorted.begin(), sorted.end());
    double length = 0;
    for (Index i = 1; i <= 4096; ++i) {
        ASSERT_EQ(sorted[i], i);
        const PlanPoint& p = points[order[i]];
        const PlanPoint& q = points[order[i == 1 ? 1 : i - 1]];
        length += std::hypot(p.x - q.x, p.y - q.y);
    }
    // Mean spacing is 13 units; in file order a step is 500.
    EXPECT_LT(length / 4096, 16);
}

} // namespace
} // namespace terravo

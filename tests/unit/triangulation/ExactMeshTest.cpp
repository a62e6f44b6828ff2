#include "triangulation/exact/ExactMesh.h"

#include "support/ExactCheck.h"
#include "support/PointClouds.h"
#include "triangulation/TriangulationCheck.h"
#include "triangulation/exact/CurveOrder.h"
#include "triangulation/exact/ExactTriangulation.h"
#include "triangulation/modDelaunay2D.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <set>
#include <span>

namespace terravo {
namespace {

namespace Ierr = modDelaunay2D::Ierr;
using test::NumbersOf;
using test::PointCloud;

Array1<Index> Numbers(Index count) {
    Array1<Index> numbers(count);
    std::iota(numbers.begin(), numbers.end(), 1);
    return numbers;
}

void CheckCloud(const PointCloud& cloud, Index pointsAStrip) {
    SCOPED_TRACE(cloud.name + ", " + std::to_string(cloud.points.UpperBound()));
    TriangleList triangles;
    ASSERT_EQ(TriangulateExactly(cloud.points, triangles), Ierr::kDone);
    ASSERT_EQ(test::ExactFaultOf(cloud.points, triangles), "");
    ASSERT_EQ(NumbersOf(triangles), NumbersOf(test::InsertedInFileOrder(cloud.points)));
    TriangleList joined;
    ASSERT_EQ(TriangulateExactly(cloud.points, joined, StopToken(), pointsAStrip), Ierr::kDone);
    ASSERT_EQ(test::ExactFaultOf(cloud.points, joined), "") << "of strips";
    ASSERT_EQ(NumbersOf(joined), NumbersOf(triangles)) << "of strips";
}

TEST(TriangulateExactly, GivesOneTriangulationOfEverySetWhateverTheRoad) {
    for (const Index count : {5, 9, 30, 150}) {
        for (Index seed = 1; seed <= 10; ++seed) {
            const auto random = static_cast<unsigned>(91 * seed);
            for (const PointCloud& cloud : test::CloudsOfEveryKind(count, random)) {
                CheckCloud(cloud, 2 + seed);
            }
            for (const PointCloud& cloud : test::HardClouds(count, random)) {
                CheckCloud(cloud, 2 + seed);
            }
        }
    }
}

TEST(TriangulateExactly, NumbersTrianglesInOneWayWhicheverThreadMakesThem) {
    const Array1<PlanPoint> points = test::RandomPoints(8 * kPointsAStrip, 3);
    TriangleList first;
    ASSERT_EQ(TriangulateExactly(points, first), Ierr::kDone);
    EXPECT_TRUE(IsTriangulation(points, first));
    TriangleList second;
    ASSERT_EQ(TriangulateExactly(points, second), Ierr::kDone);
    EXPECT_TRUE(std::equal(first.table.begin(), first.table.end(), second.table.begin(),
                           second.table.end(), [](const Triangle& t, const Triangle& u) {
                               return t.vertices == u.vertices && t.neighbours == u.neighbours;
                           }));
}

TEST(TriangulateExactly, ManagesAnOrderInWhichEachPointChangesAllTriangles) {
    Array1<PlanPoint> points = test::RowThenApproach(3000);
    for (Index i = 10; i < 4000; i += 10) {
        points.Append(points[i]); // of equal points the first must still win
    }
    int reports = 0;
    TriangleList triangles;
    const StopToken count([&reports](std::string_view, double) { ++reports; });
    EXPECT_EQ(TriangulateExactly(points, triangles, count), Ierr::kDone);
    EXPECT_LT(reports, 10) << "there is little to do";
    EXPECT_EQ(test::ExactFaultOf(points, triangles), "");
}

TEST(TriangulateExactly, TellsWhyThereAreNoTriangles) {
    TriangleList triangles;
    EXPECT_EQ(TriangulateExactly({}, triangles), Ierr::kAllCollinear);
    EXPECT_EQ(TriangulateExactly({{3, 4}, {3, 4}, {3, 4}}, triangles), Ierr::kAllCollinear);
    EXPECT_EQ(TriangulateExactly({{0, 0}, {1, 2}, {2, 4}, {1, 2}}, triangles), Ierr::kAllCollinear);
    EXPECT_EQ(TriangulateExactly({{0, 0}, {1, 0}, {0, 1e80}}, triangles), Ierr::kOutOfReach);
    EXPECT_EQ(triangles.count, 0);
    StopToken stop;
    stop.RequestStop();
    EXPECT_EQ(TriangulateExactly(test::RandomPoints(50000, 1), triangles, stop), Ierr::kStopped);
}

TEST(ExactMesh, KeepsConstrainedEdgesAndDividesThemWithPointsOnThem) {
    // The long diagonal of a flat quadrilateral, which gives way by itself.
    Array1<PlanPoint> points{{1, 1}, {9, 1}, {9, 3}, {1, 3}, {5, 2.5}, {5, 2}, {3, 1.5}};
    ExactMesh mesh(points, Numbers(points.UpperBound()));
    mesh.Begin(1, 2, 3);
    mesh.Constrain({1, 3}); // from 3 to 1
    for (Index i = 4; i <= points.UpperBound(); ++i) {
        mesh.Insert(i);
    }
    std::set<std::pair<Index, Index>> constrained;
    const TriangleList& triangles = mesh.Triangles();
    for (Index t = 1; t <= triangles.count; ++t) {
        for (int j = 1; j <= 3; ++j) {
            if (mesh.IsConstrained({t, j})) {
                constrained.insert(
                    std::minmax(triangles.Vertex(j, t), triangles.Vertex(NextEdge(j), t)));
            }
        }
    }
    EXPECT_EQ(constrained, (std::set<std::pair<Index, Index>>{{1, 7}, {6, 7}, {3, 6}}));
    for (Index i = 1; i <= points.UpperBound(); ++i) {
        const auto& corners = triangles.table[mesh.TriangleAt(i)].vertices;
        EXPECT_NE(std::find(corners.begin(), corners.end(), i), corners.end());
    }
}

TEST(CurveOrder, KeepsNeighboursTogetherAndEqualPointsSideBySide) {
    Array1<PlanPoint> points = test::RandomPoints(4096, 6);
    for (Index i = 1; i <= 100; ++i) {
        points.Append(points[7]); // more than a cell of the curve sorts plainly
    }
    Array1<Index> order = Numbers(points.UpperBound());
    SortAlongCurve(points, std::span(order.begin(), order.end()));
    Array1<Index> sorted = order;
    std::sort(sorted.begin(), sorted.end());
    EXPECT_EQ(sorted, Numbers(points.UpperBound()));
    double length = 0;
    for (Index i = 2; i <= order.UpperBound(); ++i) {
        const PlanPoint& p = points[order[i - 1]];
        const PlanPoint& q = points[order[i]];
        length += std::hypot(p.x - q.x, p.y - q.y);
        EXPECT_TRUE(!(p == q) || order[i - 1] < order[i]) << "the earliest first";
    }
    // Mean spacing is 13 units; in file order a step is 500.
    EXPECT_LT(length / order.UpperBound(), 16);
}

} // namespace
} // namespace terravo

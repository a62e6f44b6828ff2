#include "triangulation/modDelaunay2D.h"

#include "support/ExactCheck.h"
#include "support/PointClouds.h"

#include <gtest/gtest.h>

#include <numeric>

namespace terravo {
namespace {

using namespace modDelaunay2D;

struct Outcome {
    Index ierr = 0;
    TriangleList triangles;
};

Outcome Made(const Array1<PlanPoint>& points) {
    Outcome outcome{0, TriangleList(points.UpperBound())};
    Array1<Index> order(points.UpperBound());
    std::iota(order.begin(), order.end(), 1);
    const Array1<Index> given = order;
    outcome.ierr = Triangulate(points, order, outcome.triangles);
    EXPECT_EQ(order, given) << "the insertion order is not restored";
    return outcome;
}

TEST(Triangulate, TurnsTheFirstTriangleCounterClockwise) {
    const Outcome left = Made({{1, 1}, {5, 1}, {1, 4}});
    EXPECT_EQ(left.triangles.count, 1);
    EXPECT_EQ(left.triangles.table[1].vertices, (std::array<Index, 3>{1, 2, 3}));
    EXPECT_EQ(left.triangles.table[1].neighbours, (std::array<Index, 3>{-4, -5, -3}));
    const Outcome right = Made({{5, 1}, {1, 1}, {1, 4}});
    EXPECT_EQ(right.triangles.table[1].vertices, (std::array<Index, 3>{2, 1, 3}));
    EXPECT_EQ(right.triangles.table[1].neighbours, (std::array<Index, 3>{-4, -5, -3}));
}

TEST(Triangulate, ReportsPointsThatSpanNoPlane) {
    EXPECT_EQ(Made({}).ierr, Ierr::kDone);
    EXPECT_EQ(Made({{3, 4}}).ierr, Ierr::kAllCollinear);
    EXPECT_EQ(Made({{3, 4}, {5, 6}}).ierr, Ierr::kAllCollinear);
    EXPECT_EQ(Made({{1, 1}, {2, 2}, {3, 3}, {9, 9}}).ierr, Ierr::kAllCollinear);
}

TEST(Triangulate, EndsSilentlyWhenTheFirstTwoPointsDoNotCountAsDistinct) {
    const std::vector<Array1<PlanPoint>> sets{
        {{3, 4}, {3, 4}, {9, 1}},         // equal
        {{0, 5}, {3, 5}, {9, 1}},         // they differ where one is zero
        {{0, 0}, {3, 5}, {9, 1}},         // the origin of a local grid
        {{5, 1e-15}, {5, 3}, {9, 1}},     // within the tolerance of zero
        {{5, 5}, {5, 5 + 1e-14}, {9, 1}}, // too close together
    };
    for (const auto& points : sets) {
        const Outcome outcome = Made(points);
        EXPECT_EQ(outcome.ierr, Ierr::kDone);
        EXPECT_EQ(outcome.triangles.count, 0);
        EXPECT_EQ(outcome.triangles.table[1].vertices[0], 0) << "the tables are untouched";
    }
    EXPECT_EQ(Made({{0, 5}, {3, 6}, {9, 1}}).triangles.count, 1) << "y tells them apart";
}

TEST(Triangulate, HoldsItsInvariantsOnEveryKindOfPoints) {
    for (const Index count : {5, 12, 60, 700, 4000}) {
        for (const auto& cloud : test::CloudsOfEveryKind(count, 1234)) {
            SCOPED_TRACE(cloud.name + ", " + std::to_string(count));
            const Outcome outcome = Made(cloud.points);
            ASSERT_EQ(outcome.ierr, Ierr::kDone);
            ASSERT_EQ(test::ExactFaultOf(cloud.points, outcome.triangles), "");
        }
    }
}

TEST(Triangulate, CanBeStoppedWhileSinglePointsTakeLong) {
    const Array1<PlanPoint> points = test::RowThenApproach(2000);
    TriangleList triangles(points.UpperBound());
    Array1<Index> order(points.UpperBound());
    std::iota(order.begin(), order.end(), 1);
    int reports = 0;
    StopToken stopLater([&](std::string_view, double) {
        if (++reports == 10) {
            stopLater.RequestStop();
        }
    });
    EXPECT_EQ(Triangulate(points, order, triangles, stopLater), Ierr::kStopped);
}

TEST(WalkToPoint, TellsEveryPlaceOfAPointOnATriangle) {
    const Array1<PlanPoint> points{{0, 0}, {4, 0}, {0, 4}};
    const Outcome one = Made({{1, 1}, {5, 1}, {1, 5}});
    const struct {
        PlanPoint point;
        int location;
    } places[] = {
        {{1, 1}, 0}, {{2, 0}, 1},   {{2, 2}, 2},  {{0, 2}, 3},   {{0, 0}, 4},    {{4, 0}, 5},
        {{0, 4}, 6}, {{2, -1}, -1}, {{3, 3}, -2}, {{-1, 2}, -3}, {{-1, -1}, -3}, // beyond two
                                                                                 // edges: the one
                                                                                 // tested first
    };
    for (const auto& place : places) {
        const WalkResult found = WalkToPoint(place.point, points, one.triangles, 1);
        EXPECT_EQ(found.location, place.location) << place.point.x << ", " << place.point.y;
        EXPECT_EQ(found.triangle, 1);
        EXPECT_EQ(found.ierr, Ierr::kDone);
    }
}

TEST(WalkToPoint, ReportsFaultsInsteadOfFollowingThem) {
    const Array1<PlanPoint> points = test::RandomPoints(50, 3);
    Outcome outcome = Made(points);
    EXPECT_EQ(WalkToPoint({500, 300}, points, outcome.triangles, 0).ierr, Ierr::kIndexOutOfRange);
    EXPECT_EQ(WalkToPoint({500, 300}, points, outcome.triangles, 1000).ierr,
              Ierr::kIndexOutOfRange);

    TriangleList flat = outcome.triangles;
    flat.table[1].vertices = {1, 1, 2};
    EXPECT_EQ(WalkToPoint({-1e6, -1e6}, points, flat, 1).ierr, Ierr::kZeroDeterminant);

    // Two triangles that send the walk to each other for ever.
    TriangleList ring(3);
    const Array1<PlanPoint> corners{{0, 0}, {1, 0}, {0, 1}};
    ring.count = 2;
    ring.table[1] = {{1, 2, 3}, {2, 2, 2}};
    ring.table[2] = {{1, 2, 3}, {1, 1, 1}};
    const WalkResult lost = WalkToPoint({9, 9}, corners, ring, 1);
    EXPECT_EQ(lost.ierr, Ierr::kWalkRanOut);
    EXPECT_EQ(lost.location, 0);
    EXPECT_EQ(lost.triangle, 1) << "moved to last";
}

TEST(SwapEdges, ReportsAFullStackAndALinkThatDoesNotLeadBack) {
    // Two flat triangles whose shared edge must be swapped.
    const Array1<PlanPoint> points{{2, 1.1}, {1, 1}, {3, 1}, {2, 0.9}};
    TriangleList triangles(4);
    triangles.count = 2;
    triangles.table[1] = {{1, 2, 3}, {-6, 2, -3}};
    triangles.table[2] = {{4, 3, 2}, {-5, 1, -8}};
    {
        TriangleList copy = triangles;
        Workspace work(points, copy, 1);
        work.hullEdgeInto = {-5, -8, -3, -6};
        ASSERT_TRUE(work.stack.Push(1));
        EXPECT_EQ(SwapEdges(1, work), Ierr::kStackFull);
    }
    {
        TriangleList copy = triangles;
        copy.table[2].neighbours[1] = 2;
        Workspace work(points, copy, 4);
        ASSERT_TRUE(work.stack.Push(1));
        EXPECT_EQ(SwapEdges(1, work), Ierr::kBrokenLink);
    }
}

} // namespace
} // namespace terravo

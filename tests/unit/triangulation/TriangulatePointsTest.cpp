#include "triangulation/TriangulatePoints.h"

#include "support/ExactCheck.h"
#include "support/PointClouds.h"
#include "survey/PointFile.h"
#include "triangulation/TriangulationCheck.h"
#include "triangulation/modDelaunay2D.h"

#include <gtest/gtest.h>

namespace terravo {
namespace {

namespace Ierr = modDelaunay2D::Ierr;

Array1<PlanPoint> ReadPlan(const char* path) {
    PointSet points;
    EXPECT_FALSE(ReadPoints(path, points)) << path;
    Array1<PlanPoint> plan(points.count);
    for (Index i = 1; i <= points.count; ++i) {
        plan[i] = {points.x[i], points.y[i]};
    }
    return plan;
}

TEST(TriangulatePoints, TakesPlainArithmeticForSmallSetsAndExactSignsForLargeOnes) {
    for (const Index count : {kMostPlainPoints, kMostPlainPoints + 1}) {
        const Array1<PlanPoint> points = test::RandomPoints(count, 3);
        const TriangulationOutcome outcome = TriangulatePoints(points);
        EXPECT_EQ(outcome.ierr, Ierr::kDone);
        EXPECT_EQ(outcome.arithmetic,
                  count > kMostPlainPoints ? Arithmetic::Exact : Arithmetic::Plain);
        const TriangulationOutcome exact = TriangulatePoints(points, {.exact = true});
        EXPECT_EQ(exact.arithmetic, Arithmetic::Exact);
        EXPECT_EQ(test::NumbersOf(outcome.triangles), test::NumbersOf(exact.triangles));
    }
}

// Wherever file order ends in a fault or leaves triangles out, exact signs take over.
TEST(TriangulatePoints, EndsWithATriangulationOfEverySet) {
    int exact = 0;
    for (const Index count : {7, 40, 400}) {
        for (unsigned seed = 1; seed <= 8; ++seed) {
            for (const test::PointCloud& cloud : test::HardClouds(count, 31 * seed)) {
                SCOPED_TRACE(cloud.name + ", " + std::to_string(count));
                const TriangulationOutcome outcome = TriangulatePoints(cloud.points);
                ASSERT_EQ(outcome.ierr, Ierr::kDone);
                ASSERT_TRUE(IsTriangulation(cloud.points, outcome.triangles));
                if (outcome.arithmetic == Arithmetic::Exact) {
                    ++exact;
                    ASSERT_EQ(test::ExactFaultOf(cloud.points, outcome.triangles), "");
                }
            }
        }
    }
    EXPECT_GT(exact, 0) << "the data no longer reach the faults";
}

// Sets on which insertion in file order and other roads were found to differ.
TEST(TriangulatePoints, ManagesTheSetsThatWereHardBefore) {
    for (const char* path :
         {TERRAVO_TEST_DATA_DIR "/hard/e_k9a.dat", TERRAVO_TEST_DATA_DIR "/hard/far3.dat",
          TERRAVO_TEST_DATA_DIR "/hard/nr_5_8.dat", TERRAVO_TEST_DATA_DIR "/hard/chord.dat"}) {
        SCOPED_TRACE(path);
        const Array1<PlanPoint> points = ReadPlan(path);
        EXPECT_TRUE(IsTriangulation(points, TriangulatePoints(points).triangles));
        const TriangulationOutcome exact = TriangulatePoints(points, {.exact = true});
        EXPECT_EQ(test::ExactFaultOf(points, exact.triangles), "");
    }
}

TEST(TriangulatePoints, TriangulatesALocalGridUnlessTheRuleOfTheFirstPointsHolds) {
    for (const Index count : {3, 20000}) {
        Array1<PlanPoint> points{{0, 0}, {100, 0}, {0, 100}};
        while (points.UpperBound() < count) {
            points.Append({0.5 * points.UpperBound(), 7.0 * (points.UpperBound() % 90)});
        }
        const TriangulationOutcome outcome = TriangulatePoints(points);
        EXPECT_EQ(outcome.ierr, Ierr::kDone);
        EXPECT_EQ(outcome.arithmetic, Arithmetic::Exact);
        EXPECT_GT(outcome.triangles.count, 0);
        const TriangulationOutcome none = TriangulatePoints(points, {.keepsFirstPointsRule = true});
        EXPECT_EQ(none.ierr, Ierr::kDone);
        EXPECT_EQ(none.triangles.count, 0);
    }
}

TEST(TriangulatePoints, TellsWhyThereAreNoTriangles) {
    EXPECT_EQ(TriangulatePoints({}).ierr, Ierr::kDone);
    EXPECT_EQ(TriangulatePoints({{1, 1}}).ierr, Ierr::kAllCollinear);
    EXPECT_EQ(TriangulatePoints({{0, 0}, {0, 0}, {5, 5}, {9, 9}}).ierr, Ierr::kAllCollinear);
    EXPECT_EQ(TriangulatePoints({{1, 1}, {1e-70, 2}, {3, 1}}).ierr, Ierr::kOutOfReach);
    EXPECT_NE(modDelaunay2D::DescribeIerr(Ierr::kOutOfReach), "");
}

TEST(IsTriangulation, SeesWhatIsMissingOrLiesOver) {
    const Array1<PlanPoint> points{{1, 1}, {5, 1}, {5, 5}, {1, 5}, {3, 2}};
    const TriangleList sound = TriangulatePoints(points).triangles;
    EXPECT_TRUE(IsTriangulation(points, sound));
    TriangleList broken = sound;
    std::swap(broken.table[1].vertices[0], broken.table[1].vertices[1]);
    EXPECT_FALSE(IsTriangulation(points, broken)) << "turns right";
    broken = sound;
    broken.table[1].neighbours[0] = broken.table[1].neighbours[1];
    EXPECT_FALSE(IsTriangulation(points, broken)) << "links";
    Array1<PlanPoint> more = points;
    more.Append({4, 4});
    EXPECT_FALSE(IsTriangulation(more, sound)) << "a point is left out";
    more[6] = points[5];
    EXPECT_TRUE(IsTriangulation(more, sound)) << "a repeat";

    // A fan of six triangles about the origin that goes round twice.
    const Array1<PlanPoint> star{{0, 0}, {4, 0}, {-2, 3}, {-2, -3}, {3, 1}, {-3, 2}, {-1, -4}};
    TriangleList twice(7);
    twice.count = 6;
    for (Index t = 1; t <= 6; ++t) {
        const Index next = t % 6 + 1;
        const Index before = (t + 4) % 6 + 1;
        twice.table[t] = {{1, t + 1, next + 1}, {before, LinkToHullEdge({next, 2}), next}};
    }
    EXPECT_FALSE(IsTriangulation(star, twice));
}

} // namespace
} // namespace terravo

// Triangulations of hard points.
//
// Data: see FuzzPoints.h. Method: whatever insertion in file order comes to, every number in its
// tables is in its range. The program's own triangulation is one by exact signs, and exact signs
// give the same triangles along the curve and in file order.
#include "fuzz/FuzzPoints.h"
#include "support/ExactCheck.h"
#include "triangulation/TriangulatePoints.h"
#include "triangulation/TriangulationCheck.h"
#include "triangulation/exact/ExactTriangulation.h"
#include "triangulation/modDelaunay2D.h"

#include <numeric>

namespace terravo {
namespace {

using fuzz::Require;

Array1<Index> FileOrder(Index count) {
    Array1<Index> order(count);
    std::iota(order.begin(), order.end(), 1);
    return order;
}

void CheckTables(const TriangleList& triangles, Index pointCount) {
    Require(triangles.count >= 0 && triangles.count <= triangles.table.UpperBound(),
            "the count is within the table");
    for (Index t = 1; t <= triangles.count; ++t) {
        const auto& corners = triangles.table[t].vertices;
        for (const Index corner : corners) {
            Require(corner >= 1 && corner <= pointCount, "a corner is a point");
        }
        Require(corners[0] != corners[1] && corners[1] != corners[2] && corners[2] != corners[0],
                "the corners of a triangle are three points");
        for (const Index neighbour : triangles.table[t].neighbours) {
            const bool isTriangle = neighbour >= 1 && neighbour <= triangles.count;
            const Index across = neighbour < 0 ? HullEdgeFromLink(neighbour).triangle : 0;
            Require(isTriangle || (across >= 1 && across <= triangles.count),
                    "a neighbour is a triangle or a hull edge");
        }
    }
}

void InsertInFileOrder(const Array1<PlanPoint>& plan) {
    Array1<Index> order = FileOrder(plan.UpperBound());
    TriangleList triangles(plan.UpperBound());
    const Index ierr = modDelaunay2D::Triangulate(plan, order, triangles);
    Require(order == FileOrder(plan.UpperBound()), "the insertion order is restored");
    Require(ierr == 0 || !modDelaunay2D::DescribeIerr(ierr).empty(), "every error has a sentence");
    CheckTables(triangles, plan.UpperBound());
}

} // namespace
} // namespace terravo

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace terravo;
    fuzz::InputBytes bytes(data, size);
    const Array1<PlanPoint> plan = fuzz::PlanOf(fuzz::TakePoints(bytes));
    InsertInFileOrder(plan);

    const TriangulationOutcome made = TriangulatePoints(plan);
    Require(made.triangles.count == 0 || IsTriangulation(plan, made.triangles),
            "what is triangulated is a triangulation");
    TriangleList triangles;
    const Index ierr = TriangulateExactly(plan, triangles);
    Require((ierr == 0) == (made.triangles.count > 0), "exact signs manage what can be managed");
    if (ierr == 0) {
        CheckTables(triangles, plan.UpperBound());
        Require(test::NumbersOf(triangles) == test::NumbersOf(test::InsertedInFileOrder(plan)),
                "both roads give the same triangles");
    }
    return 0;
}

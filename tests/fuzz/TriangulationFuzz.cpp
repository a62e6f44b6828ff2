// Triangulations of hard points.
//
// Data: see FuzzPoints.h. Method: whatever the outcome, every number in the tables is in its range.
// Where the road along the curve calls its result certain, the triangles are sound and those that
// insertion in file order makes.
#include "fuzz/FuzzPoints.h"
#include "support/CheckTriangulation.h"
#include "triangulation/QuickRoad.h"

#include <algorithm>
#include <numeric>

namespace terravo {
namespace {

using fuzz::Require;
using modDelaunay2D::StartRule;

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

Index Triangulate(const Array1<PlanPoint>& plan, StartRule rule, TriangleList& triangles) {
    Array1<Index> order = FileOrder(plan.UpperBound());
    const Index ierr = modDelaunay2D::Triangulate(plan, order, triangles, rule);
    Require(order == FileOrder(plan.UpperBound()), "the insertion order is restored");
    Require(ierr == 0 || !modDelaunay2D::DescribeIerr(ierr).empty(), "every error has a sentence");
    CheckTables(triangles, plan.UpperBound());
    return ierr;
}

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

// Where four points lie on one circle, or a triangle is a sliver among large coordinates, the
// checker's own rounding errors show.
bool MayBeRounding(const std::string& fault) {
    return fault.ends_with("breaks the empty-circle rule") ||
           fault.ends_with("do not sum to the convex hull");
}

} // namespace
} // namespace terravo

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace terravo;
    fuzz::InputBytes bytes(data, size);
    const Array1<PlanPoint> plan = fuzz::PlanOf(fuzz::TakePoints(bytes));
    const Index count = plan.UpperBound();

    TriangleList fromLast(count);
    Triangulate(plan, StartRule::LastTriangle, fromLast);
    TriangleList fromNearby(count);
    const Index ierr = Triangulate(plan, StartRule::NearbyTriangle, fromNearby);

    TriangleList along(count);
    if (TriangulateAlongCurve(plan, along)) {
        CheckTables(along, count);
        Require(ierr == 0, "what is certain has no error in file order");
        Require(NumbersOf(along) == NumbersOf(fromNearby), "both roads give the same triangles");
        Require(NumbersOf(along) == NumbersOf(fromLast), "both start rules give them");
        const std::string fault = test::FaultOf(plan, along);
        Require(fault.empty() || MayBeRounding(fault), "what is certain is sound: " + fault);
    }
    return 0;
}

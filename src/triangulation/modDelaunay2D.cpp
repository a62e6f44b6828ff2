#include "triangulation/modDelaunay2D.h"

#include "triangulation/FirstTriangle.h"
#include "triangulation/Inserter.h"

#include <limits>
#include <utility>

namespace terravo::modDelaunay2D {
namespace {

// Each walk begins in the triangle made last.
Index InsertRemaining(Workspace& work, const Array1<Index>& order, const StopToken& stop) {
    Inserter inserter(work);
    const Index count = order.UpperBound();
    for (Index i = 4; i <= count; ++i) {
        const WalkResult place =
            WalkToPoint(work.coord[order[i]], work.coord, work.triangles, work.triangles.count);
        work.effort += 1 + std::int64_t{place.steps};
        // A walk that ran out leaves location 0: the point goes into the triangle it stopped in.
        if (place.ierr != Ierr::kDone && place.ierr != Ierr::kWalkRanOut) {
            return place.ierr;
        }
        Index ierr = inserter.MakeFan(order[i], place);
        if (ierr == Ierr::kDone) {
            ierr = SwapEdges(order[i], work);
        }
        if (ierr != Ierr::kDone) {
            return ierr;
        }
        if (work.ReportIsDue() &&
            !stop.GoesOn("triangulate", static_cast<double>(i) / static_cast<double>(count))) {
            return Ierr::kStopped;
        }
    }
    return Ierr::kDone;
}

} // namespace

std::string DescribeIerr(Index ierr) {
    switch (ierr) {
    case Ierr::kDone:
        return {};
    case Ierr::kStackFull:
        return "the stack of triangles to test is full";
    case Ierr::kAllCollinear:
        return "all points lie on one line";
    case Ierr::kWalkRanOut:
        return "the search for a point's triangle did not end";
    case Ierr::kZeroDeterminant:
        return "a triangle has no area (its corners are too nearly on one line)";
    case Ierr::kIndexOutOfRange:
        return "a point or triangle number is out of range";
    case Ierr::kBrokenLink:
        return "two neighbouring triangles disagree (points too nearly on one line)";
    case Ierr::kOverflow:
        return "the coordinates are too large to compute with";
    case Ierr::kStopped:
        return "the work was stopped";
    case Ierr::kOutOfReach:
        return "a coordinate is too large or too close to zero (its magnitude must be zero or from "
               "6.3E-61 to 1.8E+75)";
    default:
        return "unknown error";
    }
}

Index Triangulate(const Array1<PlanPoint>& coord, Array1<Index>& order, TriangleList& triangles,
                  const StopToken& stop) {
    const Index n = order.UpperBound();
    constexpr Index kMostPoints = std::numeric_limits<Index>::max() / 6 - 1;
    if (n < 2) {
        return n == 0 ? Ierr::kDone : Ierr::kAllCollinear;
    }
    if (n > kMostPoints || n > coord.UpperBound() || triangles.table.UpperBound() < 2 * n) {
        return Ierr::kIndexOutOfRange; // a hull link holds three times a triangle number
    }
    const FirstTriangle first = FindFirstTriangle(coord, order);
    if (!first.found) {
        return first.ierr;
    }
    std::swap(order[first.thirdPosition], order[3]);
    Workspace work(coord, triangles, n);
    MakeFirstTriangle(work, order[1], order[2], order[3], first.side);
    const Index ierr = InsertRemaining(work, order, stop);
    std::swap(order[first.thirdPosition], order[3]);
    return ierr;
}

} // namespace terravo::modDelaunay2D

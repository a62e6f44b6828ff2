#include "triangulation/modDelaunay2D.h"

#include "triangulation/FirstTriangle.h"
#include "triangulation/Inserter.h"
#include "triangulation/WalkAhead.h"

#include <limits>
#include <optional>
#include <utility>

namespace terravo::modDelaunay2D {
namespace {

// Where the walks start under StartRule::NearbyTriangle.
struct NearbyWalks {
    NearbyWalks(const Workspace& work, const Array1<Index>& order)
        : nearby(work.coord, work.triangles), ahead(work.coord, order, work.triangles, nearby) {}

    NearbyStart nearby;
    WalkAhead ahead;
};

// A walk from nearby that fails is repeated from the triangle made last, so that a set which the
// plain rule can handle never fails here.
WalkResult Locate(std::optional<NearbyWalks>& walks, Workspace& work, PlanPoint point, Index i) {
    const auto walkFrom = [&](Index start) {
        const WalkResult place = WalkToPoint(point, work.coord, work.triangles, start);
        work.effort += 1 + std::int64_t{place.steps};
        return place;
    };
    if (walks) {
        const WalkResult place = walkFrom(walks->ahead.StartFor(i));
        if (place.ierr == Ierr::kDone) {
            return place;
        }
    }
    return walkFrom(work.triangles.count);
}

Index InsertRemaining(Workspace& work, const Array1<Index>& order, StartRule start,
                      const StopToken& stop) {
    const Array1<PlanPoint>& coord = work.coord;
    Inserter inserter(work);
    std::optional<NearbyWalks> walks;
    if (start == StartRule::NearbyTriangle) {
        walks.emplace(work, order);
    }
    const Index count = order.UpperBound();
    for (Index i = 4; i <= count; ++i) {
        const PlanPoint& point = coord[order[i]];
        const WalkResult place = Locate(walks, work, point, i);
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
        if (walks) {
            walks->nearby.Remember(point, place.triangle);
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
    default:
        return "unknown error";
    }
}

Index Triangulate(const Array1<PlanPoint>& coord, Array1<Index>& order, TriangleList& triangles,
                  StartRule start, const StopToken& stop) {
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
    const Index ierr = InsertRemaining(work, order, start, stop);
    std::swap(order[first.thirdPosition], order[3]);
    return ierr;
}

} // namespace terravo::modDelaunay2D

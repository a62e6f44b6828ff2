// Delaunay triangulation of plan positions by incremental insertion.
//
// Data: a table of plan positions, an insertion order, and a TriangleList that the caller sizes and
// the routine fills. Method: points go in one at a time; each is found by a walk through the
// triangles made so far, the triangles about it become a fan, and edges that break the empty-circle
// rule are swapped, driven by a stack. Four points on one circle keep the diagonal that the
// insertion order produced.
#pragma once

#include "triangulation/TriangleList.h"
#include "util/StopToken.h"

#include <string>

namespace terravo::modDelaunay2D {

/// Outcome of a numeric routine. The positive codes are results of the method, the negative ones
/// faults of the arithmetic or of the tables, which must end the calling command.
namespace Ierr {
inline constexpr Index kDone = 0;
inline constexpr Index kStackFull = 8;
inline constexpr Index kAllCollinear = 225;
inline constexpr Index kWalkRanOut = 226; // of WalkToPoint only
inline constexpr Index kZeroDeterminant = -1;
inline constexpr Index kIndexOutOfRange = -2;
inline constexpr Index kBrokenLink = -3;
inline constexpr Index kOverflow = -4;
inline constexpr Index kStopped = -5;    // no fault: the work was asked to end
inline constexpr Index kOutOfReach = -6; // a coordinate that exact signs cannot take
} // namespace Ierr

/// One sentence for a code, without a full stop; empty for kDone.
std::string DescribeIerr(Index ierr);

/// Stack of triangles whose edge opposite the new point is still to be tested.
struct SwapStack {
    explicit SwapStack(Index capacity) : items(capacity) {}

    Array1<Index> items;
    Index top = 0;

    /// @return false when the stack is full; nothing is pushed then.
    bool Push(Index triangle) {
        if (top >= items.UpperBound()) {
            return false;
        }
        items[++top] = triangle;
        return true;
    }
};

inline constexpr std::int64_t kEffortStride = 131072;

/// What one triangulation works on: the caller's tables and the stores of this call.
struct Workspace {
    Workspace(const Array1<PlanPoint>& positions, TriangleList& list, Index stackCapacity)
        : coord(positions), triangles(list), stack(stackCapacity),
          hullEdgeInto(positions.UpperBound()) {}

    const Array1<PlanPoint>& coord;
    TriangleList& triangles;
    SwapStack stack;
    /// For each point on the hull, the link to the hull edge that ends there. It makes the list of
    /// hull edges readable in both directions, so that no change has to search for a predecessor.
    Array1<Index> hullEdgeInto;
    /// Points, steps of walks and swaps so far. In some orders one point takes as many swaps as
    /// there are points, so this and not the number of points says when a report is due.
    std::int64_t effort = 0;
    std::int64_t nextReport = kEffortStride;

    bool ReportIsDue() {
        if (effort < nextReport) {
            return false;
        }
        nextReport = effort + kEffortStride;
        return true;
    }
};

struct WalkResult {
    Index triangle = 0; // the last triangle examined
    int location = 0;   // 0 inside; 1..3 on that edge; 4..6 at vertex 1..3; -1..-3 beyond that edge
    Index ierr = Ierr::kDone;
    Index steps = 0; // triangles left behind
};

/// Walks from triangle to triangle towards a plan position.
/// @param start  number of a triangle, 1 <= start <= triangles.count.
/// @return location 0 with kWalkRanOut when the walk has not ended after as many steps as there
///         are triangles; the triangle is then the one moved to last. kZeroDeterminant, kOverflow
///         or kIndexOutOfRange on a fault.
WalkResult WalkToPoint(PlanPoint point, const Array1<PlanPoint>& coord,
                       const TriangleList& triangles, Index start);

struct VisibleRun {
    TriangleEdge first; // counter-clockwise along the hull
    TriangleEdge last;
    Index ierr = Ierr::kDone;
};

/// Finds the run of hull edges that a point outside the hull sees, that is, has strictly on its
/// left.
/// @param seen  one hull edge that the point sees; taken as visible without a test.
VisibleRun VisibleBoundaryEdges(PlanPoint point, const Workspace& work, TriangleEdge seen);

/// Restores the empty-circle rule about a new point.
/// @param m  the point just inserted; vertex 1 of every triangle on the stack.
/// @return kStackFull when a push would exceed the stack's capacity.
Index SwapEdges(Index m, Workspace& work);

/// Triangulates plan positions.
/// @param coord      positions of points 1..N.
/// @param order      a permutation of 1..N, the insertion order; restored before return.
/// @param triangles  sized for 2 * N by the caller; overwritten from triangle 1 upward. Vertices
///                   are counter-clockwise, neighbour entries as TriangleList says. Left untouched
///                   when the first two points do not count as distinct.
/// @return kDone, also without a triangle when the first two points do not count as distinct (a
///         coordinate counts only when both its values are off zero) or when there is no point;
///         kAllCollinear for points on one line or a single point; kStackFull; kStopped; or a
///         fault. After an error the tables hold the part made so far.
Index Triangulate(const Array1<PlanPoint>& coord, Array1<Index>& order, TriangleList& triangles,
                  const StopToken& stop = StopToken());

} // namespace terravo::modDelaunay2D

#include "triangulation/exact/ExactTriangulation.h"

#include "triangulation/exact/CurveOrder.h"
#include "triangulation/exact/ExactMesh.h"
#include "triangulation/modDelaunay2D.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <numeric>
#include <optional>
#include <utility>

namespace terravo {
namespace {

namespace Ierr = modDelaunay2D::Ierr;

constexpr std::int64_t kEffortStride = 131072; // between two looks at the wish to stop

// The places of a set: the points without repeats, along the curve.
struct Places {
    Array1<PlanPoint> coord;
    Array1<Index> fileNumber;
};

// Equal points lie side by side along the curve, the earliest first.
Places PlacesOf(const Array1<PlanPoint>& coord) {
    Places places;
    places.fileNumber = CurveOrder(coord);
    const auto end = std::unique(places.fileNumber.begin(), places.fileNumber.end(),
                                 [&coord](Index i, Index j) { return coord[i] == coord[j]; });
    const auto count = static_cast<Index>(end - places.fileNumber.begin());
    places.fileNumber.Resize(count);
    places.coord = Array1<PlanPoint>(count);
    for (Index c = 1; c <= count; ++c) {
        places.coord[c] = coord[places.fileNumber[c]];
    }
    return places;
}

// A point is in round r or a later one with a chance of 1 in 8^r; the latest round comes first.
// Each round goes along the curve. The points of the rounds before hold the triangles of a new one
// in place, so that it changes few of them, whatever the shape and order of the set.
Array1<Index> OrderInRounds(Index count) {
    constexpr int kBitsARound = 3;
    const int rounds = std::bit_width(static_cast<std::uint32_t>(count)) / kBitsARound;
    Array1<std::uint8_t> roundOf(count);
    Array1<Index> next(rounds + 1); // place of the next point of round r at r + 1
    std::uint64_t random = 0x9E3779B97F4A7C15U;
    for (std::uint8_t& round : roundOf) {
        random ^= random << 13U;
        random ^= random >> 7U;
        random ^= random << 17U;
        round = static_cast<std::uint8_t>(std::min(std::countr_zero(random) / kBitsARound, rounds));
        ++next[round + 1];
    }
    Index place = 1;
    for (Index r = rounds + 1; r >= 1; --r) {
        place += std::exchange(next[r], place);
    }
    Array1<Index> order(count);
    for (Index c = 1; c <= count; ++c) {
        order[next[roundOf[c] + 1]++] = c;
    }
    return order;
}

// The position of the first point in the order that is off the line through the first two; nothing
// when all points lie on one line.
std::optional<Index> FindThird(const ExactMesh& mesh, const Array1<Index>& order) {
    for (Index i = 3; i <= order.UpperBound(); ++i) {
        if (mesh.Turn(order[1], order[2], order[i]) != 0) {
            return i;
        }
    }
    return std::nullopt;
}

// Puts the points in; false when the work was stopped.
bool InsertAll(ExactMesh& mesh, const Array1<Index>& order, Index third, const StopToken& stop) {
    mesh.Begin(order[1], order[2], order[third]);
    const Index count = order.UpperBound();
    std::int64_t nextLook = kEffortStride;
    for (Index i = 3; i <= count; ++i) {
        if (i != third) {
            mesh.Insert(order[i]);
        }
        if (mesh.Effort() >= nextLook) {
            nextLook = mesh.Effort() + kEffortStride;
            if (!stop.GoesOn("triangulate", static_cast<double>(i) / count)) {
                return false;
            }
        }
    }
    return true;
}

void NumberByFile(const Array1<Index>& fileNumber, TriangleList& triangles) {
    triangles.table.Resize(triangles.count);
    for (Triangle& triangle : triangles.table) {
        for (Index& vertex : triangle.vertices) {
            vertex = fileNumber[vertex];
        }
    }
}

} // namespace

Index TriangulateExactly(const Array1<PlanPoint>& coord, TriangleList& triangles,
                         const StopToken& stop) {
    triangles = {};
    if (!std::all_of(coord.begin(), coord.end(),
                     [](const PlanPoint& p) { return IsWithinReach(p.x) && IsWithinReach(p.y); })) {
        return Ierr::kOutOfReach;
    }
    Places places = PlacesOf(coord);
    const Array1<Index> order = OrderInRounds(places.coord.UpperBound());
    ExactMesh mesh(std::move(places.coord), places.fileNumber);
    const std::optional<Index> third = FindThird(mesh, order);
    if (!third) {
        return Ierr::kAllCollinear;
    }
    if (!InsertAll(mesh, order, *third, stop)) {
        return Ierr::kStopped;
    }
    triangles = mesh.TakeTriangles();
    NumberByFile(places.fileNumber, triangles);
    return Ierr::kDone;
}

} // namespace terravo

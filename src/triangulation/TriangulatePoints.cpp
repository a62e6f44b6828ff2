#include "triangulation/TriangulatePoints.h"

#include "triangulation/FirstTriangle.h"
#include "triangulation/TriangulationCheck.h"
#include "triangulation/exact/ExactSigns.h"
#include "triangulation/exact/ExactTriangulation.h"
#include "triangulation/modDelaunay2D.h"

#include <algorithm>
#include <numeric>
#include <optional>

namespace terravo {
namespace {

namespace Ierr = modDelaunay2D::Ierr;

Array1<Index> FileOrder(Index count) {
    Array1<Index> order(count);
    std::iota(order.begin(), order.end(), 1);
    return order;
}

bool FirstPointsAreDistinct(const Array1<PlanPoint>& coord) {
    const modDelaunay2D::FirstTriangle first =
        modDelaunay2D::FindFirstTriangle(coord, FileOrder(coord.UpperBound()));
    return first.found || first.ierr != Ierr::kDone;
}

bool AreWithinReach(const Array1<PlanPoint>& coord) {
    return std::all_of(coord.begin(), coord.end(),
                       [](const PlanPoint& p) { return IsWithinReach(p.x) && IsWithinReach(p.y); });
}

// Nothing where plain arithmetic has failed.
std::optional<TriangulationOutcome> TriangulatePlainly(const Array1<PlanPoint>& coord,
                                                       const StopToken& stop) {
    Array1<Index> order = FileOrder(coord.UpperBound());
    TriangulationOutcome outcome;
    outcome.triangles = TriangleList(coord.UpperBound());
    outcome.ierr = modDelaunay2D::Triangulate(coord, order, outcome.triangles, stop);
    const bool isSound = outcome.ierr == Ierr::kStopped ||
                         (outcome.ierr == Ierr::kDone && outcome.triangles.count > 0 &&
                          IsTriangulation(coord, outcome.triangles));
    return isSound ? std::optional(std::move(outcome)) : std::nullopt;
}

} // namespace

TriangulationOutcome TriangulatePoints(const Array1<PlanPoint>& coord,
                                       const TriangulationWish& wish, const StopToken& stop) {
    const Index count = coord.UpperBound();
    if (count == 0) {
        return {};
    }
    if (!AreWithinReach(coord)) {
        return {Ierr::kOutOfReach, {}, Arithmetic::Plain};
    }
    if (count > 1 && wish.keepsFirstPointsRule && !wish.exact && !FirstPointsAreDistinct(coord)) {
        return {};
    }
    if (count <= kMostPlainPoints && !wish.exact) {
        if (std::optional<TriangulationOutcome> plain = TriangulatePlainly(coord, stop)) {
            return *std::move(plain);
        }
    }
    TriangulationOutcome outcome;
    outcome.arithmetic = Arithmetic::Exact;
    outcome.ierr = TriangulateExactly(coord, outcome.triangles, stop);
    return outcome;
}

} // namespace terravo

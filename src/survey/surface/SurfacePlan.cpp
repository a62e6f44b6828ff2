#include "survey/surface/SurfacePlan.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace terravo {

std::span<const SharedLine> LinesOf(const SurfacePlan& plan, LineRole role) {
    switch (role) {
    case LineRole::Breakline:
        return plan.breaklines;
    case LineRole::Boundary:
        return plan.boundary;
    case LineRole::Hole:
        return plan.holes;
    case LineRole::HeldSide:
        break;
    }
    return {};
}

SurfacePlan WithExcluded(SurfacePlan plan, const std::vector<Index>& points, bool excluded) {
    std::vector<Index> sorted = points;
    std::sort(sorted.begin(), sorted.end());
    sorted.erase(std::unique(sorted.begin(), sorted.end()), sorted.end());
    const std::vector<Index> before = std::exchange(plan.excluded, {});
    if (excluded) {
        std::set_union(before.begin(), before.end(), sorted.begin(), sorted.end(),
                       std::back_inserter(plan.excluded));
    } else {
        std::set_difference(before.begin(), before.end(), sorted.begin(), sorted.end(),
                            std::back_inserter(plan.excluded));
    }
    return plan;
}

} // namespace terravo

// What a user lays over the points of a survey: everything that shapes its surface and can be
// undone.
//
// Data: lines, rings, held sides, changed heights, excluded points, the longest side. Method: plain
// values; a line is shared by all plans that have it, so that a plan is copied at little cost and a
// history can keep one for every step.
#pragma once

#include "triangulation/constrained/SurfaceConstraints.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace terravo {

/// A line and where it comes from.
struct SurfaceLine {
    SpaceLine line;
    std::string source;        // file, "codes", or empty: drawn on the sheet
    std::int64_t fileLine = 0; // of its first vertex in the source, from 1; 0: not known

    bool operator==(const SurfaceLine&) const = default;
};

using SharedLine = std::shared_ptr<const SurfaceLine>;

/// A survey point to which the user gave another height.
struct ChangedHeight {
    Index point = 0; // number among all points
    double height = 0;

    bool operator==(const ChangedHeight&) const = default;
};

struct SurfacePlan {
    std::vector<SharedLine> breaklines;
    std::vector<SharedLine> boundary;
    std::vector<SharedLine> holes;
    std::vector<HeldSide> held;
    std::vector<ChangedHeight> heights; // ascending by point
    std::vector<Index> excluded;        // numbers among all points, ascending
    std::optional<double> longestSide;
    CrossingRule crossings;

    /// Whether there is more in it than excluded points and changed heights.
    [[nodiscard]] bool HasConstraints() const {
        return !breaklines.empty() || !boundary.empty() || !holes.empty() || !held.empty() ||
               longestSide.has_value();
    }

    /// Lines are the same when they are shared.
    bool operator==(const SurfacePlan&) const = default;
};

/// The lines of a role; none for held sides.
std::span<const SharedLine> LinesOf(const SurfacePlan& plan, LineRole role);

/// The plan with points left out, or taken back.
/// @param points  numbers among all points, in any order.
SurfacePlan WithExcluded(SurfacePlan plan, const std::vector<Index>& points, bool excluded);

} // namespace terravo

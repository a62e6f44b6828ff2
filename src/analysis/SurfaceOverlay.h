// The common parts of the triangles of two surfaces.
//
// Data: two surfaces from one origin; convex faces of three to six corners, each a corner of one
// of them or a crossing of two sides. Method: exact signs of the triangles' own corners decide what
// meets what (TriangleOverlap), so faces fit together without gaps; only the places of crossings
// are rounded, and each crossing is computed in one way whichever face asks.
#pragma once

#include "analysis/MeasuredSurface.h"
#include "analysis/TriangleOverlap.h"
#include "util/StopToken.h"

#include <array>
#include <cmath>
#include <functional>
#include <limits>
#include <span>

namespace terravo {

struct FaceCorner {
    PlanPoint place;   // relative to the origin
    double first = 0;  // height of the first surface
    double second = 0; // of the second
    OverlapCorner name;

    /// How far the first lies above the second. What rounding alone could have made is 0.
    [[nodiscard]] double Difference() const {
        constexpr double kRounding = 4 * std::numeric_limits<double>::epsilon();
        const double difference = first - second;
        const bool isNone =
            std::fabs(difference) <= kRounding * (std::fabs(first) + std::fabs(second));
        return isNone ? 0 : difference;
    }
};

struct OverlayFace {
    Index first = 0; // triangles
    Index second = 0;
    std::array<FaceCorner, kMostOverlapCorners> all;
    std::size_t count = 0; // 3 or more

    [[nodiscard]] std::span<const FaceCorner> Corners() const {
        return std::span(all).first(count);
    }
};

/// Into how many pieces the work is divided; it depends on the surface alone, so that sums by
/// pieces do not depend on the machine.
int OverlayPieces(const MeasuredSurface& first);

/// Called on several threads, for one piece on one of them.
using FaceSink = std::function<void(int piece, const OverlayFace& face)>;

/// Hands over every face, counter-clockwise; within a piece by ascending triangle of the first.
/// @param first, second  measured from one origin. Triangles that are not counter-clockwise have no
///                       part.
/// @param stop           stage "measure".
/// @return false when it was stopped.
bool OverlaySurfaces(const MeasuredSurface& first, const MeasuredSurface& second,
                     const FaceSink& sink, const StopToken& stop = StopToken());

} // namespace terravo

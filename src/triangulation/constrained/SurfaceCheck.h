// Whether a surface is what its lines asked for, by exact signs.
//
// Data: the points, what was to be laid into their triangulation, and what came of it. Method: the
// triangles are looked at one by one with their links and marks, then every line that was not left
// out is followed along constrained edges. The check shares nothing with the code that makes the
// surface but the signs.
#pragma once

#include "triangulation/constrained/ConstrainedSurface.h"

#include <string>

namespace terravo {

/// How the triangulation came to be into which the lines were laid.
enum class BaseArithmetic { Plain, Exact };

/// Checks that every triangle turns left, that links and marks agree on both sides of every edge,
/// that the hull is one convex ring, that no circle holds the point across an edge that is not
/// constrained (where plain arithmetic made the base: none certainly does), and that each line that
/// was not left out is a chain of constrained edges within four times the vertex tolerance, or the
/// rounding, of where it was given. Of a line without heights the parts within the hull count, but
/// not where rounding says what those are.
/// @return the first thing that does not hold, as a sentence, or an empty text.
std::string SurfaceFaultOf(const Array1<PlanPoint>& coord, const SurfaceConstraints& constraints,
                           const ConstrainedSurface& surface,
                           BaseArithmetic arithmetic = BaseArithmetic::Exact);

} // namespace terravo

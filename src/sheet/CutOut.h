// A line without the stretches that its labels take.
//
// Data: vertices on the paper, of a curve with their places on it; stretches as distances along the
// line. Method: the distance of every vertex from the beginning is added up once, and the rest of
// the line is copied stretch by stretch.
#pragma once

#include "sheet/SheetScene.h"

#include <span>
#include <vector>

namespace terravo {

/// Distances along a line. That of a closed one may pass its first vertex: `to` is then beyond its
/// length, or below `from`.
struct Stretch {
    double from = 0;
    double to = 0;
};

/// The curve that a line was before it was flattened, as in SheetCurve.h.
struct CurveOfLine {
    std::span<const SheetPoint> controls; // none: it was no curve
    std::span<const double> places;       // of the vertices of the line
};

/// Adds to the scene, as pieces, what is left of a line.
/// @param out  the stretches that are left out; they do not overlap. None: the line is added as it
///             is.
void AddWithout(std::span<const SheetPoint> line, bool closed, std::vector<Stretch> out,
                SheetScene& scene, const CurveOfLine& curve = {});

} // namespace terravo

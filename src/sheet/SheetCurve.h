// Curves on the paper.
//
// Data: a chain of cubic pieces as its control points, three a piece and one more; a place along it
// is one number, that of the piece from 0 with the parameter within it behind the point. A closed
// curve ends where it begins, and places beyond its end go round it once more. Method: a curve is
// flattened once, at equal steps of the parameter, and everything is clipped and cut as straight
// lines; because each vertex knows its place, the same cuts divide the curve itself.
#pragma once

#include "sheet/SheetScene.h"

#include <cstddef>
#include <span>
#include <vector>

namespace terravo {

/// How many cubics have these controls.
inline std::size_t CubicsOf(std::span<const SheetPoint> controls) {
    return controls.empty() ? 0 : (controls.size() - 1) / 3;
}

/// Leaves out the cubics that stay near the last vertex that is kept: those behind them begin
/// there. A curve that is near its beginning as a whole stays as it is.
/// @param near  millimetres, in x and in y.
void LeaveOutTiny(std::vector<SheetPoint>& controls, double near);

/// A curve as straight lines.
struct FlatCurve {
    std::vector<SheetPoint> points; // a closed one does not repeat the first
    std::vector<double> places;     // of each point

    void Clear() {
        points.clear();
        places.clear();
    }
};

/// Appends the vertices of a curve.
/// @param tolerance  > 0: at no parameter are curve and straight lines farther from each other.
void Flatten(std::span<const SheetPoint> controls, bool closed, double tolerance, FlatCurve& flat);

/// Appends the controls of a stretch, cubics cut in two where it begins and ends; none where it has
/// no extent.
/// @param from  0 <= from < to <= from + the number of cubics.
void AppendStretch(std::span<const SheetPoint> controls, double from, double to,
                   std::vector<SheetPoint>& out);

/// Whether a cubic is no farther than this from the straight line between its ends, and goes
/// straight ahead on it.
bool IsStraight(std::span<const SheetPoint, 4> cubic, double near);

} // namespace terravo

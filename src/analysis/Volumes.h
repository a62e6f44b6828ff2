// Earth to be moved: between a surface and a plane, and between two surfaces.
//
// Data: surfaces. Method: over each triangle, or over each common part of two, the difference in
// height is a plane; where that has both signs the part is divided along its zero line. Closed
// forms, summed with compensation.
#pragma once

#include "analysis/MeasuredSurface.h"
#include "util/StopToken.h"

namespace terravo {

struct VolumeFigures {
    double cut = 0;      // cubic data units, where the (first) surface lies above the other
    double fill = 0;     // where it lies below
    double net = 0;      // cut - fill, to the last bit
    double planArea = 0; // of what was compared, square data units
    double cutArea = 0;  // in plan
    double fillArea = 0;
};

/// Between a surface and the horizontal plane at a height.
VolumeFigures VolumeAgainst(const MeasuredSurface& surface, double datum);

/// Between two surfaces where both are; from one to itself exactly 0, from the second to the first
/// the very same figures with cut and fill exchanged.
/// @param first, second  measured from one origin.
/// @param stop           stage "measure"; when it was stopped the figures are those of a part.
VolumeFigures VolumeBetween(const MeasuredSurface& first, const MeasuredSurface& second,
                            const StopToken& stop = StopToken());

} // namespace terravo

// Whether smooth lines are what they promise: an examination that shares nothing with their making
// but the signs.
//
// Data: the surface and the lines made straight. Method: the straight pieces are looked at in the
// cells of a grid, any two that share one by exact signs; the height of every place is read off the
// surface anew.
#pragma once

#include "contour/smoothing/SmoothContours.h"

#include <string>

namespace terravo {

/// Looks whether lines, made straight, cross or touch each other or themselves, leave the surface,
/// or leave their height by more than SmoothSet::worst. What lies in triangles no wider than the
/// last digits of their coordinates is not looked at: there no place can be told from an edge.
/// @param tolerance  of the straight pieces, as for FlattenContours.
/// @param stop       stage "examine".
/// @return the first thing that does not hold, as a sentence with its place, or an empty text; one
///         that was stopped has found nothing.
std::string SmoothFaultOf(const SmoothingSource& source, const SmoothSet& smooth, double tolerance,
                          const StopToken& stop = StopToken());

/// The same of lines that are straight already, with the digits that they have; heights are read
/// along their pieces, too.
/// @param origin   of the smooth lines that they were made of.
/// @param allowed  how far they may leave their height.
std::string StraightFaultOf(const SmoothingSource& source, const ContourSet& lines,
                            PlanPoint origin, const SmoothError& allowed,
                            const StopToken& stop = StopToken());

} // namespace terravo

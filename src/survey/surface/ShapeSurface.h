// The surface of a survey with lines laid into it and triangles hidden.
//
// Data: the points in use, their triangulation, the plan. Method: lines first, then what lies
// outside the rings, then long sides at the rim. The points that lines add come behind the others,
// so that a number means the same point with and without lines.
#pragma once

#include "survey/PointSet.h"
#include "survey/surface/SurfacePlan.h"
#include "triangulation/constrained/VisibleSurface.h"
#include "util/StopToken.h"

#include <optional>
#include <vector>

namespace terravo {

/// What a summary tells of a surface.
struct SurfaceFigures {
    Index visibleTriangles = 0;
    Index hiddenTriangles = 0;
    std::int64_t constrainedEdges = 0;
    std::int64_t crossings = 0;
    double planArea = 0; // of the visible triangles
    Index rings = 0;     // round the visible triangles
};

struct ShapedSurface {
    /// Those in use, then those that lines have added; bounded by the visible triangles, where
    /// there are any.
    PointSet points;
    Index surveyed = 0;     // the number of the former
    ConstrainedSurface all; // with the triangles that are hidden
    HiddenTriangles hidden;
    TriangleList visible;
    EdgeMarks visibleMarks; // constrained edges of the visible triangles
    SurfacePlan plan;       // that it was made by
};

/// A part of a line that runs along visible triangles.
struct VisibleCourse {
    LineRole role = LineRole::Breakline;
    std::size_t number = 0;    // of the line, among those of its role
    std::vector<Index> points; // a closed one repeats the first
};

/// @param points  in use.
/// @param base    their triangulation.
/// @param plan    of which the lines, the held sides and the longest side are taken.
/// @return nothing when it was stopped.
std::optional<ShapedSurface> ShapeSurface(const PointSet& points, const TriangleList& base,
                                          const SurfacePlan& plan,
                                          const StopToken& stop = StopToken());

/// The lines of a plan as the surface takes them.
SurfaceConstraints ConstraintsOf(const SurfacePlan& plan);

/// The places of points 1..count.
Array1<PlanPoint> PlacesOf(const PointSet& points);

/// The sum of the areas of triangles in plan, square data units.
double PlanArea(const PointSet& points, const TriangleList& triangles);

/// The visible parts of all lines of a role, in the order of the lines.
std::vector<VisibleCourse> VisibleCourses(const ShapedSurface& surface, LineRole role);

SurfaceFigures FiguresOf(const ShapedSurface& surface);

} // namespace terravo

// Plan positions of many kinds to triangulate: scattered, regular, repeated, national-grid sized.
//
// All are seeded, so a failure comes back. The order of the points is the insertion order.
#pragma once

#include "triangulation/TriangleList.h"

#include <string>
#include <vector>

namespace terravo::test {

struct PointCloud {
    std::string name;
    Array1<PlanPoint> points;
};

Array1<PlanPoint> RandomPoints(Index count, unsigned seed);
/// side x side points, row by row.
Array1<PlanPoint> GridPoints(Index side);
Array1<PlanPoint> Shuffled(Array1<PlanPoint> points, unsigned seed);
/// Parallel lines walked to and fro, points a little off each line.
Array1<PlanPoint> SurveyLines(Index count, unsigned seed);
/// Every third point repeats an earlier one.
Array1<PlanPoint> WithRepeats(Array1<PlanPoint> points, unsigned seed);
Array1<PlanPoint> Moved(Array1<PlanPoint> points, double dx, double dy, double scale);
/// Equally spaced on a circle, rounded to doubles.
Array1<PlanPoint> CirclePoints(Index count);

/// Turned about (3000, 2000) by an angle in radians.
Array1<PlanPoint> Turned(Array1<PlanPoint> points, double angle);
Array1<PlanPoint> RoundedTo(double step, Array1<PlanPoint> points);
Array1<PlanPoint> Followed(Array1<PlanPoint> points, const Array1<PlanPoint>& more);
/// A row within three corners, then points over its middle that come nearer and nearer: each of
/// them changes all triangles of the row. 2 * count + 3 points.
Array1<PlanPoint> RowThenApproach(Index count);

/// Sets of every kind above with about `count` points each.
std::vector<PointCloud> CloudsOfEveryKind(Index count, unsigned seed);

/// Sets on which single decisions are hard: lattices that are no lattice in doubles, circles,
/// parabolas, collinear runs, clusters, flat hulls.
std::vector<PointCloud> HardClouds(Index count, unsigned seed);

} // namespace terravo::test

#include "contour/ContourSet.h"

#include "contour/ContourRidges.h"
#include "contour/ContourTracer.h"
#include "contour/LevelTriangles.h"

namespace terravo {

std::optional<ContourSet> MakeContourSet(const PointSet& points, const TriangleList& triangles,
                                         const LevelSet& levels, const StopToken& stop,
                                         Repeats repeats) {
    const Index n = levels.UpperBound();
    ContourSet contours(n);
    if (n == 0) {
        return contours;
    }
    LevelTriangles reached(points, triangles, levels);
    ContourTracer tracer(points, triangles);
    ContourLineBuilder lines(repeats);
    for (Index k = 1; k <= n; ++k) {
        lines.Begin(levels[k].value);
        tracer.Trace(levels[k].value, reached.Of(k), lines);
        if (repeats == Repeats::LeaveOut) {
            TakeRidgesApart(lines);
        }
        contours[k] = lines.Level();
        if (!stop.GoesOn("contour", static_cast<double>(k) / n)) {
            return std::nullopt;
        }
    }
    return contours;
}

EdgeEnds EndsOf(const PointSet& points, const TriangleList& triangles, TriangleEdge edge) {
    const Index from = triangles.Vertex(edge.edge, edge.triangle);
    const Index to = triangles.Vertex(NextEdge(edge.edge), edge.triangle);
    return points.z[from] < points.z[to] ? EdgeEnds{from, to} : EdgeEnds{to, from};
}

} // namespace terravo

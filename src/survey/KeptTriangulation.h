// The triangulation of one point set, made once and kept until the points change.
//
// Data: the triangles, the outcome and a few counts about them. Method: every drawing and the
// hand-over of triangles ask here; only the first one after a load pays.
#pragma once

#include "survey/PointSet.h"
#include "triangulation/modDelaunay2D.h"

namespace terravo {

class KeptTriangulation {
public:
    struct Result {
        Index ierr = 0; // of modDelaunay2D::Triangulate
        TriangleList triangles;
    };

    /// The triangulation of the points, made now when there is none. One that was stopped is not
    /// kept.
    const Result& For(const PointSet& points, const ProgressCallback& progress = {});

    /// Forgets the result. To be called whenever the points change.
    void Reset();

private:
    bool made_ = false;
    Result result_;
};

/// Number of points that no triangle has as a corner: repeats, and all of them without triangles.
Index CountUnusedPoints(const PointSet& points, const TriangleList& triangles);

/// Number of hull edges.
Index CountHullEdges(const TriangleList& triangles);

} // namespace terravo

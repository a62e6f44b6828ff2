// The survey at work: its points and what is made of them.
//
// Data: the point set, its triangulation, and a number that grows with every change. Method: the
// only way to change the points is through here, so what was made of the points before can never be
// taken for what belongs to those of now. The triangulation is made when it is first asked for.
#pragma once

#include "survey/PointSet.h"
#include "triangulation/TriangulatePoints.h"
#include "util/StopToken.h"

#include <cstdint>
#include <string>

namespace terravo {

class Survey {
public:
    Survey() = default;
    explicit Survey(PointSet points) : points_(std::move(points)) {}

    [[nodiscard]] const PointSet& Points() const { return points_; }

    /// Grows with every change: a consumer that kept it knows whether what it has is
    /// stale.
    [[nodiscard]] std::uint64_t Version() const { return version_; }

    /// Makes these the points of the survey.
    /// @param wish  how they are to be triangulated.
    void Replace(PointSet points, const TriangulationWish& wish = {});

    /// Hands the points out, so that a reader can fill the same arrays again, and leaves the survey
    /// without points.
    [[nodiscard]] PointSet Take();

    /// The folder that file dialogs start in; see PointSet.
    void RememberFolder(std::string folder) { points_.sourceFolder = std::move(folder); }

    /// How the points are to be triangulated from now on.
    void SetWish(const TriangulationWish& wish);
    [[nodiscard]] const TriangulationWish& Wish() const { return wish_; }

    /// The triangulation of the points, made now when there is none. One that was stopped is not
    /// kept. The reference holds until the points change.
    const TriangulationOutcome& Triangulation(const StopToken& stop = StopToken()) const;
    /// The triangulation when it has been made, else null: for a glance that must not take long.
    [[nodiscard]] const TriangulationOutcome* KnownTriangulation() const {
        return made_ ? &outcome_ : nullptr;
    }

private:
    void Changed();

    PointSet points_;
    TriangulationWish wish_;
    std::uint64_t version_ = 0;
    mutable bool made_ = false;
    mutable TriangulationOutcome outcome_;
};

/// Number of points that no triangle has as a corner: repeats, and all of them without triangles.
Index CountUnusedPoints(const PointSet& points, const TriangleList& triangles);

/// Number of hull edges.
Index CountHullEdges(const TriangleList& triangles);

} // namespace terravo

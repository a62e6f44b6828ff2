// The survey at work: its points and what is made of them.
//
// Data: the points as they were read, the plan that the user lays over them, the points in use,
// their triangulation, the surface, and a number that grows with every change. Method: the only way
// to change anything is through here, so what was made of the points before can never be taken for
// what belongs to those of now. Triangulation and surface are made when they are first asked for.
// While the plan leaves the points alone there is one set; else the points in use are a copy,
// numbered from 1 like every other set. Without constraints the surface is the triangulation
// itself.
#pragma once

#include "survey/PointSet.h"
#include "survey/surface/ShapeSurface.h"
#include "survey/surface/SurfacePlan.h"
#include "triangulation/TriangulatePoints.h"
#include "util/StopToken.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace terravo {

/// What everything is drawn, written and measured from. It holds until the survey changes.
struct ShownSurface {
    Index ierr = 0; // modDelaunay2D::Ierr
    Arithmetic arithmetic = Arithmetic::Plain;
    const PointSet& points;        // those in use, then those that lines have added
    const TriangleList& triangles; // the visible ones; their links run along the visible outline
    const ShapedSurface* shaped = nullptr; // where the plan has constraints

    /// How many of the points are of the survey.
    [[nodiscard]] Index SurveyedPoints() const {
        return shaped == nullptr ? points.count : shaped->surveyed;
    }
};

class Survey {
public:
    Survey() = default;
    explicit Survey(PointSet points) : points_(std::move(points)) {}

    /// The points in use: those that were read, without the excluded ones, with changed heights.
    [[nodiscard]] const PointSet& Points() const { return points_; }

    /// The points as they were read.
    [[nodiscard]] const PointSet& AllPoints() const { return some_ ? some_->all : points_; }

    /// What the user has laid over the points.
    [[nodiscard]] const SurfacePlan& Plan() const { return plan_; }
    /// Lays another plan over the points; true when that changed something. What the change does
    /// not touch, such as the triangulation when only heights change, is kept.
    /// @param plan  whose point numbers are numbers among all points.
    bool SetPlan(SurfacePlan plan);

    /// Leaves points out of use, or takes them back; true when that changed something.
    /// @param points  numbers among all points.
    bool SetExcluded(const std::vector<Index>& points, bool excluded);
    /// Of a number among all points.
    [[nodiscard]] bool IsExcluded(Index point) const;
    /// Numbers among all points, ascending.
    [[nodiscard]] const std::vector<Index>& ExcludedPoints() const { return plan_.excluded; }
    /// The number among all points of a point in use.
    [[nodiscard]] Index NumberAmongAll(Index pointInUse) const {
        return some_ ? some_->numbers[static_cast<std::size_t>(pointInUse) - 1] : pointInUse;
    }

    /// Grows with every change: a consumer that kept it knows whether what it has is
    /// stale.
    [[nodiscard]] std::uint64_t Version() const { return version_; }

    /// Grows when there are other points, or they are to be triangulated otherwise; not with the
    /// plan.
    [[nodiscard]] std::uint64_t PointsRevision() const { return pointsRevision_; }

    /// Makes these the points of the survey, all of them in use.
    /// @param wish  how they are to be triangulated.
    void Replace(PointSet points, const TriangulationWish& wish = {});

    /// Hands the points out, so that a reader can fill the same arrays again, and leaves the survey
    /// without points.
    [[nodiscard]] PointSet Take();

    /// The folder that file dialogs start in; see PointSet.
    void RememberFolder(const std::string& folder);

    /// How the points are to be triangulated from now on.
    void SetWish(const TriangulationWish& wish);
    [[nodiscard]] const TriangulationWish& Wish() const { return wish_; }

    /// The triangulation of the points in use, without any constraint, made now when there is none.
    /// One that was stopped is not kept. The reference holds until the points change.
    const TriangulationOutcome& Triangulation(const StopToken& stop = StopToken()) const;
    /// The triangulation when it has been made, else null: for a glance that must not take long.
    [[nodiscard]] const TriangulationOutcome* KnownTriangulation() const {
        return made_ ? &outcome_ : nullptr;
    }

    /// The surface, made now when there is none. One that was stopped is not kept and has no
    /// triangles.
    [[nodiscard]] ShownSurface Surface(const StopToken& stop = StopToken()) const;
    /// The points in use; where there are constraints the corners of the surface, whose bounds are
    /// those of what is visible.
    [[nodiscard]] const PointSet& ShownPoints(const StopToken& stop = StopToken()) const {
        return plan_.HasConstraints() ? Surface(stop).points : points_;
    }
    /// The surface when it has been made.
    [[nodiscard]] std::optional<ShownSurface> KnownSurface() const;

private:
    // What there is while the plan changes the points.
    struct Altered {
        PointSet all;
        std::vector<Index> numbers; // of the points in use, among all
    };

    void TakeFromPlan();
    void Forget();
    [[nodiscard]] ShownSurface View() const;

    PointSet points_; // in use
    std::optional<Altered> some_;
    SurfacePlan plan_;
    TriangulationWish wish_;
    std::uint64_t version_ = 0;
    std::uint64_t pointsRevision_ = 0;
    mutable bool made_ = false;
    mutable TriangulationOutcome outcome_;
    mutable std::optional<ShapedSurface> shaped_; // where there are constraints
};

/// Number of points 1..count that no triangle has as a corner: repeats, those in hidden triangles
/// alone, and all of them without triangles.
Index CountUnusedPoints(Index count, const TriangleList& triangles);

/// Number of hull edges.
Index CountHullEdges(const TriangleList& triangles);

} // namespace terravo

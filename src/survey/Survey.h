// The survey at work: its points and what is made of them.
//
// Data: the points as they were read, those of them in use, the triangulation of these, and a
// number that grows with every change. Method: the only way to change the points is through here,
// so what was made of the points before can never be taken for what belongs to those of now. The
// triangulation is made when it is first asked for. While no point is excluded there is one set;
// else the points in use are a copy, numbered from 1 like every other set.
#pragma once

#include "survey/PointSet.h"
#include "triangulation/TriangulatePoints.h"
#include "util/StopToken.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace terravo {

class Survey {
public:
    Survey() = default;
    explicit Survey(PointSet points) : points_(std::move(points)) {}

    /// The points in use: those that were read, without the excluded ones.
    [[nodiscard]] const PointSet& Points() const { return points_; }

    /// The points as they were read.
    [[nodiscard]] const PointSet& AllPoints() const { return some_ ? some_->all : points_; }

    /// Leaves points out of use, or takes them back; true when that changed something.
    /// @param points  numbers among all points.
    bool SetExcluded(const std::vector<Index>& points, bool excluded);
    /// Of a number among all points.
    [[nodiscard]] bool IsExcluded(Index point) const {
        return some_ && some_->isExcluded[point] != 0;
    }
    /// Numbers among all points, ascending.
    [[nodiscard]] std::vector<Index> ExcludedPoints() const;
    /// The number among all points of a point in use.
    [[nodiscard]] Index NumberAmongAll(Index pointInUse) const {
        return some_ ? some_->numbers[static_cast<std::size_t>(pointInUse) - 1] : pointInUse;
    }

    /// Grows with every change: a consumer that kept it knows whether what it has is
    /// stale.
    [[nodiscard]] std::uint64_t Version() const { return version_; }

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

    /// The triangulation of the points, made now when there is none. One that was stopped is not
    /// kept. The reference holds until the points change.
    const TriangulationOutcome& Triangulation(const StopToken& stop = StopToken()) const;
    /// The triangulation when it has been made, else null: for a glance that must not take long.
    [[nodiscard]] const TriangulationOutcome* KnownTriangulation() const {
        return made_ ? &outcome_ : nullptr;
    }

private:
    // What there is while points are excluded.
    struct Exclusion {
        PointSet all;
        Array1<char> isExcluded;
        std::vector<Index> numbers; // of the points in use, among all
    };

    void Changed();

    PointSet points_; // in use
    std::optional<Exclusion> some_;
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

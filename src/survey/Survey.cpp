#include "survey/Survey.h"

#include "survey/PointSubset.h"
#include "triangulation/modDelaunay2D.h"

#include <algorithm>
#include <utility>

namespace terravo {

void Survey::Replace(PointSet points, const TriangulationWish& wish) {
    some_.reset();
    plan_ = {};
    points_ = std::move(points);
    wish_ = wish;
    ++pointsRevision_;
    Forget();
}

PointSet Survey::Take() {
    some_.reset();
    plan_ = {};
    PointSet points = std::exchange(points_, {});
    points_.sourceFolder = points.sourceFolder;
    ++pointsRevision_;
    Forget();
    return points;
}

void Survey::RememberFolder(const std::string& folder) {
    points_.sourceFolder = folder;
    if (some_) {
        some_->all.sourceFolder = folder;
    }
}

bool Survey::IsExcluded(Index point) const {
    return std::binary_search(plan_.excluded.begin(), plan_.excluded.end(), point);
}

bool Survey::SetExcluded(const std::vector<Index>& points, bool excluded) {
    return SetPlan(WithExcluded(plan_, points, excluded));
}

bool Survey::SetPlan(SurfacePlan plan) {
    if (plan == plan_) {
        return false;
    }
    const bool sameExcluded = plan.excluded == plan_.excluded;
    const bool sameHeights = plan.heights == plan_.heights;
    plan_ = std::move(plan);
    if (!sameExcluded || !sameHeights) {
        TakeFromPlan();
    }
    if (sameExcluded) { // no place has changed
        ++version_;
        shaped_.reset();
    } else {
        Forget();
    }
    return true;
}

// Makes the points in use from all points.
void Survey::TakeFromPlan() {
    PointSet all = some_ ? std::move(some_->all) : std::move(points_);
    some_.reset();
    if (plan_.excluded.empty() && plan_.heights.empty()) {
        points_ = std::move(all);
        return;
    }
    std::vector<Index> numbers;
    auto excluded = plan_.excluded.begin();
    for (Index i = 1; i <= all.count; ++i) {
        if (excluded != plan_.excluded.end() && *excluded == i) {
            ++excluded;
        } else {
            numbers.push_back(i);
        }
    }
    points_ = PointsAt(all, numbers);
    for (const ChangedHeight& height : plan_.heights) {
        const auto found = std::lower_bound(numbers.begin(), numbers.end(), height.point);
        if (found != numbers.end() && *found == height.point) {
            points_.z[static_cast<Index>(found - numbers.begin()) + 1] = height.height;
        }
    }
    points_.extentZ = {};
    for (Index i = 1; i <= points_.count; ++i) {
        points_.extentZ.Include(points_.z[i]);
    }
    some_ = Altered{std::move(all), std::move(numbers)};
}

void Survey::SetWish(const TriangulationWish& wish) {
    if (!(wish == wish_)) {
        wish_ = wish;
        ++pointsRevision_;
        Forget();
    }
}

void Survey::Forget() {
    ++version_;
    made_ = false;
    outcome_ = {};
    shaped_.reset();
}

const TriangulationOutcome& Survey::Triangulation(const StopToken& stop) const {
    if (made_) {
        return outcome_;
    }
    outcome_ = TriangulatePoints(PlacesOf(points_), wish_, stop);
    made_ = outcome_.ierr != modDelaunay2D::Ierr::kStopped;
    return outcome_;
}

ShownSurface Survey::View() const {
    if (shaped_) {
        return {outcome_.ierr, outcome_.arithmetic, shaped_->points, shaped_->visible, &*shaped_};
    }
    return {outcome_.ierr, outcome_.arithmetic, points_, outcome_.triangles, nullptr};
}

ShownSurface Survey::Surface(const StopToken& stop) const {
    const TriangulationOutcome& made = Triangulation(stop);
    if (!plan_.HasConstraints() || made.triangles.count == 0) {
        return View();
    }
    if (!shaped_) {
        shaped_ = ShapeSurface(points_, made.triangles, plan_, stop);
    }
    if (!shaped_) {
        static const TriangleList kNone;
        return {modDelaunay2D::Ierr::kStopped, made.arithmetic, points_, kNone, nullptr};
    }
    return View();
}

std::optional<ShownSurface> Survey::KnownSurface() const {
    const bool known = made_ && (shaped_ || !plan_.HasConstraints());
    return known ? std::optional(View()) : std::nullopt;
}

Index CountUnusedPoints(Index count, const TriangleList& triangles) {
    Array1<char> used(count, 0);
    for (Index t = 1; t <= triangles.count; ++t) {
        for (const Index vertex : triangles.table[t].vertices) {
            if (vertex <= count) {
                used[vertex] = 1;
            }
        }
    }
    return static_cast<Index>(std::count(used.begin(), used.end(), 0));
}

Index CountHullEdges(const TriangleList& triangles) {
    Index count = 0;
    for (Index t = 1; t <= triangles.count; ++t) {
        for (const Index neighbour : triangles.table[t].neighbours) {
            count += neighbour < 0 ? 1 : 0;
        }
    }
    return count;
}

} // namespace terravo

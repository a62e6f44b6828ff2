#include "survey/Survey.h"

#include "survey/PointSubset.h"
#include "triangulation/modDelaunay2D.h"

#include <algorithm>
#include <utility>

namespace terravo {

void Survey::Replace(PointSet points, const TriangulationWish& wish) {
    some_.reset();
    points_ = std::move(points);
    wish_ = wish;
    Changed();
}

PointSet Survey::Take() {
    some_.reset();
    PointSet points = std::exchange(points_, {});
    points_.sourceFolder = points.sourceFolder;
    Changed();
    return points;
}

void Survey::RememberFolder(const std::string& folder) {
    points_.sourceFolder = folder;
    if (some_) {
        some_->all.sourceFolder = folder;
    }
}

bool Survey::SetExcluded(const std::vector<Index>& points, bool excluded) {
    const char wanted = excluded ? 1 : 0;
    if (std::all_of(points.begin(), points.end(),
                    [&](Index point) { return IsExcluded(point) == excluded; })) {
        return false;
    }
    if (!some_) {
        const Index count = points_.count;
        some_ = Exclusion{std::move(points_), Array1<char>(count, 0), {}};
    }
    for (const Index point : points) {
        some_->isExcluded[point] = wanted;
    }
    some_->numbers.clear();
    for (Index i = 1; i <= some_->all.count; ++i) {
        if (some_->isExcluded[i] == 0) {
            some_->numbers.push_back(i);
        }
    }
    if (some_->numbers.size() == static_cast<std::size_t>(some_->all.count)) {
        points_ = std::move(some_->all);
        some_.reset();
    } else {
        points_ = PointsAt(some_->all, some_->numbers);
    }
    Changed();
    return true;
}

std::vector<Index> Survey::ExcludedPoints() const {
    std::vector<Index> excluded;
    for (Index i = 1; some_ && i <= some_->all.count; ++i) {
        if (IsExcluded(i)) {
            excluded.push_back(i);
        }
    }
    return excluded;
}

void Survey::SetWish(const TriangulationWish& wish) {
    if (!(wish == wish_)) {
        wish_ = wish;
        Changed();
    }
}

void Survey::Changed() {
    ++version_;
    made_ = false;
    outcome_ = {};
}

const TriangulationOutcome& Survey::Triangulation(const StopToken& stop) const {
    if (made_) {
        return outcome_;
    }
    Array1<PlanPoint> coord(points_.count);
    for (Index i = 1; i <= points_.count; ++i) {
        coord[i] = {points_.x[i], points_.y[i]};
    }
    outcome_ = TriangulatePoints(coord, wish_, stop);
    made_ = outcome_.ierr != modDelaunay2D::Ierr::kStopped;
    return outcome_;
}

Index CountUnusedPoints(const PointSet& points, const TriangleList& triangles) {
    Array1<char> used(points.count, 0);
    for (Index t = 1; t <= triangles.count; ++t) {
        for (const Index vertex : triangles.table[t].vertices) {
            used[vertex] = 1;
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

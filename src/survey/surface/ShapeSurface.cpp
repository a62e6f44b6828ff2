#include "survey/surface/ShapeSurface.h"

#include "triangulation/HullRings.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>

namespace terravo {
namespace {

std::vector<SpaceLine> LinesOf(const std::vector<SharedLine>& shared) {
    std::vector<SpaceLine> lines;
    lines.reserve(shared.size());
    for (const SharedLine& line : shared) {
        lines.push_back(line->line);
    }
    return lines;
}

// Where points have labels, those that lines add have empty ones.
PointSet WithAdded(const PointSet& points, const std::vector<SpacePoint>& added) {
    PointSet all = points;
    const bool hasLabels = points.labels.HasLabels();
    for (const SpacePoint& point : added) {
        all.Append(point.x, point.y, point.z);
        if (hasLabels) {
            all.labels.Append({}, {});
        }
    }
    return all;
}

std::size_t EdgeCount(const std::vector<std::vector<Index>>& courses) {
    std::size_t count = 0;
    for (const std::vector<Index>& course : courses) {
        count += course.size() - 1;
    }
    return count;
}

// The constrained sides of visible triangles, by their ends.
class SideSet {
public:
    SideSet(const TriangleList& triangles, const EdgeMarks& marks) {
        for (Index t = 1; t <= triangles.count; ++t) {
            for (int j = 1; j <= 3; ++j) {
                if ((static_cast<unsigned>(marks[t]) >> static_cast<unsigned>(j - 1) & 1U) != 0) {
                    keys_.push_back(
                        KeyOf(triangles.Vertex(j, t), triangles.Vertex(NextEdge(j), t)));
                }
            }
        }
        std::sort(keys_.begin(), keys_.end());
    }

    [[nodiscard]] bool Has(Index a, Index b) const {
        return std::binary_search(keys_.begin(), keys_.end(), KeyOf(a, b));
    }

private:
    static std::pair<Index, Index> KeyOf(Index a, Index b) { return std::minmax({a, b}); }

    std::vector<std::pair<Index, Index>> keys_;
};

void BoundByVisible(ShapedSurface& surface) {
    if (surface.visible.count == 0) {
        return;
    }
    PointSet& points = surface.points;
    points.extentX = {};
    points.extentY = {};
    points.extentZ = {};
    for (Index t = 1; t <= surface.visible.count; ++t) {
        for (const Index corner : surface.visible.table[t].vertices) {
            points.extentX.Include(points.x[corner]);
            points.extentY.Include(points.y[corner]);
            points.extentZ.Include(points.z[corner]);
        }
    }
}

// Breaklines of which a part is hidden, or all; holes beside the hull, which cut nothing out.
void RemarkOnHiddenLines(ShapedSurface& surface) {
    std::vector<std::size_t> visible(surface.plan.breaklines.size());
    for (const VisibleCourse& course : VisibleCourses(surface, LineRole::Breakline)) {
        visible[course.number] += course.points.size() - 1;
    }
    for (const LaidLine& line : surface.all.lines) {
        const std::size_t edges = EdgeCount(line.courses); // none: beside the hull
        const bool isLost = line.role == LineRole::Breakline
                                ? edges == 0 || visible[line.number] < edges
                                : line.role == LineRole::Hole && edges == 0;
        if (!isLost) {
            continue;
        }
        SurfaceRemark remark;
        remark.role = line.role;
        remark.kind = line.role == LineRole::Hole || visible[line.number] == 0
                          ? SurfaceRemarkKind::Outside
                          : SurfaceRemarkKind::Clipped;
        remark.line = line.number;
        remark.place = LinesOf(surface.plan, line.role)[line.number]->line.vertices.front();
        surface.all.remarks.push_back(remark);
    }
}

} // namespace

Array1<PlanPoint> PlacesOf(const PointSet& points) {
    Array1<PlanPoint> coord(points.count);
    for (Index i = 1; i <= points.count; ++i) {
        coord[i] = {points.x[i], points.y[i]};
    }
    return coord;
}

SurfaceConstraints ConstraintsOf(const SurfacePlan& plan) {
    SurfaceConstraints constraints;
    constraints.breaklines = LinesOf(plan.breaklines);
    constraints.boundary = LinesOf(plan.boundary);
    constraints.holes = LinesOf(plan.holes);
    constraints.held = plan.held;
    constraints.longestSide = plan.longestSide;
    constraints.crossings = plan.crossings;
    return constraints;
}

std::optional<ShapedSurface> ShapeSurface(const PointSet& points, const TriangleList& base,
                                          const SurfacePlan& plan, const StopToken& stop) {
    Array1<PlanPoint> coord = PlacesOf(points);
    Array1<double> heights(points.count);
    for (Index i = 1; i <= points.count; ++i) {
        heights[i] = points.z[i];
    }
    ShapedSurface surface;
    surface.all = MakeConstrainedSurface(coord, heights, base, ConstraintsOf(plan), stop);
    if (surface.all.isStopped) {
        return std::nullopt;
    }
    surface.plan = plan;
    surface.surveyed = points.count;
    surface.points = WithAdded(points, surface.all.added);
    surface.hidden = HideByRings(surface.all);
    if (plan.longestSide) {
        for (const SpacePoint& point : surface.all.added) {
            coord.Append(PlanOf(point));
        }
        HideLongSides(coord, surface.all.triangles, surface.all.constrained, *plan.longestSide,
                      surface.hidden);
    }
    surface.visible = VisibleTriangles(surface.all.triangles, surface.hidden);
    for (Index t = 1; t <= surface.all.triangles.count; ++t) { // their order is kept
        if (surface.hidden[t] == 0) {
            surface.visibleMarks.Append(surface.all.constrained[t]);
        }
    }
    BoundByVisible(surface);
    RemarkOnHiddenLines(surface);
    return surface;
}

// Relative to one corner, so that far coordinates cost no digits.
double PlanArea(const PointSet& points, const TriangleList& triangles) {
    double twice = 0;
    for (Index t = 1; t <= triangles.count; ++t) {
        const auto [a, b, c] = triangles.table[t].vertices;
        twice += (points.x[b] - points.x[a]) * (points.y[c] - points.y[a]) -
                 (points.x[c] - points.x[a]) * (points.y[b] - points.y[a]);
    }
    return twice / 2;
}

std::vector<VisibleCourse> VisibleCourses(const ShapedSurface& surface, LineRole role) {
    const SideSet visible(surface.visible, surface.visibleMarks);
    std::vector<VisibleCourse> courses;
    for (const LaidLine& line : surface.all.lines) {
        if (line.role != role) {
            continue;
        }
        for (const std::vector<Index>& course : line.courses) {
            bool goesOn = false;
            for (std::size_t i = 1; i < course.size(); ++i) {
                const bool isVisible = visible.Has(course[i - 1], course[i]);
                if (isVisible && !goesOn) {
                    courses.push_back({role, line.number, {course[i - 1]}});
                }
                if (isVisible) {
                    courses.back().points.push_back(course[i]);
                }
                goesOn = isVisible;
            }
        }
    }
    return courses;
}

SurfaceFigures FiguresOf(const ShapedSurface& surface) {
    SurfaceFigures figures;
    figures.visibleTriangles = surface.visible.count;
    figures.hiddenTriangles = surface.all.triangles.count - surface.visible.count;
    figures.constrainedEdges = surface.all.lineEdges;
    figures.crossings = surface.all.crossings;
    figures.planArea = PlanArea(surface.points, surface.visible);
    figures.rings = static_cast<Index>(HullRings(surface.visible).size());
    return figures;
}

} // namespace terravo

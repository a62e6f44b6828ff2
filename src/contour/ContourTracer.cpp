#include "contour/ContourTracer.h"

namespace terravo {
namespace {

// So near to an end of its edge, as a part of it, a vertex may be rounded to the end's place.
constexpr double kNearEnd = 1e-6;

// The edge of a triangle that begins at one of its points.
int EdgeFrom(const Triangle& triangle, Index point) {
    return triangle.Vertex(1) == point ? 1 : triangle.Vertex(2) == point ? 2 : 3;
}

} // namespace

ContourTracer::ContourTracer(const PointSet& points, const TriangleList& triangles)
    : points_(points), triangles_(triangles), used_(static_cast<std::size_t>(triangles.count) + 1) {
}

// The edge through which the line comes in, 0 when the triangle is not crossed.
int ContourTracer::EntryEdge(const Triangle& triangle) const {
    const bool above1 = IsAbove(triangle.Vertex(1));
    const bool above2 = IsAbove(triangle.Vertex(2));
    const bool above3 = IsAbove(triangle.Vertex(3));
    if (above1 && !above2) {
        return 1;
    }
    if (above2 && !above3) {
        return 2;
    }
    return above3 && !above1 ? 3 : 0;
}

TriangleEdge ContourTracer::ExitFrom(TriangleEdge entry) const {
    const int afterEntry = NextEdge(entry.edge);
    const int last = NextEdge(afterEntry);
    const bool lastAbove = IsAbove(triangles_.Vertex(last, entry.triangle));
    return {entry.triangle, lastAbove ? afterEntry : last};
}

void ContourTracer::AddVertex(TriangleEdge edge, EdgeEnds ends, ContourLineBuilder& lines) const {
    const double part = PartOfEdge(points_, ends, level_);
    const PlanPoint place = PlaceOnEdge(points_, ends, part);
    lines.Add({place.x, place.y, edge}, part < kNearEnd || part > 1 - kNearEnd);
}

void ContourTracer::Follow(TriangleEdge entry, ContourLineBuilder& lines) {
    const bool open = TriangleAcross(triangles_, entry) == 0;
    if (open) {
        const Triangle& first = triangles_.table[entry.triangle];
        AddVertex(entry, {first.Vertex(NextEdge(entry.edge)), first.Vertex(entry.edge)}, lines);
    }
    TriangleEdge exit;
    // A used triangle is the first one again: the line is closed.
    while (entry.triangle != 0 && !IsUsed(entry.triangle)) {
        used_[static_cast<std::size_t>(entry.triangle)] = round_;
        exit = ExitFrom(entry);
        const Triangle& triangle = triangles_.table[exit.triangle];
        const Index upper = triangle.Vertex(NextEdge(exit.edge));
        AddVertex(exit, {triangle.Vertex(exit.edge), upper}, lines);
        entry.triangle = TriangleAcross(triangles_, exit);
        if (entry.triangle != 0) {
            entry.edge = EdgeFrom(triangles_.table[entry.triangle], upper);
        }
    }
    if (open) {
        lines.EndOpen(exit);
    } else {
        lines.EndClosed();
    }
}

void ContourTracer::Trace(double level, std::span<const Index> reached, ContourLineBuilder& lines) {
    level_ = level;
    ++round_;
    inside_.clear();
    for (const Index t : reached) {
        const TriangleEdge entry{t, EntryEdge(triangles_.table[t])};
        if (entry.edge == 0) {
            continue;
        }
        if (TriangleAcross(triangles_, entry) == 0) {
            Follow(entry, lines);
        } else {
            inside_.push_back(entry);
        }
    }
    for (const TriangleEdge entry : inside_) {
        if (!IsUsed(entry.triangle)) {
            Follow(entry, lines);
        }
    }
}

} // namespace terravo

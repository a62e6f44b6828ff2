#include "contour/ContourLineBuilder.h"

namespace terravo {

void ContourLineBuilder::Begin(double value) {
    level_.value = value;
    level_.vertices.clear();
    level_.lines.clear();
    level_.isolatedPoints.clear();
    nearPoint_.clear();
    first_ = 0;
}

void ContourLineBuilder::EndOpen(TriangleEdge lastEdge) {
    level_.vertices.back().edge = lastEdge;
    End(false, false);
}

void ContourLineBuilder::EndClosed() {
    DropRepeatOfFirst();
    End(true, false);
}

void ContourLineBuilder::EndRidge() {
    const bool closed = IsSamePlace(level_.vertices[first_], level_.vertices.back());
    if (closed) {
        DropRepeatOfFirst();
    }
    End(closed, true);
}

// The line arrives at the last vertex: its edge is the one to keep.
void ContourLineBuilder::DropRepeatOfFirst() {
    std::vector<ContourVertex>& vertices = level_.vertices;
    if (repeats_ == Repeats::Keep || vertices.size() - first_ < 2 ||
        !IsSamePlace(vertices[first_], vertices.back())) {
        return;
    }
    vertices[first_].edge = vertices.back().edge;
    nearPoint_[first_] |= nearPoint_.back();
    vertices.pop_back();
    nearPoint_.pop_back();
}

void ContourLineBuilder::End(bool closed, bool ridge) {
    const std::size_t count = level_.vertices.size() - first_;
    if (count > 1) {
        level_.lines.push_back({first_, count, closed, ridge});
    } else {
        level_.isolatedPoints.push_back(level_.vertices.back());
        level_.vertices.pop_back();
        nearPoint_.pop_back();
    }
    first_ = level_.vertices.size();
}

} // namespace terravo

// The lines of one level while they are made.
//
// Data: the level so far, and for each vertex whether it lies on a point of the survey or close to
// one. Method: vertices are taken one by one in the order of travel; one in the place of the vertex
// before it is left out, unless repeats are to be kept.
#pragma once

#include "contour/ContourSet.h"
#include "util/modUtilita.h"

#include <cstdint>

namespace terravo {

inline bool IsSamePlace(const ContourVertex& a, const ContourVertex& b) {
    return modUtilita::IsExactly(a.x, b.x) && modUtilita::IsExactly(a.y, b.y);
}

class ContourLineBuilder {
public:
    explicit ContourLineBuilder(Repeats repeats) : repeats_(repeats) {}

    /// Forgets everything and begins a level.
    void Begin(double value);

    /// Adds a vertex to the line that is being made.
    /// @param nearPoint  true when it may have been rounded to the place of a point.
    void Add(const ContourVertex& vertex, bool nearPoint) {
        if (repeats_ == Repeats::LeaveOut && level_.vertices.size() > first_ &&
            IsSamePlace(level_.vertices.back(), vertex)) {
            nearPoint_.back() |= static_cast<std::uint8_t>(nearPoint);
            return;
        }
        level_.vertices.push_back(vertex);
        nearPoint_.push_back(static_cast<std::uint8_t>(nearPoint));
    }

    /// Ends the line. What has shrunk to one vertex becomes an isolated point.
    /// @param lastEdge  of the last vertex added, which may have been left out.
    void EndOpen(TriangleEdge lastEdge);
    void EndClosed();
    /// Ends a ridge; closed when it ends where it began.
    void EndRidge();

    /// Lines and points so far.
    [[nodiscard]] const ContourLevel& Level() const { return level_; }
    /// What was said of vertex i of Level().vertices.
    [[nodiscard]] bool IsNearPoint(std::size_t i) const { return nearPoint_[i] != 0; }

    /// Replaces the isolated points.
    void SetIsolatedPoints(std::vector<ContourVertex> points) {
        level_.isolatedPoints = std::move(points);
    }

private:
    void DropRepeatOfFirst();
    void End(bool closed, bool ridge);

    Repeats repeats_;
    ContourLevel level_;
    std::vector<std::uint8_t> nearPoint_;
    std::size_t first_ = 0; // of the line that is being made
};

} // namespace terravo

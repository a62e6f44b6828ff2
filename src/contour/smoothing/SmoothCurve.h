// The curve through the vertices of a line.
//
// Data: the sliders of a line and the parts where its vertices are; four control points a piece.
// Method: every vertex gets a tangent between its two chords, so that it crosses the edge; the
// handles end before they would leave the strip between the intervals of the two edges. So each
// piece lies in its strip and touches its edges in the vertices alone, and has no loop. Pieces in
// triangles that are flat but for rounding are straight.
#pragma once

#include "contour/smoothing/Slider.h"

#include <vector>

namespace terravo::smoothing {

/// A line whose vertices are where they shall be. In a closed one without corners the last vertex
/// leads to the first; one with corners begins with one and repeats it at its end.
struct CourseView {
    std::span<const Slider> sliders; // 2 at least, 3 when closed
    std::span<const double> parts;
    bool closed = false;
};

class CurveMaker {
public:
    /// Appends three control points a piece, and the last vertex of a line that is not closed.
    void Append(const CourseView& course, std::vector<PlanPoint>& controls);
    /// The same for straight pieces.
    void AppendStraight(const CourseView& course, std::vector<PlanPoint>& controls);

private:
    // The directions of a line where it comes to a vertex and where it leaves it; but in a corner
    // they are one.
    struct Tangents {
        PlanPoint in;
        PlanPoint out;
    };

    void Begin(const CourseView& course);
    [[nodiscard]] std::size_t PieceCount() const { return places_.size() - (closed_ ? 0 : 1); }
    [[nodiscard]] std::size_t After(std::size_t i) const {
        return i + 1 < places_.size() ? i + 1 : 0;
    }
    [[nodiscard]] std::size_t Before(std::size_t i) const {
        return i > 0 ? i - 1 : places_.size() - 1;
    }
    [[nodiscard]] bool IsEnd(std::size_t i) const {
        return (!closed_ && (i == 0 || i + 1 == places_.size())) || sliders_[i].isCorner;
    }
    void SetTangents();
    [[nodiscard]] PlanPoint TangentAt(std::size_t i) const;
    [[nodiscard]] PlanPoint EndTangent(std::size_t end, PlanPoint chord, PlanPoint other) const;
    void SetEndTangents(std::size_t piece);
    void MakeRoom(std::size_t i);
    [[nodiscard]] double RoomAlong(std::size_t i, PlanPoint direction) const;
    [[nodiscard]] double ReachOn(std::size_t piece, PlanPoint direction) const;
    [[nodiscard]] double ReachBack(std::size_t piece, PlanPoint direction) const;
    void AppendStraightPiece(std::size_t piece, std::vector<PlanPoint>& controls) const;
    void AppendPiece(std::size_t piece, std::vector<PlanPoint>& controls) const;

    std::span<const Slider> sliders_;
    bool closed_ = false;
    std::vector<PlanPoint> places_;
    std::vector<PlanPoint> chords_; // from each vertex to the next
    std::vector<PlanPoint> units_;  // their directions
    std::vector<Tangents> tangents_;
};

} // namespace terravo::smoothing

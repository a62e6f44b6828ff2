#include "triangulation/constrained/ConstrainedSurface.h"

#include "triangulation/constrained/ConstraintLayer.h"
#include "triangulation/constrained/LinesToLay.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace terravo {
namespace {

constexpr int kCarefulPasses = 8; // after them a pass goes on although a line was left half laid
constexpr std::size_t kLinesALook = 64; // between two looks at the wish to stop

// All base triangles with room for what the lines add.
TriangleList WithRoom(const TriangleList& base, std::size_t vertices) {
    const auto count = static_cast<std::size_t>(base.count);
    std::vector<Triangle> table;
    table.reserve(count + 8 * vertices + 64);
    table.assign(base.table.begin(), base.table.begin() + base.count);
    table.resize(count + 4 * vertices);
    TriangleList triangles;
    triangles.count = base.count;
    triangles.table = Array1<Triangle>(std::move(table));
    return triangles;
}

Array1<PlanPoint> WithRoom(const Array1<PlanPoint>& coord, std::size_t vertices) {
    Array1<PlanPoint> points;
    points.Reserve(coord.UpperBound() + static_cast<Index>(2 * vertices));
    for (const PlanPoint& p : coord) {
        points.Append(p);
    }
    return points;
}

Array1<Index> FileNumbers(Index count, std::size_t vertices) {
    Array1<Index> ranks;
    ranks.Reserve(count + static_cast<Index>(2 * vertices));
    ranks.Resize(count);
    std::iota(ranks.begin(), ranks.end(), 1);
    return ranks;
}

std::size_t VertexCount(const std::vector<LineToLay>& lines) {
    return std::accumulate(
        lines.begin(), lines.end(), std::size_t{0},
        [](std::size_t sum, const LineToLay& line) { return sum + line.vertices.size(); });
}

// Whether a ring goes round a place, by the sides that a ray to the right meets.
bool IsInside(const LineToLay& ring, PlanPoint place) {
    bool inside = false;
    for (std::size_t i = 0; i < ring.SideCount(); ++i) {
        const SpacePoint& a = ring.vertices[i];
        const SpacePoint& b = ring.EndOfSide(i);
        if ((a.y > place.y) != (b.y > place.y) &&
            place.x < a.x + (place.y - a.y) / (b.y - a.y) * (b.x - a.x)) {
            inside = !inside;
        }
    }
    return inside;
}

// One attempt to lay all lines that are not left out yet.
class Pass {
public:
    Pass(const Array1<PlanPoint>& coord, const Array1<double>& heights, const TriangleList& base,
         const SurfaceConstraints& constraints, const std::vector<LineToLay>& lines,
         std::vector<char>& isLeftOut, const StopToken& stop)
        : constraints_(constraints), lines_(lines), isLeftOut_(isLeftOut), stop_(stop),
          vertices_(VertexCount(lines)),
          mesh_(WithRoom(coord, vertices_), FileNumbers(coord.UpperBound(), vertices_),
                WithRoom(base, vertices_)),
          layer_(mesh_, {heights.begin(), heights.end()}, lines, constraints) {}

    /// @return whether the work went on to its end.
    bool Run(bool isCareful, double begin) {
        begin_ = begin;
        for (LineNumber i = 0; i < lines_.size(); ++i) {
            if (isLeftOut_[i] == 0 && !lines_[i].isDraped) {
                if (!GoesOn(i, 0)) {
                    return false;
                }
                layer_.PutVertices(i);
            }
        }
        for (LineNumber i = 0; i < lines_.size(); ++i) {
            if (!GoesOn(i, 1)) {
                return false;
            }
            if (isLeftOut_[i] == 0 && !Lay(i) && isCareful) {
                return true;
            }
        }
        for (LineNumber i = 0; i < lines_.size(); ++i) {
            layer_.RefuseIfBentAway(i);
        }
        layer_.ReachHull();
        for (std::size_t i = 0; i < constraints_.held.size(); ++i) {
            layer_.Hold(i);
        }
        return true;
    }

    /// Takes note of the lines that are to be left out.
    /// @return whether there are any.
    bool NoteRefused(std::vector<SurfaceRemark>& remarks) {
        for (const auto& [line, remark] : layer_.refused) {
            isLeftOut_[line] = 1;
            remarks.push_back(remark);
        }
        return !layer_.refused.empty();
    }

    void Deliver(ConstrainedSurface& surface) {
        for (Index i = layer_.SurveyPoints() + 1; i <= mesh_.PointCount(); ++i) {
            const PlanPoint& p = mesh_.Position(i);
            surface.added.push_back({p.x, p.y, layer_.Height(i)});
        }
        surface.crossings = layer_.Crossings();
        surface.lineEdges = layer_.Pieces().CountOfLines();
        surface.boundary = MarksOf(LineRole::Boundary);
        surface.holes = MarksOf(LineRole::Hole);
        for (LineNumber i = 0; i < lines_.size(); ++i) {
            if (isLeftOut_[i] == 0) {
                surface.lines.push_back({lines_[i].role, lines_[i].number, CoursesOf(i)});
            }
        }
        surface.remarks.insert(surface.remarks.end(), layer_.remarks.begin(), layer_.remarks.end());
        surface.constrained = mesh_.Marks();
        surface.triangles = mesh_.TakeTriangles();
        surface.triangles.table.Resize(surface.triangles.count);
        surface.constrained.Resize(surface.triangles.count);
    }

private:
    bool Lay(LineNumber line) {
        return (lines_[line].isDraped ? layer_.Drape(line) : layer_.LayWithHeights(line)) !=
               ConstraintLayer::Result::Unfinished;
    }

    // Each pass takes half of what is left of the bar.
    bool GoesOn(LineNumber line, int stage) const {
        if (line % kLinesALook != 0) {
            return true;
        }
        const double part =
            (stage + static_cast<double>(line) / static_cast<double>(lines_.size())) / 2;
        return stop_.GoesOn("constrain", begin_ + (1 - begin_) / 2 * part);
    }

    // Along the piece as it first was, from its beginning or from its end.
    [[nodiscard]] std::vector<std::pair<Index, Index>> EdgesOf(PieceNumber piece,
                                                               bool fromEnd) const {
        const EdgePiece& whole = layer_.Pieces().At(piece);
        const PlanPoint a = mesh_.Position(fromEnd ? whole.to : whole.from);
        const PlanPoint b = mesh_.Position(fromEnd ? whole.from : whole.to);
        const auto along = [&](Index point) {
            const PlanPoint p = mesh_.Position(point);
            return (p.x - a.x) * (b.x - a.x) + (p.y - a.y) * (b.y - a.y);
        };
        std::vector<std::pair<Index, Index>> edges;
        layer_.Pieces().ForEachEdge(piece, [&](Index p, Index q) {
            edges.push_back(along(p) < along(q) ? std::pair(p, q) : std::pair(q, p));
        });
        std::sort(edges.begin(), edges.end(), [&](const auto& one, const auto& other) {
            return along(one.first) < along(other.first);
        });
        return edges;
    }

    // Another line may have claimed a piece first, and run along it the other way.
    [[nodiscard]] bool RunsFromEnd(const PieceChain& chain, std::size_t i, Index current) const {
        const EdgePiece& piece = layer_.Pieces().At(chain[i]);
        if (current == piece.from || current == piece.to) {
            return current == piece.to;
        }
        if (i + 1 == chain.size()) {
            return false;
        }
        const EdgePiece& next = layer_.Pieces().At(chain[i + 1]);
        return piece.from == next.from || piece.from == next.to;
    }

    [[nodiscard]] std::vector<std::vector<Index>> CoursesOf(LineNumber line) const {
        std::vector<std::vector<Index>> courses;
        const PieceChain& chain = layer_.ChainOf(line);
        for (std::size_t i = 0; i < chain.size(); ++i) {
            const Index current = courses.empty() ? 0 : courses.back().back();
            for (const auto& [p, q] : EdgesOf(chain[i], RunsFromEnd(chain, i, current))) {
                if (courses.empty() || courses.back().back() != p) {
                    courses.push_back({p});
                }
                courses.back().push_back(q);
            }
        }
        return courses;
    }

    EdgeMarks MarksOf(LineRole role) const {
        EdgeMarks marks(mesh_.Triangles().count);
        for (LineNumber i = 0; i < lines_.size(); ++i) {
            if (lines_[i].role == role && isLeftOut_[i] == 0) {
                Toggle(i, marks);
            }
        }
        return marks;
    }

    // Where a ring leaves the hull, the hull bounds what lies inside it.
    void Toggle(LineNumber ring, EdgeMarks& marks) const {
        EdgeMarks own(layer_.ReachesOutside(ring) ? marks.UpperBound() : 0);
        EdgeMarks& target = own.UpperBound() > 0 ? own : marks;
        for (const PieceNumber piece : layer_.ChainOf(ring)) {
            layer_.Pieces().ForEachEdge(piece, [&](Index p, Index q) {
                ToggleEdge(layer_.Inserter().FindEdge(p, q), target);
            });
        }
        if (own.UpperBound() > 0) {
            ToggleHull(lines_[ring], own);
            for (Index t = 1; t <= marks.UpperBound(); ++t) {
                marks[t] = static_cast<std::uint8_t>(marks[t] ^ own[t]);
            }
        }
    }

    void ToggleEdge(TriangleEdge edge, EdgeMarks& marks) const {
        const auto toggle = [&marks](TriangleEdge side) {
            marks[side.triangle] = static_cast<std::uint8_t>(
                marks[side.triangle] ^ 1U << static_cast<unsigned>(side.edge - 1));
        };
        toggle(edge);
        if (!layer_.Inserter().IsHullEdge(edge)) {
            toggle(layer_.Inserter().Across(edge));
        }
    }

    // Each triangle lies on one side of the ring, and one with a large area tells on which. Where
    // the triangle at a hull edge lies inside, the edge is marked.
    void ToggleHull(const LineToLay& ring, EdgeMarks& own) const {
        const TriangleList& triangles = mesh_.Triangles();
        Array1<signed char> side(triangles.count, -1);
        const Index first = LargestTriangle();
        side[first] = IsInside(ring, MiddleOf(first)) ? 1 : 0;
        std::vector<Index> waiting{first};
        while (!waiting.empty()) {
            const Index t = waiting.back();
            waiting.pop_back();
            for (int j = 1; j <= 3; ++j) {
                const unsigned bit = own[t] >> static_cast<unsigned>(j - 1) & 1U;
                const Index across = triangles.Neighbour(j, t);
                if (across > 0 && side[across] < 0) {
                    side[across] = static_cast<signed char>(side[t] ^ static_cast<int>(bit));
                    waiting.push_back(across);
                } else if (across < 0 && static_cast<int>(bit) != side[t]) {
                    ToggleEdge({t, j}, own);
                }
            }
        }
    }

    PlanPoint MiddleOf(Index t) const {
        const auto& [a, b, c] = mesh_.Triangles().table[t].vertices;
        const PlanPoint& pa = mesh_.Position(a);
        const PlanPoint& pb = mesh_.Position(b);
        const PlanPoint& pc = mesh_.Position(c);
        return {pa.x + ((pb.x - pa.x) + (pc.x - pa.x)) / 3,
                pa.y + ((pb.y - pa.y) + (pc.y - pa.y)) / 3};
    }

    Index LargestTriangle() const {
        Index largest = 1;
        double most = 0;
        for (Index t = 1; t <= mesh_.Triangles().count; ++t) {
            const auto& [a, b, c] = mesh_.Triangles().table[t].vertices;
            const PlanPoint& pa = mesh_.Position(a);
            const PlanPoint& pb = mesh_.Position(b);
            const PlanPoint& pc = mesh_.Position(c);
            const double area = (pb.x - pa.x) * (pc.y - pa.y) - (pb.y - pa.y) * (pc.x - pa.x);
            if (area > most) {
                largest = t;
                most = area;
            }
        }
        return largest;
    }

    const SurfaceConstraints& constraints_;
    const std::vector<LineToLay>& lines_;
    std::vector<char>& isLeftOut_;
    const StopToken& stop_;
    std::size_t vertices_;
    double begin_ = 0;
    ExactMesh mesh_;
    ConstraintLayer layer_;
};

} // namespace

ConstrainedSurface MakeConstrainedSurface(const Array1<PlanPoint>& coord,
                                          const Array1<double>& heights, const TriangleList& base,
                                          const SurfaceConstraints& constraints,
                                          const StopToken& stop) {
    ConstrainedSurface surface;
    if (base.count == 0) {
        return surface;
    }
    LinesToLay prepared = PrepareLines(constraints);
    surface.remarks = std::move(prepared.refused);
    std::vector<char> isLeftOut(prepared.lines.size());
    double begin = 0;
    for (int pass = 1;; ++pass) {
        Pass attempt(coord, heights, base, constraints, prepared.lines, isLeftOut, stop);
        if (!attempt.Run(pass <= kCarefulPasses, begin)) {
            surface = {};
            surface.isStopped = true;
            return surface;
        }
        if (!attempt.NoteRefused(surface.remarks)) {
            attempt.Deliver(surface);
            return surface;
        }
        begin += (1 - begin) / 2;
    }
}

} // namespace terravo

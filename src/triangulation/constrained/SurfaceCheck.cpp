#include "triangulation/constrained/SurfaceCheck.h"

#include "triangulation/exact/ExactSigns.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <set>
#include <unordered_map>
#include <utility>
#include <vector>

namespace terravo {
namespace {

bool Bit(const EdgeMarks& marks, TriangleEdge edge) {
    return (marks[edge.triangle] >> static_cast<unsigned>(edge.edge - 1) & 1U) != 0;
}

std::string AtPoint(const char* what, Index point) {
    return std::string(what) + " at point " + std::to_string(point) + ".";
}

std::string OfTriangle(const char* what, Index triangle) {
    return std::string(what) + ": triangle " + std::to_string(triangle) + ".";
}

constexpr int EdgeBefore(int j) {
    return j == 1 ? 3 : j - 1;
}

Array1<PlanPoint> AllPoints(const Array1<PlanPoint>& coord, const ConstrainedSurface& surface) {
    Array1<PlanPoint> points = coord;
    for (const SpacePoint& p : surface.added) {
        points.Append(PlanOf(p));
    }
    return points;
}

// ---- Triangles
// -----------------------------------------------------------------------------------

class TriangleCheck {
public:
    TriangleCheck(const Array1<PlanPoint>& points, const ConstrainedSurface& surface,
                  BaseArithmetic arithmetic)
        : points_(points), surface_(surface), triangles_(surface.triangles), signs_(points),
          arithmetic_(arithmetic) {}

    std::string Fault() {
        std::string fault = FaultOfTables();
        for (Index t = 1; t <= triangles_.count && fault.empty(); ++t) {
            fault = FaultOfTriangle(t);
        }
        for (Index t = 1; t <= triangles_.count && fault.empty(); ++t) {
            for (int j = 1; j <= 3 && fault.empty(); ++j) {
                fault = FaultOfEdge({t, j});
            }
        }
        return fault.empty() ? FaultOfHull() : fault;
    }

private:
    std::string FaultOfTables() const {
        for (const EdgeMarks* marks :
             {&surface_.constrained, &surface_.boundary, &surface_.holes}) {
            if (marks->UpperBound() < triangles_.count) {
                return "There are fewer marks than triangles.";
            }
        }
        return triangles_.table.UpperBound() < triangles_.count ? "The table is too short." : "";
    }

    std::string FaultOfTriangle(Index t) const {
        const Triangle& triangle = triangles_.table[t];
        for (int j = 1; j <= 3; ++j) {
            if (triangle.Vertex(j) < 1 || triangle.Vertex(j) > points_.UpperBound()) {
                return OfTriangle("A corner is no point", t);
            }
            const Index entry = triangle.Neighbour(j);
            const Index other = entry > 0 ? entry : HullEdgeFromLink(entry).triangle;
            if (entry == 0 || other < 1 || other > triangles_.count) {
                return OfTriangle("A link leads nowhere", t);
            }
        }
        const auto [a, b, c] = triangle.vertices;
        return signs_.Turn(points_[a], points_[b], points_[c]) > 0
                   ? ""
                   : OfTriangle("It does not turn left", t);
    }

    std::string FaultOfEdge(TriangleEdge edge) {
        const Triangle& triangle = triangles_.table[edge.triangle];
        const Index from = triangle.Vertex(edge.edge);
        const Index to = triangle.Vertex(NextEdge(edge.edge));
        if (!Bit(surface_.constrained, edge) &&
            (Bit(surface_.boundary, edge) || Bit(surface_.holes, edge)) && !IsHull(edge)) {
            return OfTriangle("A side of a ring is not constrained", edge.triangle);
        }
        if (IsHull(edge)) {
            ++hullEdges_;
            hullEdge_ = edge;
            return "";
        }
        const Index u = triangle.Neighbour(edge.edge);
        for (int k = 1; k <= 3; ++k) {
            if (triangles_.Vertex(k, u) == to && triangles_.Vertex(NextEdge(k), u) == from) {
                return triangles_.Neighbour(k, u) == edge.triangle
                           ? FaultAcross(edge, {u, k})
                           : OfTriangle("A neighbour does not link back", edge.triangle);
            }
        }
        return OfTriangle("A neighbour has not the edge", edge.triangle);
    }

    std::string FaultAcross(TriangleEdge edge, TriangleEdge across) const {
        for (const EdgeMarks* marks :
             {&surface_.constrained, &surface_.boundary, &surface_.holes}) {
            if (Bit(*marks, edge) != Bit(*marks, across)) {
                return OfTriangle("The marks of an edge differ on its sides", edge.triangle);
            }
        }
        const Triangle& triangle = triangles_.table[edge.triangle];
        const Index far = triangles_.Vertex(EdgeBefore(across.edge), across.triangle);
        return Bit(surface_.constrained, edge) || !Holds(triangle, far)
                   ? ""
                   : OfTriangle("Its circle holds the point across an edge", edge.triangle);
    }

    bool Holds(const Triangle& triangle, Index far) const {
        const PlanPoint& a = points_[triangle.vertices[0]];
        const PlanPoint& b = points_[triangle.vertices[1]];
        const PlanPoint& c = points_[triangle.vertices[2]];
        const PlanPoint& d = points_[far];
        return signs_.Circle(a, b, c, d) > 0 &&
               (arithmetic_ == BaseArithmetic::Exact || HoldsCertainly(a, b, c, d));
    }

    // Beyond anything that plain arithmetic can take for the other sign.
    static bool HoldsCertainly(PlanPoint a, PlanPoint b, PlanPoint c, PlanPoint d) {
        constexpr double kRounding = 1e-13;
        const auto minor = [&](PlanPoint p, PlanPoint q) {
            return (p.x - d.x) * (q.y - d.y) - (q.x - d.x) * (p.y - d.y);
        };
        const auto square = [&](PlanPoint p) {
            return (p.x - d.x) * (p.x - d.x) + (p.y - d.y) * (p.y - d.y);
        };
        const double value =
            square(a) * minor(b, c) + square(b) * minor(c, a) + square(c) * minor(a, b);
        const double far = std::sqrt(std::max({square(a), square(b), square(c)}));
        const double size = std::max({std::fabs(d.x), std::fabs(d.y), far});
        return value > kRounding * size * far * far * far;
    }

    [[nodiscard]] bool IsHull(TriangleEdge edge) const {
        return triangles_.Neighbour(edge.edge, edge.triangle) < 0;
    }

    // A ring that turns left everywhere and has one leftmost point goes round once.
    std::string FaultOfHull() const {
        if (triangles_.count == 0) {
            return "";
        }
        TriangleEdge edge = hullEdge_;
        Index walked = 0;
        int leftmost = 0;
        do {
            const TriangleEdge next =
                HullEdgeFromLink(triangles_.Neighbour(edge.edge, edge.triangle));
            const Index a = triangles_.Vertex(edge.edge, edge.triangle);
            const Index b = triangles_.Vertex(NextEdge(edge.edge), edge.triangle);
            if (!IsHull(next) || triangles_.Vertex(next.edge, next.triangle) != b) {
                return AtPoint("The hull is broken", b);
            }
            const Index c = triangles_.Vertex(NextEdge(next.edge), next.triangle);
            if (signs_.Turn(points_[a], points_[b], points_[c]) < 0) {
                return AtPoint("The hull turns right", b);
            }
            const auto isLeft = [&](Index p, Index q) {
                return std::pair(points_[p].x, points_[p].y) <
                       std::pair(points_[q].x, points_[q].y);
            };
            leftmost += isLeft(b, a) && isLeft(b, c) ? 1 : 0;
            edge = next;
            ++walked;
        } while (!(edge == hullEdge_) && walked <= hullEdges_);
        return walked == hullEdges_ && leftmost == 1 ? "" : "The hull is not one ring.";
    }

    const Array1<PlanPoint>& points_;
    const ConstrainedSurface& surface_;
    const TriangleList& triangles_;
    ExactSigns signs_;
    BaseArithmetic arithmetic_;
    Index hullEdges_ = 0;
    TriangleEdge hullEdge_;
};

// ---- Lines
// ---------------------------------------------------------------------------------------

// Constrained edges by their ends, and the corners by where they are.
class LineCheck {
public:
    LineCheck(const Array1<PlanPoint>& points, const SurfaceConstraints& constraints,
              const ConstrainedSurface& surface)
        : points_(points), constraints_(constraints), surface_(surface) {
        // Points that rounding moved, and lines that were led through points near them.
        reach_ = 4 * constraints.vertexTolerance;
        for (const PlanPoint& p : points) {
            reach_ = std::max(reach_, 1e-13 * std::max(std::fabs(p.x), std::fabs(p.y)));
        }
        cell_ = std::max(reach_, 1e-9);
    }

    std::string Fault() {
        CollectEdges();
        const auto check = [this](const std::vector<SpaceLine>& lines, LineRole role) {
            for (std::size_t i = 0; i < lines.size(); ++i) {
                std::string fault = leftOut_.contains({role, i}) ? "" : FaultOf(lines[i], role, i);
                if (!fault.empty()) {
                    return fault;
                }
            }
            return std::string();
        };
        for (const auto& [lines, role] : {std::pair(&constraints_.breaklines, LineRole::Breakline),
                                          std::pair(&constraints_.boundary, LineRole::Boundary),
                                          std::pair(&constraints_.holes, LineRole::Hole)}) {
            std::string fault = check(*lines, role);
            if (!fault.empty()) {
                return fault;
            }
        }
        return FaultOfHeld();
    }

private:
    using Cell = std::pair<std::int64_t, std::int64_t>;
    struct CellHash {
        std::size_t operator()(const Cell& cell) const {
            return static_cast<std::size_t>(cell.first) * 0x9E3779B1U +
                   static_cast<std::size_t>(cell.second) * 0x85EBCA6BU;
        }
    };

    static bool IsLeftOut(SurfaceRemarkKind kind) {
        switch (kind) {
        case SurfaceRemarkKind::RefusedCrossing:
        case SurfaceRemarkKind::NotFinished:
        case SurfaceRemarkKind::TooShort:
        case SurfaceRemarkKind::CrossesItself:
        case SurfaceRemarkKind::LostSide:
            return true;
        default:
            return false;
        }
    }

    [[nodiscard]] Cell CellOf(PlanPoint place) const {
        static constexpr double kFarthest = 1e18; // beyond it cells are shared
        const auto number = [this](double value) {
            return static_cast<std::int64_t>(
                std::clamp(std::floor(value / cell_), -kFarthest, kFarthest));
        };
        return {number(place.x), number(place.y)};
    }

    void CollectEdges() {
        for (const SurfaceRemark& remark : surface_.remarks) {
            if (IsLeftOut(remark.kind)) {
                leftOut_.insert({remark.role, remark.line});
            }
        }
        const TriangleList& triangles = surface_.triangles;
        ways_.resize(static_cast<std::size_t>(points_.UpperBound()) + 1);
        for (Index t = 1; t <= triangles.count; ++t) {
            for (int j = 1; j <= 3; ++j) {
                if (triangles.Neighbour(j, t) < 0) {
                    hull_.emplace_back(triangles.Vertex(j, t), triangles.Vertex(NextEdge(j), t));
                }
                if (Bit(surface_.constrained, {t, j})) {
                    const Index p = triangles.Vertex(j, t);
                    const Index q = triangles.Vertex(NextEdge(j), t);
                    ways_[static_cast<std::size_t>(p)].push_back(q);
                    ways_[static_cast<std::size_t>(q)].push_back(p);
                }
            }
        }
        for (Index i = 1; i <= points_.UpperBound(); ++i) {
            if (!ways_[static_cast<std::size_t>(i)].empty()) {
                corners_.emplace(CellOf(points_[i]), i);
            }
        }
    }

    [[nodiscard]] std::vector<Index> CornersNear(PlanPoint place) const {
        std::vector<Index> near;
        const Cell middle = CellOf(place);
        for (std::int64_t dx = -1; dx <= 1; ++dx) {
            for (std::int64_t dy = -1; dy <= 1; ++dy) {
                const auto [first, last] =
                    corners_.equal_range({middle.first + dx, middle.second + dy});
                for (auto it = first; it != last; ++it) {
                    if (Distance(points_[it->second], place) <= reach_) {
                        near.push_back(it->second);
                    }
                }
            }
        }
        return near;
    }

    static double Distance(PlanPoint a, PlanPoint b) { return std::hypot(a.x - b.x, a.y - b.y); }

    // A side within the hull. Where it meets the hull at a small angle rounding moves the place
    // along it.
    struct Stretch {
        PlanPoint from;
        PlanPoint to;
        double slackFrom = 0;
        double slackTo = 0;
    };

    // Nothing when it stays outside or only cuts a corner, or when rounding decides.
    [[nodiscard]] std::optional<Stretch> WithinHull(PlanPoint a, PlanPoint b) const {
        double begin = 0;
        double end = 1;
        Stretch stretch{a, b, reach_, reach_};
        if (IsFlatAbout(a, b)) {
            return std::nullopt;
        }
        for (const auto& [from, to] : hull_) {
            const PlanPoint& p = points_[from];
            const PlanPoint& q = points_[to];
            const auto side = [&](PlanPoint at) {
                return ((q.x - p.x) * (at.y - p.y) - (q.y - p.y) * (at.x - p.x)) / Distance(p, q);
            };
            const double atA = side(a);
            const double atB = side(b);
            const auto isDoubtful = [this](double at) { return at < 0 && at >= -reach_; };
            if ((atA < reach_ && atB < reach_ && std::min(atA, atB) < -reach_) || isDoubtful(atA) ||
                isDoubtful(atB)) {
                return std::nullopt;
            }
            const double slack = 16 * reach_ * Distance(a, b) / std::fabs(atA - atB);
            if (atA < -reach_ && atA / (atA - atB) > begin) {
                begin = atA / (atA - atB);
                stretch.slackFrom = slack;
            } else if (atB < -reach_ && atA / (atA - atB) < end) {
                end = atA / (atA - atB);
                stretch.slackTo = slack;
            }
        }
        const double length = Distance(a, b);
        if ((end - begin) * length <= 4 * reach_ + stretch.slackFrom + stretch.slackTo) {
            return std::nullopt;
        }
        const auto at = [&](double part) {
            return PlanPoint{a.x + part * (b.x - a.x), a.y + part * (b.y - a.y)};
        };
        stretch.from = begin > 0 ? at(begin) : a;
        stretch.to = end < 1 ? at(end) : b;
        return stretch;
    }

    // Whether all points lie so near a line that rounding says what lies inside the hull.
    [[nodiscard]] bool IsFlatAbout(PlanPoint a, PlanPoint b) const {
        constexpr double kFlat = 1e-12;
        return std::all_of(hull_.begin(), hull_.end(), [&](const std::pair<Index, Index>& edge) {
            const PlanPoint& p = points_[edge.first];
            const double area = (b.x - a.x) * (p.y - a.y) - (b.y - a.y) * (p.x - a.x);
            return std::fabs(area) <=
                   kFlat * Distance(a, b) * std::max(std::fabs(p.x), std::fabs(p.y));
        });
    }

    [[nodiscard]] std::vector<Index> Beginnings(const Stretch& stretch) const {
        if (stretch.slackFrom <= reach_) {
            return CornersNear(stretch.from);
        }
        std::vector<Index> near;
        for (Index i = 1; i <= points_.UpperBound(); ++i) {
            if (Distance(points_[i], stretch.from) <= stretch.slackFrom) {
                near.push_back(i);
            }
        }
        return near;
    }

    std::string FaultOf(const SpaceLine& line, LineRole role, std::size_t number) const {
        const std::vector<SpacePoint>& vertices = line.vertices;
        const bool isClosed = line.closed || role != LineRole::Breakline;
        const std::size_t sides = vertices.size() - (isClosed ? 0 : 1);
        const bool isDraped =
            std::none_of(vertices.begin(), vertices.end(),
                         [](const SpacePoint& vertex) { return HasHeight(vertex); });
        for (std::size_t i = 0; i < sides; ++i) {
            const PlanPoint from = PlanOf(vertices[i]);
            const PlanPoint to = PlanOf(vertices[i + 1 == vertices.size() ? 0 : i + 1]);
            const std::optional<Stretch> stretch =
                isDraped ? WithinHull(from, to) : Stretch{from, to, reach_, reach_};
            if (stretch && !IsChain(from, to, *stretch)) {
                return "Line " + std::to_string(number) + " of role " +
                       std::to_string(static_cast<int>(role)) +
                       " is no chain of edges from vertex " + std::to_string(i) + ".";
            }
        }
        return "";
    }

    // Whether constrained edges within reach of the side lead from the beginning of its stretch to
    // the end.
    [[nodiscard]] bool IsChain(PlanPoint from, PlanPoint to, const Stretch& stretch) const {
        if (Distance(stretch.from, stretch.to) <= reach_) {
            return true;
        }
        std::vector<Index> waiting = Beginnings(stretch);
        std::set<Index> seen(waiting.begin(), waiting.end());
        while (!waiting.empty()) {
            const Index next = waiting.back();
            waiting.pop_back();
            if (Distance(points_[next], stretch.to) <= stretch.slackTo) {
                return true;
            }
            for (const Index other : ways_[static_cast<std::size_t>(next)]) {
                if (DistanceToSide(from, to, points_[other]) <= reach_ &&
                    seen.insert(other).second) {
                    waiting.push_back(other);
                }
            }
        }
        return false;
    }

    std::string FaultOfHeld() const {
        for (std::size_t i = 0; i < constraints_.held.size(); ++i) {
            const HeldSide& side = constraints_.held[i];
            if (leftOut_.contains({LineRole::HeldSide, i})) {
                continue;
            }
            bool isEdge = false;
            for (const Index p : CornersNear(side.from)) {
                const std::vector<Index>& ways = ways_[static_cast<std::size_t>(p)];
                isEdge = isEdge || (points_[p] == side.from &&
                                    std::any_of(ways.begin(), ways.end(),
                                                [&](Index q) { return points_[q] == side.to; }));
            }
            if (!isEdge) {
                return "Held side " + std::to_string(i) + " is no edge.";
            }
        }
        return "";
    }

    const Array1<PlanPoint>& points_;
    const SurfaceConstraints& constraints_;
    const ConstrainedSurface& surface_;
    double reach_ = 0;
    double cell_ = 1;
    std::vector<std::vector<Index>> ways_; // along constrained edges, of point i at i
    std::vector<std::pair<Index, Index>> hull_;
    std::unordered_multimap<Cell, Index, CellHash> corners_;
    std::set<std::pair<LineRole, std::size_t>> leftOut_;
};

} // namespace

std::string SurfaceFaultOf(const Array1<PlanPoint>& coord, const SurfaceConstraints& constraints,
                           const ConstrainedSurface& surface, BaseArithmetic arithmetic) {
    const Array1<PlanPoint> points = AllPoints(coord, surface);
    std::string fault = TriangleCheck(points, surface, arithmetic).Fault();
    return fault.empty() && surface.triangles.count > 0
               ? LineCheck(points, constraints, surface).Fault()
               : fault;
}

} // namespace terravo

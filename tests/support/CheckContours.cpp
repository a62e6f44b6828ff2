#include "support/CheckContours.h"

#include "contour/TriangleCut.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <set>

namespace terravo::test {
namespace {

using Place = std::array<double, 2>;
using EdgeKey = std::array<Index, 2>; // two points, the smaller number first
using Segment = std::array<Place, 2>; // from, to
using Segments = std::multiset<Segment>;

Place PlaceOf(const ContourVertex& vertex) {
    return {vertex.x, vertex.y};
}

Segment Undirected(const Segment& s) {
    return s[0] < s[1] ? s : Segment{s[1], s[0]};
}

class Checker {
public:
    Checker(const PointSet& points, const TriangleList& triangles)
        : points_(points), triangles_(triangles) {
        for (Index t = 1; t <= triangles.count; ++t) {
            for (int j = 1; j <= 3; ++j) {
                ++sides_[KeyOf({t, j})];
            }
        }
    }

    std::string FaultOfAll(const ContourLevel& all) {
        CutPlainly(all.value);
        for (const ContourLine& line : all.lines) {
            const auto vertices = all.VerticesOf(line);
            if (!std::all_of(vertices.begin(), vertices.end(), [&](const ContourVertex& vertex) {
                    return IsWhereCrossed(vertex, all.value);
                })) {
                return "a vertex is not where the level crosses its edge";
            }
            if (!line.closed && !EndsAtTheEdge(vertices)) {
                return "an open line ends inside";
            }
            for (std::size_t i = line.closed ? 0 : 1; i < line.count; ++i) {
                const ContourVertex& from = vertices[i == 0 ? line.count - 1 : i - 1];
                const auto piece = pieces_.find(KeyOf(from.edge));
                if (piece == pieces_.end() || piece->second != KeyOf(vertices[i].edge)) {
                    return "a line passes what is no piece, or one that was passed before";
                }
                pieces_.erase(piece);
            }
        }
        return pieces_.empty() ? "" : "a piece is not passed";
    }

    std::string FaultOfDistinct(const ContourLevel& level, const ContourLevel& all) {
        Segments once;
        Segments ridges;
        std::set<Place> isolated;
        Expect(all, once, ridges, isolated);
        std::set<Place> found;
        for (const ContourVertex& point : level.isolatedPoints) {
            found.insert(PlaceOf(point));
        }
        if (found != isolated || found.size() != level.isolatedPoints.size()) {
            return "the isolated points are others";
        }
        std::map<Place, int> ridgesAt;
        for (const Segment& segment : ridges) {
            ++ridgesAt[segment[0]];
            ++ridgesAt[segment[1]];
        }
        int rank = 0;
        for (const ContourLine& line : level.lines) {
            const int lineRank = line.ridge ? 2 : line.closed ? 1 : 0;
            if (lineRank < rank) {
                return "the lines are out of order";
            }
            rank = lineRank;
            const auto vertices = level.VerticesOf(line);
            std::string fault = FaultOfLine(vertices, line, line.ridge ? ridges : once);
            if (fault.empty() && line.ridge) {
                fault = FaultOfRidge(vertices, line.closed, ridgesAt);
            }
            if (!fault.empty()) {
                return fault;
            }
        }
        return once.empty() && ridges.empty() ? "" : "something is left out";
    }

private:
    EdgeKey KeyOf(TriangleEdge edge) const {
        const Index a = triangles_.Vertex(edge.edge, edge.triangle);
        const Index b = triangles_.Vertex(NextEdge(edge.edge), edge.triangle);
        return {std::min(a, b), std::max(a, b)};
    }

    // The corner that is alone on its side is on the left when it is above, else on the right.
    void CutPlainly(double level) {
        pieces_.clear();
        for (Index t = 1; t <= triangles_.count; ++t) {
            for (int alone = 1; alone <= 3; ++alone) {
                const int second = NextEdge(alone);
                const int third = NextEdge(second);
                const auto isAbove = [&](int j) {
                    return points_.z[triangles_.Vertex(j, t)] >= level;
                };
                if (isAbove(second) != isAbove(third) || isAbove(alone) == isAbove(second)) {
                    continue;
                }
                const EdgeKey a = KeyOf({t, alone});
                const EdgeKey b = KeyOf({t, third});
                pieces_.insert(isAbove(alone) ? std::pair{a, b} : std::pair{b, a});
            }
        }
    }

    bool IsWhereCrossed(const ContourVertex& vertex, double level) const {
        const auto [lower, upper] = EndsOf(points_, triangles_, vertex.edge);
        const double low = points_.z[lower];
        const double high = points_.z[upper];
        const Place end{points_.x[upper], points_.y[upper]};
        if (!(low < level && level <= high) || (level >= high && PlaceOf(vertex) != end)) {
            return false;
        }
        const long double part = (static_cast<long double>(level) - low) / (high - low);
        const auto isNear = [&](double value, double a, double b) {
            return std::fabs(static_cast<double>(a + part * (b - a)) - value) <=
                   4e-16 * (std::fabs(a) + std::fabs(b));
        };
        return isNear(vertex.x, points_.x[lower], end[0]) &&
               isNear(vertex.y, points_.y[lower], end[1]);
    }

    bool EndsAtTheEdge(std::span<const ContourVertex> line) const {
        return sides_.at(KeyOf(line.front().edge)) == 1 && sides_.at(KeyOf(line.back().edge)) == 1;
    }

    // What is to be handed out of lines that still have their repeats.
    static void Expect(const ContourLevel& all, Segments& once, Segments& ridges,
                       std::set<Place>& isolated) {
        for (const ContourLine& line : all.lines) {
            const auto vertices = all.VerticesOf(line);
            bool hasLength = false;
            for (std::size_t i = line.closed ? 0 : 1; i < line.count; ++i) {
                const Segment piece{PlaceOf(vertices[i == 0 ? line.count - 1 : i - 1]),
                                    PlaceOf(vertices[i])};
                hasLength |= piece[0] != piece[1];
                const auto back = once.find({piece[1], piece[0]});
                if (piece[0] != piece[1] && back == once.end()) {
                    once.insert(piece);
                } else if (piece[0] != piece[1]) {
                    once.erase(back);
                    ridges.insert(Undirected(piece));
                }
            }
            if (!hasLength) {
                isolated.insert(PlaceOf(vertices[0]));
            }
        }
    }

    // True when the triangle in which the line arrives holds both ends of the piece.
    bool IsInItsTriangle(const ContourVertex& from, const ContourVertex& to) const {
        const Triangle& t = triangles_.table[to.edge.triangle];
        for (int j = 1; j <= 3; ++j) {
            const Index a = t.Vertex(j);
            const Index b = t.Vertex(NextEdge(j));
            const double ex = points_.x[b] - points_.x[a];
            const double ey = points_.y[b] - points_.y[a];
            for (const ContourVertex* p : {&from, &to}) {
                const double dx = p->x - points_.x[a];
                const double dy = p->y - points_.y[a];
                // Vertices are rounded at the size of their coordinates.
                const double size = std::fabs(points_.x[a]) + std::fabs(points_.y[a]) +
                                    std::fabs(ex) + std::fabs(ey);
                if (ex * dy - ey * dx < -1e-15 * size * (std::fabs(ex) + std::fabs(ey))) {
                    return false;
                }
            }
        }
        return true;
    }

    std::string FaultOfLine(std::span<const ContourVertex> vertices, const ContourLine& line,
                            Segments& expected) const {
        if (line.count < (line.closed ? 3U : 2U)) {
            return "a line has too few vertices";
        }
        if (!line.closed && !line.ridge && !EndsAtTheEdge(vertices)) {
            return "an open line ends inside";
        }
        for (std::size_t i = line.closed ? 0 : 1; i < line.count; ++i) {
            const ContourVertex& from = vertices[i == 0 ? line.count - 1 : i - 1];
            const Segment segment{PlaceOf(from), PlaceOf(vertices[i])};
            if (segment[0] == segment[1]) {
                return "a vertex is repeated";
            }
            const auto found = expected.find(line.ridge ? Undirected(segment) : segment);
            if (found == expected.end()) {
                return "a line passes what it should not";
            }
            expected.erase(found);
            const bool mayLieAcross = line.ridge || (!line.closed && i == line.count - 1);
            if (!mayLieAcross && !IsInItsTriangle(from, vertices[i])) {
                return "a piece lies outside its triangle";
            }
        }
        return "";
    }

    static std::string FaultOfRidge(std::span<const ContourVertex> vertices, bool closed,
                                    const std::map<Place, int>& ridgesAt) {
        for (std::size_t i = 0; i < vertices.size(); ++i) {
            const bool isEnd = !closed && (i == 0 || i == vertices.size() - 1);
            const bool isPlain = ridgesAt.at(PlaceOf(vertices[i])) == 2;
            // A closed ridge may hang on one fork, with which it begins.
            if (isEnd ? isPlain : !isPlain && !(closed && i == 0)) {
                return "a ridge does not go from fork to fork";
            }
        }
        return "";
    }

    const PointSet& points_;
    const TriangleList& triangles_;
    std::map<EdgeKey, int> sides_; // number of triangles at an edge
    std::map<EdgeKey, EdgeKey> pieces_;
};

} // namespace

std::string ContourFaultOf(const PointSet& points, const TriangleList& triangles,
                           const LevelSet& levels) {
    const auto all = MakeContourSet(points, triangles, levels, {}, Repeats::Keep);
    const auto distinct = MakeContourSet(points, triangles, levels);
    Checker checker(points, triangles);
    for (Index k = 1; k <= levels.UpperBound(); ++k) {
        std::string fault = checker.FaultOfAll((*all)[k]);
        if (fault.empty()) {
            fault = checker.FaultOfDistinct((*distinct)[k], (*all)[k]);
        }
        if (!fault.empty()) {
            return "level " + std::to_string(levels[k].value) + ": " + fault;
        }
    }
    return "";
}

bool ArePiecesOf(const PointSet& points, const TriangleList& triangles, double level,
                 const std::vector<LevelPiece>& pieces) {
    auto piece = pieces.begin();
    for (Index t = 1; t <= triangles.count; ++t) {
        std::array<SpacePoint, 3> corners;
        for (int j = 1; j <= 3; ++j) {
            const Index i = triangles.Vertex(j, t);
            corners[static_cast<std::size_t>(j) - 1] = {points.x[i], points.y[i], points.z[i]};
        }
        const CutPoints cut = CutTriangleByPlane(corners, Plane::AtLevel(level));
        if (cut.Count() == 1 || cut.Count() == 2) {
            const SpacePoint& end = cut[cut.Count()];
            const Segment expected{{{cut[1].x, cut[1].y}, {end.x, end.y}}};
            if (piece == pieces.end() || piece->isSegment != (cut.Count() == 2)) {
                return false;
            }
            const Segment given{{{piece->x1, piece->y1}, {piece->x2, piece->y2}}};
            if (given < expected || expected < given) { // whatever is no number is the same
                return false;
            }
            ++piece;
        }
    }
    return piece == pieces.end();
}

} // namespace terravo::test

#include "triangulation/TriangulationCheck.h"

#include "triangulation/exact/ExactSigns.h"
#include "triangulation/modDelaunay2D.h"

#include <algorithm>
#include <tuple>
#include <vector>

namespace terravo {
namespace {

class Checker {
public:
    Checker(const Array1<PlanPoint>& coord, const TriangleList& triangles)
        : coord_(coord), triangles_(triangles), signs_(coord), isCorner_(coord.UpperBound()) {}

    bool IsSound() {
        for (Index t = 1; t <= triangles_.count; ++t) {
            if (!IsSound(t)) {
                return false;
            }
        }
        return hullEdges_ > 0 && HullGoesRoundOnce() && NoPointIsMissing();
    }

private:
    [[nodiscard]] Index StartNumber(TriangleEdge edge) const {
        return triangles_.Vertex(edge.edge, edge.triangle);
    }
    [[nodiscard]] Index EndNumber(TriangleEdge edge) const {
        return triangles_.Vertex(NextEdge(edge.edge), edge.triangle);
    }
    [[nodiscard]] const PlanPoint& Start(TriangleEdge edge) const {
        return coord_[StartNumber(edge)];
    }
    [[nodiscard]] const PlanPoint& End(TriangleEdge edge) const { return coord_[EndNumber(edge)]; }

    bool IsSound(Index t) {
        const Triangle& triangle = triangles_.table[t];
        for (const Index vertex : triangle.vertices) {
            if (vertex < 1 || vertex > coord_.UpperBound()) {
                return false;
            }
            isCorner_[vertex] = 1;
        }
        const auto [a, b, c] = triangle.vertices;
        if (signs_.Turn(coord_[a], coord_[b], coord_[c]) <= 0) {
            return false;
        }
        for (int j = 1; j <= 3; ++j) {
            const Index across = triangle.Neighbour(j);
            if (across < 0) {
                anyHullEdge_ = {t, j};
                ++hullEdges_;
            }
            if (across == 0 || (across > 0 && !IsLinkedBack({t, j}, across))) {
                return false;
            }
        }
        return true;
    }

    [[nodiscard]] bool IsLinkedBack(TriangleEdge edge, Index across) const {
        if (across > triangles_.count) {
            return false;
        }
        const Triangle& other = triangles_.table[across];
        for (int j = 1; j <= 3; ++j) {
            if (other.Neighbour(j) == edge.triangle) {
                return other.Vertex(j) == EndNumber(edge) &&
                       other.Vertex(NextEdge(j)) == StartNumber(edge);
            }
        }
        return false;
    }

    // Directions in the upper half of the circle, the positive x axis included. Along a ring that
    // turns left they begin once a round.
    static bool PointsUp(const PlanPoint& from, const PlanPoint& to) {
        return to.y > from.y || (!(to.y < from.y) && to.x > from.x);
    }

    [[nodiscard]] bool HullGoesRoundOnce() const {
        Index edges = 0;
        int rounds = 0;
        TriangleEdge edge = anyHullEdge_;
        do {
            const Index link = triangles_.Neighbour(edge.edge, edge.triangle);
            const TriangleEdge next = HullEdgeFromLink(link);
            if (link >= 0 || next.triangle < 1 || next.triangle > triangles_.count ||
                ++edges > hullEdges_ || EndNumber(edge) != StartNumber(next) ||
                signs_.Turn(Start(edge), End(edge), End(next)) < 0) {
                return false;
            }
            const bool begins =
                PointsUp(Start(next), End(next)) && !PointsUp(Start(edge), End(edge));
            rounds += begins ? 1 : 0;
            edge = next;
        } while (!(edge == anyHullEdge_));
        return edges == hullEdges_ && rounds == 1;
    }

    // A point that is no corner is at the place of one, or the walk takes it for one.
    [[nodiscard]] bool NoPointIsMissing() const {
        const auto before = [](const PlanPoint& p, const PlanPoint& q) {
            return std::tie(p.x, p.y) < std::tie(q.x, q.y);
        };
        std::vector<PlanPoint> corners;
        for (Index i = 1; i <= coord_.UpperBound(); ++i) {
            if (isCorner_[i] != 0) {
                corners.push_back(coord_[i]);
            }
        }
        std::sort(corners.begin(), corners.end(), before);
        Index start = 1;
        for (Index i = 1; i <= coord_.UpperBound(); ++i) {
            if (isCorner_[i] != 0 ||
                std::binary_search(corners.begin(), corners.end(), coord_[i], before)) {
                continue;
            }
            const modDelaunay2D::WalkResult place =
                modDelaunay2D::WalkToPoint(coord_[i], coord_, triangles_, start);
            if (place.ierr != modDelaunay2D::Ierr::kDone || place.location < 4) {
                return false;
            }
            start = place.triangle;
        }
        return true;
    }

    const Array1<PlanPoint>& coord_;
    const TriangleList& triangles_;
    ExactSigns signs_;
    Array1<char> isCorner_;
    TriangleEdge anyHullEdge_;
    Index hullEdges_ = 0;
};

} // namespace

bool IsTriangulation(const Array1<PlanPoint>& coord, const TriangleList& triangles) {
    return Checker(coord, triangles).IsSound();
}

} // namespace terravo

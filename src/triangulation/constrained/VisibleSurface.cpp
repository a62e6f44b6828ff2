#include "triangulation/constrained/VisibleSurface.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <utility>

namespace terravo {
namespace {

bool IsMarked(const EdgeMarks& marks, TriangleEdge edge) {
    return edge.triangle <= marks.UpperBound() && ((marks[edge.triangle] >> (edge.edge - 1)) & 1);
}

// Calls with every edge that has no triangle on its other side.
template <class Visit>
void ForEachHullEdge(const TriangleList& triangles, Visit visit) {
    for (Index t = 1; t <= triangles.count; ++t) {
        for (int j = 1; j <= 3; ++j) {
            if (triangles.Neighbour(j, t) <= 0) {
                visit(TriangleEdge{t, j});
            }
        }
    }
}

// Rings are closed, so it does not matter on which way a triangle is reached.
class ParityFlood {
public:
    ParityFlood(const TriangleList& triangles, const EdgeMarks& marks)
        : triangles_(triangles), marks_(marks), isOdd_(triangles.count, kUnknown) {}

    // 1 for triangles inside an odd number of rings.
    Array1<char> Run() {
        ForEachHullEdge(triangles_, [this](TriangleEdge edge) { Cross(edge, edge.triangle, 0); });
        while (!reached_.empty()) {
            const Index t = reached_.back();
            reached_.pop_back();
            for (int j = 1; j <= 3; ++j) {
                if (triangles_.Neighbour(j, t) > 0) {
                    Cross({t, j}, triangles_.Neighbour(j, t), isOdd_[t]);
                }
            }
        }
        return std::move(isOdd_);
    }

private:
    static constexpr char kUnknown = 2;

    void Cross(TriangleEdge edge, Index into, char isOdd) {
        if (isOdd_[into] == kUnknown) {
            isOdd_[into] = static_cast<char>(IsMarked(marks_, edge) ? 1 - isOdd : isOdd);
            reached_.push_back(into);
        }
    }

    const TriangleList& triangles_;
    const EdgeMarks& marks_;
    Array1<char> isOdd_;
    std::vector<Index> reached_;
};

// A ring beside the hull leaves no mark, and two that are equal cancel theirs; they count all the
// same.
bool HasRing(const ConstrainedSurface& surface, LineRole role) {
    return std::any_of(surface.lines.begin(), surface.lines.end(),
                       [role](const LaidLine& line) { return line.role == role; });
}

class LongSidePeeler {
public:
    LongSidePeeler(const Array1<PlanPoint>& coord, const TriangleList& triangles,
                   const EdgeMarks& constrained, double longestSide, HiddenTriangles& hidden)
        : coord_(coord), triangles_(triangles), constrained_(constrained),
          longestSide_(longestSide), hidden_(hidden) {}

    Index Run() {
        for (Index t = 1; t <= triangles_.count; ++t) {
            for (int j = 1; j <= 3; ++j) {
                if (!IsVisible(triangles_.Neighbour(j, t))) {
                    HideAtRim({t, j});
                }
            }
        }
        while (!peeled_.empty()) {
            const Index t = peeled_.back();
            peeled_.pop_back();
            for (int j = 1; j <= 3; ++j) {
                HideBeyond({t, j});
            }
        }
        return count_;
    }

private:
    [[nodiscard]] bool IsVisible(Index t) const { return t > 0 && hidden_[t] == 0; }

    void HideAtRim(TriangleEdge edge) {
        if (IsVisible(edge.triangle) && IsLong(edge)) {
            Hide(edge.triangle);
        }
    }

    void HideBeyond(TriangleEdge edge) {
        const Index beyond = triangles_.Neighbour(edge.edge, edge.triangle);
        if (IsVisible(beyond) && IsLong(edge)) {
            Hide(beyond);
        }
    }

    void Hide(Index t) {
        hidden_[t] = 1;
        peeled_.push_back(t);
        ++count_;
    }

    [[nodiscard]] bool IsLong(TriangleEdge edge) const {
        const PlanPoint from = coord_[triangles_.Vertex(edge.edge, edge.triangle)];
        const PlanPoint to = coord_[triangles_.Vertex(NextEdge(edge.edge), edge.triangle)];
        return !IsMarked(constrained_, edge) &&
               std::hypot(to.x - from.x, to.y - from.y) > longestSide_;
    }

    const Array1<PlanPoint>& coord_;
    const TriangleList& triangles_;
    const EdgeMarks& constrained_;
    double longestSide_;
    HiddenTriangles& hidden_;
    std::vector<Index> peeled_; // whose neighbours have not been looked at
    Index count_ = 0;
};

class Compacter {
public:
    Compacter(const TriangleList& triangles, const HiddenTriangles& hidden)
        : triangles_(triangles), number_(triangles.count) {
        for (Index t = 1; t <= triangles.count; ++t) {
            number_[t] = hidden[t] == 0 ? ++visible_.count : 0;
        }
        visible_.table = Array1<Triangle>(visible_.count);
    }

    TriangleList Run() {
        for (Index t = 1; t <= triangles_.count; ++t) {
            if (number_[t] > 0) {
                Triangle& triangle = visible_.table[number_[t]];
                triangle.vertices = triangles_.table[t].vertices;
                for (int j = 1; j <= 3; ++j) {
                    const Index across = NumberAcross({t, j});
                    triangle.SetNeighbour(j, across > 0 ? across : LinkFrom({t, j}));
                }
            }
        }
        return std::move(visible_);
    }

private:
    // New number of the triangle on the other side of an edge; 0 at a rim.
    [[nodiscard]] Index NumberAcross(TriangleEdge edge) const {
        const Index across = triangles_.Neighbour(edge.edge, edge.triangle);
        return across > 0 ? number_[across] : 0;
    }

    // From a rim edge round its end to the next one.
    [[nodiscard]] Index LinkFrom(TriangleEdge edge) const {
        TriangleEdge next{edge.triangle, NextEdge(edge.edge)};
        while (NumberAcross(next) > 0) {
            const Index across = triangles_.Neighbour(next.edge, next.triangle);
            next = {across, NextEdge(EdgeTowards(across, next.triangle))};
        }
        return LinkToHullEdge({number_[next.triangle], next.edge});
    }

    [[nodiscard]] int EdgeTowards(Index from, Index to) const {
        return triangles_.Neighbour(1, from) == to   ? 1
               : triangles_.Neighbour(2, from) == to ? 2
                                                     : 3;
    }

    const TriangleList& triangles_;
    Array1<Index> number_; // new ones; 0: hidden
    TriangleList visible_;
};

bool IsAnyHidden(const HiddenTriangles& hidden) {
    return std::any_of(hidden.begin(), hidden.end(), [](char isHidden) { return isHidden != 0; });
}

std::vector<Index> PointsLosingAll(const TriangleList& triangles, const HiddenTriangles& before,
                                   const HiddenTriangles& after) {
    Index last = 0;
    for (Index t = 1; t <= triangles.count; ++t) {
        const std::array<Index, 3>& vertices = triangles.table[t].vertices;
        last = std::max(last, *std::max_element(vertices.begin(), vertices.end()));
    }
    constexpr char kHad = 1;
    constexpr char kHas = 2;
    Array1<char> state(last, 0);
    for (Index t = 1; t <= triangles.count; ++t) {
        for (const Index point : triangles.table[t].vertices) {
            state[point] = std::max(state[point], after[t] == 0    ? kHas
                                                  : before[t] == 0 ? kHad
                                                                   : char{0});
        }
    }
    std::vector<Index> lost;
    for (Index point = 1; point <= last; ++point) {
        if (state[point] == kHad) {
            lost.push_back(point);
        }
    }
    return lost;
}

} // namespace

HiddenTriangles HideByRings(const ConstrainedSurface& surface) {
    const TriangleList& triangles = surface.triangles;
    HiddenTriangles hidden(triangles.count, 0);
    if (HasRing(surface, LineRole::Boundary)) {
        const Array1<char> isInside = ParityFlood(triangles, surface.boundary).Run();
        std::transform(isInside.begin(), isInside.end(), hidden.begin(),
                       [](char inside) { return static_cast<char>(inside == 0 ? 1 : 0); });
    }
    if (HasRing(surface, LineRole::Hole)) {
        const Array1<char> isInHole = ParityFlood(triangles, surface.holes).Run();
        std::transform(isInHole.begin(), isInHole.end(), hidden.begin(), hidden.begin(),
                       [](char inHole, char isHidden) { return std::max(inHole, isHidden); });
    }
    return hidden;
}

Index HideLongSides(const Array1<PlanPoint>& coord, const TriangleList& triangles,
                    const EdgeMarks& constrained, double longestSide, HiddenTriangles& hidden) {
    return LongSidePeeler(coord, triangles, constrained, longestSide, hidden).Run();
}

TriangleList VisibleTriangles(const TriangleList& triangles, const HiddenTriangles& hidden) {
    return IsAnyHidden(hidden) ? Compacter(triangles, hidden).Run() : triangles;
}

TriangleList WithRims(const TriangleList& triangles) {
    return Compacter(triangles, HiddenTriangles(triangles.count, 0)).Run();
}

std::vector<Index> PointsWithoutTriangle(const TriangleList& triangles,
                                         const HiddenTriangles& hidden) {
    return PointsLosingAll(triangles, HiddenTriangles(triangles.count, 0), hidden);
}

LongestSideEffect EffectOfLongestSide(const Array1<PlanPoint>& coord, const TriangleList& triangles,
                                      const EdgeMarks& constrained, double longestSide,
                                      const HiddenTriangles& hidden) {
    LongestSideEffect effect;
    HiddenTriangles after = hidden;
    effect.triangles = HideLongSides(coord, triangles, constrained, longestSide, after);
    effect.points = PointsLosingAll(triangles, hidden, after);
    return effect;
}

} // namespace terravo

#include "contour/SurfaceOutline.h"

#include "triangulation/HullRings.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace terravo {
namespace {

class Peeler {
public:
    Peeler(const PointSet& points, const TriangleList& triangles)
        : points_(points), triangles_(triangles),
          isLeftOut_(static_cast<std::size_t>(triangles.count) + 1) {}

    SurfaceOutline Peel() {
        SurfaceOutline hull;
        for (const HullRing& ring : HullRings(triangles_)) {
            for (const HullStep& step : ring) {
                hull.edges.push_back(step.edge);
            }
        }
        for (const TriangleEdge& edge : hull.edges) {
            LeaveOutIfFlat(edge.triangle);
        }
        // NOLINTNEXTLINE(modernize-loop-convert): the list grows on the way.
        for (std::size_t i = 0; i < leftOut_.size(); ++i) {
            for (int j = 1; j <= 3; ++j) {
                LeaveOutIfFlat(triangles_.Neighbour(j, leftOut_[i]));
            }
        }
        return leftOut_.empty() || TakesTooMuch() ? hull : WithoutFlatOnes(hull);
    }

private:
    static constexpr double kMostPart = 1e-10; // of the area
    static constexpr double kDigits = 32 * std::numeric_limits<double>::epsilon();

    using Corners = std::array<PlanPoint, 3>;

    [[nodiscard]] Corners CornersOf(Index t) const {
        Corners corners;
        for (std::size_t j = 0; j < corners.size(); ++j) {
            const Index point = triangles_.table[t].vertices[j];
            corners[j] = {points_.x[point], points_.y[point]};
        }
        return corners;
    }

    static double TwiceAreaOf(const Corners& p) {
        return (p[1].x - p[0].x) * (p[2].y - p[0].y) - (p[2].x - p[0].x) * (p[1].y - p[0].y);
    }

    // Whether a triangle is no wider than the last digits of its coordinates.
    [[nodiscard]] bool IsFlat(Index t) const {
        const Corners p = CornersOf(t);
        double longest = 0;
        double farthest = 0;
        for (std::size_t j = 0; j < p.size(); ++j) {
            const PlanPoint next = p[(j + 1) % p.size()];
            longest = std::max(longest, std::hypot(next.x - p[j].x, next.y - p[j].y));
            farthest = std::max({farthest, std::fabs(p[j].x), std::fabs(p[j].y)});
        }
        return TwiceAreaOf(p) <= kDigits * farthest * longest;
    }

    [[nodiscard]] bool IsLeftOut(Index t) const { return isLeftOut_[static_cast<std::size_t>(t)]; }

    void LeaveOutIfFlat(Index t) {
        if (t > 0 && !IsLeftOut(t) && IsFlat(t)) {
            isLeftOut_[static_cast<std::size_t>(t)] = true;
            leftOut_.push_back(t);
        }
    }

    [[nodiscard]] bool TakesTooMuch() const {
        double all = 0;
        double taken = 0;
        for (Index t = 1; t <= triangles_.count; ++t) {
            const double twice = TwiceAreaOf(CornersOf(t));
            all += twice;
            taken += IsLeftOut(t) ? twice : 0;
        }
        return taken > kMostPart * all;
    }

    [[nodiscard]] SurfaceOutline WithoutFlatOnes(const SurfaceOutline& hull) {
        SurfaceOutline outline;
        for (const TriangleEdge& edge : hull.edges) {
            if (!IsLeftOut(edge.triangle)) {
                outline.edges.push_back(edge);
            }
        }
        for (const Index t : leftOut_) {
            for (int j = 1; j <= 3; ++j) {
                const Index across = triangles_.Neighbour(j, t);
                if (across > 0 && !IsLeftOut(across)) {
                    outline.edges.push_back({across, EdgeTowards(across, t)});
                }
            }
        }
        outline.leftOut = std::move(leftOut_);
        return outline;
    }

    [[nodiscard]] int EdgeTowards(Index from, Index to) const {
        return triangles_.Neighbour(1, from) == to   ? 1
               : triangles_.Neighbour(2, from) == to ? 2
                                                     : 3;
    }

    const PointSet& points_;
    const TriangleList& triangles_;
    std::vector<bool> isLeftOut_; // of a triangle
    std::vector<Index> leftOut_;
};

} // namespace

SurfaceOutline OutlineOf(const PointSet& points, const TriangleList& triangles) {
    return Peeler(points, triangles).Peel();
}

} // namespace terravo

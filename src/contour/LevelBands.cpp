#include "contour/LevelBands.h"

#include "contour/GroundRings.h"
#include "contour/RingArea.h"
#include "contour/SurfaceOutline.h"
#include "util/Parallel.h"

#include <algorithm>
#include <span>
#include <vector>

namespace terravo {
namespace {

struct BandSource {
    const PointSet& points;
    const TriangleList& triangles;
    const SurfaceOutline& outline;
    const std::function<PlanPoint(PlanPoint)>& round;
};

// Makes the band between two levels, of which either may be missing.
class BandMaker {
public:
    BandMaker(const BandSource& source, const ContourLevel* lower, const ContourLevel* upper)
        : source_(source), lower_(lower), upper_(upper) {}

    /// @param band  whose heights are known.
    void Make(LevelBand& band) {
        AddContours();
        for (const TriangleEdge& edge : source_.outline.edges) {
            AddOuterEdge(source_.triangles.Vertex(edge.edge, edge.triangle),
                         source_.triangles.Vertex(NextEdge(edge.edge), edge.triangle));
        }
        if (source_.round) {
            std::transform(lines_.places.begin(), lines_.places.end(), lines_.places.begin(),
                           source_.round);
        }
        const GroundEdges edges(lines_);
        const GroundRings rings = MakeGroundRings(edges);
        band.vertices.reserve(rings.edges.size());
        band.polygons.reserve(rings.pieces.size());
        for (const GroundPiece& piece : rings.pieces) {
            BandPolygon polygon;
            polygon.outer = Append(edges, rings.EdgesOf(piece.outer), band);
            for (const GroundRing& hole : piece.holes) {
                polygon.holes.push_back(Append(edges, rings.EdgesOf(hole), band));
            }
            band.polygons.push_back(std::move(polygon));
        }
    }

private:
    void AddContours() {
        if (lower_ != nullptr) {
            for (const ContourLine& line : lower_->lines) {
                AddLine(lower_->VerticesOf(line), line);
            }
            TakeBack(lower_->value, false);
        }
        if (upper_ != nullptr) {
            for (const ContourLine& line : upper_->lines) {
                const std::span<const ContourVertex> vertices = upper_->VerticesOf(line);
                backwards_.assign(vertices.rbegin(), vertices.rend());
                AddLine(backwards_, line);
            }
            TakeBack(upper_->value, true);
        }
    }

    // Goes the opposite way in the triangles that are left out, so that nothing remains there.
    void TakeBack(double level, bool isForward) {
        for (const Index t : source_.outline.leftOut) {
            PlanPoint begin;
            PlanPoint end;
            bool isCrossed = false;
            for (int j = 1; j <= 3; ++j) {
                const Index a = source_.triangles.Vertex(j, t);
                const Index b = source_.triangles.Vertex(NextEdge(j), t);
                const bool isAboveA = source_.points.z[a] >= level;
                const bool isAboveB = source_.points.z[b] >= level;
                if (isAboveA != isAboveB) {
                    (isAboveA ? begin : end) = Crossing(a, b, level);
                    isCrossed = true;
                }
            }
            if (isCrossed) {
                lines_.Begin();
                lines_.Add(isForward ? begin : end);
                lines_.Add(isForward ? end : begin);
            }
        }
    }

    void AddLine(std::span<const ContourVertex> vertices, const ContourLine& line) {
        if (line.ridge) {
            return;
        }
        lines_.Begin();
        for (const ContourVertex& v : vertices) {
            lines_.Add({v.x, v.y});
        }
        if (line.closed) {
            lines_.Add({vertices.front().x, vertices.front().y});
        }
    }

    // The part of an edge of the surface whose height is within the band.
    void AddOuterEdge(Index a, Index b) {
        const ContourLevel* beyondA = LevelBefore(a);
        const ContourLevel* beyondB = LevelBefore(b);
        if (beyondA != nullptr && beyondA == beyondB) {
            return;
        }
        lines_.Begin();
        lines_.Add(beyondA == nullptr ? PlaceOf(a) : Crossing(a, b, beyondA->value));
        lines_.Add(beyondB == nullptr ? PlaceOf(b) : Crossing(a, b, beyondB->value));
    }

    // The level that stands between a point and the band; none when the point is in the band.
    [[nodiscard]] const ContourLevel* LevelBefore(Index point) const {
        const double z = source_.points.z[point];
        if (lower_ != nullptr && z < lower_->value) {
            return lower_;
        }
        return upper_ != nullptr && z >= upper_->value ? upper_ : nullptr;
    }

    [[nodiscard]] PlanPoint PlaceOf(Index point) const {
        return {source_.points.x[point], source_.points.y[point]};
    }

    // In the same place as the end of the contour.
    [[nodiscard]] PlanPoint Crossing(Index a, Index b, double level) const {
        const bool isUphill = source_.points.z[a] < source_.points.z[b];
        const EdgeEnds ends{isUphill ? a : b, isUphill ? b : a};
        return PlaceOnEdge(source_.points, ends, PartOfEdge(source_.points, ends, level));
    }

    static RegionRing Append(const GroundEdges& edges, std::span<const Index> ring,
                             LevelBand& band) {
        const RegionRing made{band.vertices.size(), ring.size()};
        for (const Index e : ring) {
            band.vertices.push_back(edges.Places()[edges[e].from]);
        }
        return made;
    }

    const BandSource& source_;
    const ContourLevel* lower_;
    const ContourLevel* upper_;
    GroundLines lines_;
    std::vector<ContourVertex> backwards_; // one line of the upper level
};

} // namespace

Array1<LevelBand> MakeLevelBands(const PointSet& points, const TriangleList& triangles,
                                 const ContourSet& contours,
                                 const std::function<PlanPoint(PlanPoint)>& round) {
    const SurfaceOutline outline = OutlineOf(points, triangles);
    const BandSource source{points, triangles, outline, round};
    const Index levels = contours.UpperBound();
    Array1<LevelBand> bands(levels + 1);
    InParallel(levels + 1, [&](int piece) {
        const ContourLevel* lower = piece == 0 ? nullptr : &contours[piece];
        const ContourLevel* upper = piece == levels ? nullptr : &contours[piece + 1];
        LevelBand& band = bands[piece + 1];
        const auto [low, high] = points.extentZ;
        band.low = lower != nullptr   ? lower->value
                   : upper != nullptr ? std::min(low, upper->value)
                                      : low;
        band.high = upper != nullptr   ? upper->value
                    : lower != nullptr ? std::max(high, lower->value)
                                       : high;
        BandMaker(source, lower, upper).Make(band);
    });
    return bands;
}

double AreaOf(const LevelBand& band) {
    double area = 0;
    for (const BandPolygon& polygon : band.polygons) {
        area += AreaOfRing(band.VerticesOf(polygon.outer));
        for (const RegionRing& hole : polygon.holes) {
            area += AreaOfRing(band.VerticesOf(hole));
        }
    }
    return area;
}

} // namespace terravo

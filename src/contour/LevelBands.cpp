#include "contour/LevelBands.h"

#include "contour/GroundRings.h"
#include "contour/RingArea.h"
#include "contour/SurfaceOutline.h"
#include "util/Parallel.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <span>
#include <utility>
#include <vector>

namespace terravo {
namespace {

// Where the lines of a level cross the edges of the surface: smooth ones not where the straight
// edge has the height of the level.
class LinePlaces {
public:
    /// @param withInner  keeps the places on all edges.
    LinePlaces(const PointSet& points, const TriangleList& triangles, const ContourLevel& level,
               bool withInner) {
        const auto keep = [&](const ContourVertex& v) {
            if (v.edge.edge != 0) {
                const EdgeEnds ends = EndsOf(points, triangles, v.edge);
                places_.push_back({{ends.lower, ends.upper}, {v.x, v.y}});
            }
        };
        for (const ContourLine& line : level.lines) {
            const auto vertices = level.VerticesOf(line);
            if (line.ridge) {
                continue;
            }
            if (withInner) {
                std::for_each(vertices.begin(), vertices.end(), keep);
            } else if (!line.closed) {
                keep(vertices.front());
                keep(vertices.back());
            }
        }
        std::sort(places_.begin(), places_.end(),
                  [](const Place& a, const Place& b) { return a.edge < b.edge; });
    }

    /// Null where no line has a vertex on the edge.
    [[nodiscard]] const PlanPoint* On(EdgeEnds ends) const {
        const Edge edge(ends.lower, ends.upper);
        const auto found =
            std::lower_bound(places_.begin(), places_.end(), edge,
                             [](const Place& a, const Edge& b) { return a.edge < b; });
        return found != places_.end() && found->edge == edge ? &found->place : nullptr;
    }

private:
    using Edge = std::pair<Index, Index>; // ends, the lower first
    struct Place {
        Edge edge;
        PlanPoint place;
    };

    std::vector<Place> places_;
};

struct BandSource {
    const PointSet& points;
    const TriangleList& triangles;
    const SurfaceOutline& outline;
    const std::function<PlanPoint(PlanPoint)>& round;
};

// A level at an edge of a band.
struct BandEnd {
    const ContourLevel& level;
    const LinePlaces& places;
};

// Makes the band between two levels, of which either may be missing.
class BandMaker {
public:
    BandMaker(const BandSource& source, const BandEnd* lower, const BandEnd* upper)
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
            for (const ContourLine& line : lower_->level.lines) {
                AddLine(lower_->level.VerticesOf(line), line);
            }
            TakeBack(*lower_, false);
        }
        if (upper_ != nullptr) {
            for (const ContourLine& line : upper_->level.lines) {
                const std::span<const ContourVertex> vertices = upper_->level.VerticesOf(line);
                backwards_.assign(vertices.rbegin(), vertices.rend());
                AddLine(backwards_, line);
            }
            TakeBack(*upper_, true);
        }
    }

    // Goes the opposite way in the triangles that are left out, so that nothing remains there.
    void TakeBack(const BandEnd& bandEnd, bool isForward) {
        for (const Index t : source_.outline.leftOut) {
            PlanPoint begin;
            PlanPoint end;
            bool isCrossed = false;
            for (int j = 1; j <= 3; ++j) {
                const Index a = source_.triangles.Vertex(j, t);
                const Index b = source_.triangles.Vertex(NextEdge(j), t);
                const bool isAboveA = source_.points.z[a] >= bandEnd.level.value;
                const bool isAboveB = source_.points.z[b] >= bandEnd.level.value;
                if (isAboveA != isAboveB) {
                    (isAboveA ? begin : end) = Crossing(a, b, bandEnd);
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
        const BandEnd* beyondA = LevelBefore(a);
        const BandEnd* beyondB = LevelBefore(b);
        if (beyondA != nullptr && beyondA == beyondB) {
            return;
        }
        lines_.Begin();
        lines_.Add(beyondA == nullptr ? PlaceOf(a) : Crossing(a, b, *beyondA));
        lines_.Add(beyondB == nullptr ? PlaceOf(b) : Crossing(a, b, *beyondB));
    }

    // The level that stands between a point and the band; none when the point is in the band.
    [[nodiscard]] const BandEnd* LevelBefore(Index point) const {
        const double z = source_.points.z[point];
        if (lower_ != nullptr && z < lower_->level.value) {
            return lower_;
        }
        return upper_ != nullptr && z >= upper_->level.value ? upper_ : nullptr;
    }

    [[nodiscard]] PlanPoint PlaceOf(Index point) const {
        return {source_.points.x[point], source_.points.y[point]};
    }

    // In the same place as the end of the contour; where there is none because it has shrunk to a
    // point, in that point.
    [[nodiscard]] PlanPoint Crossing(Index a, Index b, const BandEnd& bandEnd) const {
        const bool isUphill = source_.points.z[a] < source_.points.z[b];
        const EdgeEnds ends{isUphill ? a : b, isUphill ? b : a};
        const PlanPoint* end = bandEnd.places.On(ends);
        return end != nullptr ? *end
                              : PlaceOnEdge(source_.points, ends,
                                            PartOfEdge(source_.points, ends, bandEnd.level.value));
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
    const BandEnd* lower_;
    const BandEnd* upper_;
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
    std::vector<std::unique_ptr<LinePlaces>> places(static_cast<std::size_t>(levels));
    InParallel(levels, [&](int piece) {
        places[static_cast<std::size_t>(piece)] = std::make_unique<LinePlaces>(
            points, triangles, contours[piece + 1], !outline.leftOut.empty());
    });
    const auto endAt = [&](Index k) {
        return BandEnd{contours[k], *places[static_cast<std::size_t>(k) - 1]};
    };
    Array1<LevelBand> bands(levels + 1);
    InParallel(levels + 1, [&](int piece) {
        const auto lower = piece == 0 ? std::nullopt : std::optional(endAt(piece));
        const auto upper = piece == levels ? std::nullopt : std::optional(endAt(piece + 1));
        LevelBand& band = bands[piece + 1];
        const auto [low, high] = points.extentZ;
        band.low = lower ? lower->level.value : upper ? std::min(low, upper->level.value) : low;
        band.high = upper ? upper->level.value : lower ? std::max(high, lower->level.value) : high;
        BandMaker(source, lower ? &*lower : nullptr, upper ? &*upper : nullptr).Make(band);
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

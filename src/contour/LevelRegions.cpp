#include "contour/LevelRegions.h"

#include "contour/RingArea.h"
#include "triangulation/HullRings.h"
#include "util/Parallel.h"

#include <algorithm>
#include <cmath>
#include <tuple>

namespace terravo {
namespace {

// The rings of the hull one after another, and where each edge stands in them.
class HullWalk {
public:
    struct Ring {
        std::size_t first = 0;
        std::size_t count = 0;
    };
    static constexpr std::size_t kNowhere = static_cast<std::size_t>(-1);

    explicit HullWalk(const TriangleList& triangles) {
        for (const HullRing& ring : HullRings(triangles)) {
            rings_.push_back({points_.size(), ring.size()});
            for (const HullStep& step : ring) {
                places_.emplace_back(step.edge.triangle, step.edge.edge, points_.size());
                points_.push_back(step.point);
            }
        }
        std::sort(places_.begin(), places_.end());
    }

    [[nodiscard]] const std::vector<Ring>& Rings() const { return rings_; }
    /// The point that the edge at a place begins with.
    [[nodiscard]] Index PointAt(std::size_t place) const { return points_[place]; }
    /// The place of an edge; kNowhere when it is not of the hull.
    [[nodiscard]] std::size_t PlaceOf(TriangleEdge edge) const {
        const auto found = std::lower_bound(places_.begin(), places_.end(),
                                            std::tuple(edge.triangle, edge.edge, std::size_t{0}));
        return found != places_.end() && std::get<0>(*found) == edge.triangle &&
                       std::get<1>(*found) == edge.edge
                   ? std::get<2>(*found)
                   : kNowhere;
    }

private:
    std::vector<Ring> rings_;
    std::vector<Index> points_;
    std::vector<std::tuple<Index, int, std::size_t>> places_; // triangle, edge, place
};

// The ring that is being made, without repeated vertices and without ways there and back.
class RingBuilder {
public:
    explicit RingBuilder(LevelRegion& region) : region_(region) {}

    void Add(PlanPoint p) {
        std::vector<PlanPoint>& all = region_.vertices;
        if (Count() >= 2 && all[all.size() - 2] == p) {
            all.pop_back();
        } else if (Count() == 0 || all.back() != p) {
            all.push_back(p);
        }
    }

    void End() {
        std::size_t begin = first_;
        std::vector<PlanPoint>& all = region_.vertices;
        // The same round the end of the ring.
        while (all.size() - begin >= 2) {
            if (all.back() == all[begin]) {
                all.pop_back();
            } else if (all.size() - begin >= 3 && all.back() == all[begin + 1]) {
                ++begin;
            } else {
                break;
            }
        }
        const auto ring = all.begin() + static_cast<std::ptrdiff_t>(first_);
        all.erase(ring, all.size() - begin >= 3 ? ring + static_cast<std::ptrdiff_t>(begin - first_)
                                                : all.end());
        if (all.size() > first_) {
            region_.rings.push_back({first_, all.size() - first_});
        }
        first_ = all.size();
    }

private:
    [[nodiscard]] std::size_t Count() const { return region_.vertices.size() - first_; }

    LevelRegion& region_;
    std::size_t first_ = 0;
};

class RegionMaker {
public:
    RegionMaker(const PointSet& points, const HullWalk& hull, const ContourLevel& level,
                LevelRegion& region)
        : points_(points), hull_(hull), level_(level), region_(region), ring_(region),
          onward_(level.lines.size()) {
        region_.value = level.value;
    }

    void Make() {
        FindCrossings();
        for (const HullWalk::Ring& ring : hull_.Rings()) {
            Join(ring);
        }
        std::vector<bool> used(level_.lines.size());
        for (std::size_t i = 0; i < level_.lines.size(); ++i) {
            if (!level_.lines[i].ridge && !used[i]) {
                Follow(i, used);
            }
        }
    }

private:
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    // Where an open line begins or ends.
    struct Crossing {
        std::size_t place = 0; // of the edge
        std::size_t line = 0;
        bool begins = false;
    };

    // How a ring goes on at the end of an open line.
    struct Onward {
        std::size_t line = kNone;
        std::size_t place = 0;  // of the hull edge with the end of the line
        std::size_t points = 0; // of the hull to the beginning of the next one
        HullWalk::Ring ring;
    };

    void FindCrossings() {
        for (std::size_t i = 0; i < level_.lines.size(); ++i) {
            const ContourLine& line = level_.lines[i];
            if (!line.closed && !line.ridge) {
                const auto vertices = level_.VerticesOf(line);
                crossings_.push_back({hull_.PlaceOf(vertices.front().edge), i, true});
                crossings_.push_back({hull_.PlaceOf(vertices.back().edge), i, false});
            }
        }
        std::sort(crossings_.begin(), crossings_.end(), [](const Crossing& a, const Crossing& b) {
            return std::tie(a.place, a.begins, a.line) < std::tie(b.place, b.begins, b.line);
        });
    }

    // Leads every line that ends on a ring of the hull to the next one that begins there.
    void Join(const HullWalk::Ring& ring) {
        const auto at = [&](std::size_t place) {
            return std::partition_point(crossings_.begin(), crossings_.end(),
                                        [&](const Crossing& c) { return c.place < place; });
        };
        const std::span<const Crossing> here(at(ring.first), at(ring.first + ring.count));
        if (here.empty()) {
            if (IsAbove(ring)) {
                AddHull(ring, ring.first, ring.count);
                ring_.End();
            }
            return;
        }
        for (std::size_t i = 0; i < here.size(); ++i) {
            const Crossing& next = here[(i + 1) % here.size()];
            if (!here[i].begins && next.begins) {
                onward_[here[i].line] = {next.line, here[i].place,
                                         (next.place + ring.count - here[i].place) % ring.count,
                                         ring};
            }
        }
    }

    // Whether most of the way round a ring is above. Where no line begins or ends, there can still
    // be single points on the other side, of lines that have shrunk to them.
    [[nodiscard]] bool IsAbove(const HullWalk::Ring& ring) const {
        double above = 0; // less what is below
        for (std::size_t i = 0; i < ring.count; ++i) {
            const Index a = hull_.PointAt(ring.first + i);
            const Index b = hull_.PointAt(ring.first + (i + 1) % ring.count);
            const double length =
                std::abs(points_.x[b] - points_.x[a]) + std::abs(points_.y[b] - points_.y[a]);
            above += length * (2 * PartAbove(points_.z[a], points_.z[b]) - 1);
        }
        return above > 0;
    }

    [[nodiscard]] double PartAbove(double a, double b) const {
        const auto [low, high] = std::minmax(a, b);
        return low >= level_.value   ? 1
               : high < level_.value ? 0
                                     : (high - level_.value) / (high - low);
    }

    // So many points of a ring, from the one at a place.
    void AddHull(const HullWalk::Ring& ring, std::size_t place, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) {
            const Index p = hull_.PointAt(ring.first + (place - ring.first + i) % ring.count);
            ring_.Add({points_.x[p], points_.y[p]});
        }
    }

    void Follow(std::size_t i, std::vector<bool>& used) {
        while (i != kNone && !used[i]) {
            used[i] = true;
            for (const ContourVertex& v : level_.VerticesOf(level_.lines[i])) {
                ring_.Add({v.x, v.y});
            }
            const Onward& onward = onward_[i];
            AddHull(onward.ring, onward.place + 1, onward.points);
            i = onward.line;
        }
        ring_.End();
    }

    const PointSet& points_;
    const HullWalk& hull_;
    const ContourLevel& level_;
    LevelRegion& region_;
    RingBuilder ring_;
    std::vector<Crossing> crossings_; // in the order of the hull
    std::vector<Onward> onward_;      // of each line
};

} // namespace

Array1<LevelRegion> MakeLevelRegions(const PointSet& points, const TriangleList& triangles,
                                     const ContourSet& contours) {
    const HullWalk hull(triangles);
    Array1<LevelRegion> regions(contours.UpperBound());
    InParallel(contours.UpperBound(), [&](int piece) {
        RegionMaker(points, hull, contours[piece + 1], regions[piece + 1]).Make();
    });
    return regions;
}

double AreaOf(const LevelRegion& region) {
    double area = 0;
    for (const RegionRing& ring : region.rings) {
        area += AreaOfRing(region.VerticesOf(ring));
    }
    return area;
}

} // namespace terravo

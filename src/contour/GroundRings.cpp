#include "contour/GroundRings.h"

#include "contour/GroundSweep.h"
#include "contour/RingArea.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace terravo {
namespace {

// Says for every edge which one it goes on with.
class Linker {
public:
    Linker(const GroundEdges& edges, const ExactSigns& signs)
        : edges_(edges), signs_(signs), next_(edges.Count()) {}

    Array1<Index> Link() {
        for (Index place = 1; place <= edges_.Places().UpperBound(); ++place) {
            const GroundEdges::Range out = edges_.OutOf(place);
            if (out.Count() == 1 && edges_.Into(place).size() == 1) {
                next_[edges_.Into(place).front()] = out.first;
            } else if (out.Count() > 0) {
                LinkAt(place);
            }
        }
        return std::move(next_);
    }

private:
    struct Spoke {
        Index edge = 0;
        Index end = 0; // the other one
        bool isOut = false;
    };

    void LinkAt(Index place) {
        spokes_.clear();
        for (Index e = edges_.OutOf(place).first; e < edges_.OutOf(place).last; ++e) {
            spokes_.push_back({e, edges_[e].to, true});
        }
        for (const Index e : edges_.Into(place)) {
            spokes_.push_back({e, edges_[e].from, false});
        }
        SortClockwise(place);
        // An edge that comes in has its ground clockwise of it, up to the one that goes out. Twice
        // round, since the order may begin between the two.
        waiting_.clear();
        for (std::size_t i = 0; i < 2 * spokes_.size(); ++i) {
            Spoke& spoke = spokes_[i % spokes_.size()];
            if (spoke.edge != 0 && (!spoke.isOut || !waiting_.empty())) {
                if (spoke.isOut) {
                    next_[waiting_.back()] = spoke.edge;
                    waiting_.pop_back();
                } else {
                    waiting_.push_back(spoke.edge);
                }
                spoke.edge = 0;
            }
        }
    }

    // The lower half from the right, then the upper one from the left.
    void SortClockwise(Index place) {
        const Array1<PlanPoint>& places = edges_.Places();
        std::sort(spokes_.begin(), spokes_.end(), [&](const Spoke& a, const Spoke& b) {
            const bool aIsUp = a.end > place;
            const bool bIsUp = b.end > place;
            if (aIsUp != bIsUp) {
                return bIsUp;
            }
            const int turn = signs_.Turn(places[place], places[a.end], places[b.end]);
            return turn != 0 ? turn < 0 : a.edge < b.edge;
        });
    }

    const GroundEdges& edges_;
    const ExactSigns& signs_;
    Array1<Index> next_;
    std::vector<Spoke> spokes_;
    std::vector<Index> waiting_; // edges that come in
};

class RingMaker {
public:
    explicit RingMaker(const GroundEdges& edges)
        : edges_(edges), signs_(edges.Places()), next_(Linker(edges, signs_).Link()),
          walkOf_(edges.Count()), placeInPath_(edges.Places().UpperBound(), kNone) {}

    GroundRings Make() {
        for (Index e = 1; e <= edges_.Count(); ++e) {
            if (walkOf_[e] == 0) {
                Walk(e);
            }
        }
        FindPiecesOfHoleWalks();
        for (const Hole& hole : holes_) {
            if (const std::size_t piece = walks_[hole.walk].piece; piece != kNone) {
                rings_.pieces[piece].holes.push_back(hole.ring);
            }
        }
        return std::move(rings_);
    }

private:
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    struct WalkRecord {
        std::size_t piece = kNone;
        Index lowest = 0; // place of its holes
    };
    struct Hole {
        GroundRing ring;
        Index walk = 0;
    };

    void Walk(Index e) {
        walks_.Append({});
        const Index walk = walks_.UpperBound();
        while (e != 0 && walkOf_[e] == 0) {
            walkOf_[e] = walk;
            placeInPath_[edges_[e].from] = path_.size();
            path_.push_back(e);
            if (const std::size_t begin = placeInPath_[edges_[e].to]; begin != kNone) {
                CutRing(begin, walk);
            }
            e = next_[e];
        }
        // Empty unless the edges do not close.
        Forget(0);
    }

    void Forget(std::size_t begin) {
        for (std::size_t i = begin; i < path_.size(); ++i) {
            placeInPath_[edges_[path_[i]].from] = kNone;
        }
        path_.resize(begin);
    }

    // The path from a place to itself becomes a ring.
    void CutRing(std::size_t begin, Index walk) {
        const std::span<const Index> ring = std::span(path_).subspan(begin);
        const double area = AreaOf(ring);
        const GroundRing made{rings_.edges.size(), ring.size()};
        if (area > 0 || area < 0) {
            rings_.edges.insert(rings_.edges.end(), ring.begin(), ring.end());
        }
        if (area > 0) {
            walks_[walk].piece = rings_.pieces.size();
            rings_.pieces.push_back({made, {}});
        } else if (area < 0) {
            Index& lowest = walks_[walk].lowest;
            lowest = lowest == 0 ? LowestOf(ring) : std::min(lowest, LowestOf(ring));
            holes_.push_back({made, walk});
        }
        Forget(begin);
    }

    // Square data units; 0 for a ring that is no wider than the last digits of its coordinates.
    [[nodiscard]] double AreaOf(std::span<const Index> ring) {
        constexpr double kDigits = 4 * std::numeric_limits<double>::epsilon();
        vertices_.clear();
        double length = 0;
        double farthest = 0;
        for (const Index e : ring) {
            const PlanPoint p = edges_.Places()[edges_[e].from];
            const PlanPoint next = edges_.Places()[edges_[e].to];
            length += std::fabs(next.x - p.x) + std::fabs(next.y - p.y);
            farthest = std::max({farthest, std::fabs(p.x), std::fabs(p.y)});
            vertices_.push_back(p);
        }
        const double area = AreaOfRing(vertices_);
        return std::fabs(area) > kDigits * farthest * length ? area : 0;
    }

    [[nodiscard]] Index LowestOf(std::span<const Index> ring) const {
        Index lowest = edges_[ring.front()].from;
        for (const Index e : ring) {
            lowest = std::min(lowest, edges_[e].from);
        }
        return lowest;
    }

    // From bottom to top, so that what lies to the left of a walk has its piece already.
    void FindPiecesOfHoleWalks() {
        std::vector<Index> walks;
        for (Index w = 1; w <= walks_.UpperBound(); ++w) {
            if (walks_[w].piece == kNone && walks_[w].lowest != 0) {
                walks.push_back(w);
            }
        }
        std::sort(walks.begin(), walks.end(),
                  [&](Index a, Index b) { return walks_[a].lowest < walks_[b].lowest; });
        std::vector<Index> places;
        places.reserve(walks.size());
        for (const Index w : walks) {
            places.push_back(walks_[w].lowest);
        }
        const std::vector<Index> left = EdgesToTheLeft(edges_, signs_, places);
        for (std::size_t i = 0; i < walks.size(); ++i) {
            if (left[i] != 0) {
                walks_[walks[i]].piece = walks_[walkOf_[left[i]]].piece;
            }
        }
    }

    const GroundEdges& edges_;
    ExactSigns signs_;
    Array1<Index> next_;
    Array1<Index> walkOf_; // of an edge; 0 for none yet
    Array1<WalkRecord> walks_;
    std::vector<Index> path_;
    std::vector<PlanPoint> vertices_; // of a ring
    Array1<std::size_t> placeInPath_; // of the edge that begins with a place
    GroundRings rings_;
    std::vector<Hole> holes_;
};

} // namespace

GroundRings MakeGroundRings(const GroundEdges& edges) {
    return RingMaker(edges).Make();
}

} // namespace terravo

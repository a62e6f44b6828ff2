#include "contour/GroundSweep.h"

#include <iterator>
#include <set>

namespace terravo {
namespace {

class Sweep {
public:
    Sweep(const GroundEdges& edges, const ExactSigns& signs)
        : edges_(edges), signs_(signs), entries_(IsToTheLeft{*this}), entryOf_(edges.Count()) {}

    /// The edge just to the left of a place, before the line takes in the place itself.
    [[nodiscard]] Index EdgeLeftOf(Index place) const {
        const auto after = entries_.lower_bound(Here{place});
        return after == entries_.begin() ? 0 : EdgeOf(*std::prev(after));
    }

    void Pass(Index place) {
        begins_.clear();
        ends_.clear();
        const GroundEdges::Range out = edges_.OutOf(place);
        for (Index e = out.first; e < out.last; ++e) {
            (edges_[e].to > place ? begins_ : ends_).push_back(e);
        }
        for (const Index e : edges_.Into(place)) {
            (edges_[e].from > place ? begins_ : ends_).push_back(e);
        }
        if (begins_.size() == 1 && ends_.size() == 1) {
            Continue(ends_.front(), begins_.front());
        } else {
            Replace();
        }
    }

private:
    // An entry by its number, whose edge changes as the line goes up.
    struct Entry {
        std::size_t number = 0;
    };
    struct Here {
        Index place = 0;
    };
    struct IsToTheLeft {
        using is_transparent = void;
        const Sweep& sweep;

        bool operator()(Entry a, Entry b) const {
            return sweep.IsLeft(sweep.EdgeOf(a), sweep.EdgeOf(b));
        }
        bool operator()(Entry a, Here b) const { return sweep.Side(sweep.EdgeOf(a), b.place) < 0; }
        bool operator()(Here a, Entry b) const { return sweep.Side(sweep.EdgeOf(b), a.place) > 0; }
    };
    using Entries = std::multiset<Entry, IsToTheLeft>;

    [[nodiscard]] Index EdgeOf(Entry entry) const { return current_[entry.number]; }

    // +1 for a place to the left of an edge taken upwards, -1 to the right.
    [[nodiscard]] int Side(Index edge, Index place) const {
        const Array1<PlanPoint>& places = edges_.Places();
        const GroundEdge& e = edges_[edge];
        return signs_.Turn(places[e.Low()], places[e.High()], places[place]);
    }

    // Whether edge a is met before edge b, both of which the line meets.
    [[nodiscard]] bool IsLeft(Index a, Index b) const {
        return edges_[a].Low() <= edges_[b].Low() ? SideOfEdge(a, b) < 0 : SideOfEdge(b, a) > 0;
    }

    // On which side of an edge lies another that begins at the same height or above.
    [[nodiscard]] int SideOfEdge(Index edge, Index other) const {
        const int side = Side(edge, edges_[other].Low());
        return side != 0 ? side : Side(edge, edges_[other].High());
    }

    void Continue(Index lower, Index upper) {
        const typename Entries::iterator entry = entryOf_[lower];
        current_[entry->number] = upper;
        entryOf_[upper] = entry;
    }

    void Replace() {
        for (const Index e : ends_) {
            entries_.erase(entryOf_[e]);
        }
        for (const Index e : begins_) {
            current_.push_back(e);
            entryOf_[e] = entries_.insert(Entry{current_.size() - 1});
        }
    }

    const GroundEdges& edges_;
    const ExactSigns& signs_;
    std::vector<Index> current_; // edge of each entry
    Entries entries_;            // from left to right
    Array1<Entries::iterator> entryOf_;
    std::vector<Index> begins_; // at the place that is passed
    std::vector<Index> ends_;
};

} // namespace

std::vector<Index> EdgesToTheLeft(const GroundEdges& edges, const ExactSigns& signs,
                                  std::span<const Index> asked) {
    std::vector<Index> found;
    found.reserve(asked.size());
    Sweep sweep(edges, signs);
    for (Index place = 1; found.size() < asked.size(); ++place) {
        while (found.size() < asked.size() && asked[found.size()] == place) {
            found.push_back(sweep.EdgeLeftOf(place));
        }
        sweep.Pass(place);
    }
    return found;
}

} // namespace terravo

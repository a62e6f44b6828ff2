#include "contour/GroundEdges.h"

#include <algorithm>
#include <tuple>

namespace terravo {
namespace {

// Numbers the places, equal ones alike.
std::vector<Index> NumberPlaces(const std::vector<PlanPoint>& given, Array1<PlanPoint>& places) {
    struct Occurrence {
        PlanPoint at;
        std::size_t slot = 0;
    };
    std::vector<Occurrence> sorted;
    sorted.reserve(given.size());
    for (const PlanPoint& place : given) {
        sorted.push_back({place, sorted.size()});
    }
    std::sort(sorted.begin(), sorted.end(), [](const Occurrence& a, const Occurrence& b) {
        return std::tie(a.at.y, a.at.x) < std::tie(b.at.y, b.at.x);
    });
    std::vector<Index> placeOf(given.size());
    places.Reserve(static_cast<Index>(given.size()));
    for (const Occurrence& o : sorted) {
        if (places.UpperBound() == 0 || places[places.UpperBound()] != o.at) {
            places.Append(o.at);
        }
        placeOf[o.slot] = places.UpperBound();
    }
    return placeOf;
}

// Where the group of each place begins, when there are so many of each; and where the last one
// ends.
template <class KeyOf>
Array1<Index> GroupStarts(Index places, Index count, KeyOf keyOf) {
    Array1<Index> starts(places + 1);
    for (Index e = 1; e <= count; ++e) {
        ++starts[keyOf(e)];
    }
    Index next = 1;
    for (Index& start : starts) {
        const Index size = start;
        start = next;
        next += size;
    }
    return starts;
}

} // namespace

GroundEdges::GroundEdges(const GroundLines& lines) {
    Connect(lines, NumberPlaces(lines.places, places_));
    GroupByStart();
    TakeOutThereAndBack();
    GroupByEnd();
}

void GroundEdges::Connect(const GroundLines& lines, const std::vector<Index>& placeOf) {
    edges_.Reserve(static_cast<Index>(placeOf.size()));
    for (std::size_t line = 0; line < lines.firsts.size(); ++line) {
        const std::size_t end =
            line + 1 < lines.firsts.size() ? lines.firsts[line + 1] : placeOf.size();
        for (std::size_t i = lines.firsts[line] + 1; i < end; ++i) {
            if (placeOf[i - 1] != placeOf[i]) {
                edges_.Append({placeOf[i - 1], placeOf[i]});
            }
        }
    }
}

void GroundEdges::GroupByStart() {
    firstOut_ = GroupStarts(places_.UpperBound(), Count(), [&](Index e) { return edges_[e].from; });
    Array1<Index> next = firstOut_;
    Array1<GroundEdge> grouped(Count());
    for (const GroundEdge& edge : edges_) {
        grouped[next[edge.from]++] = edge;
    }
    edges_ = std::move(grouped);
}

void GroundEdges::TakeOutThereAndBack() {
    std::vector<bool> isOut(static_cast<std::size_t>(Count()) + 1);
    const auto takeOut = [&](Index e) { isOut[static_cast<std::size_t>(e)] = true; };
    bool any = false;
    for (Index e = 1; e <= Count(); ++e) {
        const auto [from, to] = edges_[e];
        const Range back = OutOf(to);
        for (Index b = back.first; from < to && b < back.last; ++b) {
            if (edges_[b].to == from && !isOut[static_cast<std::size_t>(b)]) {
                takeOut(e);
                takeOut(b);
                any = true;
                break;
            }
        }
    }
    if (!any) {
        return;
    }
    Array1<GroundEdge> kept;
    for (Index e = 1; e <= Count(); ++e) {
        if (!isOut[static_cast<std::size_t>(e)]) {
            kept.Append(edges_[e]);
        }
    }
    edges_ = std::move(kept);
    firstOut_ = GroupStarts(places_.UpperBound(), Count(), [&](Index e) { return edges_[e].from; });
}

void GroundEdges::GroupByEnd() {
    firstInto_ = GroupStarts(places_.UpperBound(), Count(), [&](Index e) { return edges_[e].to; });
    Array1<Index> next = firstInto_;
    into_.Resize(Count() + 1);
    for (Index e = 1; e <= Count(); ++e) {
        into_[next[edges_[e].to]++] = e;
    }
}

} // namespace terravo

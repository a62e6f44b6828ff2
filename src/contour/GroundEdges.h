// The edges of ground, each with the ground on its left, between places that are known by number.
//
// Data: places, every one once, and edges grouped by the place that they begin with. Method: all
// corners of the lines handed in are sorted, so that a place's number tells where it stands from
// bottom to top; what runs both ways between two places bounds nothing and is taken out.
#pragma once

#include "triangulation/TriangleList.h"

#include <cstddef>
#include <span>
#include <vector>

namespace terravo {

/// Lines one after another. A closed one ends with the place that it begins with.
struct GroundLines {
    std::vector<PlanPoint> places;
    std::vector<std::size_t> firsts; // of each line in places

    void Begin() { firsts.push_back(places.size()); }
    void Add(PlanPoint place) { places.push_back(place); }
};

/// From place to place, by number.
struct GroundEdge {
    Index from = 0;
    Index to = 0;

    [[nodiscard]] Index Low() const { return from < to ? from : to; }
    [[nodiscard]] Index High() const { return from < to ? to : from; }
};

/// Where edges begin, they also end, as many.
class GroundEdges {
public:
    explicit GroundEdges(const GroundLines& lines);

    /// By y, then by x; numbers of places count from 1.
    [[nodiscard]] const Array1<PlanPoint>& Places() const { return places_; }
    [[nodiscard]] Index Count() const { return edges_.UpperBound(); }
    /// An edge by its number, from 1.
    [[nodiscard]] const GroundEdge& operator[](Index edge) const { return edges_[edge]; }

    /// Numbers of edges, first up to but not last.
    struct Range {
        Index first = 0;
        Index last = 0;
        [[nodiscard]] Index Count() const { return last - first; }
    };
    [[nodiscard]] Range OutOf(Index place) const {
        return {firstOut_[place], firstOut_[place + 1]};
    }
    [[nodiscard]] std::span<const Index> Into(Index place) const {
        return {&into_[firstInto_[place]],
                static_cast<std::size_t>(firstInto_[place + 1] - firstInto_[place])};
    }

private:
    void Connect(const GroundLines& lines, const std::vector<Index>& placeOf);
    void GroupByStart();
    void TakeOutThereAndBack();
    void GroupByEnd();

    Array1<PlanPoint> places_;
    Array1<GroundEdge> edges_;
    Array1<Index> firstOut_;  // of a place; one more than there are places
    Array1<Index> firstInto_; // the same in into_
    Array1<Index> into_;      // edges by their ends, and one that does not count
};

} // namespace terravo

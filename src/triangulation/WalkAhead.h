// Walks towards the next points of the order while the present one is being inserted.
//
// Data: a ring of the points to come, each with the triangle that its own walk has reached. Method:
// in random order nearly everything that an insertion reads is a cache miss, and a walk cannot tell
// what it reads next before the last read has arrived. So the next few points travel together: for
// each insertion every one of them does one small stage, which uses what the stage before has asked
// for and asks for more. When its turn comes a point's triangle is at hand and the rest is in the
// cache. The triangles met may change meanwhile, so this gives a start for the real walk and
// nothing else.
#pragma once

#include "triangulation/NearbyStart.h"

#include <array>

namespace terravo {

class WalkAhead {
public:
    /// Keeps references to all four.
    WalkAhead(const Array1<PlanPoint>& coord, const Array1<Index>& order,
              const TriangleList& triangles, const NearbyStart& nearby);

    /// Triangle to start the walk to the point at position i of the order. To be called for each
    /// position in turn, from 4 on.
    Index StartFor(Index i);

private:
    static constexpr Index kDepth = 16;

    enum class Stage { ReadCell, ReadCorners, Step, ReadAround, Arrived };

    struct Traveller {
        PlanPoint point;
        PlanPoint previous;
        Index triangle = 0;
        Stage stage = Stage::ReadCell;
        bool hasStart = false;
    };

    Traveller& At(Index i) { return ring_[static_cast<std::size_t>(i % kDepth)]; }
    void Admit(Index i);
    void Advance(Traveller& traveller) const;
    void Step(Traveller& traveller, const Triangle& t) const;
    void ReadAround(const Triangle& t) const;

    const Array1<PlanPoint>& coord_;
    const Array1<Index>& order_;
    const TriangleList& triangles_;
    const NearbyStart& nearby_;
    std::array<Traveller, kDepth> ring_;
    Index nextToAdmit_ = 4;
};

} // namespace terravo

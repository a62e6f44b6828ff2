// Asking for the corners of triangles before they are drawn.
//
// Data: the triangles and one record a point. Method: the corners of neighbouring triangles lie
// anywhere in memory when the points came in random order, so each turn of a loop over triangles
// asks for those of a later triangle.
#pragma once

#include "triangulation/TriangleList.h"
#include "util/Prefetch.h"

#include <cstddef>
#include <vector>

namespace terravo {

/// To be called when triangle t is drawn, for a loop in increasing order. Always inline: on its own
/// it would be a function without any effect, whose calls the compiler leaves out.
/// @param records  of point i at i.
template <class Record>
[[gnu::always_inline]] inline void PrefetchCorners(const TriangleList& triangles, Index t,
                                                   const std::vector<Record>& records) {
    constexpr Index kAhead = 16;
    if (t + kAhead <= triangles.count) {
        for (const Index vertex : triangles.table[t + kAhead].vertices) {
            PrefetchLine(&records[static_cast<std::size_t>(vertex)]);
        }
    }
}

} // namespace terravo

// Asking ahead for what is kept of the corners of triangles to come.
//
// Data: a record and a text for each point, in the order of the points. Method: in a survey without
// order the corners lie anywhere among the points; the records are asked for some triangles before
// their texts, which they lead to.
#pragma once

#include "triangulation/TriangleList.h"
#include "util/Prefetch.h"

#include <cstddef>
#include <vector>

namespace terravo {

/// @param t         about to be written, from 0; those behind it soon.
/// @param recordOf  address of what is kept of a point, from 1.
/// @param textOf    address of its text.
template <class RecordOf, class TextOf>
void LookAheadAtCorners(const std::vector<Triangle>& triangles, std::size_t t,
                        const RecordOf& recordOf, const TextOf& textOf) {
    constexpr std::size_t kRecordsAhead = 16;
    constexpr std::size_t kTextsAhead = 8;
    if (t + kRecordsAhead < triangles.size()) {
        for (const Index corner : triangles[t + kRecordsAhead].vertices) {
            PrefetchLine(recordOf(corner));
        }
        for (const Index corner : triangles[t + kTextsAhead].vertices) {
            PrefetchLine(textOf(corner));
        }
    }
}

} // namespace terravo

// Which triangles each level reaches.
//
// Data: the points, triangles and levels, and lists of triangle numbers, one a level. Method: each
// point learns once between which levels it lies; a triangle is listed under the levels that its
// corners reach. The lists are made for a block of levels at a time, so that memory stays bounded
// however many levels a triangle spans.
#pragma once

#include "contour/LevelReach.h"
#include "contour/LevelSet.h"
#include "survey/PointSet.h"
#include "triangulation/TriangleList.h"

#include <cstdint>
#include <span>
#include <vector>

namespace terravo {

class LevelTriangles {
public:
    /// Keeps a reference to the triangles, which must not change meanwhile.
    /// @param levels  one at least.
    LevelTriangles(const PointSet& points, const TriangleList& triangles, const LevelSet& levels);

    /// The triangles that level k cuts or touches, in increasing number. Levels must be asked for
    /// in increasing order; the result holds until the next call.
    [[nodiscard]] std::span<const Index> Of(Index k);

private:
    void CountTriangles();
    void FillBlock(Index firstLevel);
    [[nodiscard]] std::uint64_t StartOf(Index k) const {
        return levelStart_[static_cast<std::size_t>(k)];
    }

    const TriangleList& triangles_;
    Index levelCount_;
    LevelReach reach_;
    std::vector<std::uint64_t> levelStart_; // triangles listed under the levels before k, at k
    Index blockFirst_ = 1;
    Index blockEnd_ = 1; // first level after the block
    std::vector<Index> block_;
};

} // namespace terravo

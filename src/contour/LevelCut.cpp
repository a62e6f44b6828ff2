#include "contour/LevelCut.h"

#include "contour/TriangleCut.h"

#include <algorithm>

namespace terravo {
namespace {

// Triangle numbers held at a time: 64 MiB of them.
constexpr std::uint64_t kBlockSize = std::uint64_t{1} << 24;

SpacePoint PointAt(const PointSet& points, Index i) {
    return {points.x[i], points.y[i], points.z[i]};
}

} // namespace

LevelCutter::LevelCutter(const PointSet& points, const TriangleList& triangles,
                         const LevelSet& levels)
    : points_(points), triangles_(triangles), levels_(levels), reach_(points, levels) {
    CountTriangles();
}

void LevelCutter::CountTriangles() {
    const auto n = static_cast<std::size_t>(levels_.UpperBound());
    // First the change of the number of triangles from each level to the next.
    std::vector<std::int64_t> change(n + 2, 0);
    for (Index t = 1; t <= triangles_.count; ++t) {
        const LevelReach::Span levels = reach_.Of(triangles_.table[t]);
        ++change[static_cast<std::size_t>(levels.below) + 1];
        --change[static_cast<std::size_t>(levels.upTo) + 1];
    }
    levelStart_.assign(n + 2, 0);
    std::int64_t onLevel = 0;
    for (std::size_t k = 1; k <= n; ++k) {
        onLevel += change[k];
        levelStart_[k + 1] = levelStart_[k] + static_cast<std::uint64_t>(onLevel);
    }
}

void LevelCutter::FillBlock(Index firstLevel) {
    const Index n = levels_.UpperBound();
    const auto startOf = [this](Index k) { return levelStart_[static_cast<std::size_t>(k)]; };
    blockFirst_ = firstLevel;
    blockEnd_ = firstLevel + 1;
    while (blockEnd_ <= n && startOf(blockEnd_ + 1) - startOf(blockFirst_) <= kBlockSize) {
        ++blockEnd_;
    }
    block_.resize(static_cast<std::size_t>(startOf(blockEnd_) - startOf(blockFirst_)));
    std::vector<std::size_t> next;
    for (Index k = blockFirst_; k < blockEnd_; ++k) {
        next.push_back(static_cast<std::size_t>(startOf(k) - startOf(blockFirst_)));
    }
    for (Index t = 1; t <= triangles_.count; ++t) {
        const LevelReach::Span levels = reach_.Of(triangles_.table[t]);
        const Index last = std::min(levels.upTo, blockEnd_ - 1);
        for (Index k = std::max(levels.below + 1, blockFirst_); k <= last; ++k) {
            block_[next[static_cast<std::size_t>(k - blockFirst_)]++] = t;
        }
    }
}

const std::vector<LevelPiece>& LevelCutter::Cut(Index k) {
    if (k >= blockEnd_ || k < blockFirst_) {
        FillBlock(k);
    }
    const Plane plane = Plane::AtLevel(levels_[k].value);
    const std::uint64_t blockStart = levelStart_[static_cast<std::size_t>(blockFirst_)];
    const auto first =
        static_cast<std::size_t>(levelStart_[static_cast<std::size_t>(k)] - blockStart);
    const auto end =
        static_cast<std::size_t>(levelStart_[static_cast<std::size_t>(k) + 1] - blockStart);
    pieces_.clear();
    for (std::size_t i = first; i < end; ++i) {
        const auto& corners = triangles_.table[block_[i]].vertices;
        const CutPoints cut =
            CutTriangleByPlane({PointAt(points_, corners[0]), PointAt(points_, corners[1]),
                                PointAt(points_, corners[2])},
                               plane);
        if (cut.Count() == 1) {
            pieces_.push_back({cut[1].x, cut[1].y, cut[1].x, cut[1].y, false});
        } else if (cut.Count() == 2) {
            pieces_.push_back({cut[1].x, cut[1].y, cut[2].x, cut[2].y, true});
        }
    }
    return pieces_;
}

} // namespace terravo

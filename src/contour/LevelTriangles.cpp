#include "contour/LevelTriangles.h"

#include <algorithm>

namespace terravo {
namespace {

// Triangle numbers held at a time: 64 MiB of them.
constexpr std::uint64_t kBlockSize = std::uint64_t{1} << 24;

} // namespace

LevelTriangles::LevelTriangles(const PointSet& points, const TriangleList& triangles,
                               const LevelSet& levels)
    : triangles_(triangles), levelCount_(levels.UpperBound()), reach_(points, levels) {
    CountTriangles();
}

void LevelTriangles::CountTriangles() {
    const auto n = static_cast<std::size_t>(levelCount_);
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

void LevelTriangles::FillBlock(Index firstLevel) {
    blockFirst_ = firstLevel;
    blockEnd_ = firstLevel + 1;
    while (blockEnd_ <= levelCount_ &&
           StartOf(blockEnd_ + 1) - StartOf(blockFirst_) <= kBlockSize) {
        ++blockEnd_;
    }
    block_.resize(static_cast<std::size_t>(StartOf(blockEnd_) - StartOf(blockFirst_)));
    std::vector<std::size_t> next;
    for (Index k = blockFirst_; k < blockEnd_; ++k) {
        next.push_back(static_cast<std::size_t>(StartOf(k) - StartOf(blockFirst_)));
    }
    for (Index t = 1; t <= triangles_.count; ++t) {
        const LevelReach::Span levels = reach_.Of(triangles_.table[t]);
        const Index last = std::min(levels.upTo, blockEnd_ - 1);
        for (Index k = std::max(levels.below + 1, blockFirst_); k <= last; ++k) {
            block_[next[static_cast<std::size_t>(k - blockFirst_)]++] = t;
        }
    }
}

std::span<const Index> LevelTriangles::Of(Index k) {
    if (k >= blockEnd_ || k < blockFirst_) {
        FillBlock(k);
    }
    const auto first = static_cast<std::size_t>(StartOf(k) - StartOf(blockFirst_));
    const auto count = static_cast<std::size_t>(StartOf(k + 1) - StartOf(k));
    return std::span(block_).subspan(first, count);
}

} // namespace terravo

#include "triangulation/constrained/VisibleSurface.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace terravo {
namespace {

struct Link {
    double squaredLength = 0;
    Index from = 0;
    Index to = 0;
};

bool IsShorter(const Link& a, const Link& b) {
    return a.squaredLength < b.squaredLength;
}

// Which points hang together.
class Parts {
public:
    explicit Parts(Index pointCount) : up_(pointCount) { std::iota(up_.begin(), up_.end(), 1); }

    Index Of(Index point) {
        while (up_[point] != point) {
            up_[point] = up_[up_[point]];
            point = up_[point];
        }
        return point;
    }

    // False where they hang together already.
    bool Join(const Link& link) {
        const Index from = Of(link.from);
        const Index to = Of(link.to);
        up_[from] = to;
        return from != to;
    }

private:
    Array1<Index> up_;
};

std::vector<Link> SidesOf(const Array1<PlanPoint>& coord, const TriangleList& triangles) {
    std::vector<Link> sides;
    sides.reserve(static_cast<std::size_t>(triangles.count) * 3 / 2 + 3);
    for (Index t = 1; t <= triangles.count; ++t) {
        for (int j = 1; j <= 3; ++j) {
            if (triangles.Neighbour(j, t) < t) {
                const Index from = triangles.Vertex(j, t);
                const Index to = triangles.Vertex(NextEdge(j), t);
                const double dx = coord[to].x - coord[from].x;
                const double dy = coord[to].y - coord[from].y;
                sides.push_back({dx * dx + dy * dy, from, to});
            }
        }
    }
    return sides;
}

// The shortest tree over all points runs along sides of their triangulation. Of the long sides
// nearly all join what the short ones have joined: they are dropped before they are sorted.
class TreeBuilder {
public:
    explicit TreeBuilder(Index pointCount) : parts_(pointCount) {}

    // The links of the tree, ascending by length.
    std::vector<Link> Build(std::vector<Link> sides) {
        Add(sides.begin(), sides.end());
        return std::move(tree_);
    }

private:
    using Place = std::vector<Link>::iterator;

    static constexpr std::ptrdiff_t kSortedAtOnce = 1000;

    void Add(Place first, Place last) {
        while (last - first > kSortedAtOnce) {
            const Place middle = first + (last - first) / 3;
            std::nth_element(first, middle, last, IsShorter);
            Add(first, middle);
            last = std::remove_if(middle, last, [this](const Link& link) {
                return parts_.Of(link.from) == parts_.Of(link.to);
            });
            first = middle;
        }
        std::sort(first, last, IsShorter);
        std::copy_if(first, last, std::back_inserter(tree_),
                     [this](const Link& link) { return parts_.Join(link); });
    }

    Parts parts_;
    std::vector<Link> tree_;
};

// How many links of the tree are no leaps.
std::size_t StepCount(const std::vector<Link>& tree) {
    constexpr double kSquaredLeap = 10 * 10;
    const std::size_t mostLeaps =
        std::min(std::max<std::size_t>(3, tree.size() / 200), tree.size() / 4);
    for (std::size_t i = tree.size() - mostLeaps; i < tree.size(); ++i) {
        if (tree[i].squaredLength > kSquaredLeap * tree[i - 1].squaredLength) {
            return i;
        }
    }
    return tree.size();
}

// Tells the parts that are left without the leaps apart.
void FindStrays(const std::vector<Link>& tree, std::size_t stepCount, Index pointCount,
                LongestSideProposal& proposal) {
    constexpr Index kFew = 10; // points, and as a part of the largest site
    Parts parts(pointCount);
    for (std::size_t i = 0; i < stepCount; ++i) {
        parts.Join(tree[i]);
    }
    Array1<Index> size(pointCount, 0);
    Array1<char> isCorner(pointCount, 0);
    for (const Link& link : tree) {
        isCorner[link.from] = isCorner[link.to] = 1;
    }
    for (Index point = 1; point <= pointCount; ++point) {
        size[parts.Of(point)] += isCorner[point];
    }
    const Index largest = *std::max_element(size.begin(), size.end());
    proposal.sites = 0;
    for (Index point = 1; point <= pointCount; ++point) {
        const Index part = parts.Of(point);
        const bool isStray = size[part] < kFew && size[part] < largest / kFew;
        if (isStray && isCorner[point] != 0) {
            proposal.strays.push_back(point);
        }
        proposal.sites += !isStray && part == point && isCorner[point] != 0 ? 1 : 0;
    }
}

} // namespace

LongestSideProposal ProposeLongestSide(const Array1<PlanPoint>& coord,
                                       const TriangleList& triangles) {
    LongestSideProposal proposal;
    const std::vector<Link> tree = TreeBuilder(coord.UpperBound()).Build(SidesOf(coord, triangles));
    if (tree.empty()) {
        return proposal;
    }
    const std::size_t stepCount = StepCount(tree);
    proposal.step = std::sqrt(tree[stepCount - 1].squaredLength);
    proposal.length = 3 * proposal.step;
    if (stepCount < tree.size()) {
        FindStrays(tree, stepCount, coord.UpperBound(), proposal);
    }
    return proposal;
}

} // namespace terravo

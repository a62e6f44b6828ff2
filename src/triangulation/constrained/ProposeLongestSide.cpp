#include "triangulation/constrained/VisibleSurface.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>
#include <vector>

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

// Of equal length, the numbers of the ends decide, so that all triangles agree on their longest.
bool IsBefore(const Link& a, const Link& b) {
    return IsShorter(a, b) ||
           (!IsShorter(b, a) && std::minmax(a.from, a.to) < std::minmax(b.from, b.to));
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

// Sides of triangles that the shortest tree may run along. It never runs along the longest side of
// a triangle, which the other two replace.
class ShortSides {
public:
    ShortSides(const Array1<PlanPoint>& coord, const TriangleList& triangles)
        : coord_(coord), triangles_(triangles), longest_(triangles.count) {}

    std::vector<Link> Collect() {
        std::vector<Link> sides;
        for (Index t = 1; t <= triangles_.count; ++t) {
            const std::array<Link, 3> links{LinkAlong(t, 1), LinkAlong(t, 2), LinkAlong(t, 3)};
            const auto longest = std::max_element(links.begin(), links.end(), IsBefore);
            longest_[t] = longest->from;
            for (int j = 1; j <= 3; ++j) {
                const Link& link = links[static_cast<std::size_t>(j) - 1];
                const Index across = triangles_.Neighbour(j, t);
                // In the triangle across, the side begins with its other end.
                if (&link != longest && across < t && (across < 0 || longest_[across] != link.to)) {
                    sides.push_back(link);
                }
            }
        }
        return sides;
    }

private:
    [[nodiscard]] Link LinkAlong(Index t, int edge) const {
        const Index from = triangles_.Vertex(edge, t);
        const Index to = triangles_.Vertex(NextEdge(edge), t);
        const double dx = coord_[to].x - coord_[from].x;
        const double dy = coord_[to].y - coord_[from].y;
        return {dx * dx + dy * dy, from, to};
    }

    const Array1<PlanPoint>& coord_;
    const TriangleList& triangles_;
    Array1<Index> longest_; // the point that the longest side of a triangle begins with
};

// The links of the shortest tree over all corners, ascending by length.
std::vector<Link> ShortestTree(const Array1<PlanPoint>& coord, const TriangleList& triangles) {
    std::vector<Link> tree = ShortSides(coord, triangles).Collect();
    std::sort(tree.begin(), tree.end(), IsShorter);
    Parts parts(coord.UpperBound());
    tree.erase(std::remove_if(tree.begin(), tree.end(),
                              [&](const Link& link) { return !parts.Join(link); }),
               tree.end());
    return tree;
}

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
    const std::vector<Link> tree = ShortestTree(coord, triangles);
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

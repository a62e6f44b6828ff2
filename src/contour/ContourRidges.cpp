#include "contour/ContourRidges.h"

#include <algorithm>
#include <limits>
#include <tuple>

namespace terravo {
namespace {

constexpr std::size_t kNone = std::numeric_limits<std::size_t>::max();

// One way along a segment, from vertex to vertex.
struct Pass {
    std::size_t from = 0;
    std::size_t to = 0;
};

using BothWays = std::pair<Pass, Pass>; // the one that the lines come to first, its opposite
using Vertices = std::vector<ContourVertex>;

bool IsBefore(const ContourVertex& a, const ContourVertex& b) {
    return std::tie(a.x, a.y) < std::tie(b.x, b.y);
}

std::vector<Pass> PassesNearPoints(const ContourLineBuilder& lines) {
    std::vector<Pass> passes;
    for (const ContourLine& line : lines.Level().lines) {
        const std::size_t end = line.first + line.count;
        std::size_t from = line.closed ? end - 1 : line.first;
        for (std::size_t to = line.closed ? line.first : line.first + 1; to < end; ++to) {
            if (lines.IsNearPoint(from) || lines.IsNearPoint(to)) {
                passes.push_back({from, to});
            }
            from = to;
        }
    }
    return passes;
}

// The segments that are passed both ways, in the order in which the lines come to them.
std::vector<BothWays> PassedBothWays(std::vector<Pass> passes, const Vertices& vertices) {
    const auto isForward = [&](const Pass& pass) {
        return IsBefore(vertices[pass.from], vertices[pass.to]);
    };
    const auto ends = [&](const Pass& pass) {
        const ContourVertex& a = vertices[isForward(pass) ? pass.from : pass.to];
        const ContourVertex& b = vertices[isForward(pass) ? pass.to : pass.from];
        return std::tie(a.x, a.y, b.x, b.y);
    };
    std::stable_sort(passes.begin(), passes.end(),
                     [&](const Pass& a, const Pass& b) { return ends(a) < ends(b); });
    std::vector<BothWays> found;
    std::vector<Pass> single;
    for (const Pass& pass : passes) {
        if (!single.empty() && ends(single.back()) == ends(pass) &&
            isForward(single.back()) != isForward(pass)) {
            found.emplace_back(single.back(), pass);
            single.pop_back();
        } else {
            single.push_back(pass);
        }
    }
    std::sort(found.begin(), found.end(),
              [](const BothWays& a, const BothWays& b) { return a.first.to < b.first.to; });
    return found;
}

std::vector<std::size_t> Successors(const ContourLevel& level) {
    std::vector<std::size_t> next(level.vertices.size());
    for (const ContourLine& line : level.lines) {
        const std::size_t last = line.first + line.count - 1;
        for (std::size_t i = line.first; i < last; ++i) {
            next[i] = i + 1;
        }
        next[last] = line.closed ? line.first : kNone;
    }
    return next;
}

// Follows the successors from vertex to vertex, each once.
class Rejoiner {
public:
    Rejoiner(const Vertices& vertices, std::vector<std::size_t> next, ContourLineBuilder& joined)
        : vertices_(vertices), next_(std::move(next)), joined_(joined), used_(vertices.size()) {}

    void Follow(std::size_t i) {
        std::size_t last = i;
        while (i != kNone && !used_[i]) {
            used_[i] = true;
            joined_.Add(vertices_[i], true);
            last = i;
            i = next_[i];
        }
        if (i == kNone) {
            joined_.EndOpen(vertices_[last].edge);
        } else {
            joined_.EndClosed();
        }
    }
    [[nodiscard]] bool IsUsed(std::size_t i) const { return used_[i]; }

private:
    const Vertices& vertices_;
    std::vector<std::size_t> next_;
    ContourLineBuilder& joined_;
    std::vector<bool> used_;
};

// The lines without the ridges. In both points, what came before a pass goes on with what followed
// its opposite.
void Rejoin(const ContourLevel& level, const std::vector<BothWays>& ridges,
            ContourLineBuilder& joined) {
    std::vector<std::size_t> next = Successors(level);
    for (const auto& [there, back] : ridges) {
        std::swap(next[there.from], next[back.from]);
    }
    Rejoiner rejoiner(level.vertices, std::move(next), joined);
    for (const ContourLine& line : level.lines) {
        if (!line.closed) {
            rejoiner.Follow(line.first);
        }
    }
    for (std::size_t i = 0; i < level.vertices.size(); ++i) {
        if (!rejoiner.IsUsed(i)) {
            rejoiner.Follow(i);
        }
    }
    // What shrank to a point is a point of a ridge.
    joined.SetIsolatedPoints(level.isolatedPoints);
}

// Chains passes from fork to fork.
class RidgeChains {
public:
    RidgeChains(const Vertices& vertices, const std::vector<BothWays>& ridges,
                ContourLineBuilder& lines)
        : vertices_(vertices), lines_(lines), used_(2 * ridges.size()) {
        for (const auto& [there, back] : ridges) {
            for (const Pass& pass : {there, back}) {
                byStart_.push_back(passes_.size());
                passes_.push_back(pass);
            }
        }
        std::stable_sort(byStart_.begin(), byStart_.end(), [&](std::size_t a, std::size_t b) {
            return IsBefore(StartOf(a), StartOf(b));
        });
    }

    void Chain() {
        for (const bool fromForks : {true, false}) {
            for (std::size_t p = 0; p < passes_.size(); ++p) {
                if (!used_[p] && (!fromForks || From(StartOf(p)).size() != 2)) {
                    Follow(p);
                }
            }
        }
    }

private:
    [[nodiscard]] const ContourVertex& StartOf(std::size_t p) const {
        return vertices_[passes_[p].from];
    }
    [[nodiscard]] static std::size_t Opposite(std::size_t p) { return p ^ 1; }

    // The passes that start in a place.
    [[nodiscard]] std::span<const std::size_t> From(const ContourVertex& place) const {
        const auto first =
            std::partition_point(byStart_.begin(), byStart_.end(),
                                 [&](std::size_t p) { return IsBefore(StartOf(p), place); });
        const auto end = std::partition_point(
            first, byStart_.end(), [&](std::size_t p) { return !IsBefore(place, StartOf(p)); });
        return {first, end};
    }

    void Follow(std::size_t p) {
        lines_.Add(StartOf(p), true);
        while (!used_[p]) {
            used_[p] = used_[Opposite(p)] = true;
            const ContourVertex& end = vertices_[passes_[p].to];
            lines_.Add(end, true);
            const std::span<const std::size_t> onward = From(end);
            if (onward.size() == 2) {
                p = onward[0] == Opposite(p) ? onward[1] : onward[0];
            }
        }
        lines_.EndRidge();
    }

    const Vertices& vertices_;
    std::vector<Pass> passes_; // each followed by its opposite
    ContourLineBuilder& lines_;
    std::vector<bool> used_;
    std::vector<std::size_t> byStart_; // numbers of passes
};

} // namespace

void TakeRidgesApart(ContourLineBuilder& lines) {
    const std::vector<BothWays> ridges =
        PassedBothWays(PassesNearPoints(lines), lines.Level().vertices);
    if (ridges.empty()) {
        return;
    }
    ContourLineBuilder joined(Repeats::LeaveOut);
    joined.Begin(lines.Level().value);
    Rejoin(lines.Level(), ridges, joined);
    RidgeChains(lines.Level().vertices, ridges, joined).Chain();
    lines = std::move(joined);
}

} // namespace terravo

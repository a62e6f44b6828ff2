#include "triangulation/exact/Strips.h"

#include "triangulation/exact/CurveOrder.h"
#include "util/Parallel.h"

#include <algorithm>
#include <span>

namespace terravo {
namespace {

constexpr Index kMostStrips = 8;

// Whether the lines run from west to east.
bool IsTaller(const Array1<PlanPoint>& coord) {
    PlanPoint low = coord[1];
    PlanPoint high = low;
    for (const PlanPoint& p : coord) {
        low = {std::min(low.x, p.x), std::min(low.y, p.y)};
        high = {std::max(high.x, p.x), std::max(high.y, p.y)};
    }
    return high.y - low.y > high.x - low.x;
}

// The order across the lines: by x, then by y, or that of the set turned by a right angle.
class Direction {
public:
    explicit Direction(const Array1<PlanPoint>& coord) : isTurned_(IsTaller(coord)) {}

    [[nodiscard]] PlanPoint Turned(const PlanPoint& p) const {
        return isTurned_ ? PlanPoint{p.y, -p.x} : p;
    }
    static bool TurnedPrecedes(const PlanPoint& p, const PlanPoint& q) {
        return p.x < q.x || (p.x == q.x && p.y < q.y);
    }
    [[nodiscard]] bool Precedes(const PlanPoint& p, const PlanPoint& q) const {
        return TurnedPrecedes(Turned(p), Turned(q));
    }

private:
    bool isTurned_;
};

// The first place of each strip but the first, estimated and turned.
std::vector<PlanPoint> Pivots(const Array1<PlanPoint>& coord, const Direction& direction,
                              Index strips) {
    if (strips == 1) {
        return {};
    }
    constexpr Index kSamplesAStrip = 512;
    const Index step = std::max(1, coord.UpperBound() / (strips * kSamplesAStrip));
    std::vector<PlanPoint> sample;
    for (Index i = 1; i <= coord.UpperBound(); i += step) {
        sample.push_back(direction.Turned(coord[i]));
    }
    std::sort(sample.begin(), sample.end(), Direction::TurnedPrecedes);
    std::vector<PlanPoint> pivots;
    for (Index k = 1; k < strips; ++k) {
        pivots.push_back(
            sample[sample.size() * static_cast<std::size_t>(k) / static_cast<std::size_t>(strips)]);
    }
    return pivots;
}

// Point numbers strip after strip, in file order within each.
std::vector<std::vector<Index>> Distribute(const Array1<PlanPoint>& coord,
                                           const Direction& direction, Index strips) {
    const std::vector<PlanPoint> pivots = Pivots(coord, direction, strips);
    std::vector<std::vector<Index>> numbers(static_cast<std::size_t>(strips));
    const auto coordCount = static_cast<std::size_t>(coord.UpperBound());
    for (std::vector<Index>& strip : numbers) {
        strip.reserve(numbers.size() == 1 ? coordCount : coordCount / numbers.size() * 9 / 8 + 1);
    }
    for (Index i = 1; i <= coord.UpperBound(); ++i) {
        const PlanPoint point = direction.Turned(coord[i]);
        std::size_t strip = 0; // counted, not searched: no branch to be guessed wrong
        for (const PlanPoint& pivot : pivots) {
            strip += Direction::TurnedPrecedes(point, pivot) ? 0 : 1;
        }
        numbers[strip].push_back(i);
    }
    std::erase_if(numbers, [](const std::vector<Index>& strip) { return strip.empty(); });
    return numbers;
}

// Equal points lie side by side along the curve, the earliest first.
void OrderAlongCurve(const Array1<PlanPoint>& coord, std::vector<Index>& numbers) {
    SortAlongCurve(coord, numbers);
    const auto end = std::unique(numbers.begin(), numbers.end(),
                                 [&coord](Index i, Index j) { return coord[i] == coord[j]; });
    numbers.erase(end, numbers.end());
}

} // namespace

Strips DivideIntoStrips(const Array1<PlanPoint>& coord, Index pointsAStrip) {
    Strips strips;
    const Index count = coord.UpperBound();
    if (count == 0) {
        return strips;
    }
    const Direction direction(coord);
    std::vector<std::vector<Index>> numbers =
        Distribute(coord, direction, std::clamp(count / pointsAStrip, 1, kMostStrips));
    const int pieces = static_cast<int>(numbers.size());
    InParallel(pieces,
               [&](int k) { OrderAlongCurve(coord, numbers[static_cast<std::size_t>(k)]); });
    Index places = 0;
    for (const std::vector<Index>& strip : numbers) {
        const Index first = places + 1;
        places += static_cast<Index>(strip.size());
        strips.ranges.push_back({first, places, first, first});
    }
    strips.fileNumber = Array1<Index>(places);
    strips.coord = Array1<PlanPoint>(places);
    InParallel(pieces, [&](int k) {
        Strips::Range& range = strips.ranges[static_cast<std::size_t>(k)];
        Index place = range.first;
        for (const Index number : numbers[static_cast<std::size_t>(k)]) {
            const PlanPoint& point = coord[number];
            strips.fileNumber[place] = number;
            strips.coord[place] = point;
            range.left = direction.Precedes(point, strips.coord[range.left]) ? place : range.left;
            range.right =
                direction.Precedes(strips.coord[range.right], point) ? place : range.right;
            ++place;
        }
    });
    return strips;
}

} // namespace terravo

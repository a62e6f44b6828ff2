#include "triangulation/exact/CurveOrder.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <numeric>
#include <tuple>
#include <utility>
#include <vector>

namespace terravo {
namespace {

// The curve in a square is four copies of itself, each turned in one of four ways.
constexpr unsigned kTurns = 4;
constexpr unsigned kBitsAtATime = 4;
constexpr unsigned kBlock = 1U << kBitsAtATime;

// One step along the curve: from a turn and one bit of x and y to two bits of the place and the
// next turn. Bit 0 of a turn exchanges x and y, bit 1 reflects both.
struct Step {
    unsigned place;
    unsigned turn;
};

constexpr Step OneBit(unsigned turn, unsigned x, unsigned y) {
    if ((turn & 2U) != 0) {
        x ^= 1U;
        y ^= 1U;
    }
    if ((turn & 1U) != 0) {
        std::swap(x, y);
    }
    const unsigned place = (3U * x) ^ y;
    if (y == 0) {
        turn ^= x != 0 ? 3U : 1U;
    }
    return {place, turn};
}

struct BlockStep {
    std::uint8_t place;
    std::uint8_t turn;
};

constexpr auto kBlockSteps = [] {
    std::array<std::array<BlockStep, std::size_t{kBlock} * kBlock>, kTurns> table{};
    for (unsigned start = 0; start < kTurns; ++start) {
        for (unsigned xy = 0; xy < kBlock * kBlock; ++xy) {
            unsigned turn = start;
            unsigned place = 0;
            for (unsigned bit = kBitsAtATime; bit-- > 0;) {
                const Step step = OneBit(turn, (xy >> (kBitsAtATime + bit)) & 1U, (xy >> bit) & 1U);
                place = place << 2U | step.place;
                turn = step.turn;
            }
            table[start][xy] = {static_cast<std::uint8_t>(place), static_cast<std::uint8_t>(turn)};
        }
    }
    return table;
}();

constexpr unsigned kBitsASide = 16;

std::uint32_t PlaceOnCurve(std::uint32_t x, std::uint32_t y) {
    std::uint32_t place = 0;
    unsigned turn = 0;
    for (unsigned shift = kBitsASide; shift > 0;) {
        shift -= kBitsAtATime;
        const std::size_t xy = std::size_t{(x >> shift) % kBlock} * kBlock + (y >> shift) % kBlock;
        const BlockStep step = kBlockSteps[turn][xy];
        place = place << (2 * kBitsAtATime) | step.place;
        turn = step.turn;
    }
    return place;
}

struct Placed {
    std::uint32_t place;
    Index number;
};

// Sorts by the place, least digit first; stable.
void SortByPlace(std::vector<Placed>& items) {
    constexpr unsigned kDigitBits = 11;
    constexpr std::uint32_t kDigits = 1U << kDigitBits;
    constexpr unsigned kPasses = 3; // 33 bits
    std::array<std::array<std::uint32_t, kDigits>, kPasses> starts{};
    const auto digit = [](std::uint32_t place, unsigned pass) {
        return place >> (pass * kDigitBits) & (kDigits - 1);
    };
    for (const Placed& item : items) {
        for (unsigned pass = 0; pass < kPasses; ++pass) {
            ++starts[pass][digit(item.place, pass)];
        }
    }
    std::vector<Placed> sorted(items.size());
    for (unsigned pass = 0; pass < kPasses; ++pass) {
        std::exclusive_scan(starts[pass].begin(), starts[pass].end(), starts[pass].begin(), 0U);
        for (const Placed& item : items) {
            sorted[starts[pass][digit(item.place, pass)]++] = item;
        }
        items.swap(sorted);
    }
}

class CurveSorter {
public:
    explicit CurveSorter(const Array1<PlanPoint>& coord) : coord_(coord) {}

    /// Sorts point numbers by the curve over the extent of these points.
    /// @param depth  of curves within a cell of a curve.
    void Sort(std::span<Index> numbers, int depth = 0) const {
        constexpr int kDeepest = 4;
        std::vector<Placed> items;
        if (depth <= kDeepest) {
            items = Place(numbers);
        }
        if (items.empty()) {
            SortPlainly(numbers);
            return;
        }
        SortByPlace(items);
        std::transform(items.begin(), items.end(), numbers.begin(),
                       [](const Placed& item) { return item.number; });
        SortCells(items, numbers, depth);
    }

private:
    // Nothing where the points have no extent that could be divided.
    [[nodiscard]] std::vector<Placed> Place(std::span<const Index> numbers) const {
        constexpr double kMost = (1U << kBitsASide) - 1;
        PlanPoint low = coord_[numbers.front()];
        PlanPoint high = low;
        for (const Index number : numbers) {
            const PlanPoint& p = coord_[number];
            low = {std::min(low.x, p.x), std::min(low.y, p.y)};
            high = {std::max(high.x, p.x), std::max(high.y, p.y)};
        }
        const double scale = kMost / std::max(high.x - low.x, high.y - low.y);
        if (!std::isfinite(scale)) {
            return {};
        }
        std::vector<Placed> items;
        items.reserve(numbers.size());
        for (const Index number : numbers) {
            const PlanPoint& p = coord_[number];
            items.push_back({PlaceOnCurve(static_cast<std::uint32_t>((p.x - low.x) * scale),
                                          static_cast<std::uint32_t>((p.y - low.y) * scale)),
                             number});
        }
        return items;
    }

    void SortCells(std::span<const Placed> items, std::span<Index> numbers, int depth) const {
        constexpr std::size_t kMany = 32;
        for (std::size_t first = 0; first < items.size();) {
            std::size_t end = first + 1;
            while (end < items.size() && items[end].place == items[first].place) {
                ++end;
            }
            if (end - first > kMany) {
                Sort(numbers.subspan(first, end - first), depth + 1);
            } else if (end - first > 1) {
                SortPlainly(numbers.subspan(first, end - first));
            }
            first = end;
        }
    }

    void SortPlainly(std::span<Index> numbers) const {
        std::sort(numbers.begin(), numbers.end(), [this](Index i, Index j) {
            const PlanPoint& p = coord_[i];
            const PlanPoint& q = coord_[j];
            return std::tie(p.x, p.y, i) < std::tie(q.x, q.y, j);
        });
    }

    const Array1<PlanPoint>& coord_;
};

} // namespace

void SortAlongCurve(const Array1<PlanPoint>& coord, std::span<Index> numbers) {
    if (!numbers.empty()) {
        CurveSorter(coord).Sort(numbers);
    }
}

} // namespace terravo

#include "triangulation/CurveOrder.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
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

std::uint64_t PlaceOnCurve(std::uint32_t x, std::uint32_t y) {
    std::uint64_t place = 0;
    unsigned turn = 0;
    for (unsigned shift = 32; shift > 0;) {
        shift -= kBitsAtATime;
        const std::size_t xy = std::size_t{(x >> shift) % kBlock} * kBlock + (y >> shift) % kBlock;
        const BlockStep step = kBlockSteps[turn][xy];
        place = place << (2 * kBitsAtATime) | step.place;
        turn = step.turn;
    }
    return place;
}

} // namespace

double PlanExtent::Span() const {
    return std::max(high.x - low.x, high.y - low.y);
}

std::optional<PlanExtent> ExtentOf(const Array1<PlanPoint>& coord) {
    PlanExtent extent{coord[1], coord[1]};
    double anyNotFinite = 0;
    for (const PlanPoint& p : coord) {
        extent.low = {std::min(extent.low.x, p.x), std::min(extent.low.y, p.y)};
        extent.high = {std::max(extent.high.x, p.x), std::max(extent.high.y, p.y)};
        anyNotFinite += 0 * p.x + 0 * p.y;
    }
    return std::isfinite(anyNotFinite) ? std::optional(extent) : std::nullopt;
}

Array1<Index> CurveOrder(const Array1<PlanPoint>& coord, const PlanExtent& extent) {
    struct Placed {
        std::uint64_t place;
        Index number;
    };
    constexpr double kMost = std::numeric_limits<std::uint32_t>::max();
    const double span = extent.Span();
    // A span of zero gives no scale at all, one beyond the doubles a scale of zero: then all
    // positions are in one cell.
    const double scale = span > 0 && std::isfinite(kMost / span) ? kMost / span : 0.0;
    const auto cell = [&](double value, double low) {
        return scale > 0 ? static_cast<std::uint32_t>(std::min((value - low) * scale, kMost)) : 0U;
    };
    std::vector<Placed> placed(static_cast<std::size_t>(coord.UpperBound()));
    for (Index i = 1; i <= coord.UpperBound(); ++i) {
        const PlanPoint& p = coord[i];
        placed[static_cast<std::size_t>(i) - 1] = {
            PlaceOnCurve(cell(p.x, extent.low.x), cell(p.y, extent.low.y)), i};
    }
    std::sort(placed.begin(), placed.end(), [](const Placed& a, const Placed& b) {
        return a.place != b.place ? a.place < b.place : a.number < b.number;
    });
    Array1<Index> order(coord.UpperBound());
    for (Index i = 1; i <= coord.UpperBound(); ++i) {
        order[i] = placed[static_cast<std::size_t>(i) - 1].number;
    }
    return order;
}

} // namespace terravo

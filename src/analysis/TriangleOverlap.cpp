#include "analysis/TriangleOverlap.h"

namespace terravo {
namespace {

using Kind = OverlapCorner::Kind;

constexpr std::uint8_t Next(std::uint8_t k) {
    return k == 2 ? 0 : static_cast<std::uint8_t>(k + 1);
}

// The line that a side of the common part lies on.
struct Support {
    bool isSecond = false;
    std::uint8_t side = 0;
};

struct Vertex {
    OverlapCorner corner;
    Support ahead; // of the side to the next vertex
    int sign = 0;  // beside the line that cuts now
};

class Cut {
public:
    Cut(const SideSigns& first, const SideSigns& second) : first_(first), second_(second) {
        for (std::uint8_t k = 0; k < 3; ++k) {
            now_[k] = {{Kind::First, k, 0}, {false, k}};
        }
    }

    // Keeps what lies to the left of a side of the second triangle.
    void By(std::uint8_t side) {
        for (std::size_t k = 0; k < count_; ++k) {
            now_[k].sign = SignOf(now_[k].corner, side);
        }
        std::array<Vertex, kRoom> kept;
        std::size_t count = 0;
        for (std::size_t k = 0; k < count_; ++k) {
            const Vertex& here = now_[k];
            const int next = now_[k + 1 == count_ ? 0 : k + 1].sign;
            const Support along = next < 0 ? Support{true, side} : here.ahead;
            if (here.sign >= 0) {
                kept[count++] = {here.corner, here.sign == 0 ? along : here.ahead};
            }
            if (here.sign * next < 0) {
                kept[count++] = {CrossingOf(here.ahead, side), along};
            }
        }
        now_ = kept;
        count_ = count < 3 ? 0 : count;
    }

    [[nodiscard]] TriangleOverlap Result() const {
        TriangleOverlap overlap;
        overlap.count = count_;
        for (std::size_t k = 0; k < count_; ++k) {
            overlap.corners[k] = now_[k].corner;
        }
        return overlap;
    }

private:
    static constexpr std::size_t kRoom = kMostOverlapCorners + 1;

    [[nodiscard]] int SignOf(OverlapCorner corner, std::uint8_t side) const {
        switch (corner.kind) {
        case Kind::First:
            return first_[corner.first][side];
        case Kind::Second:
            return corner.second == side || corner.second == Next(side) ? 0 : 1;
        case Kind::Crossing:
            break;
        }
        return corner.second == side ? 0 : SignOfCrossing(corner, side);
    }

    // The corner that the side of the crossing shares with this one lies ahead of the crossing or
    // behind it; on which hand of the first triangle's side it lies tells which.
    [[nodiscard]] int SignOfCrossing(OverlapCorner crossing, std::uint8_t side) const {
        const bool isEnd = side == Next(crossing.second);
        const int entering = first_[crossing.first][crossing.second] < 0 ? 1 : -1;
        const int hand = second_[isEnd ? side : crossing.second][crossing.first];
        return isEnd ? -entering * hand : entering * hand;
    }

    // Where a side of the common part meets a side that its ends lie on different hands of. A
    // crossing at a corner of the second triangle goes by the name of the corner.
    [[nodiscard]] OverlapCorner CrossingOf(Support support, std::uint8_t side) const {
        if (support.isSecond) {
            return {Kind::Second, 0, Next(support.side) == side ? side : support.side};
        }
        for (const std::uint8_t end : {side, Next(side)}) {
            if (second_[end][support.side] == 0) {
                return {Kind::Second, 0, end};
            }
        }
        return {Kind::Crossing, support.side, side};
    }

    const SideSigns& first_;
    const SideSigns& second_;
    std::array<Vertex, kRoom> now_;
    std::size_t count_ = 3;
};

// A side that has all of the other triangle to its right, or on its line, parts the two.
bool IsParted(const SideSigns& signs) {
    for (std::size_t side = 0; side < 3; ++side) {
        if (signs[0][side] <= 0 && signs[1][side] <= 0 && signs[2][side] <= 0) {
            return true;
        }
    }
    return false;
}

} // namespace

TriangleOverlap OverlapOf(const SideSigns& first, const SideSigns& second) {
    if (IsParted(first) || IsParted(second)) {
        return {};
    }
    Cut cut(first, second);
    for (std::uint8_t side = 0; side < 3; ++side) {
        cut.By(side);
    }
    return cut.Result();
}

} // namespace terravo

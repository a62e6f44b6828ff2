#include "contour/smoothing/LineMeeting.h"

#include "triangulation/exact/ExactSigns.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <numeric>

namespace terravo {
namespace {

constexpr std::size_t kLeaf = 8; // pieces of a box that is not divided

struct Box {
    PlanPoint low{std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()};
    PlanPoint high{-std::numeric_limits<double>::infinity(),
                   -std::numeric_limits<double>::infinity()};

    void Include(PlanPoint p) {
        low = {std::min(low.x, p.x), std::min(low.y, p.y)};
        high = {std::max(high.x, p.x), std::max(high.y, p.y)};
    }
    void Include(const Box& box) {
        Include(box.low);
        Include(box.high);
    }
    [[nodiscard]] bool Overlaps(const Box& other) const {
        return low.x <= other.high.x && other.low.x <= high.x && low.y <= other.high.y &&
               other.low.y <= high.y;
    }
};

// A straight piece of a line.
struct Piece {
    PlanPoint from;
    PlanPoint to;
    std::size_t line = 0;
    std::size_t number = 0; // in its line

    [[nodiscard]] Box Bounds() const {
        Box box;
        box.Include(from);
        box.Include(to);
        return box;
    }
};

std::vector<Piece> PiecesOf(const StraightLines& all) {
    std::vector<Piece> pieces;
    pieces.reserve(all.places.size());
    for (std::size_t k = 0; k < all.lines.size(); ++k) {
        const auto& [first, count, closed] = all.lines[k];
        for (std::size_t i = 0; count > 1 && i < (closed ? count : count - 1); ++i) {
            if (all.isLeftOut.empty() || all.isLeftOut[first + i] == 0) {
                pieces.push_back(
                    {all.places[first + i], all.places[first + (i + 1) % count], k, i});
            }
        }
    }
    return pieces;
}

class MeetingSearch {
public:
    MeetingSearch(const StraightLines& lines, const StopToken& stop)
        : lines_(lines), stop_(stop), signs_(Array1<PlanPoint>(lines.places)),
          pieces_(PiecesOf(lines)) {}

    std::optional<LineMeeting> Find() {
        if (!pieces_.empty()) {
            Build({1, 0, pieces_.size()});
            Within({1, 0, pieces_.size()});
        }
        return found_;
    }

private:
    // A range of pieces; its box is that of the number. The halves have twice the number.
    struct Node {
        std::size_t number = 1;
        std::size_t first = 0;
        std::size_t end = 0;

        [[nodiscard]] bool IsLeaf() const { return end - first <= kLeaf; }
        [[nodiscard]] std::size_t Middle() const { return first + (end - first) / 2; }
        [[nodiscard]] Node Lower() const { return {2 * number, first, Middle()}; }
        [[nodiscard]] Node Upper() const { return {2 * number + 1, Middle(), end}; }
    };

    // Orders the pieces and sets the boxes.
    void Build(const Node& node) {
        Box box;
        for (std::size_t i = node.first; i < node.end; ++i) {
            box.Include(pieces_[i].Bounds());
        }
        if (boxes_.size() <= node.number) {
            boxes_.resize(2 * node.number + 1);
        }
        boxes_[node.number] = box;
        if (node.IsLeaf()) {
            return;
        }
        const bool byX = box.high.x - box.low.x > box.high.y - box.low.y;
        const auto at = [&](std::size_t i) {
            return pieces_.begin() + static_cast<std::ptrdiff_t>(i);
        };
        std::nth_element(at(node.first), at(node.Middle()), at(node.end),
                         [&](const Piece& a, const Piece& b) {
                             return byX ? a.from.x + a.to.x < b.from.x + b.to.x
                                        : a.from.y + a.to.y < b.from.y + b.to.y;
                         });
        Build(node.Lower());
        Build(node.Upper());
    }

    [[nodiscard]] bool HasEnded() const { return found_ || isStopped_; }

    // Before each pair of leaves.
    void AskToGoOn() {
        constexpr std::uint32_t kPairsALook = 4096;
        if (++pairs_ % kPairsALook == 0) {
            const double done = static_cast<double>(done_) / static_cast<double>(pieces_.size());
            isStopped_ = !stop_.GoesOn("examine", done);
        }
    }

    void Within(const Node& node) {
        if (HasEnded()) {
            return;
        }
        if (node.IsLeaf()) {
            AskToGoOn();
            done_ = node.end;
            for (std::size_t i = node.first; i < node.end; ++i) {
                for (std::size_t k = i + 1; k < node.end; ++k) {
                    Look(pieces_[i], pieces_[k]);
                }
            }
            return;
        }
        Within(node.Lower());
        Within(node.Upper());
        Between(node.Lower(), node.Upper());
    }

    void Between(const Node& a, const Node& b) {
        if (HasEnded() || !boxes_[a.number].Overlaps(boxes_[b.number])) {
            return;
        }
        if (a.IsLeaf() && b.IsLeaf()) {
            AskToGoOn();
            for (std::size_t i = a.first; i < a.end; ++i) {
                for (std::size_t k = b.first; k < b.end; ++k) {
                    Look(pieces_[i], pieces_[k]);
                }
            }
        } else if (b.IsLeaf() || (!a.IsLeaf() && a.end - a.first >= b.end - b.first)) {
            Between(a.Lower(), b);
            Between(a.Upper(), b);
        } else {
            Between(a, b.Lower());
            Between(a, b.Upper());
        }
    }

    void Look(const Piece& a, const Piece& b) {
        const Box boxA = a.Bounds();
        const Box boxB = b.Bounds();
        if (found_ || !boxA.Overlaps(boxB)) {
            return;
        }
        const bool isBefore = Follows(a, b);
        const bool isBehind = Follows(b, a);
        if (isBefore || isBehind) {
            if ((isBefore && TurnsBack(a, b)) || (isBehind && TurnsBack(b, a))) {
                Note(a, b, isBefore ? a.to : b.to, false);
            }
            return;
        }
        const int aSides = signs_.Turn(b.from, b.to, a.from) * signs_.Turn(b.from, b.to, a.to);
        const int bSides = signs_.Turn(a.from, a.to, b.from) * signs_.Turn(a.from, a.to, b.to);
        if (aSides <= 0 && bSides <= 0) {
            const PlanPoint low{std::max(boxA.low.x, boxB.low.x), std::max(boxA.low.y, boxB.low.y)};
            const PlanPoint high{std::min(boxA.high.x, boxB.high.x),
                                 std::min(boxA.high.y, boxB.high.y)};
            Note(a, b, {std::midpoint(low.x, high.x), std::midpoint(low.y, high.y)},
                 aSides < 0 && bSides < 0);
        }
    }

    // Whether b begins where a ends, in the same line.
    [[nodiscard]] bool Follows(const Piece& a, const Piece& b) const {
        const StraightLines::Line& line = lines_.lines[a.line];
        return a.line == b.line && (b.number == a.number + 1 ||
                                    (line.closed && b.number == 0 && a.number + 1 == line.count));
    }

    // Whether b, which follows a, lies on it.
    [[nodiscard]] bool TurnsBack(const Piece& a, const Piece& b) const {
        const auto isOpposite = [](double from, double middle, double to) {
            return (from < middle && to < middle) || (from > middle && to > middle);
        };
        return signs_.Turn(a.from, a.to, b.to) == 0 &&
               (isOpposite(a.from.x, a.to.x, b.to.x) || isOpposite(a.from.y, a.to.y, b.to.y));
    }

    void Note(const Piece& a, const Piece& b, PlanPoint place, bool isCrossing) {
        found_ = LineMeeting{a.line, b.line, place, isCrossing};
    }

    const StraightLines& lines_;
    const StopToken& stop_;
    ExactSigns signs_;
    std::vector<Piece> pieces_;
    std::vector<Box> boxes_; // by number
    std::optional<LineMeeting> found_;
    bool isStopped_ = false;
    std::size_t done_ = 0; // pieces
    std::uint32_t pairs_ = 0;
};

} // namespace

std::optional<LineMeeting> FindMeeting(const StraightLines& lines, const StopToken& stop) {
    return MeetingSearch(lines, stop).Find();
}

} // namespace terravo

#include "sheet/LabelSearch.h"

#include <algorithm>
#include <cmath>
#include <functional>

namespace terravo {
namespace {

// What a place costs; lengths in capital heights.
constexpr double kBend = 1 / (0.17 * 0.17);   // by the square of the distance from straight
constexpr double kApproach = 1 / (0.5 * 0.5); // the same with a capital more at each end
constexpr double kInk = 1;                    // a neighbour covered from end to end
constexpr double kTilt = 0.3;                 // upright text; twice as much upside down
constexpr double kEnd = 0.6;                  // at the end of the line,
constexpr double kEndReach = 4;               // down to nothing so far from it
constexpr double kLadder = 0.5;               // saved close to a text up or down the slope
constexpr double kStray = 0.5;                // as far from the wished place as is looked at

double Square(double x) {
    return x * x;
}

// The part of a step to where it leaves -half .. half.
double PartInside(double in, double out, double half) {
    return std::abs(out) > half ? (half - std::abs(in)) / (std::abs(out) - std::abs(in)) : 1;
}

} // namespace

// Room around a text, in capital heights.
struct LabelSearch::Demands {
    double beside; // before and behind
    double above;  // and below
    double toEnd;  // of line left
    int stride;    // steps from place to place
};

std::optional<double> StepsOutOf(const TurnedBox& box, const LineCourse& course, int centre,
                                 int direction) {
    const int toEnd = direction > 0 ? course.Count() - 1 - centre : centre;
    const int patience = static_cast<int>(4 * (box.halfLength + box.halfHeight) / course.Step());
    const int most = std::min(course.IsClosed() ? course.Count() : toEnd, patience + 2);
    if (!box.Contains(course.At(centre))) {
        return std::nullopt;
    }
    SheetPoint in = box.Local(course.At(centre));
    for (int k = 1; k <= most; ++k) {
        const SheetPoint out = box.Local(course.At(centre + direction * k));
        const double part = std::min(PartInside(in.x, out.x, box.halfLength),
                                     PartInside(in.y, out.y, box.halfHeight));
        if (part < 1) {
            return k - 1 + part;
        }
        in = out;
    }
    return std::nullopt;
}

LabelSearch::LabelSearch(const LineCourse& course, const LabelRoom& room, const LabelWish& wish,
                         double width, bool higherOnLeft)
    : course_(course), room_(room), wish_(wish), width_(width), higherOnLeft_(higherOnLeft),
      reach_(static_cast<int>(std::lround((width / 2 + wish.gap) / course.Step()))) {}

// What is known without a look at the line.
double LabelSearch::CostOfCentre(int centre, const LabelStretch& stretch) const {
    double cost = 0;
    if (stretch.wished) {
        const double most =
            std::max(stretch.last - *stretch.wished, *stretch.wished - stretch.first);
        cost += kStray * Square((centre - *stretch.wished) / std::max(most, 1.0));
    }
    if (!course_.IsClosed()) {
        const int steps = std::min(centre, course_.Count() - 1 - centre) - reach_;
        const double left = steps * course_.Step() / wish_.height;
        cost += kEnd * std::max(0.0, 1 - left / kEndReach);
    }
    return cost;
}

SheetPoint LabelSearch::Reading(SheetPoint along) const {
    const bool keep = wish_.uphill ? higherOnLeft_ : along.x > 0 || (!(along.x < 0) && along.y < 0);
    return keep ? along : SheetPoint{-along.x, -along.y};
}

bool LabelSearch::FindsRoom(LabelPlace& place, const Demands& demands) const {
    const double h = wish_.height;
    if (!room_.IsFree(place.text.Grown(demands.beside * h, demands.above * h))) {
        return false;
    }
    const TurnedBox hole = place.text.Grown(wish_.gap, std::min(wish_.gap, h / 4));
    const std::optional<double> back = StepsOutOf(hole, course_, place.centre, -1);
    const std::optional<double> ahead = StepsOutOf(hole, course_, place.centre, 1);
    if (!back || !ahead) {
        return false;
    }
    place.from = place.centre - *back;
    place.to = place.centre + *ahead;
    const double left = demands.toEnd * h / course_.Step();
    return course_.IsClosed() ? place.to - place.from + left < course_.Count()
                              : place.from >= left && place.to + left <= course_.Count() - 1;
}

// Bend and tilt are known at once; of the rest, the least that it can be.
void LabelSearch::Rank(const LabelStretch& stretch, int stride, double most) {
    const int approach = reach_ + static_cast<int>(wish_.height / course_.Step());
    ranking_.clear();
    for (int i = static_cast<int>(std::ceil(stretch.first)); i <= stretch.last; i += stride) {
        const StraightFit fit = course_.Fit(i, reach_);
        const double wide = course_.Fit(i, approach).spread;
        const double cost = CostOfCentre(i, stretch) + kBend * Square(fit.spread / wish_.height) +
                            kApproach * Square(wide / wish_.height) +
                            kTilt * (1 - Reading(fit.along).x) +
                            kLadder * (1 - room_.Ladder(fit.middle));
        if (cost < most) {
            ranking_.push_back({cost, i});
        }
    }
    std::make_heap(ranking_.begin(), ranking_.end(), std::greater<>());
}

std::optional<LabelPlace> LabelSearch::Cheapest(const LabelStretch& stretch, double most,
                                                bool hardPressed) {
    const Demands demands = hardPressed ? Demands{0.1, 0.05, 0.2, 1} : Demands{0.35, 0.15, 1.2, 3};
    std::optional<LabelPlace> best;
    Rank(stretch, demands.stride, most);
    while (!ranking_.empty() && ranking_.front().first < most) {
        const auto [cost, centre] = ranking_.front();
        std::pop_heap(ranking_.begin(), ranking_.end(), std::greater<>());
        ranking_.pop_back();
        const StraightFit fit = course_.Fit(centre, reach_);
        LabelPlace place;
        place.centre = centre;
        place.text = {fit.middle, Reading(fit.along), width_ / 2, wish_.height / 2};
        place.cost =
            cost + kInk * room_.InkBeside(place.text.Grown(wish_.gap, 0), (most - cost) / kInk);
        if (place.cost < most && FindsRoom(place, demands)) {
            best = place;
            most = place.cost;
        }
    }
    return best;
}

} // namespace terravo

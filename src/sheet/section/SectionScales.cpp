#include "sheet/section/SectionScales.h"

#include <algorithm>

namespace terravo {
namespace {

constexpr double kHeightPart = 0.85; // of the frame that heights take at most
constexpr double kUsualShape = 0.6;  // height of a profile, of its length on the paper
constexpr double kSlack = 1e-9;      // what rounding adds

double LargestFactor(double most) {
    double factor = 1;
    for (int i = 0; factor < kMostExaggeration; ++i) {
        const double next = i % 3 == 1 ? factor * 2.5 : factor * 2; // 1, 2, 5, 10
        if (next > most * (1 + kSlack)) {
            break;
        }
        factor = next;
    }
    return factor;
}

} // namespace

SectionScales ChooseScales(const SectionPlan& plan, double length, double range, double width,
                           double height) {
    const double heightRoom = kHeightPart * height;
    SectionScales scales;
    if (plan.scale) {
        scales.scale = *plan.scale;
    } else {
        const double least =
            std::max(length / width, range * plan.exaggeration.value_or(1) / heightRoom);
        scales.scale = least > 0 ? UsualScale(1000 * least * (1 - kSlack)) : 1000;
    }
    if (plan.exaggeration) {
        scales.exaggeration = *plan.exaggeration;
    } else if (range > 0) {
        const double most = length > 0
                                ? std::min(heightRoom, kUsualShape * length * scales.PerStation())
                                : heightRoom;
        scales.exaggeration = LargestFactor(most / (range * scales.PerStation()));
    }
    return scales;
}

} // namespace terravo

#include "plot2d/AxisRule.h"

#include "util/AppError.h"
#include "util/NumberText.h"
#include "util/modUtilita.h"

#include <cmath>

namespace terravo::AxisRule {
namespace {

constexpr const char* kSource = "DrawPlotFrame";
constexpr double kNarrowestRange = 0.0001;
constexpr double kLn10Single = 2.3025851249694824; // ln 10 in single precision
constexpr double kRangePerDecade = 20;
constexpr double kFewestSteps = 5;
constexpr double kMostSteps = 10;

void CheckFinite(float value) {
    if (!std::isfinite(value)) {
        throw AppError(ErrorNumber::kOverflow, kSource,
                       "The coordinates are too large for an axis.");
    }
}

} // namespace

double Round5(double v) {
    constexpr double kDecimals = 1e5;
    constexpr double kAllWhole = 4503599627370496.0; // 2^52: no fraction left from here on
    const double scaled = v * kDecimals;
    return std::fabs(scaled) < kAllWhole ? std::nearbyint(scaled) / kDecimals : v;
}

double Ceiling(double v) {
    const double whole = std::floor(v);
    return modUtilita::IsExactly(v, whole) ? v : whole + 1;
}

double ChooseAxisStep(float range) {
    CheckFinite(range);
    if (!(range > 0)) {
        throw AppError(ErrorNumber::kInvalidCall, kSource,
                       "The range of the coordinates is too small for an axis step.");
    }
    const double wide = static_cast<double>(range);
    const double exponent = Ceiling(std::log(wide / kRangePerDecade) / kLn10Single);
    double step = std::pow(10.0, exponent);
    while (wide / step < kFewestSteps) {
        step /= 2;
    }
    if (wide / step > kMostSteps) {
        step *= 2;
    }
    return step;
}

Axis AxisLimits(double min, double max) {
    Axis axis;
    axis.step = ChooseAxisStep(static_cast<float>(max - min));
    axis.min = std::floor(Round5(min / axis.step)) * axis.step;
    axis.max = Ceiling(Round5(max / axis.step)) * axis.step;
    axis.range = static_cast<float>(axis.max - axis.min);
    CheckFinite(static_cast<float>(axis.min));
    CheckFinite(static_cast<float>(axis.max));
    CheckFinite(axis.range);
    if (!(axis.range > 0)) {
        throw AppError(ErrorNumber::kInvalidCall, kSource,
                       "The coordinates are too large to tell the ends of an axis apart.");
    }
    return axis;
}

Limits WidenNarrow(Limits limits) {
    const auto range = static_cast<float>(limits.max - limits.min);
    if (range < static_cast<float>(kNarrowestRange)) {
        limits.min -= kNarrowestRange / 2;
        limits.max += kNarrowestRange / 2;
    }
    return limits;
}

Limits WidenEqualLabels(Limits limits, std::string_view labelFormat, char separator) {
    const auto sameLabels = [&](double distance) {
        return NumberText::FormatScreen(limits.min - distance, labelFormat, separator) ==
               NumberText::FormatScreen(limits.max + distance, labelFormat, separator);
    };
    if (!sameLabels(0)) {
        return limits;
    }
    double distance = kNarrowestRange;
    while (sameLabels(distance)) {
        distance *= 2;
        if (!std::isfinite(distance)) {
            throw AppError(
                ErrorNumber::kOverflow, kSource,
                "The labels of an axis cannot be told apart: its numbers are too large.");
        }
    }
    return {limits.min - 10 * distance, limits.max + 10 * distance};
}

std::vector<float> Ticks(const Axis& axis) {
    std::vector<float> ticks;
    const double end = axis.max + 0.1 * axis.step;
    const auto step = static_cast<float>(axis.step);
    auto tick = static_cast<float>(axis.min);
    while (static_cast<double>(tick) <= end && ticks.size() < kMaxTicks) {
        ticks.push_back(tick);
        const float next = tick + step;
        if (!(next > tick)) {
            break;
        }
        tick = next;
    }
    return ticks;
}

} // namespace terravo::AxisRule

#include "sheet/GridLines.h"

#include "util/NumberText.h"

#include <algorithm>
#include <cmath>

namespace terravo {
namespace {

bool EastingCrossesHorizontalSides(const SheetLayout& layout) {
    return std::fabs(layout.view.cosine) >= std::fabs(layout.view.sine);
}

} // namespace

double RoundNumber(double atLeast) {
    double power = std::pow(10, std::floor(std::log10(atLeast)));
    for (;; power *= 10) {
        for (const double step : {1.0, 2.0, 5.0}) {
            if (step * power >= atLeast * (1 - 1e-9)) {
                return step * power;
            }
        }
    }
}

double GridSpacing(const SheetLayout& layout) {
    constexpr double kLeast = 40; // millimetres
    const double side = std::min(layout.map.Width(), layout.map.Height());
    return RoundNumber(std::min(kLeast, side / 4) / layout.view.millimetresPerUnit);
}

std::vector<double> MultiplesWithin(double from, double to, double spacing) {
    constexpr double kMost = 10000;
    const double slack = 1e-9; // what rounding adds
    const double first = std::ceil(from / spacing - slack);
    const double last = std::floor(to / spacing + slack);
    std::vector<double> values;
    if (!(last - first < kMost) || first + 1 == first || last - 1 == last) {
        return values;
    }
    for (double k = first; k <= last; ++k) {
        values.push_back(k * spacing);
    }
    return values;
}

std::string GridValueText(double value, double spacing, char decimalSeparator) {
    const double power = std::floor(std::log10(spacing) + 1e-9);
    const auto decimals = static_cast<std::size_t>(std::clamp(-power, 0.0, 12.0));
    const std::string pattern = decimals == 0 ? "#0" : "#0." + std::string(decimals, '0');
    return NumberText::FormatScreen(value, pattern, decimalSeparator);
}

std::string ShortNumberText(double value, char decimalSeparator) {
    constexpr double kUsual = 6;
    constexpr double kMost = 30;
    const double places = value == 0 ? 0 : 3 - std::floor(std::log10(std::fabs(value)));
    const auto decimals = static_cast<std::size_t>(std::clamp(places, kUsual, kMost));
    return NumberText::FormatScreen(value, "#0." + std::string(decimals, '#'), decimalSeparator);
}

GridCoordinate::GridCoordinate(const SheetLayout& layout, bool isEasting)
    : isEasting_(isEasting), middle_(layout.view.middle),
      atMiddle_(isEasting ? layout.view.centre.x : layout.view.centre.y) {
    const double unit = 1 / layout.view.millimetresPerUnit;
    toTheRight_ = (isEasting ? layout.view.cosine : -layout.view.sine) * unit;
    down_ = -(isEasting ? layout.view.sine : layout.view.cosine) * unit;
}

GridCoordinate AlongHorizontalSides(const SheetLayout& layout) {
    return {layout, EastingCrossesHorizontalSides(layout)};
}

GridCoordinate AlongUprightSides(const SheetLayout& layout) {
    return {layout, !EastingCrossesHorizontalSides(layout)};
}

} // namespace terravo

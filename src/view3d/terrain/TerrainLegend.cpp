#include "view3d/terrain/TerrainLegend.h"

#include "util/NumberText.h"

#include <algorithm>
#include <cmath>

namespace terravo {
namespace {

constexpr int kMostDigits = 8; // of a value

// A power of ten that came out a little low is one.
int PowerOf(double value) {
    constexpr double kRounding = 1e-9;
    return value > 0 ? static_cast<int>(std::floor(std::log10(value) + kRounding)) : 0;
}

std::string WithDecimals(double value, int decimals, char separator) {
    const auto shown = static_cast<std::size_t>(std::clamp(decimals, 0, 30));
    return NumberText::FormatScreen(value, shown == 0 ? "#0" : "#0." + std::string(shown, '0'),
                                    separator);
}

// "1.25E+08": all values of a legend have the same exponent, so that they can be compared.
std::string WithExponent(double value, int power, int decimals, char separator) {
    const std::string digits = std::to_string(std::abs(power));
    return WithDecimals(value / std::pow(10, power), decimals, separator) +
           (power < 0 ? "E-" : "E+") + (digits.size() < 2 ? "0" + digits : digits);
}

// Of values up to `most`, at such a step: fixed where that is short.
std::string TextOf(double value, double most, double step, char separator) {
    constexpr int kLargestFixed = 6;
    constexpr int kSmallestFixed = -3;
    const int power = PowerOf(most);
    const int stepPower = PowerOf(step);
    if (power > kLargestFixed || power < kSmallestFixed) {
        return WithExponent(value, power, power - stepPower + 1, separator);
    }
    return WithDecimals(value, step >= 10 ? 0 : 1 - stepPower, separator);
}

// What the values have in common, a multiple of a power of ten: all its digits.
std::string TextOfBase(double base, int unitPower, char separator) {
    constexpr int kLargestFixed = 14;
    constexpr int kSmallestFixed = -3;
    const int power = PowerOf(std::fabs(base));
    return power > kLargestFixed || power < kSmallestFixed
               ? WithExponent(base, power, power - unitPower, separator)
               : WithDecimals(base, -unitPower, separator);
}

} // namespace

TerrainLegendTexts MakeTerrainLegend(double lowest, double highest, int steps,
                                     char decimalSeparator) {
    TerrainLegendTexts texts;
    const double step = highest / steps - lowest / steps;
    double most = std::max(std::fabs(lowest), std::fabs(highest));
    if (!(step > 0)) {
        const bool isUsual = most == 0 || (most >= 1e-3 && most < 1e7);
        texts.values = {isUsual ? NumberText::FormatScreen(lowest, "#0.0##", decimalSeparator)
                                : WithExponent(lowest, PowerOf(most), 2, decimalSeparator)};
        return texts;
    }
    double base = 0;
    if (PowerOf(most) - PowerOf(step) + 2 > kMostDigits) {
        const int unitPower = PowerOf(step) + 2;
        const double unit = std::pow(10, unitPower);
        base = std::floor(lowest / unit) * unit;
        most = highest - base;
        texts.base = TextOfBase(base, unitPower, decimalSeparator);
    }
    for (int k = 0; k <= steps; ++k) {
        const double value = k < steps ? lowest + k * step : highest;
        texts.values.push_back((texts.base.empty() ? "" : "+") +
                               TextOf(value - base, most, step, decimalSeparator));
    }
    return texts;
}

} // namespace terravo

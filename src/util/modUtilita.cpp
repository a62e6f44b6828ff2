#include "util/modUtilita.h"

#include <cmath>
#include <limits>

namespace terravo::modUtilita {

double PolarAngle(double a, double b) {
    constexpr double kPi = 3.14159265358979;
    constexpr double kTwoPi = 6.28318530717958;
    constexpr double kThreePi = 9.42477796076937;
    if (b > 0) {
        return a >= 0 ? std::atan(a / b) : std::atan(a / b) + kTwoPi;
    }
    if (b < 0) {
        return std::atan(a / b) + kPi;
    }
    if (std::isnan(b)) {
        return 0;
    }
    return a >= 0 ? kPi / 2 : kThreePi / 2;
}

std::int32_t RoundHalfEven(double value) {
    constexpr auto kLow = std::numeric_limits<std::int32_t>::min();
    constexpr auto kHigh = std::numeric_limits<std::int32_t>::max();
    if (std::isnan(value)) {
        return 0;
    }
    // nearbyint rounds halves to even in the default rounding mode, which nothing here changes.
    const double rounded = std::nearbyint(value);
    if (rounded <= static_cast<double>(kLow)) {
        return kLow;
    }
    if (rounded >= static_cast<double>(kHigh)) {
        return kHigh;
    }
    return static_cast<std::int32_t>(rounded);
}

} // namespace terravo::modUtilita

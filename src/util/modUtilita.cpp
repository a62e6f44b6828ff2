#include "util/modUtilita.h"

#include <cmath>
#include <limits>

namespace terravo::modUtilita {

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

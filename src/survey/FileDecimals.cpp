#include "survey/FileDecimals.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string_view>

namespace terravo {

int DecimalsOf(double value) {
    std::array<char, 32> text{};
    const auto written =
        std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::scientific);
    const std::string_view shortest(text.data(), written.ptr);
    const std::size_t mark = shortest.find('e');
    if (mark == std::string_view::npos) {
        return 0; // no finite value
    }
    const std::size_t point = shortest.find('.');
    const int digits = point < mark ? static_cast<int>(mark - point - 1) : 0;
    const bool isPositive = shortest[mark + 1] == '+';
    int exponent = 0;
    std::from_chars(shortest.data() + mark + 2, written.ptr, exponent);
    return std::max(0, digits - (isPositive ? exponent : -exponent));
}

int FileDecimals(const Array1<double>& values, Index count) {
    constexpr Index kMostLooks = 10000;
    const Index step = count / kMostLooks + 1;
    int decimals = 0;
    for (Index i = 1; i <= count; i += step) {
        decimals = std::max(decimals, DecimalsOf(values[i]));
    }
    return decimals;
}

} // namespace terravo

#include "export/vector/VectorNumber.h"

#include "util/AppError.h"

#include <array>
#include <charconv>
#include <cmath>
#include <string_view>

namespace terravo::VectorNumber {
namespace {

// The longest text without an exponent is that of a denormal number.
using Digits = std::array<char, 1100>;

std::string_view Print(Digits& digits, double value) {
    if (!std::isfinite(value)) {
        throw AppError(ErrorNumber::kOverflow, "VectorNumber",
                       "A coordinate is no finite number and cannot be written.");
    }
    // The sum takes the sign off a negative zero.
    const std::to_chars_result end = std::to_chars(digits.data(), digits.data() + digits.size(),
                                                   value + 0.0, std::chars_format::fixed);
    return {digits.data(), end.ptr};
}

} // namespace

void AppendReal(std::string& out, double value) {
    Digits digits;
    const std::string_view text = Print(digits, value);
    out += text;
    if (text.find('.') == std::string_view::npos) {
        out += ".0";
    }
}

void AppendShort(std::string& out, double value) {
    Digits digits;
    out += Print(digits, value);
}

void AppendWhole(std::string& out, std::int64_t value) {
    std::array<char, 20> digits;
    out.append(digits.data(),
               std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr);
}

} // namespace terravo::VectorNumber

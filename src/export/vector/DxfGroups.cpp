#include "export/vector/DxfGroups.h"

#include "export/vector/VectorNumber.h"

#include <array>
#include <charconv>

namespace terravo::DxfGroups {
namespace {

char DigitOf(int number) {
    return static_cast<char>('0' + number % 10);
}

} // namespace

void AppendCode(std::string& out, int code) {
    const std::array<char, 4> line{code < 100 ? ' ' : DigitOf(code / 100),
                                   code < 10 ? ' ' : DigitOf(code / 10), DigitOf(code), '\n'};
    out.append(line.data(), line.size());
}

void AppendText(std::string& out, int code, std::string_view value) {
    AppendCode(out, code);
    out += value;
    out += '\n';
}

void AppendInteger(std::string& out, int code, std::int64_t value) {
    std::array<char, 24> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value);
    AppendText(out, code, {digits.data(), end.ptr});
}

void AppendReal(std::string& out, int code, double value) {
    AppendCode(out, code);
    VectorNumber::AppendReal(out, value);
    out += '\n';
}

std::string HandleText(std::uint64_t handle) {
    std::array<char, 16> digits{};
    char* first = digits.data() + digits.size();
    do {
        *--first = "0123456789ABCDEF"[handle % 16];
        handle /= 16;
    } while (handle != 0);
    return {first, digits.data() + digits.size()};
}

void AppendPoint(std::string& out, int code, const SpacePoint& point) {
    AppendReal(out, code, point.x);
    AppendReal(out, code + 10, point.y);
    AppendReal(out, code + 20, point.z);
}

} // namespace terravo::DxfGroups

// The quick reading of plain decimal numbers beside the standard library's.
//
// Data: the first byte chooses what the rest becomes: digits and a point, any text, or a whole
// number with its count of decimals. Method: where the quick reading gives a number, it must be the
// same to the bit.
#include "fuzz/FuzzInput.h"
#include "util/DecimalText.h"

#include <charconv>
#include <string>
#include <system_error>

namespace terravo {
namespace {

using fuzz::Require;

double Standard(const std::string& text) {
    double value = -1;
    const char* const end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, value);
    Require(read.ec == std::errc{} && read.ptr == end, "the standard library reads " + text);
    return value;
}

void RequireSame(double value, const std::string& text) {
    Require(std::bit_cast<std::uint64_t>(value) == std::bit_cast<std::uint64_t>(Standard(text)),
            "the quick reading of " + text + " is right");
}

void CheckText(const std::string& text) {
    double value = 0;
    const char* const begin = text.c_str();
    const char* const end = DecimalText::Read(begin, value);
    if (end != nullptr) {
        Require(end > begin && end <= begin + text.size(), "the number ends within the text");
        RequireSame(value, {begin, end});
    }
}

void CheckQuotient(std::uint64_t whole, std::size_t decimals) {
    double value = 0;
    if (whole == 0 || !DecimalText::DivideLong(whole, decimals, value)) {
        return;
    }
    RequireSame(value, std::to_string(whole) + "e-" + std::to_string(decimals));
}

} // namespace
} // namespace terravo

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace terravo;
    fuzz::InputBytes bytes(data, size);
    const int kind = bytes.Byte() % 3;
    if (kind == 0) {
        std::string digits;
        while (!bytes.IsEmpty()) {
            digits += "0123456789.0123459"[bytes.Byte() % 18];
        }
        CheckText(digits);
    } else if (kind == 1) {
        CheckText(fuzz::TextOf(data + 1, size - 1));
    } else {
        while (!bytes.IsEmpty()) {
            const auto decimals = static_cast<std::size_t>(bytes.Byte());
            const int dropped = bytes.Byte() % 64;
            CheckQuotient(bytes.Word() >> dropped, decimals % (DecimalText::kMostDigits + 1));
        }
    }
    return 0;
}

// The error that drawing and file routines raise: a number, the routine it came from, a sentence.
//
// Drawing routines raise it inside, catch it at their own top and return the description; numeric
// routines never throw.
#pragma once

#include <stdexcept>
#include <string>
#include <utility>

namespace terravo {

/// Error numbers with a fixed meaning; any other number is a fault of the run.
namespace ErrorNumber {
inline constexpr int kInvalidCall = 5;
inline constexpr int kOverflow = 6;
inline constexpr int kSubscript = 9;
inline constexpr int kDivisionByZero = 11;
inline constexpr int kDeviceIo = 57;
inline constexpr int kDrawing = 1001;
} // namespace ErrorNumber

class AppError : public std::runtime_error {
public:
    AppError(int number, std::string source, const std::string& description)
        : std::runtime_error(description), number_(number), source_(std::move(source)) {}

    [[nodiscard]] int number() const { return number_; }
    [[nodiscard]] const std::string& source() const { return source_; }

private:
    int number_;
    std::string source_;
};

} // namespace terravo

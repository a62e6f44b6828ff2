// The groups of a DXF file, one after another.
//
// Data: the bytes of a file, seen through a window that moves along it. Method: every group must be
// the one that is asked for; what is not ends the reading with a sentence that names the line.
#pragma once

#include "util/DecimalText.h"
#include "util/FileHandle.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

namespace terravo {

/// Thrown when a file is not as it has to be.
struct DxfDifference {
    std::string sentence;
};

struct DxfTag {
    int code = 0;
    std::string_view value; // without its line end; until the next tag
};

class DxfTags {
public:
    /// Throws AppError when the file cannot be opened or read; that holds for all members.
    explicit DxfTags(const std::string& path);

    /// The next group, which is not taken.
    const DxfTag& Peek() {
        if (!isPeeked_) {
            Read();
            isPeeked_ = true;
        }
        return tag_;
    }
    /// Takes the next group.
    const DxfTag& Take() {
        Peek();
        isPeeked_ = false;
        return tag_;
    }
    /// Whether the next group is this one; then it is taken.
    bool TakeIf(int code, std::string_view value);

    // Each takes the next group, which must have the code, and throws DxfDifference where it has
    // not or where the value is none of the kind.
    std::string_view Text(int code);
    /// A finite number in plain digits with a period.
    double Real(int code) {
        double value = 0;
        return TakeQuickReal(code, value) ? value : TakeReal(code);
    }
    std::int64_t Integer(int code);
    std::uint64_t Handle(int code);
    /// The value must be this one.
    void Expect(int code, std::string_view value) {
        if (!TakeQuick(code, value)) {
            TakeExpected(code, value);
        }
    }

    /// Throws unless nothing is left in the file.
    void ExpectEnd();

    /// Throws DxfDifference with the number of the line that was taken last.
    [[noreturn]] void Differ(const std::string& what) const;

private:
    // A line is 255 bytes long, or a number of some thousand digits.
    static constexpr std::ptrdiff_t kLongestLine = 4096;
    static constexpr std::ptrdiff_t kCodeLine = 4; // bytes of a code in three columns

    void Read();
    bool Fill();
    std::string_view Line();
    double TakeReal(int code);
    void TakeExpected(int code, std::string_view value);

    // Whether the next group has the code, written in the usual way, and lies in the window.
    [[nodiscard]] bool IsAt(int code) const {
        const auto digit = [](int number) { return static_cast<char>('0' + number % 10); };
        return !isPeeked_ && limit_ - cursor_ >= 2 * kLongestLine && cursor_[3] == '\n' &&
               cursor_[2] == digit(code) && cursor_[1] == (code < 10 ? ' ' : digit(code / 10)) &&
               cursor_[0] == (code < 100 ? ' ' : digit(code / 100));
    }
    void Pass(const char* end) {
        cursor_ = end;
        lines_ += 2;
    }

    bool TakeQuick(int code, std::string_view value) {
        if (!IsAt(code) || std::memcmp(cursor_ + kCodeLine, value.data(), value.size()) != 0 ||
            cursor_[kCodeLine + static_cast<std::ptrdiff_t>(value.size())] != '\n') {
            return false;
        }
        Pass(cursor_ + kCodeLine + value.size() + 1);
        return true;
    }

    // Of digits, a point or none, and a line end.
    static bool HasPoint(const char* number) {
        while (*number >= '0') {
            ++number;
        }
        return *number == '.';
    }

    // A number that is a quotient of whole numbers, which most are.
    bool TakeQuickReal(int code, double& value) {
        if (!IsAt(code)) {
            return false;
        }
        const char* const begin = cursor_ + kCodeLine;
        const bool isNegative = *begin == '-';
        const char* const digits = begin + (isNegative ? 1 : 0);
        const char* const end = DecimalText::Read(digits, value);
        if (end == nullptr || *end != '\n' || !HasPoint(digits)) {
            return false;
        }
        value = isNegative ? -value : value;
        Pass(end + 1);
        return true;
    }

    std::string path_;
    FileHandle file_;
    std::vector<char> window_; // a byte that is no digit follows what has been read
    const char* cursor_ = nullptr;
    const char* limit_ = nullptr;
    std::int64_t lines_ = 0; // taken
    DxfTag tag_;
    bool isPeeked_ = false;
    bool hasEnded_ = false; // the file; the window may hold more
};

/// A finite number in plain digits with a period; false for anything else.
bool ReadDxfReal(std::string_view text, double& value);
/// @param base  10 or 16.
bool ReadDxfInteger(std::string_view text, std::int64_t& value, int base = 10);

} // namespace terravo

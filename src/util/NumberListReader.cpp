#include "util/NumberListReader.h"

#include "util/DecimalText.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstring>
#include <filesystem>
#include <string_view>
#include <system_error>

namespace terravo {
namespace {

// Enough for any number that a program prints; a longer field is joined by further reading.
constexpr std::ptrdiff_t kFieldRoom = 512;

// Bytes asked for at a time: few enough to be still in the cache when they are looked at. The rest
// of the buffer is touched for long fields and lines alone.
constexpr std::size_t kBlock = std::size_t{1} << 17;

bool IsBlank(char c) {
    return c == ' ' || c == '\t';
}
bool IsLineEnd(char c) {
    return c == '\n' || c == '\r';
}
bool EndsField(char c) {
    return c == ',' || IsLineEnd(c) || IsBlank(c);
}
bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

// from_chars reports a number beyond the range of a double without saying on which side.
bool IsTooSmall(std::string_view digits) {
    const std::size_t mark = digits.find_first_of("eE");
    int exponent = 0;
    if (mark != std::string_view::npos) {
        std::string_view text = digits.substr(mark + 1);
        if (!text.empty() && text[0] == '+') {
            text.remove_prefix(1);
        }
        const auto read = std::from_chars(text.data(), text.data() + text.size(), exponent);
        if (read.ec == std::errc::result_out_of_range) {
            return text[0] == '-';
        }
    }
    const std::string_view mantissa = digits.substr(0, mark);
    const std::size_t point = std::min(mantissa.find('.'), mantissa.size());
    const std::size_t first = mantissa.find_first_of("123456789");
    if (first == std::string_view::npos) {
        return true;
    }
    const auto position = static_cast<std::ptrdiff_t>(point) - static_cast<std::ptrdiff_t>(first);
    return position + exponent < 0;
}

// The start of a field for a message: printable, and not longer than a glance takes.
std::string Quote(const char* begin, const char* end) {
    constexpr std::ptrdiff_t kMost = 24;
    std::string text = "\"";
    for (const char* p = begin; p != end && p - begin < kMost; ++p) {
        const auto byte = static_cast<unsigned char>(*p);
        text += byte < 0x20 || byte == 0x7F ? '?' : *p;
    }
    return text + (end - begin > kMost ? "...\"" : "\"");
}

} // namespace

std::string ReadFailure::Sentence() const {
    std::string text = file;
    if (line > 0) {
        text += ", line " + std::to_string(line);
    }
    if (field > 0) {
        text += ", field " + std::to_string(field);
    }
    return text + ": " + cause + ".";
}

ReadFailure FailureOf(std::string file, std::string cause) {
    ReadFailure failure;
    failure.file = std::move(file);
    failure.cause = std::move(cause);
    return failure;
}

NumberListReader::NumberListReader(const std::string& path, std::size_t bufferSize)
    : room_(std::max<std::size_t>(bufferSize, 16)),
      buffer_(std::make_unique_for_overwrite<char[]>(room_ + 2)) {
    failure_.file = path;
    cursor_ = limit_ = buffer_.get();
    buffer_[0] = '\0';
    errno = 0;
    file_.reset(std::fopen(path.c_str(), "rb"));
    if (!file_) {
        Fail(std::strerror(errno));
        failure_.line = failure_.field = 0;
        sourceEnded_ = true;
        return;
    }
    std::setvbuf(file_.get(), nullptr, _IONBF, 0);
    std::error_code unknown;
    const auto size = std::filesystem::file_size(path, unknown);
    size_ = unknown ? 0 : static_cast<std::uint64_t>(size);
    Begin();
}

void NumberListReader::Begin() {
    cursor_ = limit_ = buffer_.get();
    sourceEnded_ = false;
    endsWithLineEnd_ = true;
    offset_ = 0;
    line_ = 1;
    field_ = 0;
    Refill();
    SkipByteOrderMark();
}

void NumberListReader::Rewind() {
    if (file_) {
        std::rewind(file_.get());
        Begin();
    }
}

void NumberListReader::SkipByteOrderMark() {
    constexpr std::string_view kMark = "\xEF\xBB\xBF";
    while (offset_ <= kMark.size() && Refill()) {
    }
    if (std::string_view(cursor_, static_cast<std::size_t>(limit_ - cursor_)).starts_with(kMark)) {
        cursor_ += kMark.size();
        if (offset_ == kMark.size()) {
            // Nothing but the mark: there is no last line to be ended.
            cursor_ = limit_;
            endsWithLineEnd_ = true;
        }
    }
}

// Moves the unread bytes to the front and reads more behind them. The byte at limit_ is always a
// NUL, which ends every scan; a line end is added to a last line that has none.
bool NumberListReader::Refill() {
    if (sourceEnded_) {
        return false;
    }
    const auto kept = static_cast<std::size_t>(limit_ - cursor_);
    if (kept >= room_) {
        return false;
    }
    std::memmove(buffer_.get(), cursor_, kept);
    const std::size_t wanted = std::min(room_ - kept, kBlock);
    const std::size_t got = std::fread(buffer_.get() + kept, 1, wanted, file_.get());
    offset_ += got;
    std::size_t length = kept + got;
    if (got > 0) {
        endsWithLineEnd_ = IsLineEnd(buffer_[length - 1]);
    } else {
        sourceEnded_ = true;
        if (std::ferror(file_.get()) != 0) {
            Fail(std::strerror(errno));
            failure_.line = failure_.field = 0;
        } else if (!endsWithLineEnd_) {
            buffer_[length++] = '\n';
        }
    }
    buffer_[length] = '\0';
    cursor_ = buffer_.get();
    limit_ = cursor_ + length;
    return length > kept;
}

bool NumberListReader::Fail(std::string cause) {
    if (!failed_) {
        failed_ = true;
        failure_.line = line_;
        failure_.field = field_;
        failure_.cause = std::move(cause);
    }
    return false;
}

// The field begins at the cursor.
bool NumberListReader::FailAt(ReadFailure::Kind kind, const char* fieldEnd, const char* cause) {
    failure_.kind = kind;
    failure_.content = Quote(cursor_, fieldEnd);
    return Fail(failure_.content + cause);
}

void NumberListReader::SkipBlanks() {
    do {
        while (IsBlank(*cursor_)) {
            ++cursor_;
        }
    } while (cursor_ == limit_ && Refill());
}

void NumberListReader::TakeLineEnd() {
    const bool carriageReturn = *cursor_ == '\r';
    ++cursor_;
    if (carriageReturn) {
        if (cursor_ == limit_) {
            Refill();
        }
        if (*cursor_ == '\n') {
            ++cursor_;
        }
    }
    ++line_;
    field_ = 0;
}

bool NumberListReader::Read(double& value) {
    if (limit_ - cursor_ < kFieldRoom) {
        Refill();
    }
    if (failed_) {
        return false;
    }
    ++field_;
    SkipBlanks();
    if (cursor_ == limit_) {
        // The last line that there is, not the one after the last line end.
        Fail("the file ends where a number is expected");
        failure_.kind = ReadFailure::Kind::EndsEarly;
        failure_.line = std::max<std::int64_t>(line_ - 1, 1);
        failure_.field = 0;
        return false;
    }
    if (*cursor_ == ',') {
        ++cursor_;
        value = 0;
        return true;
    }
    if (IsLineEnd(*cursor_)) {
        TakeLineEnd();
        value = 0;
        return true;
    }
    return ReadField(value);
}

bool NumberListReader::ReadLine(std::string& line) {
    line.clear();
    if (failed_ || AtEnd()) {
        return Fail("the file ends where a line is expected");
    }
    const char* end = cursor_;
    while (!IsLineEnd(*end)) {
        if (end == limit_) {
            const auto length = end - cursor_;
            if (!Refill()) {
                return Fail("the line is too long");
            }
            end = cursor_ + length;
        } else {
            ++end;
        }
    }
    line.assign(cursor_, end);
    cursor_ = end;
    TakeLineEnd();
    return true;
}

// Nearly every field: digits with a point, and its end in the buffer as well.
bool NumberListReader::ReadField(double& value) {
    const bool negative = *cursor_ == '-';
    const bool hasSign = negative || *cursor_ == '+';
    double magnitude = 0;
    const char* const end = DecimalText::Read(cursor_ + (hasSign ? 1 : 0), magnitude);
    if (end == nullptr || !EndsField(*end)) {
        return ReadAnyField(value);
    }
    value = negative ? -magnitude : magnitude;
    LeaveField(end);
    return true;
}

// Every other field: exponents, many digits, no number at all, cut off by the buffer.
bool NumberListReader::ReadAnyField(double& value) {
    const char* digits = cursor_;
    const bool negative = *digits == '-';
    if (negative || *digits == '+') {
        ++digits;
    }
    std::from_chars_result read{digits, std::errc::invalid_argument};
    if (IsDigit(*digits) || *digits == '.') {
        read = std::from_chars(digits, limit_, value);
    }
    const char* end = read.ptr;
    if (!EndsField(*end)) {
        while (end != limit_ && !EndsField(*end)) {
            ++end;
        }
        if (end == limit_ && !sourceEnded_) {
            // The buffer ends within the field: read on, unless the field is longer than any
            // number.
            if (Refill() || sourceEnded_) {
                return failed_ ? false : ReadField(value);
            }
            return Fail(Quote(cursor_, end) + " is too long for a number");
        }
        read.ec = std::errc::invalid_argument;
    }
    if (read.ec == std::errc::result_out_of_range) {
        if (!IsTooSmall({digits, static_cast<std::size_t>(end - digits)})) {
            return FailAt(ReadFailure::Kind::TooLarge, end, " is too large a number");
        }
        value = 0;
    } else if (read.ec != std::errc{}) {
        return FailAt(ReadFailure::Kind::NotANumber, end, " is not a number");
    }
    if (negative) {
        value = -value;
    }
    LeaveField(end);
    return true;
}

// Takes what ends a field: blanks, and then one comma or one line end.
void NumberListReader::LeaveField(const char* end) {
    cursor_ = end;
    if (IsBlank(*cursor_)) {
        SkipBlanks();
    }
    if (*cursor_ == ',') {
        ++cursor_;
    } else if (IsLineEnd(*cursor_)) {
        TakeLineEnd();
    }
}

} // namespace terravo

#include "export/readback/DxfTags.h"

#include "util/AppError.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstring>

namespace terravo {
namespace {

constexpr std::size_t kWindow = std::size_t{1} << 18;

} // namespace

DxfTags::DxfTags(const std::string& path) : path_(path), window_(kWindow + 1) {
    errno = 0;
    file_.reset(std::fopen(path.c_str(), "rb"));
    if (!file_) {
        throw AppError(ErrorNumber::kDeviceIo, path, path + ": " + std::strerror(errno));
    }
    cursor_ = window_.data();
    limit_ = cursor_;
}

// Moves what is left to the front and reads more behind it; false when there is no more.
bool DxfTags::Fill() {
    const auto left = static_cast<std::size_t>(limit_ - cursor_);
    std::memmove(window_.data(), cursor_, left);
    const std::size_t got = std::fread(window_.data() + left, 1, kWindow - left, file_.get());
    if (std::ferror(file_.get()) != 0) {
        throw AppError(ErrorNumber::kDeviceIo, path_, path_ + ": the file cannot be read back.");
    }
    cursor_ = window_.data();
    limit_ = cursor_ + left + got;
    window_[left + got] = '\0';
    hasEnded_ = got == 0;
    return !hasEnded_;
}

std::string_view DxfTags::Line() {
    const auto room = static_cast<std::size_t>(limit_ - cursor_);
    const void* const end = std::memchr(cursor_, '\n', room);
    if (end == nullptr) {
        Differ("the file ends within a line, or a line is too long");
    }
    const std::string_view line(cursor_, static_cast<const char*>(end));
    cursor_ = static_cast<const char*>(end) + 1;
    ++lines_;
    return line;
}

void DxfTags::Read() {
    // Both lines stay where they are until the next call.
    if (!hasEnded_ && limit_ - cursor_ < 2 * kLongestLine) {
        Fill();
    }
    std::string_view code = Line();
    code.remove_prefix(std::min(code.find_first_not_of(' '), code.size()));
    const auto read = std::from_chars(code.data(), code.data() + code.size(), tag_.code);
    if (read.ec != std::errc() || read.ptr != code.data() + code.size()) {
        Differ("a group code is expected");
    }
    tag_.value = Line();
}

bool DxfTags::TakeIf(int code, std::string_view value) {
    const DxfTag& next = Peek();
    if (next.code != code || next.value != value) {
        return false;
    }
    Take();
    return true;
}

std::string_view DxfTags::Text(int code) {
    if (IsAt(code)) {
        cursor_ += kCodeLine;
        ++lines_;
        return Line();
    }
    const DxfTag& tag = Take();
    if (tag.code != code) {
        Differ("group " + std::to_string(code) + " is expected instead of group " +
               std::to_string(tag.code));
    }
    return tag.value;
}

double DxfTags::TakeReal(int code) {
    double value = 0;
    if (!ReadDxfReal(Text(code), value)) {
        Differ("a number with a period is expected");
    }
    return value;
}

std::int64_t DxfTags::Integer(int code) {
    std::int64_t value = 0;
    if (!ReadDxfInteger(Text(code), value)) {
        Differ("a whole number is expected");
    }
    return value;
}

std::uint64_t DxfTags::Handle(int code) {
    std::int64_t value = 0;
    if (!ReadDxfInteger(Text(code), value, 16) || value < 0) {
        Differ("a handle is expected");
    }
    return static_cast<std::uint64_t>(value);
}

void DxfTags::TakeExpected(int code, std::string_view value) {
    const std::string found(Text(code));
    if (found != value) {
        Differ("\"" + std::string(value) + "\" is expected instead of \"" + found + "\"");
    }
}

void DxfTags::ExpectEnd() {
    if (isPeeked_ || cursor_ != limit_ || Fill()) {
        Differ("something follows the end of the drawing");
    }
}

void DxfTags::Differ(const std::string& what) const {
    throw DxfDifference{"line " + std::to_string(lines_) + ": " + what};
}

bool ReadDxfReal(std::string_view text, double& value) {
    const char* const end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, value, std::chars_format::fixed);
    return read.ec == std::errc() && read.ptr == end && std::isfinite(value) &&
           text.find('.') != std::string_view::npos;
}

bool ReadDxfInteger(std::string_view text, std::int64_t& value, int base) {
    const char* const end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, value, base);
    return read.ec == std::errc() && read.ptr == end;
}

} // namespace terravo

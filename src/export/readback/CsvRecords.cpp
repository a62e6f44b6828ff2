#include "export/readback/CsvRecords.h"

#include "util/AppError.h"

#include <cerrno>
#include <cstring>

namespace terravo {
namespace {

constexpr std::size_t kWindow = std::size_t{1} << 18;

// Moves the characters together; returns where they end.
std::size_t JoinDoubledQuotes(char* first, char* last) {
    char* to = first;
    for (const char* from = first; from != last; ++from) {
        *to++ = *from;
        from += *from == '"' ? 1 : 0;
    }
    return static_cast<std::size_t>(to - first);
}

} // namespace

CsvRecords::CsvRecords(const std::string& path) : path_(path), window_(kWindow) {
    errno = 0;
    file_.reset(std::fopen(path.c_str(), "rb"));
    if (!file_) {
        throw AppError(ErrorNumber::kDeviceIo, path, path + ": " + std::strerror(errno));
    }
}

// Moves the record to the front and reads more behind it; false when there is no more.
bool CsvRecords::Fill() {
    const std::size_t left = limit_ - begin_;
    std::memmove(window_.data(), window_.data() + begin_, left);
    if (left > window_.size() / 2) {
        window_.resize(2 * window_.size());
    }
    begin_ = 0;
    const std::size_t got =
        std::fread(window_.data() + left, 1, window_.size() - left, file_.get());
    if (std::ferror(file_.get()) != 0) {
        throw AppError(ErrorNumber::kDeviceIo, path_, path_ + ": the file cannot be read back.");
    }
    limit_ = left + got;
    return got > 0;
}

// From behind the first quote to behind the field.
CsvRecords::Scan CsvRecords::ScanQuoted(std::size_t& at) {
    const std::size_t first = ++at;
    bool hasDoubled = false;
    for (;;) {
        const void* const quote = std::memchr(window_.data() + at, '"', limit_ - at);
        if (quote == nullptr) {
            return Scan::NeedsMore;
        }
        at = static_cast<std::size_t>(static_cast<const char*>(quote) - window_.data()) + 1;
        if (at == limit_) {
            return Scan::NeedsMore;
        }
        if (window_[at] != '"') {
            break;
        }
        hasDoubled = true;
        ++at;
    }
    if (window_[at] != ',' && window_[at] != '\n') {
        throw CsvFault{"something follows a quote that closes a field"};
    }
    found_.push_back({first, at - 1, hasDoubled});
    return Scan::Done;
}

CsvRecords::Scan CsvRecords::ScanPlain(std::size_t& at) {
    const std::size_t first = at;
    while (at < limit_ && window_[at] != ',' && window_[at] != '\n') {
        if (window_[at] == '"' || window_[at] == '\r') {
            throw CsvFault{"a quote or a carriage return stands in a field without quotes"};
        }
        ++at;
    }
    found_.push_back({first, at, false});
    return at < limit_ ? Scan::Done : Scan::NeedsMore;
}

CsvRecords::Scan CsvRecords::ScanRecord() {
    found_.clear();
    for (std::size_t at = begin_; at < limit_; ++at) {
        if ((window_[at] == '"' ? ScanQuoted(at) : ScanPlain(at)) == Scan::NeedsMore) {
            return Scan::NeedsMore;
        }
        if (window_[at] == '\n') {
            next_ = at + 1;
            return Scan::Done;
        }
    }
    return Scan::NeedsMore;
}

bool CsvRecords::Next(std::vector<std::string_view>& fields) {
    begin_ = next_;
    ++number_;
    while (ScanRecord() == Scan::NeedsMore) {
        if (!Fill()) {
            if (limit_ > 0) {
                throw CsvFault{"the file ends within a record"};
            }
            return false;
        }
    }
    fields.clear();
    for (const Field& field : found_) {
        char* const first = window_.data() + field.first;
        const std::size_t size = field.hasDoubled
                                     ? JoinDoubledQuotes(first, window_.data() + field.last)
                                     : field.last - field.first;
        fields.emplace_back(first, size);
    }
    return true;
}

} // namespace terravo

#include "export/readback/CsvRecords.h"

#include "util/AppError.h"

#include <array>
#include <cerrno>
#include <cstring>

namespace terravo {
namespace {

constexpr std::size_t kWindow = std::size_t{1} << 18;

// What ends a field without quotes, or must not stand in one.
constexpr auto kEnds = [] {
    std::array<bool, 256> ends{};
    for (const char c : {',', '\n', '\r', '"'}) {
        ends[static_cast<unsigned char>(c)] = true;
    }
    return ends;
}();

// Moves the characters together where quotes are doubled.
void JoinDoubledQuotes(char* window, std::string_view& field) {
    char* const first = window + (field.data() - window);
    char* to = first;
    for (const char* from = first; from != first + field.size(); ++from) {
        *to++ = *from;
        from += *from == '"' ? 1 : 0;
    }
    field = {first, static_cast<std::size_t>(to - first)};
}

} // namespace

CsvRecords::CsvRecords(const std::string& path) : path_(path), window_(kWindow) {
    errno = 0;
    file_.reset(std::fopen(path.c_str(), "rb"));
    if (!file_) {
        throw AppError(ErrorNumber::kDeviceIo, path, path + ": " + std::strerror(errno));
    }
    begin_ = limit_ = next_ = window_.data();
    *limit_ = '\n';
}

// Moves the record to the front and reads more behind it; false when there is no more.
bool CsvRecords::Fill() {
    const auto left = static_cast<std::size_t>(limit_ - begin_);
    std::memmove(window_.data(), begin_, left);
    if (left > window_.size() / 2) {
        window_.resize(2 * window_.size());
    }
    begin_ = window_.data();
    const std::size_t got = std::fread(begin_ + left, 1, window_.size() - left - 1, file_.get());
    if (std::ferror(file_.get()) != 0) {
        throw AppError(ErrorNumber::kDeviceIo, path_, path_ + ": the file cannot be read back.");
    }
    limit_ = begin_ + left + got;
    *limit_ = '\n';
    return got > 0;
}

// From the first quote to behind the field.
CsvRecords::Scan CsvRecords::ScanQuoted(char*& at, std::vector<std::string_view>& fields) {
    const char* const first = ++at;
    for (;;) {
        at = static_cast<char*>(std::memchr(at, '"', static_cast<std::size_t>(limit_ - at)));
        if (at == nullptr || ++at == limit_) {
            return Scan::NeedsMore;
        }
        if (*at != '"') {
            break;
        }
        hasDoubled_ = true;
        ++at;
    }
    if (*at != ',' && *at != '\n') {
        throw CsvFault{"something follows a quote that closes a field"};
    }
    fields.emplace_back(first, static_cast<std::size_t>(at - 1 - first));
    return Scan::Done;
}

CsvRecords::Scan CsvRecords::ScanPlain(char*& at, std::vector<std::string_view>& fields) {
    const char* const first = at;
    while (!kEnds[static_cast<unsigned char>(*at)]) {
        ++at;
    }
    if (at == limit_) {
        return Scan::NeedsMore;
    }
    if (*at != ',' && *at != '\n') {
        throw CsvFault{"a quote or a carriage return stands in a field without quotes"};
    }
    fields.emplace_back(first, static_cast<std::size_t>(at - first));
    return Scan::Done;
}

CsvRecords::Scan CsvRecords::ScanRecord(std::vector<std::string_view>& fields) {
    fields.clear();
    hasDoubled_ = false;
    for (char* at = begin_; at != limit_; ++at) {
        if ((*at == '"' ? ScanQuoted(at, fields) : ScanPlain(at, fields)) == Scan::NeedsMore) {
            return Scan::NeedsMore;
        }
        if (*at == '\n') {
            next_ = at + 1;
            return Scan::Done;
        }
    }
    return Scan::NeedsMore;
}

bool CsvRecords::Next(std::vector<std::string_view>& fields) {
    begin_ = next_;
    ++number_;
    while (ScanRecord(fields) == Scan::NeedsMore) {
        if (!Fill()) {
            if (begin_ != limit_) {
                throw CsvFault{"the file ends within a record"};
            }
            next_ = limit_;
            return false;
        }
    }
    for (std::string_view& field : fields) {
        if (hasDoubled_) {
            JoinDoubledQuotes(window_.data(), field);
        }
    }
    return true;
}

} // namespace terravo

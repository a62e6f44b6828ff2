#include "survey/import/TextSource.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>

namespace terravo {
namespace {

constexpr std::size_t kBlock = std::size_t{1} << 17;
constexpr std::size_t kMostWindow = std::size_t{1} << 21;
constexpr char kCtrlZ = '\x1A';

// The length of the UTF-8 character at the start of a text; 0 where there is none.
std::size_t Utf8Length(std::string_view text) {
    const auto first = static_cast<unsigned char>(text[0]);
    const std::size_t length = first < 0x80U                       ? 1
                               : first >= 0xC2U && first < 0xE0U   ? 2
                               : (first & 0xF0U) == 0xE0U          ? 3
                               : (first >= 0xF0U && first < 0xF5U) ? 4
                                                                   : 0;
    for (std::size_t i = 1; i < length && i < text.size(); ++i) {
        if ((static_cast<unsigned char>(text[i]) & 0xC0U) != 0x80U) {
            return 0;
        }
    }
    return length; // the end of the text may cut it off
}

bool IsUtf8(std::string_view text) {
    while (!text.empty()) {
        const std::size_t length = Utf8Length(text);
        if (length == 0) {
            return false;
        }
        text.remove_prefix(std::min(length, text.size()));
    }
    return true;
}

// Where a UTF-16 text is ASCII, every other byte is 0.
std::optional<TextEncoding> Utf16WithoutMark(std::string_view head) {
    std::size_t zerosAt[2] = {0, 0};
    for (std::size_t i = 0; i < head.size(); ++i) {
        zerosAt[i % 2] += head[i] == '\0' ? 1 : 0;
    }
    const std::size_t pairs = head.size() / 2;
    if (pairs >= 2 && zerosAt[0] == 0 && zerosAt[1] * 4 > pairs * 3) {
        return TextEncoding::Utf16Little;
    }
    if (pairs >= 2 && zerosAt[1] == 0 && zerosAt[0] * 4 > pairs * 3) {
        return TextEncoding::Utf16Big;
    }
    return std::nullopt;
}

} // namespace

TextSource::TextSource(const std::string& path) : path_(path) {
    std::error_code unknown;
    errno = 0;
    file_.reset(std::fopen(path.c_str(), "rb"));
    if (!file_) {
        Fail(std::strerror(errno));
        return;
    }
    std::setvbuf(file_.get(), nullptr, _IONBF, 0);
    const auto size = std::filesystem::file_size(path, unknown);
    size_ = unknown ? 0 : size;
    ReadHead();
}

void TextSource::Fail(const char* cause) {
    failure_.emplace();
    failure_->file = path_;
    failure_->cause = cause;
    ended_ = true;
}

std::size_t TextSource::ReadBlock(char* to, std::size_t room) {
    const std::size_t length = ended_ ? 0 : std::fread(to, 1, room, file_.get());
    bytes_ += length;
    if (length < room && !ended_) {
        ended_ = true;
        if (std::ferror(file_.get()) != 0) {
            Fail(std::strerror(errno));
        }
    }
    return length;
}

// One byte more than is kept tells whether the head is all.
void TextSource::ReadHead() {
    head_.resize(kHeadBytes);
    head_.resize(ReadBlock(head_.data(), head_.size()));
    if (!ended_) {
        const int next = std::fgetc(file_.get());
        if (next == EOF) {
            ended_ = true;
        } else {
            std::ungetc(next, file_.get());
        }
    }
}

TextEncoding TextSource::GuessEncoding() const {
    if (head_.starts_with("\xFF\xFE")) {
        return TextEncoding::Utf16Little;
    }
    if (head_.starts_with("\xFE\xFF")) {
        return TextEncoding::Utf16Big;
    }
    if (const std::optional<TextEncoding> wide = Utf16WithoutMark(head_)) {
        return *wide;
    }
    return IsUtf8(head_) ? TextEncoding::Utf8 : TextEncoding::Latin1;
}

void TextSource::Begin(TextEncoding encoding) {
    encoding_ = encoding;
    std::string_view text = head_;
    for (const std::string_view mark : {"\xEF\xBB\xBF", "\xFF\xFE", "\xFE\xFF"}) {
        if (text.starts_with(mark)) {
            text.remove_prefix(mark.size());
            break;
        }
    }
    window_.resize(kBlock + 1);
    limit_ = cursor_ = window_.data();
    Decode(text);
}

bool TextSource::More() {
    if (textEnded_ || ended_) {
        return false;
    }
    const auto kept = static_cast<std::size_t>(limit_ - cursor_);
    if (kept + kBlock > kMostWindow) {
        return false;
    }
    std::memmove(window_.data(), cursor_, kept);
    cursor_ = window_.data();
    limit_ = cursor_ + kept;
    if (encoding_ == TextEncoding::Utf16Little || encoding_ == TextEncoding::Utf16Big) {
        block_.resize(kBlock);
        const std::size_t length = ReadBlock(block_.data(), kBlock);
        Decode({block_.data(), length});
        return length > 0;
    }
    if (window_.size() < kept + kBlock + 1) {
        window_.resize(kept + kBlock + 1);
        cursor_ = window_.data();
    }
    char* const to = window_.data() + kept;
    const std::size_t length = ReadBlock(to, kBlock);
    const void* const end = std::memchr(to, kCtrlZ, length);
    textEnded_ = end != nullptr;
    limit_ = textEnded_ ? static_cast<const char*>(end) : to + length;
    window_[static_cast<std::size_t>(limit_ - window_.data())] = '\0';
    return length > 0;
}

void TextSource::Append(std::string_view text) {
    const auto kept = static_cast<std::size_t>(limit_ - cursor_);
    const auto offset = static_cast<std::size_t>(cursor_ - window_.data());
    if (window_.size() < offset + kept + text.size() + 1) {
        window_.resize(offset + kept + text.size() + 1);
        cursor_ = window_.data() + offset;
    }
    char* const to = window_.data() + offset + kept;
    std::copy(text.begin(), text.end(), to);
    limit_ = to + text.size();
    to[text.size()] = '\0';
}

void TextSource::Decode(std::string_view bytes) {
    if (encoding_ == TextEncoding::Utf16Little || encoding_ == TextEncoding::Utf16Big) {
        DecodeUtf16(bytes);
        return;
    }
    const std::size_t end = bytes.find(kCtrlZ);
    textEnded_ = end != std::string_view::npos;
    Append(bytes.substr(0, end));
}

void TextSource::DecodeUtf16(std::string_view bytes) {
    std::string text;
    pending_ += bytes;
    const std::size_t high = encoding_ == TextEncoding::Utf16Big ? 0 : 1;
    std::size_t i = 0;
    for (; i + 1 < pending_.size() && !textEnded_; i += 2) {
        const auto unit = static_cast<std::uint32_t>(
            static_cast<unsigned>(static_cast<unsigned char>(pending_[i + high])) << 8U |
            static_cast<unsigned>(static_cast<unsigned char>(pending_[i + 1 - high])));
        if (unit >= 0xD800U && unit < 0xDC00U) {
            highHalf_ = unit;
            continue;
        }
        std::uint32_t character = unit;
        if (unit >= 0xDC00U && unit < 0xE000U) {
            character = highHalf_ == 0
                            ? 0xFFFDU
                            : 0x10000U + ((highHalf_ - 0xD800U) << 10U) + (unit - 0xDC00U);
        }
        highHalf_ = 0;
        textEnded_ = character == static_cast<std::uint32_t>(kCtrlZ);
        if (textEnded_) {
            break;
        }
        const auto continuation = [character](unsigned shift) {
            return static_cast<char>(0x80U | ((character >> shift) & 0x3FU));
        };
        if (character < 0x80U) {
            text += static_cast<char>(character);
        } else if (character < 0x800U) {
            text += {static_cast<char>(0xC0U | character >> 6U), continuation(0)};
        } else if (character < 0x10000U) {
            text += {static_cast<char>(0xE0U | character >> 12U), continuation(6), continuation(0)};
        } else {
            text += {static_cast<char>(0xF0U | character >> 18U), continuation(12), continuation(6),
                     continuation(0)};
        }
    }
    pending_.erase(0, i);
    Append(text);
}

bool TextSource::NextLine(std::string_view& line) {
    if (TakeLine(0, line)) {
        return true;
    }
    if (!failure_ && !ended_ && !textEnded_) {
        Fail("a line is longer than any record");
        failure_->line = lines_ + 1;
    }
    return false;
}

bool TextSource::Extend(std::string_view& line) {
    const auto begun = static_cast<std::size_t>(cursor_ - line.data());
    const std::size_t length = line.size();
    cursor_ = line.data();
    const bool isTaken = TakeLine(begun, line);
    if (!isTaken) {
        line = {cursor_, length};
        cursor_ += begun;
    }
    return isTaken;
}

// Takes a line of which so many characters are known to belong to it. A carriage return at the end
// of the window may be the first half of a line end.
bool TextSource::TakeLine(std::size_t begun, std::string_view& line) {
    for (;;) {
        const char* const from = cursor_ + begun;
        const auto length = static_cast<std::size_t>(limit_ - from);
        const char* end = static_cast<const char*>(std::memchr(from, '\n', length));
        const char* const lineFeed = end;
        const auto upTo = static_cast<std::size_t>((end != nullptr ? end : limit_) - from);
        if (const void* carriageReturn = std::memchr(from, '\r', upTo)) {
            end = static_cast<const char*>(carriageReturn);
        }
        if (end == nullptr || (*end == '\r' && end + 1 == limit_)) {
            if (More()) {
                continue;
            }
            if (!ended_ && !textEnded_) {
                return false;
            }
        }
        if (end == nullptr && from == limit_) {
            return false;
        }
        const char* const stop = end != nullptr ? end : limit_;
        line = {cursor_, static_cast<std::size_t>(stop - cursor_)};
        cursor_ = end == nullptr ? limit_ : end + (end + 1 == lineFeed ? 2 : 1);
        ++lines_;
        return true;
    }
}

} // namespace terravo

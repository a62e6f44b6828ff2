#include "export/readback/DxfPlainText.h"

#include <cstdint>

namespace terravo {
namespace {

// The characters of the bytes from 80 to 9F; 0 where there is none.
constexpr char16_t kFrom80[] =
    u"\u20AC\0\u201A\u0192\u201E\u2026\u2020\u2021\u02C6\u2030\u0160\u2039\u0152\0\u017D\0"
    u"\0\u2018\u2019\u201C\u201D\u2022\u2013\u2014\u02DC\u2122\u0161\u203A\u0153\0\u017E\u0178";

void AppendUtf8(std::string& out, std::uint32_t c) {
    const auto rest = [&](int shift) { out += static_cast<char>(0x80 | (c >> shift & 0x3f)); };
    if (c < 0x80) {
        out += static_cast<char>(c);
    } else if (c < 0x800) {
        out += static_cast<char>(0xc0 | c >> 6);
        rest(0);
    } else if (c < 0x10000) {
        out += static_cast<char>(0xe0 | c >> 12);
        rest(6);
        rest(0);
    } else {
        out += static_cast<char>(0xf0 | c >> 18);
        rest(12);
        rest(6);
        rest(0);
    }
}

class Reader {
public:
    explicit Reader(std::string_view bytes) : left_(bytes) {}

    std::optional<std::string> Read() {
        while (!left_.empty()) {
            if (!TakeOne()) {
                return std::nullopt;
            }
        }
        return shown_;
    }

private:
    bool TakeOne() {
        if (left_.starts_with("%%")) {
            return TakeAs("%%%", '%');
        }
        if (left_.starts_with('^')) {
            return TakeAs("^ ", '^');
        }
        if (left_.starts_with("\\U+")) {
            return TakeEscaped();
        }
        return !left_.starts_with("\\M+") && TakeByte();
    }

    bool TakeAs(std::string_view written, char shown) {
        if (!left_.starts_with(written)) {
            return false;
        }
        left_.remove_prefix(written.size());
        shown_ += shown;
        return true;
    }

    bool TakeByte() {
        const auto byte = static_cast<unsigned char>(left_.front());
        left_.remove_prefix(1);
        const std::uint32_t character =
            byte >= 0x80 && byte < 0xa0 ? std::uint32_t{kFrom80[byte - 0x80]} : byte;
        AppendUtf8(shown_, character);
        return character >= ' ' && character != 0x7f;
    }

    // Four digits behind \U+; 0 where there are none.
    std::uint32_t TakeUnit() {
        std::uint32_t unit = 0;
        if (!left_.starts_with("\\U+") || left_.size() < 7) {
            return 0;
        }
        for (const char digit : left_.substr(3, 4)) {
            const std::size_t value = std::string_view("0123456789ABCDEF").find(digit);
            if (value == std::string_view::npos) {
                return 0;
            }
            unit = 16 * unit + static_cast<std::uint32_t>(value);
        }
        left_.remove_prefix(7);
        return unit;
    }

    bool TakeEscaped() {
        std::uint32_t character = TakeUnit();
        if (character >= 0xd800 && character < 0xdc00) {
            const std::uint32_t second = TakeUnit();
            if (second < 0xdc00 || second >= 0xe000) {
                return false;
            }
            character = 0x10000 + ((character - 0xd800) << 10) + (second - 0xdc00);
        } else if (character >= 0xdc00 && character < 0xe000) {
            return false;
        }
        AppendUtf8(shown_, character);
        return character >= ' ';
    }

    std::string_view left_;
    std::string shown_;
};

} // namespace

std::optional<std::string> ShownDxfText(std::string_view bytes) {
    return Reader(bytes).Read();
}

} // namespace terravo

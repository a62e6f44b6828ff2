#include "survey/import/QuickLines.h"

#include "survey/import/Records.h"
#include "util/DecimalText.h"

#include <algorithm>

namespace terravo {
namespace {

constexpr double kFirstVoid = -9999; // and all that is lower is looked at closely
constexpr double kBlanked = 1e38;

// A tab that separates is no blank.
template <char kSeparator>
const char* SkipBlanks(const char* p) {
    while (*p == ' ' || (kSeparator != '\t' && *p == '\t')) {
        ++p;
    }
    return p;
}

// Takes what parts two fields; null for anything else.
template <char kSeparator>
const char* TakeSeparator(const char* p) {
    if constexpr (kSeparator == ' ') {
        return IsBlank(*p) ? SkipBlanks<kSeparator>(p + 1) : nullptr;
    } else {
        p = SkipBlanks<kSeparator>(p);
        return *p == kSeparator ? SkipBlanks<kSeparator>(p + 1) : nullptr;
    }
}

// Reads a number without an exponent; null for anything else.
template <char kPoint>
const char* TakeNumber(const char* p, double& value) {
    const bool negative = *p == '-';
    const char* const end = DecimalText::Read<kPoint>(p + (negative ? 1 : 0), value);
    value = negative ? -value : value;
    return end;
}

// Null where the line goes on.
const char* TakeLineEnd(const char* p) {
    while (IsBlank(*p)) {
        ++p;
    }
    if (*p == '\n') {
        return p + 1;
    }
    return *p == '\r' ? p + (p[1] == '\n' ? 2 : 1) : nullptr;
}

bool IsUsualHeight(double height) {
    return height > kFirstVoid && height < kBlanked;
}

// The last two begin a minus sign and blanks that are not of ASCII.
bool MayBeginNumber(char c) {
    return (c >= '0' && c <= '9') || c == '-' || c == '+' || c == '.' || c == ',' || c == '\xE2' ||
           c == '\xC2';
}

} // namespace

template <char kSeparator, char kPoint>
const char* QuickLines::ReadTriple(const QuickLines& form, const char* p, QuickRecord& record) {
    std::array<double, 3> values; // NOLINT(cppcoreguidelines-pro-type-member-init): all are read
    p = TakeNumber<kPoint>(SkipBlanks<kSeparator>(p), values[0]);
    for (std::size_t k = 1; k < values.size(); ++k) {
        p = p == nullptr ? p : TakeSeparator<kSeparator>(p);
        p = p == nullptr ? p : TakeNumber<kPoint>(p, values[k]);
    }
    if (p == nullptr || !IsUsualHeight(values[form.order_[2]])) {
        return nullptr;
    }
    record.coordinates = {values[form.order_[0]], values[form.order_[1]], values[form.order_[2]]};
    return TakeLineEnd(p);
}

// Takes a text up to the separator or, where it takes the rest, to the end of the line.
inline const char* QuickLines::PassText(const char* p, std::string_view& text, bool isRest) const {
    const char* const begin = p;
    const auto isOrdinary = [this](char c) { return !endsText_[static_cast<unsigned char>(c)]; };
    while (isOrdinary(*p) || (isRest && *p == separator_) ||
           (IsBlank(*p) && (isRest || separator_ != ' ') && *p != separator_)) {
        if (isRest && othersAreText_ && MayBeginNumber(p[1]) && !isOrdinary(*p)) {
            return nullptr; // a number among the words of a code is for a closer look
        }
        ++p;
    }
    const bool ends =
        *p == separator_ || *p == '\n' || *p == '\r' || (separator_ == ' ' && *p == '\t');
    if (!ends || (othersAreText_ && MayBeginNumber(*begin))) {
        return nullptr;
    }
    const char* end = p;
    while (end != begin && IsBlank(end[-1])) {
        --end;
    }
    text = {begin, static_cast<std::size_t>(end - begin)};
    return p;
}

template <char kSeparator, char kPoint>
const char* QuickLines::ReadColumns(const QuickLines& form, const char* p, QuickRecord& record) {
    record = {};
    p = SkipBlanks<kSeparator>(p);
    const std::size_t count = form.columns_.size();
    for (std::size_t k = 0; k < count; ++k) {
        if (k > 0) {
            p = TakeSeparator<kSeparator>(p);
            if (p == nullptr) {
                return nullptr;
            }
        }
        const ColumnRole role = form.columns_[k];
        if (IsCoordinate(role)) {
            const std::size_t which = role == ColumnRole::Easting    ? 0
                                      : role == ColumnRole::Northing ? 1
                                                                     : 2;
            p = TakeNumber<kPoint>(p, record.coordinates[which]);
        } else {
            std::string_view text;
            p = form.PassText(p, text, form.codeTakesRest_ && k + 1 == count);
            if (role != ColumnRole::Ignored) {
                (role == ColumnRole::Name ? record.name : record.code) = text;
            }
        }
        if (p == nullptr) {
            return nullptr;
        }
    }
    return IsUsualHeight(record.coordinates[2]) ? TakeLineEnd(p) : nullptr;
}

template <char kSeparator>
QuickLines::Reader QuickLines::ReaderFor(char decimal) const {
    const bool isTriple =
        columns_.size() == 3 && std::all_of(columns_.begin(), columns_.end(), IsCoordinate);
    if (isTriple) {
        return decimal == ',' ? ReadTriple<kSeparator, ','> : ReadTriple<kSeparator, '.'>;
    }
    return decimal == ',' ? ReadColumns<kSeparator, ','> : ReadColumns<kSeparator, '.'>;
}

// Void heights that somebody has named may be any number, so that each has to be looked at.
QuickLines::QuickLines(const ImportPlan& plan)
    : columns_(plan.columns), separator_(CharacterOf(plan.separator)),
      othersAreText_(plan.othersAreText), codeTakesRest_(plan.codeTakesRest) {
    const bool hasCount = plan.codeTakesRest || plan.fieldCount >= columns_.size();
    if (!plan.voids.empty() || !hasCount || columns_.empty() || plan.decimal == separator_) {
        return;
    }
    if (!codeTakesRest_) {
        columns_.resize(plan.fieldCount, ColumnRole::Ignored);
    }
    MakeTables(plan);
    switch (plan.separator) {
    case FieldSeparator::Comma:
        read_ = ReaderFor<','>(plan.decimal);
        break;
    case FieldSeparator::Semicolon:
        read_ = ReaderFor<';'>(plan.decimal);
        break;
    case FieldSeparator::Bar:
        read_ = ReaderFor<'|'>(plan.decimal);
        break;
    case FieldSeparator::Tab:
        read_ = ReaderFor<'\t'>(plan.decimal);
        break;
    case FieldSeparator::Blank:
        read_ = ReaderFor<' '>(plan.decimal);
        break;
    }
}

void QuickLines::MakeTables(const ImportPlan& plan) {
    constexpr std::array kOrder{ColumnRole::Easting, ColumnRole::Northing, ColumnRole::Height};
    for (std::size_t k = 0; k < order_.size(); ++k) {
        const auto column = std::find(columns_.begin(), columns_.end(), kOrder[k]);
        order_[k] = static_cast<std::size_t>(column - columns_.begin());
    }
    // With the zero at its end, which closes the window of a file: nothing may pass it.
    static constexpr char kEnds[] = "\r\n\"#;!*%/\x1A \t\f\v";
    for (const char c : std::string_view(kEnds, sizeof kEnds)) {
        endsText_[static_cast<unsigned char>(c)] = true;
    }
    endsText_[static_cast<unsigned char>(separator_)] = true;
    if (plan.separator == FieldSeparator::Blank) { // no-break ones separate, too
        endsText_[0xC2] = endsText_[0xE2] = endsText_[0xA0] = true;
    }
    if (plan.encoding == TextEncoding::Latin1) {
        std::fill(endsText_.begin() + 0x80, endsText_.end(), true);
    }
}

} // namespace terravo

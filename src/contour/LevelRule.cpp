#include "contour/LevelRule.h"

#include "survey/FileDecimals.h"
#include "util/AppError.h"
#include "util/DecimalText.h"
#include "util/NumberText.h"
#include "util/modUtilita.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace terravo {
namespace {

using modUtilita::IsExactly;

constexpr int kMostDecimals = 15;
constexpr int kDecimalsByCount = 3;

// Of the value as people write it: a result of arithmetic has 0.3 where its last bits say more.
int DecimalsOfText(double value) {
    return DecimalsOf(NumberText::LeadingNumber(NumberText::General(value)));
}

// Turns whole numbers into multiples of an interval.
class Multiples {
public:
    explicit Multiples(const LevelRule& rule) : interval_(rule.interval), base_(rule.base) {
        const auto decimals = static_cast<std::size_t>(LevelDecimals(rule));
        scale_ = DecimalText::kPowersOfTen[decimals];
        wholeInterval_ = std::round(interval_ * scale_);
        wholeBase_ = std::round(base_ * scale_);
        isDecimal_ = IsWhole(wholeInterval_) && IsWhole(wholeBase_) &&
                     IsExactly(wholeInterval_ / scale_, interval_) &&
                     IsExactly(wholeBase_ / scale_, base_);
    }

    [[nodiscard]] double At(double k) const {
        // Nothing below 2^53 is rounded before the quotient.
        const double whole = wholeBase_ + k * wholeInterval_;
        if (isDecimal_ && IsWhole(whole) && IsWhole(k * wholeInterval_)) {
            return whole / scale_;
        }
        return base_ + k * interval_;
    }

    /// The k of the first multiple above a height.
    [[nodiscard]] double FirstAbove(double height) const {
        double k = Nearest(height);
        while (At(k) > height) {
            --k;
        }
        while (At(k) <= height) {
            ++k;
        }
        return k;
    }

    /// The k of the last multiple below a height.
    [[nodiscard]] double LastBelow(double height) const {
        double k = Nearest(height);
        while (At(k) < height) {
            ++k;
        }
        while (At(k) >= height) {
            --k;
        }
        return k;
    }

    [[nodiscard]] double Nearest(double height) const {
        return std::round(height / interval_ - base_ / interval_);
    }

private:
    static bool IsWhole(double value) { return std::fabs(value) <= 9007199254740992.0; }

    double interval_;
    double base_;
    double scale_ = 1;
    double wholeInterval_ = 0;
    double wholeBase_ = 0;
    bool isDecimal_ = false;
};

// Multiples that lie this close can be told apart, and their k is exact.
bool IsTooFine(const LevelRule& rule, const Extent& range) {
    const double largest =
        std::max({std::fabs(range.min), std::fabs(range.max), std::fabs(rule.base)});
    return !(rule.interval > 4 * std::numeric_limits<double>::epsilon() * largest);
}

// Far from where sums overflow.
bool IsUsable(double value) {
    return std::fabs(value) <= 1e300;
}

bool IsSpan(const Extent& range) {
    return IsUsable(range.min) && IsUsable(range.max) && range.min < range.max;
}

std::vector<double> Tidied(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    values.erase(std::unique(values.begin(), values.end()), values.end());
    return values;
}

std::vector<double> ValuesWithin(const LevelRule& rule, const Extent& range) {
    std::vector<double> values = Tidied(rule.values);
    std::erase_if(values, [&](double value) { return !(range.min < value && value < range.max); });
    return values;
}

LevelFault FaultOfInterval(const LevelRule& rule, const Extent& range) {
    if (!IsSpan(range)) {
        return LevelFault::NoneWithin;
    }
    // The quotient may be infinite.
    if ((range.max / rule.interval) - (range.min / rule.interval) > kMostLevels + 1.0) {
        return LevelFault::TooMany;
    }
    if (IsTooFine(rule, range)) {
        return LevelFault::TooFine;
    }
    const Multiples multiples(rule);
    const double count = multiples.LastBelow(range.max) - multiples.FirstAbove(range.min) + 1;
    return count < 1             ? LevelFault::NoneWithin
           : count > kMostLevels ? LevelFault::TooMany
                                 : LevelFault::None;
}

LevelFault FaultOfCount(Index count) {
    return count < kFewestLevels ? LevelFault::TooFew
           : count > kMostLevels ? LevelFault::TooMany
                                 : LevelFault::None;
}

LevelFault FaultOfList(const std::vector<double>& values) {
    if (values.empty()) {
        return LevelFault::NoValues;
    }
    if (!std::all_of(values.begin(), values.end(), IsUsable)) {
        return LevelFault::NotFinite;
    }
    return values.size() > kMostLevels ? LevelFault::TooMany : LevelFault::None;
}

LevelSet LevelsByCount(Index n, const Extent& range, std::span<const Colour> palette,
                       const LevelRequest& request) {
    LevelRequest byCount = request;
    byCount.levelCount = n;
    return MakeLevelSet(range, palette, byCount);
}

Colour ColourAt(double height, const Extent& range, std::span<const Colour> palette) {
    const double place = (height - range.min) / (range.max - range.min) * 255.0;
    return palette[static_cast<std::size_t>(
        std::clamp(modUtilita::RoundHalfEven(place), std::int32_t{0}, std::int32_t{255}))];
}

} // namespace

LevelFault FaultOf(const LevelRule& rule) {
    switch (rule.kind) {
    case LevelRuleKind::ByCount:
        return FaultOfCount(rule.count);
    case LevelRuleKind::ByList:
        return FaultOfList(rule.values);
    case LevelRuleKind::ByInterval:
        break;
    }
    if (!IsUsable(rule.interval) || !IsUsable(rule.base)) {
        return LevelFault::NotFinite;
    }
    return rule.interval > 0 ? LevelFault::None : LevelFault::IntervalNotPositive;
}

LevelFault FaultOf(const LevelRule& rule, const Extent& range) {
    const LevelFault own = FaultOf(rule);
    if (own != LevelFault::None || rule.kind == LevelRuleKind::ByCount) {
        return own;
    }
    if (rule.kind == LevelRuleKind::ByInterval) {
        return FaultOfInterval(rule, range);
    }
    return ValuesWithin(rule, range).empty() ? LevelFault::NoneWithin : LevelFault::None;
}

Index LevelCountOf(const LevelRule& rule, const Extent& range) {
    const LevelFault fault = FaultOf(rule, range);
    if (rule.kind == LevelRuleKind::ByCount) {
        return fault == LevelFault::TooFew ? 0 : rule.count;
    }
    if (fault == LevelFault::TooMany && rule.kind == LevelRuleKind::ByInterval) {
        const double count = (range.max / rule.interval) - (range.min / rule.interval);
        constexpr auto kMost = std::numeric_limits<Index>::max();
        return count < kMost ? static_cast<Index>(count) : kMost;
    }
    if (fault != LevelFault::None) {
        return fault == LevelFault::TooMany ? static_cast<Index>(ValuesWithin(rule, range).size())
                                            : 0;
    }
    if (rule.kind == LevelRuleKind::ByList) {
        return static_cast<Index>(ValuesWithin(rule, range).size());
    }
    const Multiples multiples(rule);
    return static_cast<Index>(multiples.LastBelow(range.max) - multiples.FirstAbove(range.min)) + 1;
}

std::vector<double> LevelValuesOf(const LevelRule& rule, const Extent& range) {
    std::vector<double> values;
    if (FaultOf(rule, range) != LevelFault::None) {
        return values;
    }
    switch (rule.kind) {
    case LevelRuleKind::ByList:
        return ValuesWithin(rule, range);
    case LevelRuleKind::ByInterval: {
        const Multiples multiples(rule);
        const double last = multiples.LastBelow(range.max);
        for (double k = multiples.FirstAbove(range.min); k <= last; ++k) {
            values.push_back(multiples.At(k));
        }
        break;
    }
    case LevelRuleKind::ByCount: {
        const double spacing = (range.max - range.min) / (rule.count - 1);
        for (Index k = 1; k < rule.count; ++k) {
            values.push_back(range.min + (k - 1) * spacing);
        }
        values.push_back(range.max);
        break;
    }
    }
    return values;
}

LevelSet MakeLevelSet(const LevelRule& rule, const Extent& range, std::span<const Colour> palette,
                      const LevelRequest& request) {
    if (rule.kind == LevelRuleKind::ByCount) {
        return LevelsByCount(rule.count, range, palette, request);
    }
    const LevelFault fault = FaultOf(rule, range);
    if (fault != LevelFault::None) {
        throw AppError(ErrorNumber::kDrawing, "MakeLevelSet", "The rule gives no levels here.");
    }
    const std::vector<double> values = LevelValuesOf(rule, range);
    LevelSet levels(static_cast<Index>(values.size()));
    auto value = values.begin();
    for (LevelRecord& level : levels) {
        level.value = *value++;
        level.colour = ColourAt(level.value, range, palette);
        level.labelColour = level.colour;
        if (request.showValues) {
            level.label = LevelText(rule, level.value, request.decimalSeparator);
        }
    }
    return levels;
}

bool IsIndexLevel(const LevelRule& rule, const LevelSet& levels, Index level, Index every) {
    if (every <= 0) {
        return false;
    }
    if (rule.kind != LevelRuleKind::ByInterval) {
        return level % every == 0;
    }
    return IsExactly(std::fmod(Multiples(rule).Nearest(levels[level].value), every), 0.0);
}

int LevelDecimals(const LevelRule& rule) {
    int decimals = 0;
    switch (rule.kind) {
    case LevelRuleKind::ByCount:
        return kDecimalsByCount;
    case LevelRuleKind::ByInterval:
        decimals = std::max(DecimalsOfText(rule.interval), DecimalsOfText(rule.base));
        break;
    case LevelRuleKind::ByList:
        for (const double value : rule.values) {
            decimals = std::max(decimals, DecimalsOfText(value));
        }
        break;
    }
    return std::min(decimals, kMostDecimals);
}

std::string LevelText(const LevelRule& rule, double value, char decimalSeparator) {
    const std::string pattern =
        "#0." + std::string(static_cast<std::size_t>(LevelDecimals(rule)), '0');
    return NumberText::FormatScreen(value, pattern, decimalSeparator);
}

std::vector<double> ProposedIntervals(const Extent& range) {
    constexpr Index kFewest = 8;
    constexpr Index kMost = 20;
    const double middle = std::log(std::sqrt(double{kFewest} * kMost));
    std::vector<std::pair<double, double>> found; // distance from the middle, interval
    const double span = range.max - range.min;
    if (!IsSpan(range)) {
        return {};
    }
    const int power = static_cast<int>(std::floor(std::log10(span)));
    for (int exponent = power - 3; exponent <= power; ++exponent) {
        for (const char* const digits : {"10", "20", "25", "50"}) {
            // From its text, so that 0.1 is the 0.1 that a user types.
            const std::string text = digits + ("e" + std::to_string(exponent - 1));
            LevelRule rule;
            rule.kind = LevelRuleKind::ByInterval;
            std::from_chars(text.data(), text.data() + text.size(), rule.interval);
            const Index count = LevelCountOf(rule, range);
            if (count >= kFewest && count <= kMost) {
                found.emplace_back(std::fabs(std::log(double{1} * count) - middle), rule.interval);
            }
        }
    }
    std::sort(found.begin(), found.end());
    std::vector<double> intervals;
    for (const auto& [distance, interval] : found) {
        intervals.push_back(interval);
    }
    return intervals;
}

std::optional<std::vector<double>> ParseLevelList(std::string_view text, char decimalSeparator) {
    const bool hasDecimalComma = decimalSeparator == ',';
    std::string plain(text);
    for (std::size_t i = 0; i < plain.size(); ++i) {
        char& c = plain[i];
        const bool endsValue = i + 1 == plain.size() || std::string_view(" \t;").find(
                                                            plain[i + 1]) != std::string_view::npos;
        if (c == ',') {
            c = hasDecimalComma && !endsValue ? '.' : ' ';
        } else if (c == ';' || c == '\t' || c == '\r' || c == '\n') {
            c = ' ';
        }
    }
    std::vector<double> values;
    const char* const end = plain.data() + plain.size();
    for (const char* at = plain.data();
         (at = std::find_if(at, end, [](char c) { return c != ' '; })) != end;) {
        double value = 0;
        const char* const first = *at == '+' ? at + 1 : at;
        const auto read = std::from_chars(first, end, value);
        const bool isWhole = read.ptr == end || *read.ptr == ' ';
        if (read.ec != std::errc() || !isWhole || !IsUsable(value)) {
            return std::nullopt;
        }
        values.push_back(value);
        at = read.ptr;
    }
    return values.empty() ? std::nullopt : std::optional(Tidied(std::move(values)));
}

} // namespace terravo

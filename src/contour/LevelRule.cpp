#include "contour/LevelRule.h"

#include "contour/LevelRuleText.h"
#include "survey/FileDecimals.h"
#include "util/AppError.h"
#include "util/DecimalText.h"
#include "util/NumberText.h"
#include "util/modUtilita.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <utility>

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

double CountOfMultiples(const LevelRule& rule, const Extent& range) {
    const Multiples multiples(rule);
    return multiples.LastBelow(range.max) - multiples.FirstAbove(range.min) + 1;
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
    const double count = CountOfMultiples(rule, range);
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
    if (n < kFewestLevels) {
        throw AppError(ErrorNumber::kDrawing, "DrawContourMap",
                       "Two levels are needed at least: NLiv = " + std::to_string(n));
    }
    const double spacing = (range.max - range.min) / (n - 1);
    if (!std::isfinite(spacing)) {
        throw AppError(ErrorNumber::kOverflow, "DrawContourMap",
                       "The heights are too far apart to compute levels.");
    }
    LevelSet levels(n);
    for (Index k = 1; k <= n; ++k) {
        LevelRecord& level = levels[k];
        level.value = k == n ? range.max : range.min + (k - 1) * spacing;
        const double place = (k - 1) * 255.0 / (n - 1);
        level.colour = palette[static_cast<std::size_t>(modUtilita::RoundHalfEven(place))];
        level.labelColour = level.colour;
        if (request.showValues) {
            level.label = NumberText::FormatScreen(level.value, "#0.000", request.decimalSeparator);
        }
    }
    if (request.nudgeEnds) {
        levels[1].value += spacing * 1e-9;
        levels[n].value -= spacing * 1e-9;
    }
    return levels;
}

Colour ColourAt(double height, const Extent& range, std::span<const Colour> palette) {
    const double place = (height - range.min) / (range.max - range.min) * 255.0;
    return palette[static_cast<std::size_t>(
        std::clamp(modUtilita::RoundHalfEven(place), std::int32_t{0}, std::int32_t{255}))];
}

} // namespace

LevelRule RuleByCount(Index count) {
    LevelRule rule;
    rule.count = count;
    return rule;
}

LevelRule RuleByInterval(double interval, double base) {
    LevelRule rule;
    rule.kind = LevelRuleKind::ByInterval;
    rule.interval = interval;
    rule.base = base;
    return rule;
}

LevelRule RuleByList(std::vector<double> values) {
    LevelRule rule;
    rule.kind = LevelRuleKind::ByList;
    rule.values = std::move(values);
    return rule;
}

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
    if (fault != LevelFault::None && fault != LevelFault::TooMany) {
        return 0;
    }
    switch (rule.kind) {
    case LevelRuleKind::ByCount:
        return rule.count;
    case LevelRuleKind::ByList:
        return static_cast<Index>(ValuesWithin(rule, range).size());
    case LevelRuleKind::ByInterval:
        break;
    }
    if (fault == LevelFault::None) {
        return static_cast<Index>(CountOfMultiples(rule, range));
    }
    constexpr Index kLargest = std::numeric_limits<Index>::max();
    const double about = range.max / rule.interval - range.min / rule.interval;
    return about < kLargest ? static_cast<Index>(about) : kLargest;
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
        if (!std::isfinite(spacing)) {
            break;
        }
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
        throw AppError(ErrorNumber::kDrawing, "MakeLevelSet",
                       SentenceOf(fault, rule, range, TextCatalogue(), '.'));
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

std::optional<Colour> ColourBelowFirst(const LevelRule& rule, std::span<const Colour> palette) {
    return rule.kind == LevelRuleKind::ByCount ? std::nullopt : std::optional(palette.front());
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
            double interval = 0;
            std::from_chars(text.data(), text.data() + text.size(), interval);
            const Index count = LevelCountOf(RuleByInterval(interval), range);
            if (count >= kFewest && count <= kMost) {
                found.emplace_back(std::fabs(std::log(double{1} * count) - middle), interval);
            }
        }
    }
    std::sort(found.begin(), found.end());
    std::vector<double> intervals;
    intervals.reserve(found.size());
    for (const auto& [distance, interval] : found) {
        intervals.push_back(interval);
    }
    return intervals;
}

} // namespace terravo

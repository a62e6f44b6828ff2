#include "contour/LevelRuleText.h"

#include "util/NumberText.h"
#include "util/modUtilita.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <set>

namespace terravo {
namespace {

using modUtilita::IsExactly;

// Blanks in place of everything that separates, a period in place of the decimal sign.
std::string WithBlanksBetween(std::string_view text, char decimalSeparator) {
    constexpr std::string_view kSeparators = " \t\r\n;";
    const auto separates = [&](char c) { return kSeparators.find(c) != std::string_view::npos; };
    std::string plain(text);
    for (std::size_t i = 0; i < plain.size(); ++i) {
        const bool endsValue = i + 1 == plain.size() || separates(plain[i + 1]);
        if (plain[i] == ',' && decimalSeparator == ',' && !endsValue) {
            plain[i] = '.';
        } else if (plain[i] == ',' || separates(plain[i])) {
            plain[i] = ' ';
        }
    }
    return plain;
}

std::optional<double> NumberOf(std::string_view word) {
    if (word.starts_with('+') && word.size() > 1 && word[1] != '-') {
        word.remove_prefix(1);
    }
    double value = 0;
    const char* const end = word.data() + word.size();
    const auto read = std::from_chars(word.data(), end, value);
    const bool isNumber = read.ec == std::errc() && read.ptr == end && std::isfinite(value);
    return isNumber ? std::optional(value) : std::nullopt;
}

} // namespace

std::optional<std::vector<double>> ParseLevelList(std::string_view text, char decimalSeparator) {
    const std::string plain = WithBlanksBetween(text, decimalSeparator);
    std::vector<double> values;
    for (std::size_t at = plain.find_first_not_of(' '); at != std::string::npos;) {
        const std::size_t end = std::min(plain.find(' ', at), plain.size());
        const std::optional<double> value = NumberOf(std::string_view(plain).substr(at, end - at));
        if (!value) {
            return std::nullopt;
        }
        values.push_back(*value);
        at = plain.find_first_not_of(' ', end);
    }
    std::sort(values.begin(), values.end());
    values.erase(std::unique(values.begin(), values.end()), values.end());
    return values.empty() ? std::nullopt : std::optional(std::move(values));
}

std::optional<double> ParseLevelNumber(std::string_view text, char decimalSeparator) {
    const auto values = ParseLevelList(text, decimalSeparator);
    return values && values->size() == 1 ? std::optional(values->front()) : std::nullopt;
}

std::string TypedNumber(double value, char decimalSeparator) {
    const double magnitude = std::fabs(value);
    const bool isPlain = IsExactly(value, 0.0) || (magnitude >= 1e-6 && magnitude < 1e15);
    std::array<char, 32> text{};
    const auto written =
        std::to_chars(text.data(), text.data() + text.size(),
                      NumberText::LeadingNumber(NumberText::General(value)),
                      isPlain ? std::chars_format::fixed : std::chars_format::scientific);
    std::replace(text.data(), written.ptr, '.', decimalSeparator);
    return {text.data(), written.ptr};
}

std::string ResultText(const LevelRule& rule, const Extent& range, const TextCatalogue& texts) {
    const Index count = LevelCountOf(rule, range);
    const auto of = [&texts](Text text, std::size_t number) {
        return WithValues(texts[text], {std::to_string(number)});
    };
    std::string text = of(Text::LevelsResult, static_cast<std::size_t>(count));
    const std::size_t leftOut = std::set<double>(rule.values.begin(), rule.values.end()).size() -
                                static_cast<std::size_t>(count);
    if (rule.kind == LevelRuleKind::ByList && leftOut > 0) {
        text += "; " + of(Text::LevelsLeftOut, leftOut);
    }
    return text;
}

std::string TextOfLevels(const LevelRule& rule, const std::vector<double>& values,
                         char decimalSeparator) {
    constexpr std::size_t kAtEachEnd = 250;
    std::string text;
    for (std::size_t i = 0; i < values.size(); ++i) {
        const bool isLeftOut = i >= kAtEachEnd && i + kAtEachEnd < values.size();
        text += i == 0 ? "" : "   ";
        text += isLeftOut ? "..." : LevelText(rule, values[i], decimalSeparator);
        if (isLeftOut) {
            i = values.size() - kAtEachEnd - 1;
        }
    }
    return text;
}

std::string SentenceOf(LevelFault fault, const LevelRule& rule, const Extent& range,
                       const TextCatalogue& texts, char decimalSeparator) {
    const auto number = [=](double value) { return TypedNumber(value, decimalSeparator); };
    const std::string most = std::to_string(kMostLevels);
    switch (fault) {
    case LevelFault::None:
        break;
    case LevelFault::TooFew:
        return WithValues(texts[Text::LevelsTooFew], {std::to_string(kFewestLevels), most});
    case LevelFault::TooMany:
        return WithValues(texts[Text::LevelsTooMany], {most});
    case LevelFault::NotFinite:
        return texts[Text::LevelsNoNumber];
    case LevelFault::IntervalNotPositive:
        return texts[Text::LevelsNotPositive];
    case LevelFault::TooFine:
        return WithValues(texts[Text::LevelsTooFine], {number(rule.interval)});
    case LevelFault::NoValues:
        return texts[Text::LevelsNoValues];
    case LevelFault::NoneWithin:
        return range.min < range.max ? WithValues(texts[Text::LevelsNoneWithin],
                                                  {number(range.min), number(range.max)})
                                     : texts[Text::LevelsLevelGround];
    }
    return {};
}

} // namespace terravo

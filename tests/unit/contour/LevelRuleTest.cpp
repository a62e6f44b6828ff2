#include "contour/LevelRule.h"

#include "contour/LevelRuleText.h"
#include "plot2d/ColourScale.h"
#include "util/AppError.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace terravo {
namespace {

using Values = std::vector<double>;

LevelSet Make(const LevelRule& rule, Extent range, const LevelRequest& request = {}) {
    return MakeLevelSet(rule, range, ColourScale::MakePalette(256), request);
}

TEST(MakeLevelSet, SpansTheHeightsWithColoursInProportion) {
    LevelRequest request;
    request.nudgeEnds = false;
    const LevelSet levels = Make(RuleByCount(7), {10, 40}, request);
    const std::vector<Colour> palette = ColourScale::MakePalette(256);
    const std::array<std::size_t, 7> entries{0, 42, 85, 128, 170, 212, 255};
    for (Index k = 1; k <= 7; ++k) {
        EXPECT_DOUBLE_EQ(levels[k].value, 10 + 5.0 * (k - 1));
        EXPECT_EQ(levels[k].colour, palette[entries[static_cast<std::size_t>(k) - 1]]);
        EXPECT_EQ(levels[k].labelColour, levels[k].colour);
        EXPECT_EQ(levels[k].width, 1);
        EXPECT_EQ(levels[k].labelSize, 10);
        EXPECT_TRUE(levels[k].label.empty());
    }
}

TEST(MakeLevelSet, EndsExactlyAtTheExtremesWhateverTheSpacing) {
    LevelRequest request;
    request.nudgeEnds = false;
    for (const Index count : {2, 3, 7, 10, 1000}) {
        const LevelSet levels = Make(RuleByCount(count), {0.1, 0.7}, request);
        EXPECT_EQ(levels[1].value, 0.1);
        EXPECT_EQ(levels[count].value, 0.7);
    }
}

TEST(MakeLevelSet, NudgesTheEndsInwardsButLabelsThemUnmoved) {
    LevelRequest request;
    request.showValues = true;
    request.decimalSeparator = ',';
    const LevelSet levels = Make(RuleByCount(3), {-1, 3}, request);
    EXPECT_DOUBLE_EQ(levels[1].value, -1 + 2e-9);
    EXPECT_DOUBLE_EQ(levels[2].value, 1);
    EXPECT_DOUBLE_EQ(levels[3].value, 3 - 2e-9);
    EXPECT_GT(levels[1].value, -1);
    EXPECT_LT(levels[3].value, 3);
    EXPECT_EQ(levels[1].label, "-1,000");
    EXPECT_EQ(levels[3].label, "3,000");
}

TEST(LevelRule, LevelsOfAnIntervalAreTheNumbersThatTheirTextMeans) {
    LevelRequest request;
    request.showValues = true;
    const LevelSet levels = Make(RuleByInterval(0.1), {512.25, 613.05}, request);
    ASSERT_EQ(levels.UpperBound(), 1008);
    for (Index k = 1; k <= 1008; ++k) {
        const int tenths = 5122 + k;
        const std::string text = std::to_string(tenths / 10) + "." + std::to_string(tenths % 10);
        EXPECT_EQ(levels[k].value, std::stod(text)) << "a point of this height lies on the level";
        EXPECT_EQ(levels[k].label, text);
    }
    EXPECT_EQ(LevelText(RuleByInterval(2.5), 510, ','), "510,0");
    EXPECT_EQ(LevelText(RuleByInterval(5), 510, ','), "510");
    EXPECT_EQ(LevelText(RuleByInterval(5, 0.25), 510.25, '.'), "510.25");
    EXPECT_EQ(LevelText(RuleByInterval(0.1 + 0.2), 0.9, '.'), "0.9") << "not 17 decimals";
    EXPECT_EQ(LevelText(RuleByList({500, 0.125, 7.5}), 500, '.'), "500.000");
    const double third = 1.0 / 3;
    EXPECT_EQ(LevelValuesOf(RuleByInterval(third), {0, 100}).back(), 299 * third)
        << "not a decimal";
}

// The levels, and what a rule is refused for.
TEST(LevelRule, KeepsLevelsStrictlyBetweenLowestAndHighestPoint) {
    constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
    const Extent none;
    const struct {
        LevelRule rule;
        Extent range;
        Values values;
        LevelFault fault;
    } cases[] = {
        {RuleByInterval(5), {500, 520}, {505, 510, 515}, LevelFault::None},
        {RuleByInterval(5, 2), {-8, 8}, {-3, 2, 7}, LevelFault::None},
        {RuleByInterval(5, 1003), {-8, 8}, {-7, -2, 3}, LevelFault::None},
        {RuleByInterval(5), {501, 504.9}, {}, LevelFault::NoneWithin},
        {RuleByInterval(5), {505, 505}, {}, LevelFault::NoneWithin},
        {RuleByInterval(5), none, {}, LevelFault::NoneWithin},
        {RuleByInterval(1e308), {-8, 8}, {}, LevelFault::NotFinite},
        {RuleByInterval(1e300), {-8, 8}, {0}, LevelFault::None},
        {RuleByInterval(0), {1, 9}, {}, LevelFault::IntervalNotPositive},
        {RuleByInterval(-1), {1, 9}, {}, LevelFault::IntervalNotPositive},
        {RuleByInterval(kNan), {1, 9}, {}, LevelFault::NotFinite},
        {RuleByInterval(1, kNan), {1, 9}, {}, LevelFault::NotFinite},
        {RuleByInterval(1, 1e20), {1, 9}, {}, LevelFault::TooFine},
        {RuleByInterval(1e-16), {1, 1 + 1e-15}, {}, LevelFault::TooFine},
        {RuleByInterval(1e-300), {1, 9}, {}, LevelFault::TooMany},
        {RuleByInterval(1), {-1.5e308, 1.5e308}, {}, LevelFault::NoneWithin},
        {RuleByList({9, 3, 1, 3, 12, 5}), {1, 9}, {3, 5}, LevelFault::None},
        {RuleByList({9, 1}), {1, 9}, {}, LevelFault::NoneWithin},
        {RuleByList({}), {1, 9}, {}, LevelFault::NoValues},
        {RuleByList({3, kNan}), {1, 9}, {}, LevelFault::NotFinite},
        {RuleByCount(3), {1, 9}, {1, 5, 9}, LevelFault::None},
        {RuleByCount(1), {1, 9}, {}, LevelFault::TooFew},
        {RuleByCount(kMostLevels + 1), {1, 9}, {}, LevelFault::TooMany},
    };
    int number = 0;
    for (const auto& c : cases) {
        SCOPED_TRACE(number++);
        EXPECT_EQ(FaultOf(c.rule, c.range), c.fault);
        EXPECT_EQ(LevelValuesOf(c.rule, c.range), c.values);
        EXPECT_EQ(SentenceOf(c.fault, c.rule, c.range, TextCatalogue(), '.').empty(),
                  c.fault == LevelFault::None);
        if (c.fault == LevelFault::None) {
            EXPECT_EQ(LevelCountOf(c.rule, c.range), static_cast<Index>(c.values.size()));
        } else if (c.rule.kind != LevelRuleKind::ByCount) {
            EXPECT_THROW(Make(c.rule, c.range), AppError);
        }
    }
    EXPECT_EQ(LevelCountOf(RuleByInterval(1e-300), {1, 9}), std::numeric_limits<Index>::max());
    EXPECT_EQ(LevelCountOf(RuleByInterval(1), {0.5, kMostLevels + 0.5}), kMostLevels);
    EXPECT_EQ(FaultOf(RuleByInterval(1), {-0.5, kMostLevels + 0.5}), LevelFault::TooMany);
}

TEST(LevelRule, AColourTellsTheHeight) {
    const std::vector<Colour> palette = ColourScale::MakePalette(256);
    const LevelSet levels = Make(RuleByList({100, 151, 200}), {100, 202});
    ASSERT_EQ(levels.UpperBound(), 2);
    EXPECT_EQ(levels[1].colour, palette[128]);
    EXPECT_EQ(levels[2].colour, palette[250]);
    EXPECT_EQ(ColourBelowFirst(RuleByInterval(5), palette), palette[0]);
    EXPECT_EQ(ColourBelowFirst(RuleByCount(5), palette), std::nullopt);
}

TEST(LevelRule, IndexLevelsAreMultiplesWhereTheRuleHasThem) {
    const auto heavy = [](const LevelRule& rule, Extent range, Index every) {
        const LevelSet levels = Make(rule, range);
        Values values;
        for (Index k = 1; k <= levels.UpperBound(); ++k) {
            if (IsIndexLevel(rule, levels, k, every)) {
                values.push_back(levels[k].value);
            }
        }
        return values;
    };
    EXPECT_EQ(heavy(RuleByInterval(0.1), {-0.61, 0.72}, 5), (Values{-0.5, 0, 0.5}));
    EXPECT_EQ(heavy(RuleByInterval(2, 1), {2, 30}, 5), (Values{11, 21}));
    EXPECT_EQ(heavy(RuleByInterval(2), {21, 29}, 1), (Values{22, 24, 26, 28}));
    EXPECT_EQ(heavy(RuleByList({1, 2, 3, 4, 5}), {0, 9}, 2), (Values{2, 4}));
    EXPECT_EQ(heavy(RuleByInterval(1), {0, 30}, 0), Values{});
}

TEST(LevelRule, ProposesRoundIntervalsForAnyRange) {
    EXPECT_EQ(ProposedIntervals({503.2, 612.7}), (Values{10}));
    EXPECT_EQ(ProposedIntervals({0, 100}), (Values{10, 5}));
    for (double span = 1e-6; span < 1e12; span *= 1.1) {
        const Extent range{-span / 3, span * 2 / 3};
        const Values intervals = ProposedIntervals(range);
        ASSERT_FALSE(intervals.empty()) << span;
        for (const double interval : intervals) {
            const double digits = interval / std::pow(10, std::floor(std::log10(interval * 1.001)));
            EXPECT_NEAR(std::min({std::fabs(digits - 1), std::fabs(digits - 2),
                                  std::fabs(digits - 2.5), std::fabs(digits - 5)}),
                        0, 1e-9)
                << interval;
            const Index count = LevelCountOf(RuleByInterval(interval), range);
            EXPECT_TRUE(count >= 8 && count <= 20) << span << ": " << count;
        }
    }
    EXPECT_TRUE(ProposedIntervals({5, 5}).empty());
    EXPECT_TRUE(ProposedIntervals({}).empty());
}

TEST(LevelRuleText, ReadsWhatUsersType) {
    const struct {
        const char* text;
        char decimal;
        std::optional<Values> values;
    } cases[] = {
        {"500,510.5,505", '.', Values{500, 505, 510.5}},
        {" 500 ;510,5;; 520\t", ',', Values{500, 510.5, 520}},
        {"500, 510, 520", ',', Values{500, 510, 520}},
        {"1.5 -2 +3 2e1 3", ',', Values{-2, 1.5, 3, 20}},
        {"500,510,520", ',', std::nullopt},
        {"1 two", '.', std::nullopt},
        {"+-1", '.', std::nullopt},
        {"nan", '.', std::nullopt},
        {"1e999", '.', std::nullopt},
        {" ; ", '.', std::nullopt},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(ParseLevelList(c.text, c.decimal), c.values) << c.text;
    }
    EXPECT_EQ(ParseLevelNumber(" 2,5 ", ','), 2.5);
    EXPECT_EQ(ParseLevelNumber("2,5", '.'), std::nullopt) << "two numbers";
    EXPECT_EQ(TypedNumber(0.1 + 0.2, ','), "0,3");
    EXPECT_EQ(TypedNumber(-100000, '.'), "-100000");
    EXPECT_EQ(TypedNumber(1e20, '.'), "1e+20");
}

} // namespace
} // namespace terravo

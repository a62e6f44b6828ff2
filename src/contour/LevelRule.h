// The rule that chooses the levels: by count, by interval and base, or a list.
//
// Data: plain values that can be compared and kept. Method: by count, the range from the lowest to
// the highest point is divided equally, ends included. By interval, the levels are the multiples
// base + k * interval strictly between the lowest and the highest point, each computed from its k,
// so that no error adds up; where interval and base are decimal numbers it is the double nearest to
// the decimal level, which is the one that a point file means by the same text. A list gives the
// values strictly between the lowest and the highest point. A level at the very lowest or highest
// height would be dots and edges of level ground, so these two rules leave it out.
#pragma once

#include "contour/LevelSet.h"
#include "survey/PointSet.h"

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace terravo {

enum class LevelRuleKind : unsigned char { ByCount, ByInterval, ByList };

struct LevelRule {
    LevelRuleKind kind = LevelRuleKind::ByCount;
    Index count = 10;           // by count
    double interval = 0;        // by interval; greater than 0
    double base = 0;            // by interval
    std::vector<double> values; // by list; any order, repeats count once

    bool operator==(const LevelRule&) const = default;
};

LevelRule RuleByCount(Index count);
LevelRule RuleByInterval(double interval, double base = 0);
LevelRule RuleByList(std::vector<double> values);

/// Why a rule gives no levels.
enum class LevelFault : unsigned char {
    None,
    TooFew,              // a count below kFewestLevels
    TooMany,             // more than kMostLevels
    NotFinite,           // an interval, a base or a value is no number, or beyond 1E+300
    IntervalNotPositive, // zero or negative
    TooFine,             // the interval is lost in the rounding of such heights
    NoValues,            // the list is empty
    NoneWithin,          // no level lies between the lowest and the highest point
};

/// Whether the rule gives levels over a range of heights, without making them.
LevelFault FaultOf(const LevelRule& rule, const Extent& range);

/// Whether the rule has a fault of its own, whatever the heights; never TooFine or NoneWithin, and
/// TooMany for a count or a list alone.
LevelFault FaultOf(const LevelRule& rule);

/// The number of levels that MakeLevelSet makes, without making them. 0 for a rule that gives none;
/// beyond kMostLevels the number that there would be, or the largest Index.
Index LevelCountOf(const LevelRule& rule, const Extent& range);

/// The heights of the levels in increasing order, by count without the nudge; empty for a rule that
/// gives none or too many.
std::vector<double> LevelValuesOf(const LevelRule& rule, const Extent& range);

/// Builds the levels of a rule over the range of heights. The colour of a level tells its height:
/// its place between the lowest and the highest point is its place in the palette.
/// @param range    of the points' z.
/// @param palette  256 colours, from MakePalette.
/// Throws AppError for a rule with a fault (a count has none but being too small), and for a range
/// too wide to divide.
LevelSet MakeLevelSet(const LevelRule& rule, const Extent& range, std::span<const Colour> palette,
                      const LevelRequest& request);

/// Fewest levels that a drawing by this rule can have: a count says two, the others may have one.
inline Index FewestLevelsOf(const LevelRule& rule) {
    return rule.kind == LevelRuleKind::ByCount ? kFewestLevels : 1;
}

/// The colour of the surface below the first level: none by count, whose first level is the lowest
/// point, so that what rounding puts below takes the colour of the last. Above the last level that
/// level's colour goes on.
std::optional<Colour> ColourBelowFirst(const LevelRule& rule, std::span<const Colour> palette);

/// Whether a level is to be drawn heavier than the others: by interval when its k is a multiple of
/// `every`, so that with base 0, interval 2 and every 5 the lines at 10, 20, 30 are the heavy ones,
/// whatever the survey; by the other rules levels number `every`, 2 * `every` and so on.
/// @param level  1-based in `levels`, which the rule has made.
/// @param every  0 or less: never.
bool IsIndexLevel(const LevelRule& rule, const LevelSet& levels, Index level, Index every);

/// Decimals with which the values of the levels are written: by count 3; otherwise as many as
/// interval and base need, or the values of the list.
int LevelDecimals(const LevelRule& rule);

/// A height with the decimals of the rule, as the labels show it.
std::string LevelText(const LevelRule& rule, double value, char decimalSeparator);

/// Round intervals, 1, 2, 2.5 or 5 times a power of ten, that give 8 to 20 levels on base 0; the
/// one whose count is nearest to the middle comes first. Empty for a range without an extent.
std::vector<double> ProposedIntervals(const Extent& range);

} // namespace terravo

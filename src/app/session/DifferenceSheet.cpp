#include "app/session/DifferenceSheet.h"

#include "app/session/SurveyContours.h"
#include "sheet/MakeSheet.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace terravo {
namespace {

constexpr double kNoise = 1e-9; // data units: no survey knows heights so well
constexpr SheetLayer kNotShown[] = {SheetLayer::Points, SheetLayer::SpotHeights,
                                    SheetLayer::Numbers, SheetLayer::Codes, SheetLayer::Breaklines};

// The same change everywhere, or none: what differs is rounding.
bool IsLevel(const Extent& heights) {
    return heights.max - heights.min <= 2 * kNoise;
}

LevelSet LevelsAt(const std::vector<double>& values) {
    LevelSet levels;
    for (const double value : values) {
        LevelRecord level;
        level.value = value;
        levels.Append(level);
    }
    return levels;
}

// Of the rule, and zero.
std::vector<double> ValuesOf(const LevelRule& rule, const Extent& heights) {
    if (IsLevel(heights)) {
        return {};
    }
    std::vector<double> values = LevelValuesOf(rule, heights);
    const bool isByRule = rule.kind != LevelRuleKind::ByCount; // whose levels begin at the lowest
    if (isByRule && heights.min <= 0 && heights.max >= 0 &&
        std::find(values.begin(), values.end(), 0) == values.end()) {
        values.insert(std::lower_bound(values.begin(), values.end(), 0), 0);
    }
    return values;
}

// A height next to zero that no line on the paper shows beside it.
double NextToZero(const std::vector<double>& values, const Extent& heights) {
    constexpr double kPart = 1e-6; // of the distance between levels
    double distance = heights.max - heights.min;
    for (std::size_t i = 1; i < values.size(); ++i) {
        distance = std::min(distance, values[i] - values[i - 1]);
    }
    return std::max(kPart * distance, kNoise);
}

bool HasUnchangedGround(const DifferenceSurface& difference, double nextToZero) {
    for (Index t = 1; t <= difference.triangles.count; ++t) {
        bool isLevel = true;
        for (int j = 1; j <= 3; ++j) {
            isLevel =
                isLevel &&
                std::fabs(difference.points.z[difference.triangles.Vertex(j, t)]) <= nextToZero;
        }
        if (isLevel) {
            return true;
        }
    }
    return false;
}

// What is drawn of the surface: the lines of the levels and the ground between them.
class Change {
public:
    Change(const DifferenceSurface& difference, const LevelRule& rule)
        : difference_(difference), values_(ValuesOf(rule, difference.points.extentZ)),
          nextToZero_(NextToZero(values_, difference.points.extentZ)), levels_(LevelsAt(values_)) {}

    /// @return false when it was stopped.
    bool Make(const StopToken& stop) {
        hasUnchanged_ = HasUnchangedGround(difference_, nextToZero_);
        std::vector<double> cuts;
        for (const double value : values_) {
            if (hasUnchanged_ && value == 0) {
                cuts.insert(cuts.end(), {-nextToZero_, nextToZero_});
            } else {
                cuts.push_back(value);
            }
        }
        std::optional<ContourSet> lines =
            MakeContourSet(difference_.points, difference_.triangles, LevelsAt(cuts), stop);
        if (!lines || stop.IsStopRequested()) {
            return false;
        }
        regions_ = MakeSurfaceRegions(difference_.points, difference_.triangles, *lines);
        TakeLines(std::move(*lines));
        return true;
    }

    [[nodiscard]] const LevelSet& Levels() const { return levels_; }
    [[nodiscard]] const ContourSet& Contours() const { return contours_; }
    [[nodiscard]] const Array1<LevelRegion>& Regions() const { return regions_; }
    [[nodiscard]] bool HasUnchanged() const { return hasUnchanged_; }

private:
    // The lines on both sides of zero are those of its level.
    void TakeLines(ContourSet lines) {
        for (ContourLevel& level : lines) {
            const bool isUpperBorder = hasUnchanged_ && level.value == nextToZero_;
            if (isUpperBorder) {
                Join(level, contours_[contours_.UpperBound()]);
            } else {
                contours_.Append(std::move(level));
            }
        }
    }

    static void Join(const ContourLevel& upper, ContourLevel& lower) {
        lower.value = 0;
        for (ContourLine line : upper.lines) {
            line.first += lower.vertices.size();
            lower.lines.push_back(line);
        }
        lower.vertices.insert(lower.vertices.end(), upper.vertices.begin(), upper.vertices.end());
    }

    const DifferenceSurface& difference_;
    std::vector<double> values_;
    double nextToZero_;
    LevelSet levels_;
    bool hasUnchanged_ = false;
    ContourSet contours_;
    Array1<LevelRegion> regions_;
};

} // namespace

SheetPlan DifferencePlan(SheetPlan plan) {
    plan.Show(SheetLayer::Bands, true);
    plan.Show(SheetLayer::Triangles, false);
    for (const SheetLayer layer : kNotShown) {
        plan.Show(layer, false);
    }
    plan.labels = SheetLabels::All;
    plan.smoothing.reset();
    plan.texts.title.clear();
    return plan;
}

LevelRule DifferenceLevels(const Extent& heights) {
    LevelRule rule;
    const std::vector<double> intervals =
        IsLevel(heights) ? std::vector<double>() : ProposedIntervals(heights);
    if (!intervals.empty()) {
        rule.kind = LevelRuleKind::ByInterval;
        rule.interval = intervals.front();
    }
    return rule;
}

std::optional<SheetScene> MakeDifferenceSheet(SheetPlan plan, const DifferenceSource& source,
                                              const SheetWords& words, const StopToken& stop) {
    const DifferenceSurface& surface = source.difference;
    if (surface.triangles.count == 0) {
        return std::nullopt;
    }
    for (const SheetLayer layer : kNotShown) {
        plan.Show(layer, false);
    }
    plan.smoothing.reset();
    SheetDifference difference;
    difference.name =
        WithValues(words.texts[Text::DifferenceOf], {source.secondName, source.firstName});
    difference.volumes = source.volumes;
    if (plan.texts.title.empty()) {
        plan.texts.title = difference.name;
    }
    const LevelRule rule = source.rule.value_or(DifferenceLevels(surface.points.extentZ));
    Change change(surface, rule);
    if (!change.Make(stop)) {
        return std::nullopt;
    }
    difference.hasUnchanged = change.HasUnchanged();
    SheetSource sheet{surface.points,
                      0,
                      surface.triangles,
                      rule,
                      change.Levels(),
                      change.Contours(),
                      words.texts,
                      words.measure,
                      plan.Shows(SheetLayer::Bands) ? &change.Regions() : nullptr,
                      words.decimalSeparator};
    sheet.difference = &difference;
    SheetScene scene = MakeSheet(plan, sheet, stop);
    return stop.IsStopRequested() ? std::nullopt : std::optional(std::move(scene));
}

} // namespace terravo

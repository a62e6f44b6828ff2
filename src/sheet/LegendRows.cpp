#include "sheet/LegendRows.h"

#include "sheet/DifferenceStyle.h"
#include "sheet/GridLines.h"
#include "util/NumberText.h"

#include <algorithm>
#include <cmath>

namespace terravo {
namespace {

std::string Word(const SheetContext& context, Text text) {
    return context.source.texts[text];
}

std::string WithMetres(const SheetContext& context, Text text, double value) {
    return WithValues(Word(context, text), {context.ShortNumber(value)});
}

Index LevelCount(const SheetContext& context) {
    return context.source.levels.UpperBound();
}

// Levels by count begin at the lowest point and end at the highest one.
bool IsTiny(const SheetContext& context, double height) {
    const Extent& heights = context.source.points.extentZ;
    return height <= (heights.max - heights.min) * 1e-6;
}

Index FirstWithCode(const PointSet& points) {
    for (Index i = 1; i <= points.count && points.labels.HasLabels(); ++i) {
        if (!points.labels.Code(i).empty()) {
            return i;
        }
    }
    return 0;
}

// Level ground has levels by count, and no line at any.
bool HasLines(const SheetSource& source) {
    const auto hasThem = [](const auto& levels) {
        return std::any_of(levels.begin(), levels.end(),
                           [](const auto& level) { return !level.lines.empty(); });
    };
    return source.smooth != nullptr ? hasThem(source.smooth->levels) : hasThem(source.contours);
}

// In two rows, where its comma is: one would be the widest of all, and make the legend's texts
// smaller.
void AddSmoothRemark(const SheetContext& context, std::vector<LegendRow>& rows) {
    const std::string text =
        WithValues(Word(context, Text::LegendSmoothed),
                   {NumberText::RoundedUp(context.source.smooth->worst.height, 2,
                                          context.source.decimalSeparator)});
    const std::size_t comma = text.find(", ");
    if (comma == std::string::npos) {
        rows.push_back({LegendSample::Remark, text});
        return;
    }
    rows.push_back({LegendSample::Remark, text.substr(0, comma + 1)});
    rows.push_back({LegendSample::Remark, text.substr(comma + 2)});
}

// Index lines and the others, with their interval where they have one.
void AddContourRows(const SheetContext& context, std::vector<LegendRow>& rows) {
    Index indexLines = 0;
    for (Index k = 1; k <= LevelCount(context); ++k) {
        indexLines += context.IsIndex(k) ? 1 : 0;
    }
    constexpr double kMiddle = 0.5;
    const LevelRule& rule = context.source.rule;
    const bool isRegular = rule.kind == LevelRuleKind::ByInterval;
    const auto add = [&](Text plain, Text regular, double interval, bool isIndex) {
        rows.push_back({LegendSample::Line,
                        isRegular ? WithMetres(context, regular, interval) : Word(context, plain),
                        context.theme.ContourInk(isIndex, kMiddle)});
    };
    if (indexLines > 0 && context.source.difference != nullptr) {
        rows.push_back({LegendSample::Line, Word(context, Text::LegendZeroLine),
                        context.theme.ContourInk(true, kMiddle)});
    } else if (indexLines > 0) {
        add(Text::LegendIndex, Text::LegendIndexEvery, rule.interval * context.plan.indexEvery,
            true);
    }
    if (indexLines < LevelCount(context)) {
        add(Text::LegendContour, Text::LegendContourEvery, rule.interval, false);
    }
    if (context.source.smooth != nullptr) {
        AddSmoothRemark(context, rows);
    }
}

void AddPointRows(const SheetContext& context, std::vector<LegendRow>& rows) {
    const PointSet& points = context.source.points;
    const auto add = [&](Text name, Colour colour, const std::string& beside) {
        rows.push_back({LegendSample::Dot, Word(context, name), {colour, 0.1, {}}, 0, beside});
    };
    if (context.plan.Shows(SheetLayer::Points)) {
        add(Text::LegendPoint, context.theme.point, "");
    }
    if (context.plan.Shows(SheetLayer::SpotHeights)) {
        add(Text::LegendSpotHeight, context.theme.point, context.HeightText(1));
    }
    if (context.plan.Shows(SheetLayer::Numbers)) {
        add(Text::LegendNumber, context.theme.number, points.labels.NameOrNumber(1));
    }
    const Index coded = context.plan.Shows(SheetLayer::Codes) ? FirstWithCode(points) : 0;
    if (coded > 0) {
        add(Text::LegendCode, context.theme.code, std::string(points.labels.Code(coded)));
    }
}

// Of a surface without levels.
std::string WholeRange(const SheetContext& context) {
    const Extent& heights = context.source.points.extentZ;
    const auto text = [&](double value) {
        return LevelText(context.source.rule, value, context.source.decimalSeparator);
    };
    return heights.max > heights.min ? text(heights.min) + " \xE2\x80\x93 " + text(heights.max)
                                     : text(heights.min);
}

std::string RangeText(const SheetContext& context, Index band) {
    if (LevelCount(context) == 0) {
        return WholeRange(context);
    }
    if (band == 0) {
        return "< " + context.TextOfLevel(1);
    }
    if (band == LevelCount(context)) {
        return "> " + context.TextOfLevel(band);
    }
    return context.TextOfLevel(band) + " \xE2\x80\x93 " + context.TextOfLevel(band + 1);
}

} // namespace

std::vector<LegendRow> SymbolRows(const SheetContext& context) {
    std::vector<LegendRow> rows;
    const SheetPlan& plan = context.plan;
    const SheetTheme& theme = context.theme;
    if (plan.Shows(SheetLayer::Contours) && HasLines(context.source)) {
        AddContourRows(context, rows);
    }
    if (context.source.difference != nullptr && context.source.difference->hasUnchanged &&
        plan.Shows(SheetLayer::Bands)) {
        rows.push_back({LegendSample::Band,
                        Word(context, Text::LegendUnchanged),
                        {0, 0, {}},
                        theme.ChangeColour(0)});
    }
    if (plan.Shows(SheetLayer::Hull)) {
        rows.push_back({LegendSample::Line, Word(context, Text::LegendHull), theme.HullInk()});
    }
    if (plan.Shows(SheetLayer::Breaklines) && HasBreaklines(context.source)) {
        rows.push_back(
            {LegendSample::Line, Word(context, Text::LayerBreaklines), theme.BreaklineInk()});
    }
    if (plan.Shows(SheetLayer::Triangles)) {
        rows.push_back({LegendSample::Triangles,
                        Word(context, Text::LegendTriangles),
                        {theme.triangle, theme.thinWidth, {}}});
    }
    if (context.source.points.count > 0) {
        AddPointRows(context, rows);
    }
    if (plan.Shows(SheetLayer::Grid)) {
        rows.push_back({plan.gridLines ? LegendSample::Line : LegendSample::Cross,
                        WithMetres(context, Text::LegendGrid, GridSpacing(context.layout)),
                        {theme.grid, theme.thinWidth, {}}});
    }
    return rows;
}

namespace {

// Raised ground, what lies on both sides of zero, lowered ground.
std::vector<LegendRow> ChangeRows(const SheetContext& context) {
    const Extent& heights = context.source.points.extentZ;
    if (context.source.difference->hasUnchanged && heights.max <= heights.min) {
        return {};
    }
    std::vector<LegendRow> rows;
    rows.push_back({LegendSample::None, context.source.difference->name});
    int side = 0;
    for (Index k = LastBand(context); k >= FirstBand(context); --k) {
        const int change = ChangeOf(context, k);
        if (change != side && change != 0) {
            rows.push_back({LegendSample::None,
                            Word(context, change > 0 ? Text::SectionFill : Text::SectionCut)});
        }
        side = change;
        rows.push_back({LegendSample::Band, RangeText(context, k),
                        k > 0 ? ContourInkOf(context, k) : SheetInk{0, 0, {}},
                        context.BandColour(k)});
    }
    return rows;
}

std::string VolumeText(const SheetContext& context, Text word, double volume) {
    return Word(context, word) + " " + (volume < 0 ? kMinusSign : "") +
           NumberText::FormatScreen(std::fabs(volume),
                                    std::fabs(volume) < 1 ? "#0.00####" : "#0.00",
                                    context.source.decimalSeparator) +
           " m\xC2\xB3";
}

} // namespace

std::vector<LegendRow> FigureRows(const SheetContext& context) {
    std::vector<LegendRow> rows;
    if (context.source.difference != nullptr && context.source.difference->volumes) {
        const VolumeFigures& volumes = *context.source.difference->volumes;
        rows.push_back({LegendSample::None, Word(context, Text::LegendVolumes)});
        constexpr double kMiddleStrength = 0.5;
        const auto add = [&](LegendSample sample, Text word, double volume, double part) {
            rows.push_back({sample,
                            VolumeText(context, word, volume),
                            {0, 0, {}},
                            context.theme.ChangeColour(part)});
        };
        add(LegendSample::Band, Text::SectionCut, volumes.cut, -kMiddleStrength);
        add(LegendSample::Band, Text::SectionFill, volumes.fill, kMiddleStrength);
        add(LegendSample::Remark, Text::SectionNet, volumes.net, 0);
    }
    return rows;
}

std::vector<LegendRow> HeightRows(const SheetContext& context) {
    std::vector<LegendRow> rows;
    const bool hasContours = context.plan.Shows(SheetLayer::Contours);
    const bool hasColouredLines = hasContours && context.theme.byHeight && LevelCount(context) > 0;
    if (!HasBands(context) && !hasColouredLines) {
        return rows;
    }
    if (context.source.difference != nullptr) {
        return ChangeRows(context);
    }
    rows.push_back({LegendSample::None, Word(context, Text::LegendHeights)});
    if (HasBands(context)) {
        for (Index k = LastBand(context); k >= FirstBand(context); --k) {
            const bool hasLine = hasContours && k > 0;
            rows.push_back({LegendSample::Band, RangeText(context, k),
                            hasLine ? ContourInkOf(context, k) : SheetInk{0, 0, {}},
                            context.BandColour(k)});
        }
    } else {
        for (Index k = LevelCount(context); k >= 1; --k) {
            rows.push_back({LegendSample::Line, context.TextOfLevel(k), ContourInkOf(context, k)});
        }
    }
    return rows;
}

bool HasBands(const SheetContext& context) {
    return context.plan.Shows(SheetLayer::Bands) &&
           (LevelCount(context) > 0 || context.source.difference != nullptr);
}

Index FirstBand(const SheetContext& context) {
    if (LevelCount(context) == 0) {
        return 0;
    }
    return IsTiny(context, context.source.levels[1].value - context.source.points.extentZ.min) ? 1
                                                                                               : 0;
}

Index LastBand(const SheetContext& context) {
    const Index count = LevelCount(context);
    if (count == 0) {
        return 0;
    }
    const double above = context.source.points.extentZ.max - context.source.levels[count].value;
    return IsTiny(context, above) ? count - 1 : count;
}

SheetInk ContourInkOf(const SheetContext& context, Index level) {
    return context.theme.ContourInk(context.IsIndex(level), context.PartOf(level));
}

} // namespace terravo

#include "sheet/MakeSheet.h"

#include "sheet/DifferenceStyle.h"
#include "sheet/GridLines.h"
#include "survey/FileDecimals.h"
#include "util/NumberText.h"

#include <algorithm>
#include <cmath>

namespace terravo {
namespace {

void AddPaper(const SheetContext& context, SheetScene& scene) {
    const SheetBox& paper = context.layout.paper;
    const SheetPoint corners[] = {{paper.left, paper.top},
                                  {paper.right, paper.top},
                                  {paper.right, paper.bottom},
                                  {paper.left, paper.bottom}};
    scene.AddArea(SheetLayer::Paper, context.theme.paper, corners);
}

using LayerFunction = void (*)(const SheetContext&, SheetScene&);

struct LayerStep {
    SheetLayer layer;
    LayerFunction add;
};

// The hull comes before the contours, whose values keep clear of it.
constexpr LayerStep kSteps[] = {
    {SheetLayer::Paper, AddPaper},           {SheetLayer::Bands, AddBands},
    {SheetLayer::Triangles, AddTriangles},   {SheetLayer::Hull, AddHull},
    {SheetLayer::Breaklines, AddBreaklines}, {SheetLayer::Contours, AddContours},
    {SheetLayer::Points, AddPoints},         {SheetLayer::Frame, AddFrameAndGrid},
    {SheetLayer::TitleBlock, AddTitleBlock}, {SheetLayer::Legend, AddLegend},
    {SheetLayer::ScaleBar, AddScaleBar},     {SheetLayer::NorthArrow, AddNorthArrow}};

// Points that lines have added have digits that nobody measured.
std::string HeightForm(const SheetSource& source) {
    constexpr int kMostDecimals = 3;
    const int decimals = std::min(FileDecimals(source.points.z, source.surveyed), kMostDecimals);
    return decimals == 0 ? "#0" : "#0." + std::string(static_cast<std::size_t>(decimals), '0');
}

} // namespace

double SheetContext::PartOf(Index level) const {
    const Index count = source.levels.UpperBound();
    return count > 1 ? static_cast<double>(level - 1) / (count - 1) : 0.5;
}

bool SheetContext::IsIndex(Index level) const {
    if (source.difference != nullptr) {
        return source.levels[level].value == 0;
    }
    return IsIndexLevel(source.rule, source.levels, level, plan.indexEvery);
}

std::string SheetContext::TextOfLevel(Index level) const {
    const double value = source.levels[level].value;
    std::string text = LevelText(source.rule, value, source.decimalSeparator);
    if (source.difference == nullptr || value == 0) {
        return text;
    }
    return value > 0 ? '+' + text : kMinusSign + text.substr(1);
}

Colour SheetContext::BandColour(Index band) const {
    if (source.difference != nullptr) {
        return ChangeBandColour(*this, band);
    }
    const Index count = source.levels.UpperBound();
    return theme.BandColour(count > 0 ? static_cast<double>(band) / count : 0.5);
}

Colour SheetContext::RegionColour(Index region) const {
    if (source.difference == nullptr) {
        return BandColour(region - 1);
    }
    const Array1<LevelRegion>& regions = *source.regions;
    const Extent& heights = source.points.extentZ;
    return ChangeColourBetween(*this, std::max(heights.min, regions[region].value),
                               region < regions.UpperBound()
                                   ? std::min(heights.max, regions[region + 1].value)
                                   : heights.max);
}

std::string SheetContext::HeightText(Index point) const {
    return NumberText::FormatScreen(source.points.z[point], heightForm, source.decimalSeparator);
}

std::string SheetContext::ShortNumber(double value) const {
    return ShortNumberText(value, source.decimalSeparator);
}

SheetScene MakeSheet(const SheetPlan& plan, const SheetSource& source, const StopToken& stop) {
    const SheetTheme* found = FindTheme(plan.theme);
    const SheetTheme& usual = found != nullptr ? *found : SheetThemes()[0];
    const SheetTheme theme = source.difference != nullptr ? DifferenceTheme(usual) : usual;
    const SheetLayout layout = LayOut(plan, source.points);
    const SheetContext context{plan, source, layout, theme, HeightForm(source)};
    SheetScene scene;
    scene.width = layout.paper.right;
    scene.height = layout.paper.bottom;
    scene.map = layout.map;
    scene.scale = layout.scale;
    scene.remarks = layout.remarks;
    double done = 0;
    for (const LayerStep& step : kSteps) {
        if (!stop.GoesOn("sheet", done++ / static_cast<double>(std::size(kSteps)))) {
            return scene;
        }
        if (plan.Shows(step.layer)) {
            step.add(context, scene);
        }
    }
    AddPointTexts(context, scene); // they keep out of each other's way
    return scene;
}

} // namespace terravo

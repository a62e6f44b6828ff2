// A sheet from a plan and a survey.
//
// Data: the plan; the points, their triangles, levels and contours, made by others and only looked
// at. Method: first the layout, then one function a layer adds its elements to the scene; each has
// a file of its own. Values along lines are placed before the lines are added, because they
// interrupt them.
#pragma once

#include "analysis/Volumes.h"
#include "contour/ContourSet.h"
#include "contour/LevelRegions.h"
#include "contour/LevelRule.h"
#include "contour/smoothing/SmoothContours.h"
#include "sheet/SheetLayout.h"
#include "sheet/SheetTheme.h"
#include "sheet/TextMeasure.h"
#include "survey/surface/LiveSurface.h"
#include "util/StopToken.h"
#include "util/TextCatalogue.h"

namespace terravo {

/// Of a change in height: as wide as its plus sign.
inline constexpr const char* kMinusSign = "\xE2\x88\x92";

/// That the heights of a sheet are how much the ground has changed.
struct SheetDifference {
    std::string name; // of what is subtracted from what, heads the heights in the legend
    std::optional<VolumeFigures> volumes; // for the legend
    bool hasUnchanged = false;            // ground without any change
};

/// What a sheet shows. All of it outlives the call.
struct SheetSource {
    const PointSet& points;
    Index surveyed; // points 1..surveyed are shown as points; the others are corners alone
    const TriangleList& triangles;
    const LevelRule& rule;
    const LevelSet& levels;     // made by the rule
    const ContourSet& contours; // of these levels
    const TextCatalogue& texts;
    const TextMeasure& measure;
    /// For bands: the whole surface, then the ground at or above each level. Null: no bands.
    const Array1<LevelRegion>* regions = nullptr;
    char decimalSeparator = '.';
    const ShapedSurface* shaped = nullptr; // where lines are laid into the surface
    /// Of these levels, one each: drawn as curves in the place of the contours. Null: the contours.
    const SmoothSet* smooth = nullptr;
    /// Of the sheet of a difference, whose regions may have borders beside those of the levels.
    const SheetDifference* difference = nullptr;
};

/// What the functions of the layers work with.
struct SheetContext {
    const SheetPlan& plan;
    const SheetSource& source;
    const SheetLayout& layout;
    const SheetTheme& theme;
    std::string heightForm; // of the heights of points, for NumberText::FormatScreen

    /// 0 for the lowest level, 1 for the highest.
    [[nodiscard]] double PartOf(Index level) const;
    [[nodiscard]] bool IsIndex(Index level) const;
    [[nodiscard]] std::string TextOfLevel(Index level) const;
    /// The fill of a band: number 0 lies below the lowest level, number k begins at level k.
    [[nodiscard]] Colour BandColour(Index band) const;
    /// The fill of what lies above the border of a region.
    [[nodiscard]] Colour RegionColour(Index region) const;
    /// The height of a point, with as many decimals as the points have, 3 at most.
    [[nodiscard]] std::string HeightText(Index point) const;
    /// An interval, a distance, a scale: 6 decimals at most, more for what is less than 0.001.
    [[nodiscard]] std::string ShortNumber(double value) const;
};

/// Whether lines that are no rings run through what is shown of the surface.
bool HasBreaklines(const SheetSource& source);

/// Makes the sheet.
/// @param stop  stage "sheet".
/// @return a sheet that lacks layers when it was stopped.
SheetScene MakeSheet(const SheetPlan& plan, const SheetSource& source,
                     const StopToken& stop = StopToken());

/// A changed part of the surface, to be drawn over a sheet: the surface itself, without values and
/// texts, on paper that covers what was there.
/// @param source  whose points, triangles, contours and regions are those of the patch.
/// @param layout  of the sheet.
SheetScene MakeSheetPatch(const SheetPlan& plan, const SheetSource& source,
                          const SheetLayout& layout, const SurfacePatch& patch);

/// The layers, each of its own file. They are called in the order of the drawing only by habit.
void AddContours(const SheetContext& context, SheetScene& scene); // lines, index lines, labels
void AddBands(const SheetContext& context, SheetScene& scene);
void AddTriangles(const SheetContext& context, SheetScene& scene);
void AddHull(const SheetContext& context, SheetScene& scene);
void AddBreaklines(const SheetContext& context, SheetScene& scene);
void AddPoints(const SheetContext& context, SheetScene& scene);
void AddPointTexts(const SheetContext& context, SheetScene& scene); // heights, numbers, codes
void AddFrameAndGrid(const SheetContext& context, SheetScene& scene);
void AddTitleBlock(const SheetContext& context, SheetScene& scene);
void AddLegend(const SheetContext& context, SheetScene& scene);
void AddScaleBar(const SheetContext& context, SheetScene& scene);
void AddNorthArrow(const SheetContext& context, SheetScene& scene);

} // namespace terravo

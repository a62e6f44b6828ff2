// The colours and line widths of a sheet.
//
// Data: a few themes, each a set of plain values. Method: every colour of a theme is chosen for its
// paper; contours have one colour, or that of their height.
#pragma once

#include "plot2d/Colour.h"
#include "sheet/SheetScene.h"

#include <span>
#include <string>
#include <string_view>

namespace terravo {

/// Across the dot of a survey point, millimetres.
inline constexpr double kPointDot = 0.7;

struct SheetTheme {
    std::string name;
    Colour paper = kWhite;
    Colour text = kBlack;
    Colour quietText = RGB(90, 90, 90); // names beside what they name
    Colour contour = kBlack;
    Colour index = kBlack;
    bool byHeight = false; // contours have the colours of their heights instead
    Colour grid = kGrey;
    Colour triangle = kGrey;
    Colour hull = kBlack;
    Colour breakline = RGB(150, 20, 60);
    Colour point = kBlack; // and its height
    Colour number = kBlack;
    Colour code = kBlack;
    double bandLightness = 1; // of the band colours; less on dark paper
    bool greyBands = false;

    // Millimetres.
    double contourWidth = 0.18;
    double indexWidth = 0.35;
    double thinWidth = 0.09; // triangles, grid
    double frameWidth = 0.35;

    [[nodiscard]] SheetInk HullInk() const { return {hull, 0.25, {2, 1}}; }
    [[nodiscard]] SheetInk BreaklineInk() const { return {breakline, 0.3, {}}; }
    [[nodiscard]] SheetInk ContourInk(bool isIndex, double partOfHeight) const;
    /// The fill of a band. @param partOfHeight  0 the lowest, 1 the highest band.
    [[nodiscard]] Colour BandColour(double partOfHeight) const;
    /// The fill of ground that was lowered or raised. Where bands are grey, the darker the lower.
    /// @param part  -1 lowered most, 0 unchanged, 1 raised most.
    [[nodiscard]] Colour ChangeColour(double part) const;
};

/// "brown", "height", "black", "dark".
std::span<const SheetTheme> SheetThemes();
/// Null for an unknown name.
const SheetTheme* FindTheme(std::string_view name);

} // namespace terravo

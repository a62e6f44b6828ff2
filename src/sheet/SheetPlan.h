// What a sheet is to be: its paper, its scale, its layers, its style. Nothing of what is on it.
//
// Data: plain values, which a window changes, a command line gives and a file keeps. Method: what
// is left open (orientation, scale, place) is decided when the sheet is made, by the survey.
#pragma once

#include "contour/smoothing/SmoothContours.h"
#include "sheet/SheetScene.h"
#include "triangulation/TriangleList.h"

#include <bitset>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace terravo {

/// A paper by its name; the shorter side comes first. Millimetres.
struct PaperSize {
    std::string name;
    double width = 210;
    double height = 297;

    bool operator==(const PaperSize&) const = default;
};

/// A4 to A0, Letter, Tabloid.
std::span<const PaperSize> PaperSizes();
/// By its name in any case, or of one's own: "500x700", millimetres from 50 to 5000.
std::optional<PaperSize> ParsePaperSize(std::string_view text);

/// Which lines have their value.
enum class SheetLabels : unsigned char { None, IndexLines, All };

/// The layers that a user switches; the others are always there.
using SheetLayers = std::bitset<kSheetLayers>;

/// The texts of the title block; an empty one has no line, or what the program knows itself.
struct SheetTexts {
    std::string title; // empty: the name of the point file
    std::string project;
    std::string date;
    std::string datum; // of the heights
    std::string author;

    bool operator==(const SheetTexts&) const = default;
};

struct SheetPlan {
    PaperSize paper = PaperSizes()[0];
    std::optional<bool> landscape;   // none: by the shape of the survey
    std::optional<double> scale;     // the N of 1:N; none: the largest usual one that fits
    double rotation = 0;             // degrees, counter-clockwise turn of the map on the paper
    std::optional<PlanPoint> centre; // data units, in the middle of the map; none: of the survey
    SheetLayers layers = DefaultLayers();
    std::string theme = "brown";
    int indexEvery = 5;                                             // multiples of the interval
    std::optional<SmoothingOptions> smoothing = SmoothingOptions(); // none: lines as they are cut
    SheetLabels labels = SheetLabels::IndexLines;
    double labelSpacing = 120; // millimetres along a line
    bool labelsUphill = false; // else they are never upside down
    double textHeight = 1.8;   // of a capital letter, millimetres
    bool gridLines = false;    // else crosses
    SheetTexts texts;

    [[nodiscard]] bool Shows(SheetLayer layer) const {
        return layers[static_cast<std::size_t>(layer)];
    }
    void Show(SheetLayer layer, bool on) { layers[static_cast<std::size_t>(layer)] = on; }

    static SheetLayers DefaultLayers();

    bool operator==(const SheetPlan&) const = default;
};

/// The layers that can be switched, in the order in which they are listed. IndexContours and Labels
/// are not among them: they go with Contours.
std::span<const SheetLayer> SwitchableLayers();

/// "contours,points,grid": any of NameOf() of the switchable layers.
/// @return nothing when one is unknown.
std::optional<SheetLayers> ParseLayers(std::string_view list);

/// The usual scale, 1, 2, 2.5 or 5 times a power of ten, that is no larger than wanted: N from 1:N.
double UsualScale(double atLeast);

} // namespace terravo

// Draws a sheet with a painter, on whatever device it has.
//
// Data: a finished sheet in millimetres. Method: the painter's units are millimetres, so screen,
// picture, page and printer show the same; the layers come in their order. Vertices nearer to each
// other than the device can show are left out. Pages get curves as such; in pixels nobody can tell
// them from the straight lines that the scene has for them. A window, which draws parts of the same
// sheet again and again, takes lines, areas and marks from an index, at one level of detail.
#pragma once

#include "plot2d/SheetFont.h"
#include "sheet/SceneIndex.h"
#include "sheet/SheetScene.h"
#include "sheet/TextMeasure.h"
#include "util/StopToken.h"

#include <QColor>
#include <QPainter>

namespace terravo {

/// Texts as the painter writes them.
class SheetTextMeasure : public TextMeasure {
public:
    [[nodiscard]] double Width(const std::string& text, double height, bool bold) const override {
        return SheetTextWidth(PrintableText(text), bold) * height;
    }
};

struct SheetPaintWish {
    /// Vertices this near to the last one may be left out, millimetres.
    double finest = 0;
    /// Lines are at least this wide, millimetres: about a pixel of a screen.
    double thinnest = 0;
    /// Curves as cubics: for what can be enlarged.
    bool curves = false;
    /// Only what may be seen in here has to be drawn.
    SheetBox visible{-1e9, -1e9, 1e9, 1e9};
    /// Of the sheet, for a device of pixels; else everything is taken from the sheet itself.
    const SceneDetail* detail = nullptr;
    /// Only for a moment, while something moves.
    bool coarse = false;
    /// The first layer that is drawn, and the one behind the last.
    std::size_t fromLayer = 0;
    std::size_t toLayer = kSheetLayers;
    /// Asked before each element, stage "sheet"; a sheet that it stops lacks the rest.
    const StopToken* stop = nullptr;
};

/// @param painter  its units are millimetres from the upper left corner of the paper. Its state is
///                 kept.
void PaintSheet(QPainter& painter, const SheetScene& scene, const SheetPaintWish& wish = {});

/// The colour as Qt's.
inline QColor SheetColour(Colour colour) {
    return {RedOf(colour), GreenOf(colour), BlueOf(colour)};
}

} // namespace terravo

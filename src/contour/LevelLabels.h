// Labels of the level lines: which segment end carries the text, and the text itself.
//
// Data: one box a level, all zero until it is placed. Method: a level's label goes to its first
// segment end where the box lies on the surface and clear of every other box. Unplaced boxes are
// all zero, so a label straddling the map origin is refused.
#pragma once

#include "contour/LevelSet.h"
#include "plot2d/DrawSurface.h"

namespace terravo {

struct LabelBox {
    double width = 0; // map units; 0 for a level without a label
    double height = 0;
    float left = 0;
    float right = 0;
    float bottom = 0;
    float top = 0;
    bool placed = false;
    double textX = 0; // where the text begins, with all digits: the box keeps only seven
    double textY = 0;
};

class LevelLabels {
public:
    /// Sets the label font on the surface when any level has a label, and sizes the boxes; label
    /// sizes below 8 points are raised in the records. The caller restores the font.
    LevelLabels(DrawSurface& surface, LevelSet& levels);

    /// True when at least one level has a label.
    [[nodiscard]] bool AreOn() const { return on_; }

    /// Places the label of level k at (x, y) unless it is placed already, does not fit on the
    /// surface or touches another box.
    void PlaceLabel(Index k, double x, double y);

    /// Writes the placed labels in level order.
    void DrawLabels();

    [[nodiscard]] const Array1<LabelBox>& Boxes() const { return boxes_; }

private:
    [[nodiscard]] bool IsClear(double x, float right, double y, float bottom) const;

    DrawSurface& surface_;
    LevelSet& levels_;
    Array1<LabelBox> boxes_;
    Array1<Index> placed_; // levels, in the order of placing
    bool on_ = false;
};

/// Restores font, text colour and text background of a surface on every way out.
class FontGuard {
public:
    explicit FontGuard(DrawSurface& surface)
        : surface_(surface), name_(surface.FontName()), size_(surface.FontSize()),
          bold_(surface.FontBold()), foreColor_(surface.ForeColor()),
          transparent_(surface.FontTransparent()) {}
    FontGuard(const FontGuard&) = delete;
    FontGuard& operator=(const FontGuard&) = delete;
    ~FontGuard() {
        surface_.SetFontName(name_);
        surface_.SetFontSize(size_);
        surface_.SetFontBold(bold_);
        surface_.SetForeColor(foreColor_);
        surface_.SetFontTransparent(transparent_);
    }

private:
    DrawSurface& surface_;
    std::string name_;
    float size_;
    bool bold_;
    Colour foreColor_;
    bool transparent_;
};

} // namespace terravo

// What drawing surfaces without pixels have in common.
//
// Data: the paper; measured fonts. Method: texts are measured with the fonts of a picture of
// pixels, so the layout is that of a picture of as many pixels; colours are those of the picture or
// those that can be read on white paper.
#pragma once

#include "plot2d/DrawSurface.h"

#include <QColor>
#include <QFontMetrics>
#include <QImage>

#include <vector>

namespace terravo {

/// What a picture is drawn on. On white paper the background is left out, black and white change
/// places, and strokes and texts of a light colour are darkened in their hue so that they can be
/// read. The insides of areas and marks keep their colours.
enum class Paper { Black, White };

class VectorSurface : public DrawSurface {
protected:
    /// An area of width x height pixels at kDotsPerInch * pixelRatio.
    VectorSurface(int width, int height, double pixelRatio, Paper paper);

    /// Colours of insides, and of strokes and texts, on this paper.
    [[nodiscard]] QColor Shown(Colour colour) const;
    [[nodiscard]] QColor ShownStroke(Colour colour) const;
    /// True for the background on white paper, which is left out.
    [[nodiscard]] bool IsLeftOut(Colour colour) const {
        return paper_ == Paper::White && colour == BackColor();
    }
    /// Of a pen one pixel wide; wider ones draw unbroken lines.
    [[nodiscard]] static std::span<const int> Dashes(const Pen& pen) {
        return pen.width == 1 ? DashLengths(pen.style) : std::span<const int>();
    }
    [[nodiscard]] const QFontMetrics& Metrics(const Font& font) const;

    /// Paints nothing: where a flood ends only pixels can tell. Maps and 3D pictures fill polygons.
    void FloodPixels(PixelPoint seed, Colour border, Colour colour, int drawMode) override;
    [[nodiscard]] TextSize MeasurePixels(std::string_view utf8, const Font& font) const override;
    void RefreshPixels() override {}

    /// Stands for the picture whose layout this is.
    [[nodiscard]] const QImage& Measuring() const { return measuring_; }

private:
    struct MeasuredFont {
        Font key;
        QFontMetrics metrics;
    };

    Paper paper_;
    QImage measuring_;
    mutable std::vector<MeasuredFont> fonts_;
};

} // namespace terravo

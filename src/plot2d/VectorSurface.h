// What drawing surfaces without pixels have in common.
//
// Data: the paper; measured fonts. Method: texts are measured with the fonts of a picture of
// pixels, so the layout is that of a picture of as many pixels, and strokes run through the middles
// of the pixels that it would paint; colours are those of the picture or those that can be read on
// white paper. A format adds five elements. Their places are rounded to a thousandth of a pixel:
// on the largest paper that is a micrometre.
#pragma once

#include "plot2d/DrawSurface.h"

#include <QColor>
#include <QFontMetrics>
#include <QImage>
#include <QRectF>

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

    /// What a line or an outline is drawn with.
    struct Outline {
        QColor colour;
        int width = 1;                    // pixels
        std::span<const int> dashes = {}; // see DashLengths
    };
    /// What an area is painted with.
    struct Look {
        std::optional<QColor> inside = {};
        std::optional<Outline> outline = {};
    };
    struct Text {
        PixelPosition start; // of the base line
        QString characters;
        Font font;
        int width = 0; // pixels, as measured
        QColor colour;
    };

    // The elements. The middle of a pixel has whole coordinates; lines without dashes have round
    // ends, corners are round.
    virtual void AddLine(PixelPosition a, PixelPosition b, const Outline& outline) = 0;
    virtual void AddRect(const QRectF& area, const QColor& inside) = 0;
    virtual void AddCircle(PixelPosition centre, double radius, const Look& look) = 0;
    /// Closed, by the even-odd rule. @param counts  corners of each; not negative.
    virtual void AddPolygons(std::span<const PixelPosition> corners,
                             std::span<const std::int32_t> counts, const Look& look) = 0;
    virtual void AddText(const Text& text) = 0;

    /// Stands for the picture whose layout this is.
    [[nodiscard]] const QImage& Measuring() const { return measuring_; }

private:
    struct MeasuredFont {
        Font key;
        QFontMetrics metrics;
    };

    // Every drawing mode copies: a vector file has no pixels to combine with.
    void StrokePixels(PixelPosition a, PixelPosition b, const Pen& pen) override;
    void SetPixels(PixelPosition centre, const Pen& pen) override;
    void FillPixelRect(PixelPosition a, PixelPosition b, Colour colour, int drawMode) override;
    void PaintPixelPolygons(std::span<const PixelPosition> corners,
                            std::span<const std::int32_t> counts, std::optional<Colour> inside,
                            const Pen& pen) override;
    void FillPixelDisc(PixelPosition centre, int radius, std::optional<Colour> inside, Colour rim,
                       int drawMode) override;
    // Paints nothing: where a flood ends only pixels can tell. Maps and 3D pictures fill polygons.
    void FloodPixels(PixelPoint seed, Colour border, Colour colour, int drawMode) override;
    void DrawTextPixels(PixelPosition topLeft, std::string_view utf8, const Font& font,
                        Colour colour, std::optional<Colour> background) override;
    [[nodiscard]] TextSize MeasurePixels(std::string_view utf8, const Font& font) const override;
    void RefreshPixels() override {}

    [[nodiscard]] QColor Shown(Colour colour) const;
    [[nodiscard]] QColor ShownStroke(Colour colour) const;
    [[nodiscard]] std::optional<QColor> ShownInside(std::optional<Colour> colour) const;
    [[nodiscard]] const QFontMetrics& Metrics(const Font& font) const;

    Paper paper_;
    QImage measuring_;
    std::vector<PixelPosition> corners_; // of one call, rounded
    mutable std::vector<MeasuredFont> fonts_;
};

} // namespace terravo

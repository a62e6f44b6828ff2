// A drawing surface that hands lines, polygons, discs and texts to a QPainter as such: for PDF
// files and printers.
//
// Data: a painter whose coordinates are the pixels of the picture, wherever its device puts them.
// Method: the layout is that of a picture of as many pixels, since texts are measured with the same
// fonts; strokes run through the middles of the pixels that a picture would paint, and a text is
// stretched to the width that it was measured at.
#pragma once

#include "plot2d/VectorSurface.h"

#include <QPainter>

#include <optional>

namespace terravo {

class PainterSurface : public VectorSurface {
public:
    /// An area of width x height pixels at kDotsPerInch * pixelRatio.
    /// @param painter  active, with the area's pixels as its coordinates; outlives the surface, and
    ///                 its pen, brush and font are changed.
    PainterSurface(QPainter& painter, int width, int height, double pixelRatio, Paper paper);

protected:
    // Every drawing mode copies: a vector file has no pixels to combine with.
    void StrokePixels(PixelPoint a, PixelPoint b, const Pen& pen) override;
    void SetPixels(PixelPoint centre, const Pen& pen) override;
    void FillPixelRect(PixelPoint a, PixelPoint b, Colour colour, int drawMode) override;
    void FillPixelPolygons(std::span<const PixelPoint> corners,
                           std::span<const std::int32_t> counts, Colour colour,
                           int drawMode) override;
    void PaintPixelPolygons(std::span<const PixelPoint> corners,
                            std::span<const std::int32_t> counts, std::optional<Colour> inside,
                            const Pen& pen) override;
    void FillPixelDisc(PixelPoint centre, int radius, std::optional<Colour> inside, Colour rim,
                       int drawMode) override;
    void DrawTextPixels(PixelPoint topLeft, std::string_view utf8, const Font& font, Colour colour,
                        std::optional<Colour> background) override;

private:
    void UsePen(const Pen& pen, bool asInside = false);
    void UseBrush(std::optional<Colour> colour);
    void DrawPolygons(std::span<const PixelPoint> corners, std::span<const std::int32_t> counts);

    QPainter& painter_;
    std::optional<Pen> pen_; // of the painter, drawn as an inside or as a stroke
    bool penAsInside_ = false;
};

} // namespace terravo

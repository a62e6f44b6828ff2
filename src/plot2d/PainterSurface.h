// A drawing surface that hands lines, polygons, discs and texts to a QPainter as such: for PDF
// files and printers.
//
// Data: a painter whose coordinates are the pixels of the picture, wherever its device puts them.
// Method: the layout is that of a picture of as many pixels, since texts are measured with the same
// fonts; a text is stretched to the width that it was measured at.
#pragma once

#include "plot2d/VectorSurface.h"

#include <QPainter>

namespace terravo {

class PainterSurface : public VectorSurface {
public:
    /// An area of width x height pixels at kDotsPerInch * pixelRatio.
    /// @param painter  active, with the area's pixels as its coordinates; outlives the surface, and
    ///                 its pen, brush and font are changed.
    PainterSurface(QPainter& painter, int width, int height, double pixelRatio, Paper paper);

protected:
    void AddLine(PixelPosition a, PixelPosition b, const Outline& outline) override;
    void AddRect(const QRectF& area, const QColor& inside) override;
    void AddCircle(PixelPosition centre, double radius, const Look& look) override;
    void AddPolygons(std::span<const PixelPosition> corners, std::span<const std::int32_t> counts,
                     const Look& look) override;
    void AddText(const Text& text) override;

private:
    void UseOutline(const std::optional<Outline>& outline);
    void UseLook(const Look& look);

    QPainter& painter_;
    std::optional<Outline>
        outline_; // of the painter's pen; none before the first and without a pen
};

} // namespace terravo

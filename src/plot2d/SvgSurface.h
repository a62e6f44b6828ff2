// A drawing surface that writes the elements of an SVG as they are drawn.
//
// Data: the writer of the document. Method: one element for each line, polygon, disc and text, with
// what it is drawn with; nothing is kept, so a map of a million triangles takes no memory.
#pragma once

#include "plot2d/VectorSurface.h"

#include <QXmlStreamWriter>

namespace terravo {

class SvgSurface : public VectorSurface {
public:
    /// Begins the document, an area of width x height pixels at kDotsPerInch * pixelRatio.
    /// @param xml  with its device; outlives the surface. The caller ends the document.
    SvgSurface(QXmlStreamWriter& xml, int width, int height, double pixelRatio, Paper paper,
               const QString& title);

protected:
    void AddLine(PixelPosition a, PixelPosition b, const Outline& outline) override;
    void AddRect(const QRectF& area, const QColor& inside) override;
    void AddCircle(PixelPosition centre, double radius, const Look& look) override;
    void AddPolygons(std::span<const PixelPosition> corners, std::span<const std::int32_t> counts,
                     const Look& look) override;
    void AddText(const Text& text) override;

private:
    void WriteNumber(const char* name, double value);
    void WriteColour(const char* name, const QColor& colour);
    void WriteOutline(const Outline& outline);
    void WriteLook(const Look& look);

    QXmlStreamWriter& xml_;
};

} // namespace terravo

// A drawing surface that writes the elements of an SVG as they are drawn.
//
// Data: the writer of the document. Method: one element for each line, polygon, disc and text, with
// what it is drawn with; nothing is kept, so a map of a million triangles takes no memory.
#pragma once

#include "plot2d/VectorSurface.h"

#include <QXmlStreamWriter>

#include <optional>

namespace terravo {

class SvgSurface : public VectorSurface {
public:
    /// Begins the document, an area of width x height pixels at kDotsPerInch * pixelRatio.
    /// @param xml  with its device; outlives the surface. The caller ends the document.
    SvgSurface(QXmlStreamWriter& xml, int width, int height, double pixelRatio, Paper paper,
               const QString& title);

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
    void WriteNumber(const char* name, double value);
    void WriteColour(const char* name, const QColor& colour);
    void WriteStroke(const Pen& pen, bool asInside);
    void WriteRect(double x, double y, double width, double height, const QColor& colour);
    void WriteCircle(PixelPoint centre, double radius);
    void WritePath(std::span<const PixelPoint> corners, std::span<const std::int32_t> counts);

    QXmlStreamWriter& xml_;
};

} // namespace terravo

#include "plot2d/SvgSurface.h"

#include "plot2d/SurfaceFont.h"

#include <algorithm>

namespace terravo {
namespace {

constexpr double kMillimetresPerInch = 25.4;
constexpr double kHalf = 0.5; // the origin of the drawing is the middle of a pixel

QString PlaceText(PixelPoint p) {
    return QString::number(p.x) + QLatin1Char(',') + QString::number(p.y);
}

} // namespace

SvgSurface::SvgSurface(QXmlStreamWriter& xml, int width, int height, double pixelRatio, Paper paper,
                       const QString& title)
    : VectorSurface(width, height, pixelRatio, paper), xml_(xml) {
    const auto millimetres = [this](int pixels) {
        return QString::number(pixels * kMillimetresPerInch / DotsPerInch()) + QStringLiteral("mm");
    };
    xml_.writeStartDocument();
    xml_.writeStartElement(QStringLiteral("svg"));
    xml_.writeDefaultNamespace(QStringLiteral("http://www.w3.org/2000/svg"));
    xml_.writeAttribute(QStringLiteral("width"), millimetres(width));
    xml_.writeAttribute(QStringLiteral("height"), millimetres(height));
    xml_.writeAttribute(QStringLiteral("viewBox"),
                        QStringLiteral("0 0 %1 %2").arg(width).arg(height));
    xml_.writeTextElement(QStringLiteral("title"), title);
    xml_.writeStartElement(QStringLiteral("g"));
    xml_.writeAttribute(QStringLiteral("transform"), QStringLiteral("translate(0.5,0.5)"));
    xml_.writeAttribute(QStringLiteral("fill"), QStringLiteral("none"));
    xml_.writeAttribute(QStringLiteral("fill-rule"), QStringLiteral("evenodd"));
    xml_.writeAttribute(QStringLiteral("stroke-linecap"), QStringLiteral("round"));
    xml_.writeAttribute(QStringLiteral("stroke-linejoin"), QStringLiteral("round"));
}

void SvgSurface::WriteNumber(const char* name, double value) {
    xml_.writeAttribute(QLatin1String(name), QString::number(value));
}

void SvgSurface::WriteColour(const char* name, const QColor& colour) {
    xml_.writeAttribute(QLatin1String(name), colour.name());
}

// The outline of an area in its own colour closes the seam to its neighbour, so it is shown as its
// inside is.
void SvgSurface::WriteStroke(const Pen& pen, bool asInside) {
    WriteColour("stroke", asInside ? Shown(pen.colour) : ShownStroke(pen.colour));
    if (pen.width != 1) {
        WriteNumber("stroke-width", pen.width);
    }
    const std::span<const int> dashes = Dashes(pen);
    if (!dashes.empty()) {
        QStringList lengths;
        for (const int length : dashes) {
            lengths.append(QString::number(length));
        }
        xml_.writeAttribute(QStringLiteral("stroke-dasharray"), lengths.join(QLatin1Char(',')));
        xml_.writeAttribute(QStringLiteral("stroke-linecap"), QStringLiteral("butt"));
    }
}

void SvgSurface::WriteRect(double x, double y, double width, double height, const QColor& colour) {
    xml_.writeEmptyElement(QStringLiteral("rect"));
    WriteNumber("x", x - kHalf);
    WriteNumber("y", y - kHalf);
    WriteNumber("width", width);
    WriteNumber("height", height);
    WriteColour("fill", colour);
}

void SvgSurface::WriteCircle(PixelPoint centre, double radius) {
    xml_.writeEmptyElement(QStringLiteral("circle"));
    WriteNumber("cx", centre.x);
    WriteNumber("cy", centre.y);
    WriteNumber("r", radius);
}

void SvgSurface::WritePath(std::span<const PixelPoint> corners,
                           std::span<const std::int32_t> counts) {
    QString path;
    std::size_t start = 0;
    for (const std::int32_t count : counts) {
        const auto polygon = corners.subspan(start, static_cast<std::size_t>(count));
        for (std::size_t i = 0; i < polygon.size(); ++i) {
            path += QLatin1Char(i == 0 ? 'M' : 'L') + PlaceText(polygon[i]);
        }
        path += polygon.empty() ? QString() : QStringLiteral("Z");
        start += polygon.size();
    }
    xml_.writeEmptyElement(QStringLiteral("path"));
    xml_.writeAttribute(QStringLiteral("d"), path);
}

void SvgSurface::StrokePixels(PixelPoint a, PixelPoint b, const Pen& pen) {
    if (a == b && pen.width == 1) {
        return; // its only pixel is the one that is left out
    }
    xml_.writeEmptyElement(QStringLiteral("polyline"));
    xml_.writeAttribute(QStringLiteral("points"), PlaceText(a) + QLatin1Char(' ') + PlaceText(b));
    WriteStroke(pen, false);
}

void SvgSurface::SetPixels(PixelPoint centre, const Pen& pen) {
    if (pen.width == 1) {
        WriteRect(centre.x, centre.y, 1, 1, ShownStroke(pen.colour));
        return;
    }
    WriteCircle(centre, pen.width / 2.0);
    WriteColour("fill", ShownStroke(pen.colour));
}

void SvgSurface::FillPixelRect(PixelPoint a, PixelPoint b, Colour colour, int /*drawMode*/) {
    if (!IsLeftOut(colour)) {
        WriteRect(std::min(a.x, b.x), std::min(a.y, b.y), std::abs(b.x - a.x) + 1.0,
                  std::abs(b.y - a.y) + 1.0, Shown(colour));
    }
}

void SvgSurface::FillPixelPolygons(std::span<const PixelPoint> corners,
                                   std::span<const std::int32_t> counts, Colour colour,
                                   int /*drawMode*/) {
    WritePath(corners, counts);
    WriteColour("fill", Shown(colour));
}

void SvgSurface::PaintPixelPolygons(std::span<const PixelPoint> corners,
                                    std::span<const std::int32_t> counts,
                                    std::optional<Colour> inside, const Pen& pen) {
    WritePath(corners, counts);
    if (inside) {
        WriteColour("fill", Shown(*inside));
    }
    WriteStroke(pen, inside == pen.colour);
}

void SvgSurface::FillPixelDisc(PixelPoint centre, int radius, std::optional<Colour> inside,
                               Colour rim, int /*drawMode*/) {
    WriteCircle(centre, radius);
    if (inside) {
        WriteColour("fill", Shown(*inside));
    }
    WriteColour("stroke", ShownStroke(rim));
}

void SvgSurface::DrawTextPixels(PixelPoint topLeft, std::string_view utf8, const Font& font,
                                Colour colour, std::optional<Colour> background) {
    const TextSize size = MeasurePixels(utf8, font);
    if (background) {
        WriteRect(topLeft.x, topLeft.y, size.width, size.height, Shown(*background));
    }
    xml_.writeStartElement(QStringLiteral("text"));
    WriteNumber("x", topLeft.x - kHalf);
    WriteNumber("y", topLeft.y + Metrics(font).ascent() - kHalf);
    xml_.writeAttribute(QStringLiteral("font-family"), MakeSurfaceFont(font).family());
    WriteNumber("font-size", font.pixelSize);
    if (font.bold) {
        xml_.writeAttribute(QStringLiteral("font-weight"), QStringLiteral("bold"));
    }
    WriteColour("fill", ShownStroke(colour));
    WriteNumber("textLength", size.width);
    xml_.writeAttribute(QStringLiteral("lengthAdjust"), QStringLiteral("spacingAndGlyphs"));
    xml_.writeAttribute(QStringLiteral("xml:space"), QStringLiteral("preserve"));
    xml_.writeCharacters(PrintableText(utf8));
    xml_.writeEndElement();
}

} // namespace terravo

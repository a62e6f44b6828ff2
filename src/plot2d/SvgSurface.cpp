#include "plot2d/SvgSurface.h"

#include "plot2d/SurfaceFont.h"

#include <array>
#include <charconv>

namespace terravo {
namespace {

constexpr double kMillimetresPerInch = 25.4;

// At most three decimals, without zeros at the end.
void AppendNumber(QString& text, double value) {
    constexpr int kDecimals = 3;
    std::array<char, 32> digits{}; // coordinates are far below 10^20
    char* end = std::to_chars(digits.data(), digits.data() + digits.size(), value,
                              std::chars_format::fixed, kDecimals)
                    .ptr;
    while (*(end - 1) == '0') {
        --end;
    }
    end -= *(end - 1) == '.' ? 1 : 0;
    const QLatin1String shortest(digits.data(), static_cast<int>(end - digits.data()));
    text += shortest == QLatin1String("-0") ? QLatin1String("0") : shortest;
}

void AppendPlace(QString& text, PixelPosition place) {
    AppendNumber(text, place.x);
    text += QLatin1Char(',');
    AppendNumber(text, place.y);
}

QString PathOf(std::span<const PixelPosition> corners, std::span<const std::int32_t> counts) {
    QString path;
    std::size_t next = 0;
    for (const std::int32_t count : counts) {
        for (std::int32_t i = 0; i < count; ++i) {
            path += QLatin1Char(i == 0 ? 'M' : 'L');
            AppendPlace(path, corners[next++]);
        }
        path += QLatin1String(count == 0 ? "" : "Z");
    }
    return path;
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
    QString text;
    AppendNumber(text, value);
    xml_.writeAttribute(QLatin1String(name), text);
}

void SvgSurface::WriteColour(const char* name, const QColor& colour) {
    xml_.writeAttribute(QLatin1String(name), colour.name());
}

void SvgSurface::WriteOutline(const Outline& outline) {
    WriteColour("stroke", outline.colour);
    if (outline.width != 1) {
        WriteNumber("stroke-width", outline.width);
    }
    if (!outline.dashes.empty()) {
        QStringList lengths;
        for (const int length : outline.dashes) {
            lengths.append(QString::number(length));
        }
        xml_.writeAttribute(QStringLiteral("stroke-dasharray"), lengths.join(QLatin1Char(',')));
        xml_.writeAttribute(QStringLiteral("stroke-linecap"), QStringLiteral("butt"));
    }
}

void SvgSurface::WriteLook(const Look& look) {
    if (look.inside) {
        WriteColour("fill", *look.inside);
    }
    if (look.outline) {
        WriteOutline(*look.outline);
    }
}

void SvgSurface::AddLine(PixelPosition a, PixelPosition b, const Outline& outline) {
    QString points;
    AppendPlace(points, a);
    points += QLatin1Char(' ');
    AppendPlace(points, b);
    xml_.writeEmptyElement(QStringLiteral("polyline"));
    xml_.writeAttribute(QStringLiteral("points"), points);
    WriteOutline(outline);
}

void SvgSurface::AddRect(const QRectF& area, const QColor& inside) {
    xml_.writeEmptyElement(QStringLiteral("rect"));
    WriteNumber("x", area.x());
    WriteNumber("y", area.y());
    WriteNumber("width", area.width());
    WriteNumber("height", area.height());
    WriteColour("fill", inside);
}

void SvgSurface::AddCircle(PixelPosition centre, double radius, const Look& look) {
    xml_.writeEmptyElement(QStringLiteral("circle"));
    WriteNumber("cx", centre.x);
    WriteNumber("cy", centre.y);
    WriteNumber("r", radius);
    WriteLook(look);
}

void SvgSurface::AddPolygons(std::span<const PixelPosition> corners,
                             std::span<const std::int32_t> counts, const Look& look) {
    const QString path = PathOf(corners, counts);
    if (!path.isEmpty()) {
        xml_.writeEmptyElement(QStringLiteral("path"));
        xml_.writeAttribute(QStringLiteral("d"), path);
        WriteLook(look);
    }
}

void SvgSurface::AddText(const Text& text) {
    xml_.writeStartElement(QStringLiteral("text"));
    WriteNumber("x", text.start.x);
    WriteNumber("y", text.start.y);
    xml_.writeAttribute(QStringLiteral("font-family"), PublicFamily(text.font));
    WriteNumber("font-size", text.font.pixelSize);
    if (text.font.bold) {
        xml_.writeAttribute(QStringLiteral("font-weight"), QStringLiteral("bold"));
    }
    WriteColour("fill", text.colour);
    WriteNumber("textLength", text.width);
    xml_.writeAttribute(QStringLiteral("lengthAdjust"), QStringLiteral("spacingAndGlyphs"));
    xml_.writeAttribute(QStringLiteral("xml:space"), QStringLiteral("preserve"));
    xml_.writeCharacters(text.characters);
    xml_.writeEndElement();
}

} // namespace terravo

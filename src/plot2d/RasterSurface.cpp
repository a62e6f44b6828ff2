#include "plot2d/RasterSurface.h"

#include "plot2d/SurfaceFont.h"
#include "util/modUtilita.h"

#include <QColor>
#include <QPainter>
#include <QString>

#include <algorithm>
#include <cmath>
#include <utility>

namespace terravo {
namespace {

using PixelKernels::Paint;
using PixelKernels::RasterOp;

constexpr double kMetresPerInch = 0.0254;

Paint PaintFor(Colour colour, int drawMode) {
    return {PixelKernels::ToPixelWord(colour), PixelKernels::RasterOpFromDrawMode(drawMode)};
}

QRgb ToQRgb(Colour colour) {
    return PixelKernels::ToPixelWord(colour);
}

} // namespace

RasterSurface::RasterSurface(int width, int height, double pixelRatio)
    : DrawSurface(width, height, kDotsPerInch * pixelRatio), image_(BlankImage()) {}

QImage RasterSurface::BlankImage() const {
    QImage image(PixelWidth(), PixelHeight(), QImage::Format_RGB32);
    // The default comes from the screen and would show in the picture files.
    const int dotsPerMetre = modUtilita::RoundHalfEven(DotsPerInch() / kMetresPerInch);
    image.setDotsPerMeterX(dotsPerMetre);
    image.setDotsPerMeterY(dotsPerMetre);
    image.fill(ToQRgb(BackColor()));
    return image;
}

void RasterSurface::Resize(int width, int height) {
    SetPixelSize(width, height);
    image_ = BlankImage();
    if (!AutoRedraw()) {
        screen_ = image_.copy();
    }
    AskRepaint();
}

void RasterSurface::SetRepaintCallback(std::function<void()> repaint) {
    repaint_ = std::move(repaint);
    repaintAsked_ = false;
}

void RasterSurface::AskRepaint() {
    if (!repaintAsked_) {
        repaintAsked_ = true;
        if (repaint_) {
            repaint_();
        }
    }
}

PixelKernels::PixelBuffer RasterSurface::Buffer() {
    AskRepaint();
    // bits() first parts from copies that a caller still holds. Rows of 32-bit pixels have no gaps.
    auto* const pixels = reinterpret_cast<std::uint32_t*>(Target().bits());
    return {pixels, PixelWidth(), PixelHeight(), PixelWidth()};
}

void RasterSurface::StrokePixels(PixelPoint a, PixelPoint b, const Pen& pen) {
    const Paint paint = PaintFor(pen.colour, pen.mode);
    if (pen.width > 1) {
        PixelKernels::DrawWideLine(Buffer(), a, b, pen.width, paint);
    } else {
        PixelKernels::DrawLine(Buffer(), a, b, paint, PixelKernels::DashPatternForStyle(pen.style));
    }
}

void RasterSurface::SetPixels(PixelPoint centre, const Pen& pen) {
    PixelKernels::SetPoint(Buffer(), centre, pen.width, PaintFor(pen.colour, pen.mode));
}

void RasterSurface::FillPixelRect(PixelPoint a, PixelPoint b, Colour colour, int drawMode) {
    PixelKernels::FillRect(Buffer(), a, b, PaintFor(colour, drawMode));
}

void RasterSurface::FillPixelPolygons(std::span<const PixelPoint> corners,
                                      std::span<const std::int32_t> counts, Colour colour,
                                      int drawMode) {
    PixelKernels::FillPolygons(Buffer(), corners, counts, PaintFor(colour, drawMode));
}

void RasterSurface::PaintPixelPolygons(std::span<const PixelPoint> corners,
                                       std::span<const std::int32_t> counts,
                                       std::optional<Colour> inside, const Pen& pen) {
    const bool plainPen = pen.width == 1 && pen.style == DrawStyles::kSolid &&
                          PixelKernels::RasterOpFromDrawMode(pen.mode) == RasterOp::Copy;
    const bool oneColour = counts.size() == 1 && inside == pen.colour;
    if (!plainPen || (inside && !oneColour)) {
        DrawSurface::PaintPixelPolygons(corners, counts, inside, pen);
        return;
    }
    const PixelKernels::PixelBuffer buffer = Buffer();
    const std::uint32_t word = PixelKernels::ToPixelWord(pen.colour);
    std::size_t start = 0;
    for (const std::int32_t count : counts) {
        const auto polygon = corners.subspan(start, static_cast<std::size_t>(count));
        if (inside) {
            PixelKernels::FillWithOutline(buffer, polygon, word);
        } else {
            PixelKernels::DrawOutline(buffer, polygon, word);
        }
        start += polygon.size();
    }
}

void RasterSurface::FillPixelDisc(PixelPoint centre, int radius, std::optional<Colour> inside,
                                  Colour rim, int drawMode) {
    const PixelKernels::PixelBuffer buffer = Buffer();
    if (inside) {
        const int across = 2 * std::max(radius, 0) + 1;
        PixelKernels::SetPoint(buffer, centre, across, PaintFor(*inside, drawMode));
    }
    PixelKernels::DrawCircle(buffer, centre, radius, PaintFor(rim, drawMode));
}

void RasterSurface::FloodPixels(PixelPoint seed, Colour border, Colour colour, int drawMode) {
    PixelKernels::FloodFill(Buffer(), seed, PixelKernels::ToPixelWord(border),
                            PaintFor(colour, drawMode));
}

const RasterSurface::LoadedFont& RasterSurface::Load(const Font& font) const {
    constexpr std::size_t kMostFonts = 16;
    const auto found = std::find_if(fonts_.begin(), fonts_.end(),
                                    [&font](const LoadedFont& item) { return item.key == font; });
    if (found != fonts_.end()) {
        return *found;
    }
    if (fonts_.size() >= kMostFonts) {
        fonts_.clear();
    }
    const QFont made = MakeSurfaceFont(font);
    fonts_.push_back({font, made, QFontMetrics(made, &image_)});
    return fonts_.back();
}

TextSize RasterSurface::MeasurePixels(std::string_view utf8, const Font& font) const {
    const QFontMetrics& metrics = Load(font).metrics;
    return {metrics.horizontalAdvance(SurfaceText(utf8)), metrics.height()};
}

void RasterSurface::DrawTextPixels(PixelPoint topLeft, std::string_view utf8, const Font& font,
                                   Colour colour, std::optional<Colour> background) {
    AskRepaint();
    const LoadedFont& loaded = Load(font);
    const QString text = SurfaceText(utf8);
    QPainter painter(&Target());
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing, false);
    painter.setFont(loaded.font);
    if (background) {
        painter.fillRect(topLeft.x, topLeft.y, loaded.metrics.horizontalAdvance(text),
                         loaded.metrics.height(), QColor(ToQRgb(*background)));
    }
    painter.setPen(QColor(ToQRgb(colour)));
    painter.drawText(topLeft.x, topLeft.y + loaded.metrics.ascent(), text);
}

void RasterSurface::RefreshPixels() {
    if (!AutoRedraw()) {
        screen_ = image_.copy();
    }
    if (repaint_) {
        repaintAsked_ = true;
        repaint_();
    }
}

void RasterSurface::AutoRedrawChanged() {
    screen_ = AutoRedraw() ? QImage() : image_.copy();
    AskRepaint();
}

} // namespace terravo

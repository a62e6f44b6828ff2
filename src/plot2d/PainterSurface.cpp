#include "plot2d/PainterSurface.h"

#include "plot2d/SurfaceFont.h"

#include <QPainterPath>

#include <algorithm>
#include <utility>

namespace terravo {
namespace {

constexpr double kMiddle = 0.5; // of a pixel, from its corner

QPointF MiddleOf(PixelPoint p) {
    return {p.x + kMiddle, p.y + kMiddle};
}

void AddPolygon(QPainterPath& path, std::span<const PixelPoint> corners) {
    path.moveTo(MiddleOf(corners.front()));
    for (const PixelPoint corner : corners.subspan(1)) {
        path.lineTo(MiddleOf(corner));
    }
    path.closeSubpath();
}

} // namespace

PainterSurface::PainterSurface(QPainter& painter, int width, int height, double pixelRatio,
                               Paper paper)
    : VectorSurface(width, height, pixelRatio, paper), painter_(painter) {}

// Every change of the pen costs a line in a vector file. The outline of an area in its own colour
// closes the seam to its neighbour, so it is shown as its inside is.
void PainterSurface::UsePen(const Pen& pen, bool asInside) {
    if (pen_ == pen && penAsInside_ == asInside) {
        return;
    }
    pen_ = pen;
    penAsInside_ = asInside;
    const std::span<const int> dashes = Dashes(pen);
    QPen used(asInside ? Shown(pen.colour) : ShownStroke(pen.colour), pen.width, Qt::SolidLine,
              dashes.empty() ? Qt::RoundCap : Qt::FlatCap, Qt::RoundJoin);
    if (!dashes.empty()) {
        used.setDashPattern({dashes.begin(), dashes.end()});
    }
    painter_.setPen(used);
}

void PainterSurface::UseBrush(std::optional<Colour> colour) {
    painter_.setBrush(colour ? QBrush(Shown(*colour)) : QBrush(Qt::NoBrush));
}

void PainterSurface::StrokePixels(PixelPoint a, PixelPoint b, const Pen& pen) {
    if (a == b && pen.width == 1) {
        return; // its only pixel is the one that is left out
    }
    UsePen(pen);
    painter_.drawLine(MiddleOf(a), MiddleOf(b));
}

void PainterSurface::SetPixels(PixelPoint centre, const Pen& pen) {
    if (pen.width == 1) {
        painter_.fillRect(centre.x, centre.y, 1, 1, ShownStroke(pen.colour));
        return;
    }
    pen_.reset();
    painter_.setPen(Qt::NoPen);
    painter_.setBrush(ShownStroke(pen.colour));
    painter_.drawEllipse(MiddleOf(centre), pen.width / 2.0, pen.width / 2.0);
}

void PainterSurface::FillPixelRect(PixelPoint a, PixelPoint b, Colour colour, int /*drawMode*/) {
    if (IsLeftOut(colour)) {
        return;
    }
    const QRect area(QPoint(std::min(a.x, b.x), std::min(a.y, b.y)),
                     QPoint(std::max(a.x, b.x), std::max(a.y, b.y)));
    painter_.fillRect(area.intersected(QRect(0, 0, PixelWidth(), PixelHeight())), Shown(colour));
}

void PainterSurface::DrawPolygons(std::span<const PixelPoint> corners,
                                  std::span<const std::int32_t> counts) {
    QPainterPath path;
    path.setFillRule(Qt::OddEvenFill);
    std::size_t start = 0;
    for (const std::int32_t count : counts) {
        const auto size = static_cast<std::size_t>(count);
        if (size > 0) {
            AddPolygon(path, corners.subspan(start, size));
        }
        start += size;
    }
    if (!path.isEmpty()) {
        painter_.drawPath(path);
    }
}

void PainterSurface::FillPixelPolygons(std::span<const PixelPoint> corners,
                                       std::span<const std::int32_t> counts, Colour colour,
                                       int /*drawMode*/) {
    pen_.reset();
    painter_.setPen(Qt::NoPen);
    UseBrush(colour);
    DrawPolygons(corners, counts);
}

void PainterSurface::PaintPixelPolygons(std::span<const PixelPoint> corners,
                                        std::span<const std::int32_t> counts,
                                        std::optional<Colour> inside, const Pen& pen) {
    UsePen(pen, inside == pen.colour);
    UseBrush(inside);
    DrawPolygons(corners, counts);
}

void PainterSurface::FillPixelDisc(PixelPoint centre, int radius, std::optional<Colour> inside,
                                   Colour rim, int drawMode) {
    UsePen({rim, 1, DrawStyles::kSolid, drawMode});
    UseBrush(inside);
    painter_.drawEllipse(MiddleOf(centre), radius, radius);
}

void PainterSurface::DrawTextPixels(PixelPoint topLeft, std::string_view utf8, const Font& font,
                                    Colour colour, std::optional<Colour> background) {
    const QString text = PrintableText(utf8);
    const TextSize size = MeasurePixels(utf8, font);
    if (background) {
        painter_.fillRect(topLeft.x, topLeft.y, size.width, size.height, Shown(*background));
    }
    QFont smooth = MakeSurfaceFont(font);
    smooth.setStyleStrategy(QFont::PreferAntialias);
    smooth.setHintingPreference(QFont::PreferNoHinting);
    painter_.save();
    painter_.setFont(smooth);
    painter_.setPen(ShownStroke(colour));
    painter_.translate(topLeft.x, topLeft.y + Metrics(font).ascent());
    const double drawn = QFontMetricsF(smooth, &Measuring()).horizontalAdvance(text);
    if (drawn > 0) {
        painter_.scale(size.width / drawn, 1);
    }
    painter_.drawText(QPointF(0, 0), text);
    painter_.restore();
}

} // namespace terravo

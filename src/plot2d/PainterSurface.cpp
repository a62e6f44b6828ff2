#include "plot2d/PainterSurface.h"

#include "plot2d/SurfaceFont.h"

#include <QPainterPath>

namespace terravo {
namespace {

constexpr double kMiddle = 0.5; // of a pixel, from its corner

QPointF MiddleOf(PixelPosition p) {
    return {p.x + kMiddle, p.y + kMiddle};
}

void AddPolygon(QPainterPath& path, std::span<const PixelPosition> corners) {
    path.moveTo(MiddleOf(corners.front()));
    for (const PixelPosition corner : corners.subspan(1)) {
        path.lineTo(MiddleOf(corner));
    }
    path.closeSubpath();
}

} // namespace

PainterSurface::PainterSurface(QPainter& painter, int width, int height, double pixelRatio,
                               Paper paper)
    : VectorSurface(width, height, pixelRatio, paper), painter_(painter) {}

// Every change of the pen costs a line in a vector file.
void PainterSurface::UseOutline(const std::optional<Outline>& outline) {
    if (!outline) {
        outline_.reset();
        painter_.setPen(Qt::NoPen);
        return;
    }
    if (outline_ && outline_->colour == outline->colour && outline_->width == outline->width &&
        outline_->dashes.data() == outline->dashes.data()) {
        return;
    }
    outline_ = outline;
    const auto& dashes = outline->dashes;
    QPen used(outline->colour, outline->width, Qt::SolidLine,
              dashes.empty() ? Qt::RoundCap : Qt::FlatCap, Qt::RoundJoin);
    if (!dashes.empty()) {
        used.setDashPattern({dashes.begin(), dashes.end()});
    }
    painter_.setPen(used);
}

void PainterSurface::UseLook(const Look& look) {
    UseOutline(look.outline);
    painter_.setBrush(look.inside ? QBrush(*look.inside) : QBrush(Qt::NoBrush));
}

void PainterSurface::AddLine(PixelPosition a, PixelPosition b, const Outline& outline) {
    UseOutline(outline);
    if (a == b && outline.dashes.empty()) {
        painter_.drawPoint(MiddleOf(a)); // not every device draws the ends of a line without length
    } else {
        painter_.drawLine(MiddleOf(a), MiddleOf(b));
    }
}

void PainterSurface::AddRect(const QRectF& area, const QColor& inside) {
    const QRectF whole(0, 0, PixelWidth(), PixelHeight());
    painter_.fillRect(area.translated(kMiddle, kMiddle).intersected(whole), inside);
}

void PainterSurface::AddCircle(PixelPosition centre, double radius, const Look& look) {
    UseLook(look);
    painter_.drawEllipse(MiddleOf(centre), radius, radius);
}

void PainterSurface::AddPolygons(std::span<const PixelPosition> corners,
                                 std::span<const std::int32_t> counts, const Look& look) {
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
        UseLook(look);
        painter_.drawPath(path);
    }
}

void PainterSurface::AddText(const Text& text) {
    QFont smooth = MakeSurfaceFont(text.font);
    smooth.setStyleStrategy(QFont::PreferAntialias);
    smooth.setHintingPreference(QFont::PreferNoHinting);
    painter_.save();
    painter_.setFont(smooth);
    painter_.setPen(text.colour);
    painter_.translate(MiddleOf(text.start));
    const double drawn = QFontMetricsF(smooth, &Measuring()).horizontalAdvance(text.characters);
    if (drawn > 0) {
        painter_.scale(text.width / drawn, 1);
    }
    painter_.drawText(QPointF(0, 0), text.characters);
    painter_.restore();
}

} // namespace terravo

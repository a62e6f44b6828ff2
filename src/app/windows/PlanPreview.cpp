#include "app/windows/PlanPreview.h"

#include "plot2d/Colour.h"
#include "plot2d/ColourScale.h"

#include <QPainter>

#include <algorithm>

namespace {

constexpr double kMargin = 14; // pixels, for the dots and the letters of the axes
constexpr double kDot = 3;

double Middle(const terravo::Extent& extent) {
    return extent.min / 2 + extent.max / 2;
}

QColor ToColour(terravo::Colour colour) {
    return {terravo::RedOf(colour), terravo::GreenOf(colour), terravo::BlueOf(colour)};
}

} // namespace

PlanPreview::PlanPreview(QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
}

void PlanPreview::Show(const terravo::PointSet& points) {
    points_ = points;
    update();
}

QPointF PlanPreview::PlaceOf(double x, double y) const {
    const terravo::Extent& extentX = points_.extentX;
    const terravo::Extent& extentY = points_.extentY;
    const double scale = std::max((extentX.max - extentX.min) / (width() - 2 * kMargin),
                                  (extentY.max - extentY.min) / (height() - 2 * kMargin));
    const double pixels = scale > 0 ? 1 / scale : 0; // a unit; all points may be one
    return {width() / 2.0 + (x - Middle(extentX)) * pixels,
            height() / 2.0 - (y - Middle(extentY)) * pixels};
}

void PlanPreview::paintEvent(QPaintEvent* /*event*/) {
    static const std::vector<terravo::Colour> palette =
        terravo::ColourScale::MakePalette(terravo::ColourScale::kPlanColours);
    QPainter painter(this);
    painter.fillRect(rect(), Qt::black); // as the map, on which the colours are seen
    painter.setPen(QColor(150, 150, 150));
    painter.drawText(rect().adjusted(3, 1, -3, -1), Qt::AlignRight | Qt::AlignBottom,
                     QStringLiteral("x \u2192"));
    painter.drawText(rect().adjusted(3, 1, -3, -1), Qt::AlignLeft | Qt::AlignTop,
                     QStringLiteral("\u2191 y"));
    const terravo::Extent& heights = points_.extentZ;
    const double range = heights.max - heights.min;
    for (terravo::Index i = 1; i <= points_.count; ++i) {
        const double part = range > 0 ? (points_.z[i] - heights.min) / range : 0.5;
        const auto last = static_cast<double>(palette.size() - 1);
        const auto entry = static_cast<std::size_t>(std::clamp(part * last, 0.0, last));
        const QPointF place = PlaceOf(points_.x[i], points_.y[i]);
        painter.fillRect(QRectF(place.x() - kDot / 2, place.y() - kDot / 2, kDot, kDot),
                         ToColour(palette[entry]));
    }
}

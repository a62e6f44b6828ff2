#include "app/windows/SheetMeasure.h"

#include <cmath>
#include <numbers>

SheetDistance DistanceOf(terravo::PlanPoint from, terravo::PlanPoint to) {
    const double dx = to.x - from.x;
    const double dy = to.y - from.y;
    constexpr double kWholeTurn = 360;
    const double degrees = std::atan2(dx, dy) * kWholeTurn / 2 / std::numbers::pi;
    return {std::hypot(dx, dy), degrees < 0 ? degrees + kWholeTurn : degrees};
}

void SheetMeasure::Add(terravo::PlanPoint place) {
    pointer_ = place;
    if (!first_ || second_) {
        first_ = place;
        second_.reset();
    } else {
        second_ = place;
    }
}

void SheetMeasure::Clear() {
    *this = SheetMeasure();
}

std::optional<SheetDistance> SheetMeasure::Result() const {
    return first_ && End() ? std::optional(DistanceOf(*first_, *End())) : std::nullopt;
}

void SheetMeasure::Paint(QPainter& painter,
                         const std::function<QPointF(terravo::PlanPoint)>& toPixels,
                         const QString& text) const {
    if (!first_ || !End()) {
        return;
    }
    const QPointF from = toPixels(*first_);
    const QPointF to = toPixels(*End());
    // A light line around a dark one shows on every paper.
    for (const QPen& pen : {QPen(Qt::white, 4), QPen(QColor(200, 0, 90), 1.6)}) {
        painter.setPen(pen);
        painter.drawLine(from, to);
        for (const QPointF& end : {from, to}) {
            painter.drawEllipse(end, 4, 4);
        }
    }
    QRectF box = QFontMetricsF(painter.font()).boundingRect(text).adjusted(-5, -3, 5, 3);
    box.moveCenter((from + to) / 2 - QPointF(0, box.height()));
    box.moveLeft(std::max(2.0, std::min(box.left(), painter.window().width() - box.width() - 2)));
    box.moveTop(std::max(2.0, std::min(box.top(), painter.window().height() - box.height() - 2)));
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(255, 255, 255, 230));
    painter.drawRoundedRect(box, 3, 3);
    painter.setPen(QColor(120, 0, 60));
    painter.drawText(box, Qt::AlignCenter, text);
}

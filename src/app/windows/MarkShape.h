// The ring by which a picked point is found again in every window.
#pragma once

#include <QPainter>
#include <QPointF>

/// Dark and light, so that it is seen on every background.
inline void DrawRing(QPainter& painter, QPointF place) {
    constexpr double kRadius = 7;
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Qt::black, 4));
    painter.drawEllipse(place, kRadius, kRadius);
    painter.setPen(QPen(QColor(255, 60, 200), 2));
    painter.drawEllipse(place, kRadius, kRadius);
}

#include "app/windows/SheetDraft.h"

#include <QPolygonF>

void SheetDraft::Paint(QPainter& painter,
                       const std::function<QPointF(terravo::PlanPoint)>& toPixels) const {
    constexpr double kDot = 3;
    constexpr double kRing = 7;
    painter.setBrush(Qt::NoBrush);
    if (!vertices_.empty()) {
        QPolygonF line;
        for (const terravo::PlanPoint& vertex : vertices_) {
            line << toPixels(vertex);
        }
        if (pointer_) {
            line << toPixels(*pointer_);
        }
        if (closed_ && line.size() > 2) {
            line << line.first();
        }
        for (const QPen& pen : {QPen(Qt::white, 4), QPen(QColor(200, 30, 70), 2)}) {
            painter.setPen(pen);
            painter.drawPolyline(line);
        }
        painter.setBrush(QColor(200, 30, 70));
        painter.setPen(QPen(Qt::white, 1));
        for (const terravo::PlanPoint& vertex : vertices_) {
            painter.drawEllipse(toPixels(vertex), kDot, kDot);
        }
        painter.setBrush(Qt::NoBrush);
    }
    if (mark_) {
        for (const QPen& pen : {QPen(Qt::white, 4), QPen(QColor(200, 30, 70), 2)}) {
            painter.setPen(pen);
            painter.drawEllipse(toPixels(*mark_), kRing, kRing);
        }
    }
}

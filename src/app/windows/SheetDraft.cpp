#include "app/windows/SheetDraft.h"

#include <QLineF>
#include <QPolygonF>

namespace {

// At the end of a line, in its direction.
void PaintArrow(QPainter& painter, const QPolygonF& line) {
    constexpr double kLength = 11;
    constexpr double kSpread = 24; // degrees
    const QLineF back(line.last(), line[line.size() - 2]);
    for (const double turn : {-kSpread, kSpread}) {
        QLineF side(back);
        side.setAngle(back.angle() + turn);
        side.setLength(kLength);
        painter.drawLine(side);
    }
}

void PaintKept(QPainter& painter, const KeptLine& kept,
               const std::function<QPointF(terravo::PlanPoint)>& toPixels) {
    QPolygonF line;
    for (const terravo::PlanPoint& vertex : kept.vertices) {
        line << toPixels(vertex);
    }
    if (line.size() < 2) {
        return;
    }
    if (kept.closed) {
        line << line.first();
    }
    const double width = kept.isThin ? 1 : 2;
    painter.setBrush(Qt::NoBrush);
    for (const QPen& pen :
         {QPen(QColor(255, 255, 255, 200), width + 2), QPen(kept.colour, width)}) {
        painter.setPen(pen);
        painter.drawPolyline(line);
        if (!kept.closed && !kept.isThin && line.last() != line[line.size() - 2]) {
            PaintArrow(painter, line);
        }
    }
}

} // namespace

void SheetDraft::Paint(QPainter& painter,
                       const std::function<QPointF(terravo::PlanPoint)>& toPixels) const {
    constexpr double kDot = 3;
    constexpr double kRing = 7;
    for (const KeptLine& kept : kept_) {
        PaintKept(painter, kept, toPixels);
    }
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

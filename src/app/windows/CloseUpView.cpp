#include "app/windows/CloseUpView.h"

#include "app/windows/MarkShape.h"
#include "util/NumberText.h"

#include <QPainter>

#include <algorithm>

namespace {

const QColor kEdge(70, 95, 110);
const QColor kPoint(235, 235, 235);
const QColor kExcluded(255, 120, 110);
constexpr double kDot = 2;

void DrawSpot(QPainter& painter, QPointF place, bool isExcluded) {
    if (!isExcluded) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(kPoint);
        painter.drawEllipse(place, kDot, kDot);
        return;
    }
    constexpr double kArm = 4;
    painter.setPen(QPen(kExcluded, 1.5));
    painter.drawLine(place - QPointF(kArm, kArm), place + QPointF(kArm, kArm));
    painter.drawLine(place - QPointF(kArm, -kArm), place + QPointF(kArm, -kArm));
}

} // namespace

CloseUpView::CloseUpView(QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
}

void CloseUpView::Show(std::optional<terravo::CloseUp> view, char decimalSeparator) {
    view_ = std::move(view);
    decimalSeparator_ = decimalSeparator;
    update();
}

QPointF CloseUpView::PlaceOf(terravo::PlanPoint place) const {
    const double scale = std::min(width(), height()) / 2.2 / view_->radius;
    return {width() / 2.0 + (place.x - view_->centre.x) * scale,
            height() / 2.0 - (place.y - view_->centre.y) * scale};
}

void CloseUpView::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.fillRect(rect(), Qt::black); // as the map
    if (!view_) {
        return;
    }
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(kEdge);
    for (const terravo::CloseUp::Edge& edge : view_->edges) {
        painter.drawLine(PlaceOf(edge.from), PlaceOf(edge.to));
    }
    for (const terravo::CloseUp::Spot& spot : view_->spots) {
        DrawSpot(painter, PlaceOf(spot.place), spot.isExcluded);
    }
    DrawRing(painter, PlaceOf(view_->centre));
    DrawHeights(painter);
}

// The point in the middle comes first, so its height is always there.
void CloseUpView::DrawHeights(QPainter& painter) const {
    const QFontMetrics metrics(font());
    std::vector<QRect> taken;
    for (const terravo::CloseUp::Spot& spot : view_->spots) {
        const QString text = QString::fromStdString(
            terravo::NumberText::FormatScreen(spot.z, "#0.0##", decimalSeparator_));
        const bool isCentre = spot.point == view_->spots.front().point;
        QRect box = metrics.boundingRect(text).adjusted(-2, 0, 2, 0);
        box.moveBottomLeft(PlaceOf(spot.place).toPoint() + QPoint(isCentre ? 9 : 4, -2));
        if (!rect().contains(box) ||
            std::any_of(taken.begin(), taken.end(),
                        [&](const QRect& other) { return other.intersects(box); })) {
            continue;
        }
        taken.push_back(box);
        painter.setPen(spot.isExcluded ? kExcluded : isCentre ? QColor(Qt::white) : kPoint);
        painter.drawText(box, Qt::AlignCenter, text);
    }
}

#include "app/windows/SurfaceView.h"

#include "app/windows/MarkShape.h"

#include <QMouseEvent>
#include <QPainter>

#include <cmath>

namespace {

constexpr int kSettleMilliseconds = 150;

} // namespace

using terravo::RasterSurface;

SurfaceView::SurfaceView(QWidget* parent)
    : QWidget(parent), surface_(std::make_unique<RasterSurface>(1, 1)) {
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
    settle_.setSingleShot(true);
    settle_.setInterval(kSettleMilliseconds);
    connect(&settle_, &QTimer::timeout, this, [this] {
        if (!Fits()) {
            emit SizeSettled();
        }
    });
}

QSizeF SurfaceView::PixelInUnits() const {
    const terravo::UserPosition corner = surface_->ToUser(0, 0);
    const terravo::UserPosition next = surface_->ToUser(pixelRatio_, pixelRatio_);
    return {std::abs(next.x - corner.x), std::abs(next.y - corner.y)};
}

QSize SurfaceView::WantedSize() const {
    return (QSizeF(size()) * devicePixelRatioF()).toSize();
}

bool SurfaceView::Fits() const {
    return surface_->Image().size() == WantedSize() &&
           qFuzzyCompare(pixelRatio_, devicePixelRatioF());
}

RasterSurface& SurfaceView::FittedSurface() {
    if (!Fits()) {
        pixelRatio_ = devicePixelRatioF();
        const QSize pixels = WantedSize();
        surface_ = std::make_unique<RasterSurface>(pixels.width(), pixels.height(), pixelRatio_);
        ClearTo(background_);
        surface_->SetRepaintCallback([this] { update(); });
    }
    return *surface_;
}

void SurfaceView::SetBackground(terravo::Colour colour) {
    background_ = colour;
    ClearTo(colour);
}

// A new surface is white, and stays so where a drawing fails before its first stroke.
void SurfaceView::ClearTo(terravo::Colour colour) {
    surface_->SetBackColor(colour);
    surface_->Resize(surface_->PixelWidth(), surface_->PixelHeight());
}

void SurfaceView::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform, !Fits());
    painter.drawImage(rect(), surface_->VisibleImage());
    surface_->MarkShown();
    if (mark_) {
        DrawMark(painter);
    }
}

void SurfaceView::SetMark(std::optional<terravo::UserPosition> place) {
    mark_ = place;
    update();
}

// While the picture is stretched, so is the way to the mark.
void SurfaceView::DrawMark(QPainter& painter) const {
    constexpr double kGap = 16;
    const terravo::PixelPosition pixel = surface_->ToPixels(mark_->x, mark_->y);
    const QPointF place(pixel.x * width() / surface_->PixelWidth(),
                        pixel.y * height() / surface_->PixelHeight());
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(255, 60, 200, 150), 1));
    painter.drawLine(QPointF(0, place.y()), place - QPointF(kGap, 0));
    painter.drawLine(place + QPointF(kGap, 0), QPointF(width(), place.y()));
    painter.drawLine(QPointF(place.x(), 0), place - QPointF(0, kGap));
    painter.drawLine(place + QPointF(0, kGap), QPointF(place.x(), height()));
    DrawRing(painter, place);
}

void SurfaceView::resizeEvent(QResizeEvent* /*event*/) {
    settle_.start();
}

void SurfaceView::mouseMoveEvent(QMouseEvent* event) {
    const QPointF pixel = event->position() * pixelRatio_;
    const terravo::UserPosition place = surface_->ToUser(pixel.x(), pixel.y());
    if (event->buttons().testFlag(Qt::LeftButton)) {
        emit Dragged(place.x, place.y);
    } else {
        emit PointerMoved(place.x, place.y);
    }
}

void SurfaceView::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        emit DragBegun();
    }
}

void SurfaceView::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        emit DragEnded();
    }
}

void SurfaceView::leaveEvent(QEvent* event) {
    QWidget::leaveEvent(event);
    emit PointerLeft();
}

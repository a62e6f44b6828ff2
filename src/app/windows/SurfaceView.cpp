#include "app/windows/SurfaceView.h"

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

#include "app/windows/SurfaceView.h"

#include <QMouseEvent>
#include <QPainter>

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
        surface_->SetBackColor(background_);
        // A frame that fails clears nothing.
        surface_->Line(0, 0, pixels.width(), pixels.height(), background_, terravo::Box::Filled);
        surface_->SetRepaintCallback([this] { update(); });
    }
    return *surface_;
}

void SurfaceView::SetBackground(terravo::Colour colour) {
    background_ = colour;
    surface_->SetBackColor(colour);
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

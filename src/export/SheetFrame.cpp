#include "export/SheetFrame.h"

#include "export/SheetPainter.h"

#include <QElapsedTimer>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace terravo {
namespace {

// Milliseconds of a picture, and of strips of it, that need not be coarse.
constexpr double kQuick = 8;
constexpr double kQuickStrips = 12;
constexpr double kFinestPixels = 1.0 / 3;
constexpr double kFinestInPassing = 3; // times as coarse: a pixel
constexpr double kThinnestPixels = 0.6;

// Moves the pixels of a picture; those that come in stay as they were.
void ShiftPixels(QImage& picture, int right, int down) {
    const int width = picture.width() - std::abs(right);
    const int height = picture.height() - std::abs(down);
    const auto bytes = static_cast<std::size_t>(width) * 4;
    for (int i = 0; i < height; ++i) {
        const int row = down > 0 ? height - 1 - i : i; // none is overwritten before it is read
        uchar* to = picture.scanLine(row + std::max(down, 0)) + 4 * std::max(right, 0);
        const uchar* from =
            picture.constScanLine(row + std::max(-down, 0)) + 4 * std::max(-right, 0);
        std::memmove(to, from, bytes);
    }
}

} // namespace

void SheetFrame::SetScene(std::shared_ptr<const SheetScene> scene) {
    index_.reset();
    scene_ = std::move(scene);
    if (scene_) {
        index_ = std::make_unique<SceneIndex>(*scene_);
    }
    isValid_ = false;
}

void SheetFrame::SetSize(QSize pixels) {
    if (picture_.size() != pixels) {
        picture_ = QImage(pixels, QImage::Format_RGB32);
        isValid_ = false;
    }
}

void SheetFrame::SetGround(const QColor& ground) {
    ground_ = ground;
    isValid_ = false;
}

const QImage& SheetFrame::Picture(const SheetPlace& place, bool moving) {
    if (picture_.isNull()) {
        return picture_;
    }
    const bool isMended = isValid_ && isCoarse_ && !moving;
    if (isValid_ && !isMended && ShiftTo(place, moving)) {
        return picture_;
    }
    place_ = place;
    isCoarse_ = moving && milliseconds_ > kQuick;
    isValid_ = true;
    const double milliseconds = Draw(picture_.rect());
    if (!isCoarse_) {
        milliseconds_ = milliseconds;
        stripMilliseconds_ = 0;
    }
    return picture_;
}

bool SheetFrame::ShiftTo(const SheetPlace& place, bool moving) {
    constexpr double kExact = 1e-6;
    const QPointF by = place.corner - place_.corner;
    const QPoint whole = by.toPoint();
    if (place.pixels != place_.pixels || std::fabs(by.x() - whole.x()) > kExact ||
        std::fabs(by.y() - whole.y()) > kExact || std::abs(whole.x()) >= picture_.width() ||
        std::abs(whole.y()) >= picture_.height()) {
        return false;
    }
    place_ = place;
    if (whole.isNull()) {
        return true;
    }
    ShiftPixels(picture_, whole.x(), whole.y());
    const QRect kept = picture_.rect().translated(whole).intersected(picture_.rect());
    isCoarse_ = isCoarse_ || (moving && stripMilliseconds_ > kQuickStrips);
    double milliseconds = 0;
    for (const QRect& strip : QRegion(picture_.rect()).subtracted(kept)) {
        milliseconds += Draw(strip);
    }
    if (!isCoarse_) {
        stripMilliseconds_ = milliseconds;
    }
    return true;
}

// The painter's device is the part alone: it works for all of its device, clipped or not. Returns
// the milliseconds that it took.
double SheetFrame::Draw(const QRect& part) {
    QElapsedTimer watch;
    watch.start();
    QImage pixels(picture_.scanLine(part.top()) + 4 * static_cast<qsizetype>(part.left()),
                  part.width(), part.height(), picture_.bytesPerLine(), picture_.format());
    QPainter painter(&pixels);
    painter.translate(-part.topLeft());
    DrawGround(painter);
    if (scene_) {
        DrawSheet(painter, part);
    }
    painter.end();
    return static_cast<double>(watch.nsecsElapsed()) * 1e-6;
}

void SheetFrame::DrawGround(QPainter& painter) const {
    painter.fillRect(picture_.rect(), ground_);
    if (!scene_) {
        return;
    }
    constexpr int kShadow = 4; // pixels
    const QRectF paper(place_.corner, QSizeF(scene_->width, scene_->height) * place_.pixels);
    for (int i = kShadow; i > 0; --i) {
        painter.fillRect(paper.adjusted(kShadow - i, kShadow - i, i, i), QColor(0, 0, 0, 40));
    }
}

void SheetFrame::DrawSheet(QPainter& painter, const QRect& part) {
    const SheetPoint from = place_.ToPaper(QPointF(part.topLeft()) - QPointF(1, 1));
    const SheetPoint to = place_.ToPaper(QPointF(part.bottomRight()) + QPointF(2, 2));
    SheetPaintWish wish;
    wish.finest = kFinestPixels / place_.pixels;
    wish.thinnest = kThinnestPixels / place_.pixels;
    wish.visible = {from.x, from.y, to.x, to.y};
    wish.detail = &index_->DetailFor(isCoarse_ ? kFinestInPassing * wish.finest : wish.finest);
    wish.coarse = isCoarse_;
    painter.translate(place_.corner);
    painter.scale(place_.pixels, place_.pixels);
    PaintSheet(painter, *scene_, wish);
}

} // namespace terravo

#include "app/windows/SheetView.h"

#include "export/SheetPainter.h"

#include <QPainter>
#include <QResizeEvent>
#include <QScreen>

#include <algorithm>
#include <cmath>

namespace {

constexpr int kRestMilliseconds = 120;
constexpr double kMargin = 14; // pixels around a paper that fits
constexpr double kMillimetresPerInch = 25.4;
// Pixels a millimetre: the whole of a large paper as a stamp; a hair's breadth as a finger.
constexpr double kSmallest = 0.05;
constexpr double kLargest = 400;

// Neither the paper's colour nor lost against the window.
QColor GroundFor(const QPalette& palette) {
    const QColor window = palette.color(QPalette::Window);
    return window.lightness() < 128 ? window.lighter(150) : window.darker(125);
}

} // namespace

SheetView::SheetView(QWidget* parent) : QWidget(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
    frame_.SetGround(GroundFor(palette()));
    rest_.setSingleShot(true);
    rest_.setInterval(kRestMilliseconds);
    connect(&rest_, &QTimer::timeout, this, [this] {
        isMoving_ = false;
        if (frame_.IsCoarse()) {
            update();
        }
    });
    ShowCursor();
}

void SheetView::Show(std::shared_ptr<const terravo::SheetScene> scene,
                     const terravo::MapView& view) {
    const bool isSamePaper =
        scene_ && scene && scene_->width == scene->width && scene_->height == scene->height;
    scene_ = scene;
    patches_.clear();
    view_ = view;
    frame_.SetScene(std::move(scene));
    if (!isSamePaper || isFitted_) {
        Fit();
    }
    update();
}

void SheetView::AddPatch(terravo::SheetScene patch) {
    patches_.push_back(std::move(patch));
    update();
}

void SheetView::SetHint(const QString& hint) {
    hint_ = hint;
    update();
}

void SheetView::SetDraft(std::vector<terravo::PlanPoint> vertices, bool closed) {
    draft_.Set(std::move(vertices), closed);
    update();
}

void SheetView::SetKept(std::vector<KeptLine> lines) {
    draft_.SetKept(std::move(lines));
    update();
}

void SheetView::SetMark(std::optional<terravo::PlanPoint> place) {
    draft_.SetMark(place);
    update();
}

void SheetView::SetMeasureText(std::function<QString(const SheetDistance&)> text) {
    measureText_ = std::move(text);
}

terravo::SheetPlace SheetView::FittedPlace() const {
    terravo::SheetPlace place;
    if (!scene_) {
        return place;
    }
    place.pixels = std::max(kSmallest, std::min((width() - 2 * kMargin) / scene_->width,
                                                (height() - 2 * kMargin) / scene_->height));
    place.corner = {(width() - scene_->width * place.pixels) / 2,
                    (height() - scene_->height * place.pixels) / 2};
    return place;
}

void SheetView::Fit() {
    isFitted_ = true;
    SetPlace(FittedPlace());
}

void SheetView::ShowTrueSize() {
    constexpr double kFewestDots = 40;
    constexpr double kMostDots = 800;
    double dots = screen()->physicalDotsPerInch();
    if (!(dots >= kFewestDots && dots <= kMostDots)) { // the screen does not know its size
        dots = screen()->logicalDotsPerInch();
    }
    Zoom(dots / kMillimetresPerInch / place_.pixels, QRectF(rect()).center());
}

void SheetView::Zoom(double factor, QPointF around) {
    if (!scene_) {
        return;
    }
    const terravo::SheetPoint fixed = place_.ToPaper(around);
    terravo::SheetPlace place;
    place.pixels = std::clamp(place_.pixels * factor, kSmallest, kLargest);
    place.corner = around - QPointF(fixed.x, fixed.y) * place.pixels;
    isFitted_ = false;
    SetPlace(place);
}

// The corner is on a whole pixel of the screen, so that a picture that is moved can be kept; some
// of the paper stays in reach.
void SheetView::SetPlace(const terravo::SheetPlace& place) {
    if (!scene_) {
        return;
    }
    constexpr double kInReach = 40; // pixels
    const double ratio = devicePixelRatioF();
    const auto whole = [ratio](double pixel) { return std::round(pixel * ratio) / ratio; };
    place_.pixels = place.pixels;
    place_.corner = {whole(std::clamp(place.corner.x(), kInReach - scene_->width * place.pixels,
                                      std::max(width() - kInReach, kInReach))),
                     whole(std::clamp(place.corner.y(), kInReach - scene_->height * place.pixels,
                                      std::max(height() - kInReach, kInReach)))};
    isMoving_ = true;
    rest_.start();
    update();
}

void SheetView::Move(QPointF by) {
    isFitted_ = false;
    SetPlace({place_.pixels, place_.corner + by});
}

void SheetView::ZoomToBox(const QRectF& box) {
    constexpr double kLeast = 4; // pixels; smaller was a click
    if (box.width() < kLeast || box.height() < kLeast) {
        return;
    }
    const double factor = std::min(width() / box.width(), height() / box.height());
    const QPointF toMiddle = QRectF(rect()).center() - box.center();
    SetPlace({place_.pixels, place_.corner + toMiddle});
    Zoom(factor, QRectF(rect()).center());
}

terravo::PlanPoint SheetView::PlanAt(QPointF pixel) const {
    return view_.ToPlan(place_.ToPaper(pixel));
}

QPointF SheetView::PixelAt(terravo::PlanPoint place) const {
    return place_.ToPixels(view_.ToPaper(place.x, place.y));
}

void SheetView::paintEvent(QPaintEvent* /*event*/) {
    const double ratio = devicePixelRatioF();
    frame_.SetSize((QSizeF(size()) * ratio).toSize());
    QImage picture = frame_.Picture({place_.pixels * ratio, place_.corner * ratio}, isMoving_);
    picture.setDevicePixelRatio(ratio);
    QPainter painter(this);
    painter.drawImage(0, 0, picture);
    painter.setRenderHint(QPainter::Antialiasing);
    PaintPatches(painter);
    if (!scene_) {
        PaintHint(painter);
    } else if (drag_ && drag_->tool == SheetTool::MoveMap) {
        PaintMovedMap(painter, picture);
    }
    PaintOverlay(painter);
}

// The pixels of the map where they are to be; the sheet is made anew when the hand lets go.
void SheetView::PaintMovedMap(QPainter& painter, const QImage& picture) const {
    const QPointF corner = place_.ToPixels({scene_->map.left, scene_->map.top});
    const QRectF map(corner, QSizeF(scene_->map.Width(), scene_->map.Height()) * place_.pixels);
    painter.save();
    painter.setClipRect(map);
    painter.fillRect(map, GroundFor(palette()));
    painter.setClipRect(map.translated(drag_->last - drag_->from), Qt::IntersectClip);
    painter.drawImage(drag_->last - drag_->from, picture);
    painter.restore();
}

void SheetView::PaintPatches(QPainter& painter) const {
    constexpr double kThinnestPixels = 1;
    for (const terravo::SheetScene& patch : patches_) {
        painter.save();
        painter.translate(place_.corner);
        painter.scale(place_.pixels, place_.pixels);
        terravo::SheetPaintWish wish;
        wish.thinnest = kThinnestPixels / place_.pixels;
        PaintSheet(painter, patch, wish);
        painter.restore();
    }
}

void SheetView::PaintOverlay(QPainter& painter) {
    if (drag_ && drag_->tool == SheetTool::ZoomToBox) {
        const QRectF box = QRectF(drag_->from, drag_->last).normalized();
        painter.fillRect(box, QColor(40, 110, 160, 50));
        painter.setPen(QPen(QColor(40, 110, 160), 1));
        painter.drawRect(box);
    }
    if (const std::optional<SheetDistance> result = measure_.Result(); result && measureText_) {
        measure_.Paint(
            painter, [this](terravo::PlanPoint p) { return PixelAt(p); }, measureText_(*result));
    }
    draft_.Paint(painter, [this](terravo::PlanPoint p) { return PixelAt(p); });
    if (measuresByKeys_) {
        const QPointF middle = QRectF(rect()).center();
        constexpr double kArm = 12;
        for (const QPen& pen : {QPen(Qt::white, 3), QPen(Qt::black, 1)}) {
            painter.setPen(pen);
            painter.drawLine(middle - QPointF(kArm, 0), middle + QPointF(kArm, 0));
            painter.drawLine(middle - QPointF(0, kArm), middle + QPointF(0, kArm));
        }
    }
    if (hasFocus()) {
        painter.setPen(QPen(palette().color(QPalette::Highlight), 1));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5));
    }
}

void SheetView::PaintHint(QPainter& painter) {
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(rect().adjusted(20, 20, -20, -20), Qt::AlignCenter | Qt::TextWordWrap, hint_);
}

void SheetView::resizeEvent(QResizeEvent* event) {
    if (isFitted_) {
        Fit();
    } else {
        const QSize grown = event->size() - event->oldSize();
        SetPlace({place_.pixels, place_.corner + QPointF(grown.width(), grown.height()) / 2});
    }
}

void SheetView::changeEvent(QEvent* event) {
    if (event->type() == QEvent::PaletteChange) {
        frame_.SetGround(GroundFor(palette()));
        update();
    }
    QWidget::changeEvent(event);
}

#include "app/windows/DocumentPlaces.h"

#include <QEvent>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QStyle>

#include <algorithm>
#include <cmath>

namespace {

constexpr QSize kUseful(640, 480); // smaller, controls would be squeezed
constexpr int kTitleInReach = 120; // of its length, pixels

bool IsTitleInReach(const QRect& box, QSize room, int titleHeight) {
    return box.top() >= 0 && box.top() + titleHeight <= room.height() &&
           box.left() + kTitleInReach <= room.width() && box.right() >= kTitleInReach;
}

// Where it does not fit, its left upper corner is the part that shows.
QRect MovedInside(QRect box, QSize room) {
    box.moveLeft(std::max(0, std::min(box.left(), room.width() - box.width())));
    box.moveTop(std::max(0, std::min(box.top(), room.height() - box.height())));
    return box;
}

int Area(QSize size) {
    return size.width() * size.height();
}

bool IsNormal(const QMdiSubWindow& frame) {
    return !frame.isMinimized() && !frame.isMaximized() && !frame.isShaded();
}

} // namespace

QRect ShownBox(const DocumentBox& wanted, QSize room, int titleHeight) {
    QRect box = wanted.box;
    if (!wanted.isSizeChosen) {
        box.setSize(box.size().boundedTo(room.expandedTo(kUseful)));
    }
    return wanted.isPlaceChosen && IsTitleInReach(box, room, titleHeight) ? box
                                                                          : MovedInside(box, room);
}

std::optional<QRect> BoxBeside(const QRect& document, QSize room, QSize size, QSize least) {
    const QRect whole({0, 0}, room);
    const QRect sides[] = {
        QRect(document.right() + 1, 0, room.width() - document.right() - 1, room.height()),
        QRect(0, 0, document.left(), room.height()),
        QRect(0, document.bottom() + 1, room.width(), room.height() - document.bottom() - 1),
        QRect(0, 0, room.width(), document.top())};
    std::optional<QRect> best;
    for (const QRect& side : sides) {
        const QRect free = side.intersected(whole);
        const QSize fitted = size.boundedTo(free.size());
        if (fitted.expandedTo(least) == fitted && (!best || Area(fitted) > Area(best->size()))) {
            const QRect abreast = MovedInside({document.topLeft(), fitted}, room);
            best =
                QRect({std::clamp(abreast.left(), free.left(), free.right() + 1 - fitted.width()),
                       std::clamp(abreast.top(), free.top(), free.bottom() + 1 - fitted.height())},
                      fitted);
        }
    }
    return best;
}

std::vector<QRect> TiledBoxes(int count, QSize room) {
    std::vector<QRect> boxes;
    const int columns = static_cast<int>(std::ceil(std::sqrt(count)));
    for (int column = 0; column < columns; ++column) {
        const int rows = (count + column) / columns; // the last columns hold one more
        const int left = room.width() * column / columns;
        const int right = room.width() * (column + 1) / columns;
        for (int row = 0; row < rows; ++row) {
            const int top = room.height() * row / rows;
            boxes.emplace_back(left, top, right - left, room.height() * (row + 1) / rows - top);
        }
    }
    return boxes;
}

std::vector<QRect> CascadedBoxes(int count, QSize room, int step) {
    std::vector<QRect> boxes;
    const QSize size = room * 3 / 4;
    const int steps =
        std::max(1, (room.height() - size.height()) / step); // then from the top again
    for (int i = 0; i < count; ++i) {
        boxes.emplace_back(QPoint(step, step) * (i % steps), size);
    }
    return boxes;
}

DocumentPlaces::DocumentPlaces(QMdiArea& area) : QObject(&area), area_(area) {
    settle_.setSingleShot(true);
    settle_.setInterval(0);
    connect(&settle_, &QTimer::timeout, this, &DocumentPlaces::Settle);
    area_.installEventFilter(this);
    area_.window()->installEventFilter(this);
}

void DocumentPlaces::Add(QMdiSubWindow* frame, const DocumentBox& wanted) {
    documents_.push_back({frame, wanted, wanted.box, false});
    connect(frame, &QMdiSubWindow::windowStateChanged, &settle_, qOverload<>(&QTimer::start));
    Place(documents_.back());
    frame->installEventFilter(this);
    settle_.start();
}

void DocumentPlaces::Replace(const QMdiSubWindow* frame, const QRect& box) {
    for (Document& document : documents_) {
        if (document.frame == frame && !document.wanted.isPlaceChosen) {
            document.wanted.box = box;
            Place(document);
        }
    }
}

const DocumentPlaces::Document* DocumentPlaces::Find(const QMdiSubWindow* frame) const {
    const auto found =
        std::find_if(documents_.begin(), documents_.end(),
                     [frame](const Document& document) { return document.frame == frame; });
    return found == documents_.end() ? nullptr : &*found;
}

DocumentBox DocumentPlaces::Wanted(const QMdiSubWindow* frame) const {
    const Document* document = Find(frame);
    return document != nullptr ? document->wanted : DocumentBox{};
}

std::optional<QRect> DocumentPlaces::ToKeep(const QMdiSubWindow* frame) const {
    const Document* document = Find(frame);
    if (document == nullptr || document->frame->isMinimized()) {
        return std::nullopt;
    }
    if (document->wanted.isPlaceChosen) {
        return document->wanted.box;
    }
    return document->isSeen ? std::optional(document->shown) : std::nullopt;
}

// Once a parent that is resized has come to rest; its minimised size is nobody's room.
void DocumentPlaces::Settle() {
    if (!area_.isVisible() || area_.window()->isMinimized()) {
        return;
    }
    std::erase_if(documents_, [](const Document& document) { return document.frame.isNull(); });
    for (Document& document : documents_) {
        Place(document);
        document.isSeen = true;
    }
}

void DocumentPlaces::Place(Document& document) {
    if (!IsNormal(*document.frame)) {
        return;
    }
    const QScopedValueRollback placing(isPlacing_, true);
    // Until the parent is on the screen its size says nothing.
    const QRect box =
        area_.isVisible() ? ShownBox(document.wanted, Room(), TitleHeight()) : document.wanted.box;
    document.frame->setGeometry(box.translated(-Scrolled()));
    document.shown = document.frame->geometry().translated(Scrolled());
}

QPoint DocumentPlaces::Scrolled() const {
    return {area_.horizontalScrollBar()->value(), area_.verticalScrollBar()->value()};
}

int DocumentPlaces::TitleHeight() const {
    return area_.style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, &area_);
}

QList<QMdiSubWindow*> DocumentPlaces::Arrangeable(QMdiArea::WindowOrder order) const {
    QList<QMdiSubWindow*> frames = area_.subWindowList(order);
    frames.removeIf([](const QMdiSubWindow* frame) { return frame->isMinimized(); });
    return frames;
}

// The user asked for it, so it is followed like a move of his own.
void DocumentPlaces::Arrange(const QList<QMdiSubWindow*>& frames,
                             const std::vector<QRect>& boxes) const {
    for (qsizetype i = 0; i < frames.size(); ++i) {
        if (frames[i]->isMaximized()) {
            frames[i]->showNormal();
        }
        frames[i]->setGeometry(boxes[static_cast<std::size_t>(i)].translated(-Scrolled()));
    }
}

void DocumentPlaces::Tile() {
    const QList<QMdiSubWindow*> frames = Arrangeable(QMdiArea::CreationOrder);
    Arrange(frames, TiledBoxes(static_cast<int>(frames.size()), Room()));
}

void DocumentPlaces::Cascade() {
    const QList<QMdiSubWindow*> frames = Arrangeable(QMdiArea::StackingOrder);
    const int step = TitleHeight() + 4;
    Arrange(frames, CascadedBoxes(static_cast<int>(frames.size()), Room(), step));
}

// What was not done here, and is no scrolling, the user has done.
void DocumentPlaces::Follow(Document& document) const {
    const QRect box = document.frame->geometry().translated(Scrolled());
    if (isPlacing_ || box == document.shown || !IsNormal(*document.frame)) {
        return;
    }
    if (box.topLeft() != document.shown.topLeft()) {
        document.wanted.box.moveTopLeft(box.topLeft());
        document.wanted.isPlaceChosen = true;
    }
    if (box.size() != document.shown.size()) {
        document.wanted.box.setSize(box.size());
        document.wanted.isSizeChosen = true;
    }
    document.shown = box;
}

bool DocumentPlaces::eventFilter(QObject* watched, QEvent* event) {
    const QEvent::Type type = event->type();
    if (watched == &area_ || watched == area_.window()) {
        if (type == QEvent::Resize || type == QEvent::Show || type == QEvent::WindowStateChange) {
            settle_.start();
        }
    } else if (type == QEvent::Move || type == QEvent::Resize) {
        for (Document& document : documents_) {
            if (document.frame == watched) {
                Follow(document);
            }
        }
    }
    return QObject::eventFilter(watched, event);
}

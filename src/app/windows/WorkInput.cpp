#include "app/windows/WorkInput.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

#include <utility>

namespace {

bool IsInput(QEvent::Type type) {
    switch (type) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::Shortcut:
    case QEvent::ShortcutOverride:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::NonClientAreaMouseButtonPress:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
    case QEvent::DragEnter:
    case QEvent::Drop:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
        return true;
    default:
        return false;
    }
}

// Moving the mouse or letting a key go does not ask for anything.
bool AsksForSomething(QEvent::Type type) {
    return type == QEvent::KeyPress || type == QEvent::Shortcut ||
           type == QEvent::MouseButtonPress || type == QEvent::Wheel;
}

} // namespace

WorkInput::WorkInput(QWidget* stopButton, QObject* parent)
    : QObject(parent), stopButton_(stopButton) {}

WorkInput::~WorkInput() {
    End();
}

void WorkInput::Begin(bool givesWay) {
    givesWay_ = givesWay;
    if (!active_) {
        active_ = true;
        qApp->installEventFilter(this);
    }
}

void WorkInput::End() {
    if (active_) {
        active_ = false;
        qApp->removeEventFilter(this);
    }
    for (Kept& kept : std::exchange(kept_, {})) {
        if (kept.receiver != nullptr) {
            QCoreApplication::postEvent(kept.receiver, kept.event.release());
        }
    }
}

void WorkInput::Poll() {
    QApplication::processEvents();
}

bool WorkInput::eventFilter(QObject* watched, QEvent* event) {
    if (QApplication::activeModalWidget() != nullptr) {
        return false; // a message of the command waits for its answer
    }
    if (event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
        emit StopAsked();
        return true;
    }
    if (event->type() == QEvent::Close) {
        event->ignore();
        emit CloseAsked();
        return true;
    }
    // A window's own object passes input on to its widgets, which come here again. A shortcut goes
    // to the action itself, which is no widget.
    if (!IsInput(event->type()) || watched->isWindowType() || watched == stopButton_) {
        return false;
    }
    if (givesWay_ && event->type() != QEvent::ShortcutOverride) {
        kept_.push_back({watched, std::unique_ptr<QEvent>(event->clone())});
        if (AsksForSomething(event->type())) {
            emit InterruptAsked();
        }
    }
    return true;
}

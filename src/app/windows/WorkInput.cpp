#include "app/windows/WorkInput.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

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

} // namespace

WorkInput::WorkInput(QWidget* stopButton, QObject* parent)
    : QObject(parent), stopButton_(stopButton) {}

WorkInput::~WorkInput() {
    End();
}

void WorkInput::Begin() {
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
    return IsInput(event->type()) && !watched->isWindowType() && watched != stopButton_;
}

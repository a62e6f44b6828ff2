// The few things that a user can do while a command is at work.
//
// Data: none. Method: while a command runs, no event is handled but when its progress is shown;
// then everything waiting is taken, and this filter lets through what paints, the Escape key and
// the stop button, and drops every other key and click: a command must not begin inside another
// one. Work that gives way is stopped by a key or a click, which is handed on when it has ended.
#pragma once

#include <QEvent>
#include <QObject>
#include <QPointer>

#include <memory>
#include <vector>

class QWidget;

class WorkInput : public QObject {
    Q_OBJECT

public:
    /// @param stopButton  the one widget that takes clicks meanwhile.
    explicit WorkInput(QWidget* stopButton, QObject* parent = nullptr);
    ~WorkInput() override;

    /// From now on, and until End, other input is dropped, or kept where the work gives way.
    void Begin(bool givesWay = false);
    void End();

    /// Takes the events that are waiting.
    void Poll();

signals:
    /// The Escape key.
    void StopAsked();
    /// The user goes on, and the work gives way.
    void InterruptAsked();
    /// Somebody wants to close a window; it stays open.
    void CloseAsked();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Kept {
        QPointer<QObject> receiver;
        std::unique_ptr<QEvent> event;
    };

    QWidget* stopButton_;
    bool active_ = false;
    bool givesWay_ = false;
    std::vector<Kept> kept_;
};

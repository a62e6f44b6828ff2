// The few things that a user can do while a command is at work.
//
// Data: none. Method: while a command runs, no event is handled but when its progress is shown;
// then everything waiting is taken, and this filter lets through what paints, the Escape key and
// the stop button, and drops every other key and click: a command must not begin inside another
// one.
#pragma once

#include <QObject>

class QWidget;

class WorkInput : public QObject {
    Q_OBJECT

public:
    /// @param stopButton  the one widget that takes clicks meanwhile.
    explicit WorkInput(QWidget* stopButton, QObject* parent = nullptr);
    ~WorkInput() override;

    /// From now on, and until End, other input is dropped.
    void Begin();
    void End();

    /// Takes the events that are waiting.
    void Poll();

signals:
    /// The Escape key.
    void StopAsked();
    /// Somebody wants to close a window; it stays open.
    void CloseAsked();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* stopButton_;
    bool active_ = false;
};

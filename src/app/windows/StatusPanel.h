// The status bar of the parent window: pointer position, counts, one remark, progress and the
// button that stops it.
#pragma once

#include <QElapsedTimer>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QStatusBar>

class WorkInput;

class StatusPanel : public QStatusBar {
    Q_OBJECT

public:
    explicit StatusPanel(QWidget* parent = nullptr);

    /// The place under the pointer; empty when there is none.
    void ShowPointer(const QString& place);
    /// Says for some seconds, in place of the counts, that something was done.
    void ShowNote(const QString& note);
    void ShowCounts(const QString& counts, const QString& remark);

    /// A command begins; commands may nest. The wait cursor is shown while one runs.
    /// @param text      said beside the progress bar when the command takes long.
    /// @param stopText  caption of the button that stops it.
    /// @param givesWay  it is interrupted by what the user does, from its beginning on.
    void BeginWork(const QString& text, const QString& stopText, bool givesWay = false);
    /// Shows the progress bar and the button once the command has taken a second. From then on the
    /// Escape key, the button and a window being closed are noticed here, and nothing else.
    void ShowProgress(double done);
    void EndWork();
    /// Stops the command at work, if there is one, and then wants the windows closed.
    void CloseAfterWork();
    [[nodiscard]] bool IsWorking() const { return depth_ > 0; }

signals:
    /// The user wants the command at work to end.
    void StopAsked();
    /// The user does something else while work that gives way goes on.
    void InterruptAsked();
    /// The windows are to be closed, and no command is at work.
    void CloseWanted();

private:
    void AskToStop();

    QLabel* lblPointer_;
    QLabel* lblCounts_;
    QLabel* lblRemark_;
    QLabel* lblWork_;
    QProgressBar* barProgress_;
    QPushButton* cmdStop_;
    WorkInput* input_;
    bool closeWanted_ = false;
    bool givesWay_ = false;
    QElapsedTimer since_;
    int depth_ = 0;
};

// The status bar of the parent window: pointer position, counts, one remark, progress.
#pragma once

#include <QElapsedTimer>
#include <QLabel>
#include <QProgressBar>
#include <QStatusBar>

class StatusPanel : public QStatusBar {
    Q_OBJECT

public:
    explicit StatusPanel(QWidget* parent = nullptr);

    void ShowPointer(double x, double y);
    void ShowCounts(const QString& counts, const QString& remark);

    /// A command begins; commands may nest. The wait cursor is shown while one runs.
    /// @param text  said beside the progress bar when the command takes long.
    void BeginWork(const QString& text);
    /// Shows the progress bar once the command has taken a second, painted without handling events.
    void ShowProgress(double done);
    void EndWork();

private:
    QLabel* lblPointer_;
    QLabel* lblCounts_;
    QLabel* lblRemark_;
    QLabel* lblWork_;
    QProgressBar* barProgress_;
    QElapsedTimer since_;
    int depth_ = 0;
};

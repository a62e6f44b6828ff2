// The parent window: menu bar, status bar, and the documents.
#pragma once

#include "app/ColourScheme.h"
#include "app/StartUpRules.h"

#include <QMainWindow>
#include <QMdiArea>

class StatusPanel;
class frmProve;

class frmOrografix : public QMainWindow {
    Q_OBJECT

public:
    explicit frmOrografix(const terravo::ColourScheme& scheme);

    [[nodiscard]] StatusPanel& Status() { return *status_; }

    /// Takes the main contour window in: its menus, and its frame at the given place among the
    /// documents.
    void AddMainWindow(frmProve* window, const QRect& box);

    /// Shows the window as designed, minimised or maximised.
    void ShowIn(terravo::ParentState state);

protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void KeepMainWindowInside();

    QMdiArea* area_;
    StatusPanel* status_;
    frmProve* mainWindow_ = nullptr;
    QMdiSubWindow* mainFrame_ = nullptr;
};

// The menu of the map sheet.
//
// Data: the sheet window, while there is one. Method: opening it is told to whoever makes it; the
// other commands are its own, and disabled while it has no sheet.
#pragma once

#include "app/windows/SheetWindow.h"
#include "util/RunState.h"

#include <QMenu>
#include <QPointer>

class SheetMenu : public QMenu {
    Q_OBJECT

public:
    explicit SheetMenu(QWidget* parent = nullptr);

    void SetCaptions(const terravo::RunState& state);

    /// Whether there are points that a sheet can show; the entry says why where there are none.
    void SetPossible(bool possible);
    void SetWindow(SheetWindow* window);

signals:
    void OpenAsked();

private:
    QAction* AddEntry(const char* name, void (*run)(SheetWindow& window));
    void Follow();

    QPointer<SheetWindow> window_;
    QString noPoints_;
    QString noSheet_;
    bool isPossible_ = false;
    QAction* mnuOpenSheet;
    QAction* mnuExportSheet;
    QAction* mnuPrintSheet;
    QAction* mnuFitSheet;
    QAction* mnuTrueSize;
    QAction* mnuZoomBox;
    QAction* mnuMeasure;
};

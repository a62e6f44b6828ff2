// The menu of what the hand does to the surface, and of its undoing.
//
// Data: the history of the session; the sheet window, while there is one. Method: a tool is chosen
// on the sheet, which is opened where there is none; the entries follow what can be done.
#pragma once

#include "app/windows/SheetWindow.h"

#include <QActionGroup>
#include <QMenu>
#include <QPointer>

#include <vector>

class EditMenu : public QMenu {
    Q_OBJECT

public:
    EditMenu(terravo::Session& session, QWidget* parent);

    void SetCaptions(const terravo::RunState& state);
    /// Whether there are points on a sheet.
    void SetPossible(bool possible);
    void SetWindow(SheetWindow* window);
    /// The history may have changed.
    void Follow();

signals:
    void SheetAsked();

private:
    struct Tool {
        SheetTool tool;
        terravo::Text caption;
        QAction* entry;
    };
    void AddTool(SheetTool tool, terravo::Text caption, const char* name, int key);
    void Choose(SheetTool tool);

    terravo::Session& session_;
    QPointer<SheetWindow> window_;
    QString undo_;
    QString redo_;
    QString noPoints_;
    bool isPossible_ = false;
    QAction* mnuUndo;
    QAction* mnuRedo;
    std::vector<Tool> tools_;
};

#include "app/windows/EditMenu.h"

#include "app/windows/Controls.h"

using terravo::Text;

EditMenu::EditMenu(terravo::Session& session, QWidget* parent)
    : QMenu(parent), session_(session), mnuUndo(Named(addAction(QString()), "mnuUndo")),
      mnuRedo(Named(addAction(QString()), "mnuRedo")) {
    setObjectName(QStringLiteral("mnuEdit"));
    setToolTipsVisible(true);
    mnuUndo->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Z));
    mnuRedo->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Y));
    connect(mnuUndo, &QAction::triggered, this, [this] { session_.Undo(); });
    connect(mnuRedo, &QAction::triggered, this, [this] { session_.Redo(); });
    addSeparator();
    AddTool(SheetTool::Select, Text::ToolSelect, "mnuToolSelect", Qt::Key_1);
    AddTool(SheetTool::Exclude, Text::ToolExclude, "mnuToolExclude", Qt::Key_2);
    AddTool(SheetTool::Height, Text::ToolHeight, "mnuToolHeight", Qt::Key_3);
    AddTool(SheetTool::Flip, Text::ToolFlip, "mnuToolFlip", Qt::Key_4);
    AddTool(SheetTool::Hold, Text::ToolHold, "mnuToolHold", Qt::Key_5);
    addSeparator();
    AddTool(SheetTool::Breakline, Text::ToolBreakline, "mnuToolBreakline", Qt::Key_6);
    AddTool(SheetTool::Boundary, Text::ToolBoundary, "mnuToolBoundary", Qt::Key_7);
    AddTool(SheetTool::Hole, Text::ToolHole, "mnuToolHole", Qt::Key_8);
    Follow();
}

void EditMenu::AddTool(SheetTool tool, Text caption, const char* name, int key) {
    QAction* entry = Named(addAction(QString()), name);
    entry->setCheckable(true);
    entry->setShortcut(QKeySequence(Qt::ALT | static_cast<Qt::Key>(key)));
    connect(entry, &QAction::triggered, this, [this, tool] { Choose(tool); });
    tools_.push_back({tool, caption, entry});
}

void EditMenu::Choose(SheetTool tool) {
    if (window_ == nullptr) {
        emit SheetAsked();
    }
    if (window_ != nullptr) {
        window_->Toggle(tool);
    }
    Follow();
}

void EditMenu::SetCaptions(const terravo::RunState& state) {
    setTitle(Caption(state, Text::EditMenu));
    undo_ = Caption(state, Text::EditUndo);
    redo_ = Caption(state, Text::EditRedo);
    noPoints_ = Caption(state, Text::CheckNoPoints);
    for (const Tool& tool : tools_) {
        tool.entry->setText(Caption(state, tool.caption));
    }
    Follow();
}

void EditMenu::SetPossible(bool possible) {
    isPossible_ = possible;
    Follow();
}

void EditMenu::SetWindow(SheetWindow* window) {
    window_ = window;
    connect(window, &SheetWindow::StateChanged, this, &EditMenu::Follow);
    connect(window, &QObject::destroyed, this, &EditMenu::Follow);
    Follow();
}

void EditMenu::Follow() {
    const terravo::PlanHistory& history = session_.History();
    const auto show = [](QAction& entry, const QString& word, bool can, const std::string& step) {
        entry.setEnabled(can);
        entry.setText(step.empty() ? word : word + QStringLiteral(": ") + ToQString(step));
    };
    show(*mnuUndo, undo_, history.CanUndo(), history.UndoName());
    show(*mnuRedo, redo_, history.CanRedo(), history.RedoName());
    for (const Tool& tool : tools_) {
        tool.entry->setEnabled(isPossible_);
        tool.entry->setToolTip(isPossible_ ? QString() : noPoints_);
        tool.entry->setChecked(window_ != nullptr && window_->HasSheet() &&
                               window_->View().Tool() == tool.tool);
    }
}

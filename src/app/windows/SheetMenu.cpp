#include "app/windows/SheetMenu.h"

#include "app/windows/Controls.h"

using terravo::Text;

SheetMenu::SheetMenu(QWidget* parent)
    : QMenu(parent), mnuOpenSheet(Named(addAction(QString()), "mnuOpenSheet")) {
    setObjectName(QStringLiteral("mnuSheet"));
    setToolTipsVisible(true);
    mnuOpenSheet->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_M));
    connect(mnuOpenSheet, &QAction::triggered, this, &SheetMenu::OpenAsked);
    addSeparator();
    mnuExportSheet = AddEntry("mnuExportSheet", [](SheetWindow& sheet) { sheet.Export(); });
    mnuExportSheet->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_E));
    mnuPrintSheet = AddEntry("mnuPrintSheet", [](SheetWindow& sheet) { sheet.Print(); });
    mnuPrintSheet->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_P));
    addSeparator();
    mnuFitSheet = AddEntry("mnuFitSheet", [](SheetWindow& sheet) { sheet.View().Fit(); });
    mnuTrueSize = AddEntry("mnuTrueSize", [](SheetWindow& sheet) { sheet.View().ShowTrueSize(); });
    mnuZoomBox =
        AddEntry("mnuZoomBox", [](SheetWindow& sheet) { sheet.Toggle(SheetTool::ZoomToBox); });
    mnuMeasure =
        AddEntry("mnuMeasure", [](SheetWindow& sheet) { sheet.Toggle(SheetTool::Measure); });
    mnuZoomBox->setCheckable(true);
    mnuMeasure->setCheckable(true);
    Follow();
}

QAction* SheetMenu::AddEntry(const char* name, void (*run)(SheetWindow& window)) {
    QAction* entry = Named(addAction(QString()), name);
    connect(entry, &QAction::triggered, this, [this, run] {
        if (window_ != nullptr) {
            run(*window_);
        }
    });
    return entry;
}

void SheetMenu::SetCaptions(const terravo::RunState& state) {
    setTitle(Caption(state, Text::SheetMenu));
    mnuOpenSheet->setText(Caption(state, Text::SheetOpenEntry));
    mnuExportSheet->setText(Caption(state, Text::SheetExportEntry));
    mnuPrintSheet->setText(Caption(state, Text::SheetPrintEntry));
    mnuFitSheet->setText(Caption(state, Text::SheetFitEntry));
    mnuTrueSize->setText(Caption(state, Text::SheetTrueSizeEntry));
    mnuZoomBox->setText(Caption(state, Text::SheetZoomBoxEntry));
    mnuMeasure->setText(Caption(state, Text::SheetMeasureEntry));
    noPoints_ = Caption(state, Text::CheckNoPoints);
    noSheet_ = Caption(state, Text::NoSheetYet);
    Follow();
}

void SheetMenu::SetPossible(bool possible) {
    isPossible_ = possible;
    Follow();
}

void SheetMenu::SetWindow(SheetWindow* window) {
    window_ = window;
    connect(window, &SheetWindow::StateChanged, this, &SheetMenu::Follow);
    connect(window, &QObject::destroyed, this, &SheetMenu::Follow);
    Follow();
}

void SheetMenu::Follow() {
    mnuOpenSheet->setEnabled(isPossible_);
    mnuOpenSheet->setToolTip(isPossible_ ? QString() : noPoints_);
    const bool has = window_ != nullptr && window_->HasSheet();
    for (QAction* entry :
         {mnuExportSheet, mnuPrintSheet, mnuFitSheet, mnuTrueSize, mnuZoomBox, mnuMeasure}) {
        entry->setEnabled(has);
        entry->setToolTip(has ? QString() : noSheet_);
    }
    mnuZoomBox->setChecked(has && window_->View().Tool() == SheetTool::ZoomToBox);
    mnuMeasure->setChecked(has && window_->View().Tool() == SheetTool::Measure);
}

#include "app/windows/MeasureMenu.h"

#include "app/windows/Controls.h"

using terravo::Text;

std::optional<SheetTool> ToolOf(MeasureCommand command) {
    switch (command) {
    case MeasureCommand::Place:
        return SheetTool::PlaceHeight;
    case MeasureCommand::Section:
        return SheetTool::Section;
    case MeasureCommand::Polygon:
        return SheetTool::MeasurePolygon;
    default:
        return std::nullopt;
    }
}

MeasureMenu::MeasureMenu(const terravo::Session& session, QWidget* parent)
    : QMenu(parent), session_(session) {
    setObjectName(QStringLiteral("mnuMeasures"));
    setToolTipsVisible(true);
    AddEntry(MeasureCommand::Areas, Text::MeasureAreasEntry, "mnuAreas")
        ->setShortcut(QKeySequence(Qt::Key_F9));
    AddEntry(MeasureCommand::Hypsometry, Text::MeasureHypsometryEntry, "mnuHypsometry");
    AddEntry(MeasureCommand::ToDatum, Text::MeasureDatumEntry, "mnuVolume")
        ->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_V));
    AddTool(MeasureCommand::Place, Text::MeasurePlaceEntry, "mnuPlaceHeight", Qt::Key_9);
    addSeparator();
    AddEntry(MeasureCommand::Compare, Text::MeasureCompareEntry, "mnuCompare");
    AddEntry(MeasureCommand::ForgetSecond, Text::MeasureForgetEntry, "mnuForgetSecond");
    addSeparator();
    AddTool(MeasureCommand::Section, Text::MeasureSectionEntry, "mnuSection", Qt::Key_0);
    AddEntry(MeasureCommand::Cross, Text::MeasureCrossEntry, "mnuCrossSections");
    AddEntry(MeasureCommand::RemoveSection, Text::MeasureRemoveSectionEntry, "mnuRemoveSection");
    addSeparator();
    AddTool(MeasureCommand::Polygon, Text::MeasurePolygonEntry, "mnuPolygon", 0);
    AddEntry(MeasureCommand::PolygonFile, Text::MeasurePolygonFileEntry, "mnuPolygonFile");
    AddEntry(MeasureCommand::RemovePolygon, Text::MeasureRemovePolygonEntry, "mnuRemovePolygon");
    addSeparator();
    AddEntry(MeasureCommand::Results, Text::MeasureResultsEntry, "mnuMeasureResults");
    Follow();
}

QAction* MeasureMenu::AddEntry(MeasureCommand command, Text caption, const char* name) {
    QAction* action = Named(addAction(QString()), name);
    connect(action, &QAction::triggered, this, [this, command] {
        emit Asked(command);
        Follow();
    });
    entries_.push_back({command, caption, action});
    return action;
}

void MeasureMenu::AddTool(MeasureCommand command, Text caption, const char* name, int key) {
    QAction* action = AddEntry(command, caption, name);
    action->setCheckable(true);
    if (key != 0) {
        action->setShortcut(QKeySequence(Qt::ALT | static_cast<Qt::Key>(key)));
    }
}

void MeasureMenu::SetCaptions(const terravo::RunState& state) {
    state_ = &state;
    setTitle(Caption(state, Text::MeasureMenu));
    for (const Entry& entry : entries_) {
        entry.action->setText(Caption(state, entry.caption));
    }
    Follow();
}

void MeasureMenu::SetPossible(bool possible) {
    isPossible_ = possible;
    Follow();
}

void MeasureMenu::SetWindow(SheetWindow* window) {
    window_ = window;
    connect(window, &SheetWindow::StateChanged, this, &MeasureMenu::Follow);
    connect(window, &QObject::destroyed, this, &MeasureMenu::Follow);
    Follow();
}

std::optional<Text> MeasureMenu::WhyNot(MeasureCommand command) const {
    const bool isNeverIdle = command == MeasureCommand::Results;
    if (!isPossible_ && !isNeverIdle) {
        return Text::CheckNoPoints;
    }
    switch (command) {
    case MeasureCommand::ForgetSecond:
        return session_.Measures().Second() == nullptr ? std::optional(Text::MeasureNoSecond)
                                                       : std::nullopt;
    case MeasureCommand::Cross:
    case MeasureCommand::RemoveSection:
        return session_.SectionLine().empty() ? std::optional(Text::MeasureNoSection)
                                              : std::nullopt;
    case MeasureCommand::RemovePolygon:
        return session_.Measures().Polygon().empty() ? std::optional(Text::MeasureNoPolygon)
                                                     : std::nullopt;
    default:
        return std::nullopt;
    }
}

void MeasureMenu::Follow() {
    for (const Entry& entry : entries_) {
        const std::optional<Text> reason = WhyNot(entry.command);
        entry.action->setEnabled(!reason);
        entry.action->setToolTip(reason && state_ != nullptr ? Caption(*state_, *reason)
                                                             : QString());
        if (const std::optional<SheetTool> tool = ToolOf(entry.command)) {
            entry.action->setChecked(window_ != nullptr && window_->HasSheet() &&
                                     window_->View().Tool() == *tool);
        }
    }
}

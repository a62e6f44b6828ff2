#include "app/windows/TerrainMenu.h"

#include "app/windows/Controls.h"

using terravo::TerrainSide;
using terravo::Text;

TerrainMenu::TerrainMenu(QWidget* parent)
    : QMenu(parent), mnuOpenTerrain(Named(addAction(QString()), "mnuOpenTerrain")) {
    setObjectName(QStringLiteral("mnuTerrain"));
    setToolTipsVisible(true);
    mnuOpenTerrain->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_T));
    connect(mnuOpenTerrain, &QAction::triggered, this, &TerrainMenu::OpenAsked);
    addSeparator();
    AddEntry(Text::TerrainExport, "mnuExportTerrain", [](TerrainWindow& w) { w.Export(); });
    AddEntry(Text::TerrainCopy, "mnuCopyTerrain", [](TerrainWindow& w) { w.Copy(); });
    addSeparator();
    AddEntry(Text::TerrainReset, "mnuWholeTerrain", [](TerrainWindow& w) { w.Reset(); });
    struct SideEntry {
        Text caption;
        const char* name;
        TerrainSide side;
    };
    for (const SideEntry& entry :
         {SideEntry{Text::TerrainTop, "mnuFromAbove", TerrainSide::Top},
          SideEntry{Text::TerrainFromNorth, "mnuFromNorth", TerrainSide::FromNorth},
          SideEntry{Text::TerrainFromSouth, "mnuFromSouth", TerrainSide::FromSouth},
          SideEntry{Text::TerrainFromEast, "mnuFromEast", TerrainSide::FromEast},
          SideEntry{Text::TerrainFromWest, "mnuFromWest", TerrainSide::FromWest}}) {
        AddEntry(entry.caption, entry.name,
                 [side = entry.side](TerrainWindow& w) { w.LookFrom(side); });
    }
    Follow();
}

QAction* TerrainMenu::AddEntry(Text caption, const char* name,
                               std::function<void(TerrainWindow& window)> run) {
    QAction* action = Named(addAction(QString()), name);
    connect(action, &QAction::triggered, this, [this, run = std::move(run)] {
        if (window_ != nullptr && window_->HasTerrain()) {
            run(*window_);
        }
    });
    entries_.push_back({action, caption});
    return action;
}

void TerrainMenu::SetCaptions(const terravo::RunState& state) {
    setTitle(Caption(state, Text::TerrainMenu));
    mnuOpenTerrain->setText(Caption(state, Text::TerrainOpen));
    for (const Entry& entry : entries_) {
        entry.action->setText(Caption(state, entry.caption));
    }
    noPoints_ = Caption(state, Text::CheckNoPoints);
    noTerrain_ = Caption(state, Text::TerrainNothing);
    Follow();
}

void TerrainMenu::SetPossible(bool possible) {
    isPossible_ = possible;
    Follow();
}

void TerrainMenu::SetWindow(TerrainWindow* window) {
    window_ = window;
    connect(window, &TerrainWindow::StateChanged, this, &TerrainMenu::Follow);
    connect(window, &QObject::destroyed, this, &TerrainMenu::Follow);
    Follow();
}

void TerrainMenu::Follow() {
    mnuOpenTerrain->setEnabled(isPossible_);
    mnuOpenTerrain->setToolTip(isPossible_ ? QString() : noPoints_);
    const bool has = window_ != nullptr && window_->HasTerrain();
    for (const Entry& entry : entries_) {
        entry.action->setEnabled(has);
        entry.action->setToolTip(has ? QString() : noTerrain_);
    }
}

// The menu of the terrain.
//
// Data: the terrain window, while there is one. Method: opening it is told to whoever makes it; the
// other commands are its own, and disabled while it has no terrain.
#pragma once

#include "app/windows/TerrainWindow.h"
#include "util/RunState.h"

#include <QMenu>
#include <QPointer>

#include <vector>

class TerrainMenu : public QMenu {
    Q_OBJECT

public:
    explicit TerrainMenu(QWidget* parent = nullptr);

    void SetCaptions(const terravo::RunState& state);

    /// Whether there are points that a terrain can show; the entry says why where there are none.
    void SetPossible(bool possible);
    void SetWindow(TerrainWindow* window);

signals:
    void OpenAsked();

private:
    struct Entry {
        QAction* action;
        terravo::Text caption;
    };
    QAction* AddEntry(terravo::Text caption, const char* name,
                      std::function<void(TerrainWindow& window)> run);
    void Follow();

    QPointer<TerrainWindow> window_;
    QString noPoints_;
    QString noTerrain_;
    bool isPossible_ = false;
    QAction* mnuOpenTerrain;
    std::vector<Entry> entries_;
};

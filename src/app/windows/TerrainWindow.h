// The window of the terrain: the lit ground, and beside it how it is to look.
//
// Data: what the session made of the surface; the plan in the panel. Method: another surface, or
// other levels, are shown when the command that made them has ended; the camera stays where the
// points do. The pointer reads out what it is over; a click marks it in every window.
#pragma once

#include "app/session/Session.h"
#include "app/settings/ColourScheme.h"
#include "app/settings/TerrainHabit.h"
#include "app/windows/TerrainPanel.h"
#include "app/windows/TerrainView.h"
#include "view3d/terrain/TerrainPick.h"

#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <QWidget>

#include <memory>
#include <optional>

class StatusPanel;

class TerrainWindow : public QWidget {
    Q_OBJECT

public:
    TerrainWindow(const terravo::RunState& state, terravo::Session& session, StatusPanel& status,
                  const terravo::ColourScheme& scheme);

    /// Points, surface or levels may have changed.
    void Refresh();
    /// Another point may be marked; one that is marked elsewhere is brought into the middle.
    void FollowMark();

    [[nodiscard]] bool HasTerrain() const { return picTerrain && picTerrain->Content() != nullptr; }
    /// Only where there is a terrain.
    [[nodiscard]] TerrainView& View() { return *picTerrain; }
    [[nodiscard]] TerrainPanel& Panel() { return *pnlTerrain; }

    void Export();
    void Copy();
    void LookFrom(terravo::TerrainSide side);
    void Reset();

    /// What lies at a pixel of the view.
    struct Reading {
        terravo::SpacePoint place;           // data units
        std::optional<terravo::Index> point; // within reach, number among all
        double slope = 0;                    // degrees
    };
    [[nodiscard]] std::optional<Reading> ReadAt(double x, double y);

signals:
    /// The window closes; its place is to be kept.
    void Closing();
    /// There is a terrain, or none any more.
    void StateChanged();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    // What the terrain was made of.
    struct Origin {
        std::uint64_t survey = 0;
        terravo::LevelRule levels;
        std::optional<terravo::SmoothingOptions> smoothing;

        bool operator==(const Origin&) const = default;
    };

    void MakeNow();
    void MakeControls();
    void TakeHabit();
    void KeepHabit();
    [[nodiscard]] std::optional<terravo::SmoothingOptions> Smoothing() const;
    void ConnectView();
    void ShowReading(double x, double y);
    void Mark(double x, double y);
    [[nodiscard]] std::optional<terravo::TerrainHit> HitAt(double x, double y);
    [[nodiscard]] QImage PictureWithFurniture(int width, int height);

    const terravo::RunState& state_;
    terravo::Session& session_;
    StatusPanel& status_;
    QTimer soon_; // a command that ends is still at work while it says so
    std::optional<Origin> made_;
    terravo::TerrainHabit habit_;
    std::string file_; // of the points that were shown last
    std::shared_ptr<const terravo::TerrainContent> content_;
    std::unique_ptr<terravo::TerrainPick> pick_; // made when the pointer first asks
    std::optional<terravo::Index> shownMark_;
    bool isMarking_ = false;
    TerrainView* picTerrain = nullptr; // none where there is no OpenGL
    TerrainPanel* pnlTerrain = nullptr;
    QLabel* lblReading = nullptr;
};

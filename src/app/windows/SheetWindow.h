// The window of the map sheet: the paper, and beside it what it is to be like.
//
// Data: the plan in the panel; the sheet that the session made of it. Method: any change makes the
// sheet anew, after a moment where that takes long; what is on the screen is what is written and
// printed.
#pragma once

#include "app/session/Session.h"
#include "app/settings/ColourScheme.h"
#include "app/windows/MeasureTools.h"
#include "app/windows/SheetPanel.h"
#include "app/windows/SheetStyleBox.h"
#include "app/windows/SheetView.h"
#include "app/windows/SurfaceTools.h"

#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <QWidget>

#include <functional>
#include <memory>
#include <optional>

class QBoxLayout;
class QPrinter;
class StatusPanel;

class SheetWindow : public QWidget {
    Q_OBJECT

public:
    /// @param settings  keep the styles.
    SheetWindow(const terravo::RunState& state, terravo::Session& session, StatusPanel& status,
                terravo::SettingsStore& settings, const terravo::ColourScheme& scheme);

    /// Points or levels may have changed.
    void Refresh();
    /// A small part of the surface has changed.
    void ShowPatch(const terravo::SurfacePatch& patch);

    /// Another point may be marked.
    void FollowMark();

    /// Whether there is a sheet to look at, write and print.
    [[nodiscard]] bool HasSheet() const { return picSheet->Scene() != nullptr; }
    [[nodiscard]] SheetView& View() { return *picSheet; }
    [[nodiscard]] SurfaceTools& Tools() { return *tools_; }
    [[nodiscard]] MeasureTools& Measuring() { return *measuring_; }

    void Export();
    void Print();
    /// Measures, or chooses a rectangle; the tool that is chosen already ends.
    void Toggle(SheetTool tool);

    /// Has the user choose a printer and its page; false: none.
    std::function<bool(QPrinter& printer)> askPrinter;
    /// Asks whether to print in spite of what a sentence says.
    std::function<bool(const QString& sentence)> askAnyway;

signals:
    /// The window closes; its place is to be kept.
    void Closing();
    /// There is a sheet, or none any more, or another tool.
    void StateChanged();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    // What a sheet was made of.
    struct Origin {
        terravo::SheetPlan plan;
        terravo::LevelRule levels;
        std::uint64_t survey = 0;

        bool operator==(const Origin&) const = default;
    };

    QWidget* MakeColumn(terravo::SettingsStore& settings);
    QBoxLayout* MakeButtons(QWidget* parent);
    void ConnectControls();
    void ConnectView();
    void MakeSoon();
    void MakeNow();
    std::optional<terravo::SheetScene> MakeSheet(const terravo::SheetPlan& plan,
                                                 bool& wasInterrupted);
    std::shared_ptr<const terravo::SheetScene> SheetOfNow();
    void ShowSheet(std::optional<terravo::SheetScene> scene);
    void ForgetPlaceOfOtherFile();
    void TakeSheetOfProject();
    void ShowPointer(double x, double y);
    void MoveMap(double right, double down);
    void CentreAgain();
    void ShowState();
    [[nodiscard]] QString SmoothText() const;
    [[nodiscard]] QString Description() const;
    [[nodiscard]] QString MeasureText(const SheetDistance& distance) const;
    [[nodiscard]] Origin WantedOrigin() const;

    const terravo::RunState& state_;
    terravo::Session& session_;
    StatusPanel& status_;
    QTimer soon_;
    std::optional<Origin> made_; // of the last sheet, or of what could not be made
    std::optional<terravo::SmoothingOptions> shownSmoothing_;
    std::uint64_t projectSheet_ = 0; // the last one taken
    std::string file_;               // of the points that were shown last
    QString trouble_;                // why there is no such sheet
    SheetView* picSheet = nullptr;
    SurfaceTools* tools_ = nullptr;
    MeasureTools* measuring_ = nullptr;
    SheetPanel* pnlSheet = nullptr;
    SheetStyleBox* pnlStyles = nullptr;
    QLabel* lblSheet = nullptr;
    QPushButton* cmdFit = nullptr;
    QPushButton* cmdTrueSize = nullptr;
    QPushButton* cmdMeasure = nullptr;
    QPushButton* cmdCentre = nullptr;
    QPushButton* cmdExport = nullptr;
    QPushButton* cmdPrint = nullptr;
};

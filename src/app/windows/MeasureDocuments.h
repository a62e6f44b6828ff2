// The windows of measuring, and what goes between them, the menu, the sheet and the session.
//
// Data: the log of the run; the windows, while they are open. Method: a command of the menu becomes
// one operation of the session, and what comes of it is shown. The sheet and the section tell each
// other where the pointer is. When the survey changes, what is quick is measured again, all else
// says that it is older.
#pragma once

#include "app/session/MeasureLog.h"
#include "app/settings/ColourScheme.h"
#include "app/windows/DifferenceWindow.h"
#include "app/windows/DocumentPlaces.h"
#include "app/windows/MeasureDialogs.h"
#include "app/windows/MeasureMenu.h"
#include "app/windows/MeasureWindow.h"
#include "app/windows/SectionWindow.h"
#include "app/windows/SheetWindow.h"

#include <QObject>
#include <QPointer>
#include <QTimer>

#include <functional>
#include <optional>

class StatusPanel;

class MeasureDocuments : public QObject {
    Q_OBJECT

public:
    MeasureDocuments(const terravo::RunState& state, terravo::Session& session, StatusPanel& status,
                     const terravo::ColourScheme& scheme, QObject* parent);

    /// What the parent does for the windows.
    struct Room {
        /// Makes a window a document and shows it.
        /// @return what keeps its place when it closes.
        std::function<std::function<void()>(QWidget* content, const DocumentKind& kind)> add;
        std::function<void(const QWidget& content)> activate;
        std::function<void()> openSheet; // which is told by SetSheet
    };
    void SetRoom(Room room) { room_ = std::move(room); }
    void SetSheet(SheetWindow* sheet);

    /// Ask the user; nothing: cancelled. Tests set others.
    std::function<std::optional<double>(const DatumDialog::Proposal& proposal)> askHeight;
    std::function<std::optional<CrossDialog::Choice>(const CrossDialog::Choice& proposal,
                                                     double height, bool hasSecond)>
        askCross;

    void Run(MeasureCommand command);
    /// The survey may have changed.
    void Follow() { follow_.start(0); }

signals:
    /// The second survey, the polygon or the section are others.
    void FrameChanged();

private:
    void Ask(const terravo::MeasureQuestion& question);
    [[nodiscard]] QString HeightIn(const terravo::MeasureReport& report) const;
    void AskToDatum();
    void AskCross();
    void Again(std::size_t entry);
    void TakeTool(SheetTool tool);
    void Compare();
    void DrawSection(const std::vector<terravo::PlanPoint>& line);
    void RemakeSection();
    void ForgetSection();
    void ShowResults(bool selectsNewest, bool comesToFront);
    void ShowSection();
    void ShowDifference();
    void FollowDifference();
    void RemakeCross();
    void ExportDifference();
    void ShowOverlay();
    void ChangeFrame();
    void FollowNow();
    void MeasureAgain(const terravo::MeasureStand& now);
    void PointOnSheet(double x, double y);
    void PointAwayFromSheet();
    template <class Window>
    void AddDocument(Window* window, const DocumentKind& kind);

    const terravo::RunState& state_;
    terravo::Session& session_;
    StatusPanel& status_;
    const terravo::ColourScheme& scheme_;
    Room room_;
    terravo::MeasureLog log_;
    terravo::MeasureStand stand_; // that the windows show
    std::optional<double> lastHeight_;
    std::optional<CrossDialog::Choice> lastCross_;
    std::optional<terravo::MeasureQuestion> crossShown_;   // that the section window shows
    std::optional<terravo::MeasureStand> differenceStand_; // that its window shows
    bool hasMarked_ = false;                               // a place on the sheet
    QTimer follow_;
    QPointer<SheetWindow> sheet_;
    QPointer<MeasureWindow> results_;
    QPointer<SectionWindow> section_;
    QPointer<DifferenceWindow> difference_;
};

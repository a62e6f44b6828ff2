// The survey check: what is likely to be wrong with the points, one by one, and which of them are
// left out.
//
// Data: the session's review and survey. Method: the row that is current marks its point on the map
// and shows it from nearby; a box, the space bar for all selected rows, excludes points.
#pragma once

#include "app/session/Session.h"
#include "app/settings/ColourScheme.h"
#include "app/windows/FindingsModel.h"

#include <QLabel>
#include <QPushButton>
#include <QSortFilterProxyModel>
#include <QTreeView>
#include <QWidget>

class CloseUpView;
class QBoxLayout;

class CheckWindow : public QWidget {
    Q_OBJECT

public:
    CheckWindow(const terravo::RunState& state, terravo::Session& session,
                const terravo::ColourScheme& scheme);

    /// The findings, or what is excluded, may have changed; points that have not been checked are
    /// checked soon.
    void Refresh();

    /// Another point may be marked: its finding becomes the current one, where it has any.
    void FollowMark();

signals:
    /// The window closes; its place is to be kept.
    void Closing();

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void MakeControls();
    QBoxLayout* MakeButtons();
    void ConnectControls();
    void ShowCounts();
    void ShowCurrent();
    void ToggleSelected();

    const terravo::RunState& state_;
    terravo::Session& session_;
    FindingsModel findings_;
    QSortFilterProxyModel sorted_;
    QLabel* lblFindings = nullptr;
    QLabel* lblSentence = nullptr;
    QLabel* lblExcluded = nullptr;
    QTreeView* lstFindings = nullptr;
    CloseUpView* picCloseUp = nullptr;
    QPushButton* cmdCheck = nullptr;
    QPushButton* cmdTakeBack = nullptr;
    QPushButton* cmdSaveRest = nullptr;
    QPushButton* cmdSaveExcluded = nullptr;
};

// The project as the windows show it and keep it over a crash.
//
// Data: the session, its recovery file. Method: after each command the title tells the project and
// whether it is saved; some seconds after the last change unsaved work goes into the recovery file,
// which goes when there is none any more.
#pragma once

#include "app/project/RecoveryFiles.h"
#include "app/session/ProjectState.h"

#include <QObject>
#include <QTimer>

#include <optional>
#include <string>

class frmProve;
class QWidget;

namespace terravo {
class Session;
} // namespace terravo

class ProjectKeeper : public QObject {
    Q_OBJECT

public:
    static constexpr int kDelayMilliseconds = 3000;

    /// @param window          gets the offer to restore.
    /// @param parent          has the title; the keeper goes with it, if not before.
    /// @param recoveryFolder  see RecoveryFiles.
    ProjectKeeper(terravo::Session& session, frmProve& window, QWidget& parent,
                  terravo::ProjectQuestions& questions, const std::string& recoveryFolder);
    /// Writes what is unsaved: the system may be ending the session.
    ~ProjectKeeper() override;

    /// Writes what is unsaved now, not after the delay.
    void KeepNow();

private:
    void Refresh();
    void ShowTitle(bool unsaved);
    bool OfferToRestore();

    terravo::Session& session_;
    QWidget& parent_;
    terravo::ProjectQuestions& questions_;
    terravo::RecoveryFiles files_;
    std::optional<terravo::ProjectWork> seen_; // unsaved, written or about to be
    QTimer soon_;
};

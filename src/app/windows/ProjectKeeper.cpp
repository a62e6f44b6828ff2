#include "app/windows/ProjectKeeper.h"

#include "app/session/Session.h"
#include "app/windows/Controls.h"
#include "app/windows/frmProve.h"
#include "util/AppError.h"
#include "util/PathText.h"
#include "util/SystemServices.h"

ProjectKeeper::ProjectKeeper(terravo::Session& session, frmProve& window, QWidget& parent,
                             terravo::ProjectQuestions& questions,
                             const std::string& recoveryFolder)
    : session_(session), parent_(parent), questions_(questions), files_(recoveryFolder) {
    soon_.setSingleShot(true);
    connect(&soon_, &QTimer::timeout, this, &ProjectKeeper::KeepNow);
    connect(&window, &frmProve::ProjectChanged, this, &ProjectKeeper::Refresh);
    window.offerToRestore = [this] { return OfferToRestore(); };
}

ProjectKeeper::~ProjectKeeper() {
    if (soon_.isActive()) {
        KeepNow();
    }
}

// Commands that come one after the other put the writing off.
void ProjectKeeper::Refresh() {
    const bool unsaved = session_.HasUnsavedWork();
    ShowTitle(unsaved);
    if (!unsaved) {
        soon_.stop();
        seen_.reset();
        files_.Remove();
        return;
    }
    terravo::ProjectWork work = session_.Work();
    if (seen_ != work) {
        seen_ = std::move(work);
        soon_.start(kDelayMilliseconds);
    }
}

void ProjectKeeper::ShowTitle(bool unsaved) {
    const std::string name = session_.ProjectName();
    parent_.setWindowTitle(name.empty() ? QStringLiteral("Terravo")
                                        : ToQString(name) + QStringLiteral("[*] \u2013 Terravo"));
    parent_.setWindowModified(unsaved);
}

// Without a checksum, which may take long: the length of the point file has to do.
void ProjectKeeper::KeepNow() {
    if (session_.IsAtWork()) {
        soon_.start(kDelayMilliseconds);
        return;
    }
    soon_.stop();
    if (!session_.HasUnsavedWork()) {
        return;
    }
    try {
        files_.Write(session_.ProjectToRecover());
    } catch (const terravo::AppError& error) {
        terravo::StderrLog().Write(error.what());
    }
}

// One that is restored stays until this program has written it as its own.
bool ProjectKeeper::OfferToRestore() {
    while (std::optional<terravo::RecoveryFiles::Leftover> leftover = files_.TakeLeftover()) {
        const terravo::Project& project = leftover->project;
        const std::string& path = project.recovers.empty() ? project.source.path : project.recovers;
        const terravo::RestoreAnswer answer =
            questions_.AskToRestore(terravo::SplitPath(path).name);
        if (answer == terravo::RestoreAnswer::Later) {
            return false;
        }
        if (answer == terravo::RestoreAnswer::Restore) {
            if (!session_.Restore(project)) {
                return false;
            }
            KeepNow();
        }
        terravo::RecoveryFiles::Drop(*leftover);
        if (answer == terravo::RestoreAnswer::Restore) {
            return true;
        }
    }
    return false;
}

// The main window's entries that shape the surface by lines, rings and the longest side.
#include "app/windows/CodesDialog.h"
#include "app/windows/Controls.h"
#include "app/windows/LinesDialog.h"
#include "app/windows/LongestSideDialog.h"
#include "app/windows/StatusPanel.h"
#include "app/windows/frmProve.h"

using terravo::LineRole;
using terravo::Text;

namespace {

constexpr Text kCaptions[] = {
    Text::SurfaceBreaklines,  Text::SurfaceCodes, Text::SurfaceBoundary, Text::SurfaceHoles,
    Text::SurfaceLongestSide, Text::SurfaceLines, Text::SurfaceVerify};

} // namespace

void frmProve::AddSurfaceEntries() {
    const auto add = [this](const char* name, auto run) {
        QAction* entry = Named(mnuSurvey->addAction(QString()), name);
        entry->setEnabled(false);
        connect(entry, &QAction::triggered, this, run);
        surfaceEntries_.push_back(entry);
        return entry;
    };
    add("mnuBreaklines", [this] { session_.AddLineFile(LineRole::Breakline); });
    add("mnuCodes", [this] { ShowCodes(); });
    add("mnuBoundary", [this] { session_.AddLineFile(LineRole::Boundary); });
    add("mnuHoles", [this] { session_.AddLineFile(LineRole::Hole); });
    add("mnuLongestSide", [this] { ShowLongestSide(); });
    add("mnuLines", [this] { ShowLines(); })->setShortcut(QKeySequence(Qt::Key_F8));
    add("mnuVerify", [this] { session_.VerifySurface(); });
}

void frmProve::SetSurfaceCaptions() {
    for (std::size_t i = 0; i < surfaceEntries_.size(); ++i) {
        surfaceEntries_[i]->setText(Caption(state_, kCaptions[i]));
        surfaceEntries_[i]->setToolTip(
            surfaceEntries_[i]->isEnabled() ? QString() : Caption(state_, Text::CheckNoPoints));
    }
}

void frmProve::ShowLongestSide() {
    LongestSideDialog dialog(state_, session_, this);
    if (dialog.exec() == QDialog::Accepted) {
        session_.SetLongestSide(dialog.Length());
    }
}

void frmProve::ShowCodes() {
    const std::vector<terravo::CodeCount> codes = terravo::CodesOf(session_.Points());
    if (codes.empty()) {
        status_.ShowNote(Caption(state_, Text::CodesNone));
        return;
    }
    CodesDialog dialog(state_, codes, this);
    if (dialog.exec() == QDialog::Accepted) {
        session_.AddCodeLines(dialog.Chosen());
    }
}

void frmProve::ShowLines() {
    LinesDialog dialog(state_, session_.TheSurvey(), this);
    if (dialog.exec() == QDialog::Accepted) {
        session_.ApplyPlan(dialog.Plan(), Text::StepRemoveLines);
    }
}

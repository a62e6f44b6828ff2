// The window of the difference of two surveys: a sheet of its own, with its legend.
//
// Data: the difference surface and the sheet made of it. Method: it is made once, when it is asked
// for, and stays what it was: where the surveys have changed since, the title says so, and there is
// a button that makes it anew. The pointer says the difference at its place.
#pragma once

#include "app/session/Session.h"
#include "app/settings/ColourScheme.h"
#include "app/windows/SheetView.h"

#include <QLabel>
#include <QPushButton>
#include <QWidget>

#include <optional>

class DifferenceWindow : public QWidget {
    Q_OBJECT

public:
    DifferenceWindow(const terravo::RunState& state, terravo::Session& session,
                     const terravo::ColourScheme& scheme);

    /// @return false where no sheet could be made of it, or that was stopped.
    bool Show(terravo::DifferenceSurface difference);
    /// The surveys may be others than those that are shown. What is old is not handed out.
    /// @param since      what has come since, for the title; none: what is shown still holds.
    /// @param canBeMade  whether there still are two.
    void SetStale(std::optional<terravo::Text> since, bool canBeMade);
    [[nodiscard]] SheetView& View() { return *picDifference; }

signals:
    /// The window closes; its place is to be kept.
    void Closing();
    /// A file for CAD and GIS is wanted.
    void ExportAsked();
    /// The difference of now is wanted.
    void AgainAsked();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void MakeControls();
    void Export();
    void ShowPointer(double x, double y);

    const terravo::RunState& state_;
    terravo::Session& session_;
    terravo::DifferenceSurface difference_;
    terravo::Index triangle_ = 1; // where the pointer was
    SheetView* picDifference = nullptr;
    QLabel* lblDifference = nullptr;
    QPushButton* cmdExport = nullptr;
    QPushButton* cmdExportVector = nullptr;
    QPushButton* cmdAgain = nullptr;
};

// The window of sections: the profile along the line that was drawn, and those across it.
//
// Data: the figures of the section and of its cross-sections; the sheet of the one that is shown.
// Method: the sheet is made by the same code as for a file and lies in the same view as the map's,
// on a paper as large as the view.
// The pointer over it says station and heights, and is told as a place of the survey; a place near
// the line is shown as a station.
#pragma once

#include "app/session/Session.h"
#include "app/settings/ColourScheme.h"
#include "app/windows/SheetView.h"
#include "sheet/section/SectionSheet.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <QWidget>

#include <optional>
#include <vector>

class QBoxLayout;

class SectionWindow : public QWidget {
    Q_OBJECT

public:
    SectionWindow(const terravo::RunState& state, terravo::Session& session,
                  const terravo::ColourScheme& scheme);

    /// The section along the axis; the cross-sections of another axis are gone.
    void ShowSection(terravo::SectionFigures section);
    /// Those across it; the first one is shown.
    /// @param datum  that they are compared with, where there is no second survey.
    void ShowCross(terravo::CrossSectionFigures cross, std::optional<double> datum);
    /// There is no section any more.
    void Clear();
    /// Whether the surfaces are others than those that are shown.
    void SetStale(bool isStale);

    /// The line on the map of the section that is shown; null: there is none.
    [[nodiscard]] const std::vector<terravo::PlanPoint>* ShownLine() const;
    /// All cross-sections; null: there are none.
    [[nodiscard]] const terravo::CrossSectionFigures* Cross() const {
        return cross_ ? &*cross_ : nullptr;
    }
    /// Marks a station of the section that is shown, or none.
    void MarkStation(std::optional<double> station);

    [[nodiscard]] SheetView& View() { return *picSection; }

signals:
    /// The window closes; its place is to be kept.
    void Closing();
    /// Another section is shown.
    void ShownChanged();
    /// The pointer is over the profile: the place on the map.
    void Pointed(double x, double y);
    void PointerLeft();
    /// What is shown is to be made of the surfaces of now.
    void AgainAsked();

protected:
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void MakeControls();
    QBoxLayout* MakeRow();
    void ConnectControls();
    void ListSections();
    void EnableExports();
    void Draw();
    [[nodiscard]] terravo::PaperSize PaperOfView() const;
    [[nodiscard]] terravo::SectionSheet MakeSheet(const terravo::SectionFigures& shown,
                                                  const terravo::PaperSize& paper) const;
    void ShowPointer(double x, double y);
    void Export();
    void SaveCsv();
    [[nodiscard]] const terravo::SectionFigures* Shown() const;
    [[nodiscard]] std::optional<double> Datum() const;
    [[nodiscard]] QString TextAt(const terravo::SectionFigures& section, double station) const;
    [[nodiscard]] QString TextOfVolumes(const terravo::SectionFigures& section) const;
    [[nodiscard]] QString Number(double value) const;

    const terravo::RunState& state_;
    terravo::Session& session_;
    std::optional<terravo::SectionFigures> section_;
    std::optional<terravo::CrossSectionFigures> cross_;
    std::optional<double> datum_; // of the cross-sections
    terravo::SectionView place_;  // of the one that is shown
    bool isStale_ = false;
    QTimer soon_;
    SheetView* picSection = nullptr;
    QComboBox* cmbShown = nullptr;
    QComboBox* cmbExaggeration = nullptr;
    QLabel* lblPlace = nullptr;
    QLabel* lblVolumes = nullptr;
    QPushButton* cmdExport = nullptr;
    QPushButton* cmdSaveCsv = nullptr;
    QPushButton* cmdAgain = nullptr;
};

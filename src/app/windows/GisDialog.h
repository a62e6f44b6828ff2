// The dialog that asks what is to be read of a file of another program.
//
// Data: the list of its layers, and a plan. Method: a control changes the plan, which is judged at
// once; what keeps it from being carried out is said beside the button. The file is read after the
// dialog.
#pragma once

#include "gis/GisChoice.h"
#include "util/RunState.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QSpinBox>
#include <QTreeWidget>

class QDialogButtonBox;
class QGridLayout;

class GisDialog : public QDialog {
    Q_OBJECT

public:
    /// @param begin  see GisDialogService.
    GisDialog(const terravo::RunState& state, const std::string& path,
              const terravo::GisSource& source, const terravo::GisPlan& begin,
              QWidget* parent = nullptr);

    /// What stands in the dialog.
    [[nodiscard]] terravo::GisPlan Plan() const;

private:
    void MakeLayers(const terravo::GisPlan& begin);
    [[nodiscard]] QTreeWidgetItem* RowOf(const terravo::GisLayer& layer) const;
    [[nodiscard]] QLayout* MakeChoices(const terravo::GisPlan& begin);
    void AddChoice(QGridLayout& grid, int row, terravo::Text caption, QWidget* control);
    void FillSystems(const terravo::GisPlan& begin);
    [[nodiscard]] QLayout* MakeEnd();
    void Connect();
    void ShowHeights();
    void ShowPlan();
    [[nodiscard]] QString NamedHeights() const;
    [[nodiscard]] std::vector<std::string> ChosenLayers() const;
    [[nodiscard]] std::optional<int> TypedCode() const;
    [[nodiscard]] QString SystemText(const terravo::GisSystem& system) const;
    [[nodiscard]] QString Reason(const terravo::GisPlan& plan) const;
    [[nodiscard]] QString Warning(const terravo::GisPlan& plan) const;

    const terravo::RunState& state_;
    const terravo::GisSource& source_;
    QTreeWidget* lstLayers;
    QComboBox* cmbHeights;
    QComboBox* cmbCoordinates;
    QLineEdit* txtSystem;
    QSpinBox* spnStep;
    QLabel* lblCount;
    QLabel* lblReason;
    QDialogButtonBox* buttons_;
};

/// Asks with the dialog, over the window that is active.
class QtGisDialogs : public terravo::GisDialogService {
public:
    explicit QtGisDialogs(const terravo::RunState& state) : state_(state) {}
    std::optional<terravo::GisPlan> Ask(const std::string& path, const terravo::GisSource& source,
                                        const terravo::GisPlan& begin) override;

private:
    const terravo::RunState& state_;
};

// The controls of a sheet: what a SheetPlan says, as boxes to choose in.
//
// Data: a plan. Method: each control stands for one field; a change of any gives the plan anew. The
// place of the map, which the sheet itself is taken by, is kept as it is.
#pragma once

#include "app/windows/SmoothSlider.h"
#include "sheet/SheetPlan.h"
#include "util/RunState.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QSpinBox>
#include <QWidget>

class QFormLayout;
class QVBoxLayout;

class SheetPanel : public QWidget {
    Q_OBJECT

public:
    explicit SheetPanel(const terravo::RunState& state, QWidget* parent = nullptr);

    [[nodiscard]] const terravo::SheetPlan& Plan() const { return plan_; }
    /// Shows a plan, without telling of a change.
    void SetPlan(const terravo::SheetPlan& plan);
    /// Moves the map without a control of its own.
    void SetCentre(const std::optional<terravo::PlanPoint>& centre) { plan_.centre = centre; }
    /// Between neighbouring levels, data units.
    void SetLargestStep(double step) { sldSmooth->SetLargestStep(step); }

signals:
    /// By the user.
    void Changed();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    template <class Widget>
    Widget* AddRow(QFormLayout& form, terravo::Text label, Widget* control, const char* name);
    QFormLayout* AddGroup(terravo::Text title, const char* name);
    void AddPaperGroup();
    void AddLookGroup();
    void AddValuesGroup();
    void AddTitleGroup();
    void ConnectControls();
    void LeaveTheWheel();
    void ReadControls();
    void ReadPaper();
    void ReadScale();
    void ReadSmoothing();
    [[nodiscard]] QString ScaleText() const;
    [[nodiscard]] QString Say(terravo::Text text) const;

    const terravo::RunState& state_;
    terravo::SheetPlan plan_;
    bool isShowing_ = false; // the program, not the user, sets the controls
    QVBoxLayout* layout_;
    QComboBox* cmbPaper = nullptr;
    QComboBox* cmbOrientation = nullptr;
    QComboBox* cmbScale = nullptr;
    QDoubleSpinBox* spnRotation = nullptr;
    QComboBox* cmbTheme = nullptr;
    QListWidget* lstLayers = nullptr;
    QComboBox* cmbGrid = nullptr;
    QSpinBox* spnIndexEvery = nullptr;
    SmoothSlider* sldSmooth = nullptr;
    QComboBox* cmbLabels = nullptr;
    QDoubleSpinBox* spnSpacing = nullptr;
    QCheckBox* chkUphill = nullptr;
    QDoubleSpinBox* spnTextHeight = nullptr;
    QLineEdit* txtTitle = nullptr;
    QLineEdit* txtProject = nullptr;
    QLineEdit* txtDate = nullptr;
    QLineEdit* txtDatum = nullptr;
    QLineEdit* txtAuthor = nullptr;
};

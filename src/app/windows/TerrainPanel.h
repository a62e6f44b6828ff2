// The controls of a terrain: what a TerrainPlan says, the stretching of heights, the view.
//
// Data: a plan and a factor. Method: each control stands for one field; a change of any is told.
// The slider of the factor goes by its logarithm, so that halving and doubling are one way.
#pragma once

#include "util/RunState.h"
#include "view3d/terrain/TerrainPlan.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QSlider>
#include <QWidget>

class QVBoxLayout;

class TerrainPanel : public QWidget {
    Q_OBJECT

public:
    explicit TerrainPanel(const terravo::RunState& state, QWidget* parent = nullptr);

    [[nodiscard]] const terravo::TerrainPlan& Plan() const { return plan_; }
    void SetPlan(const terravo::TerrainPlan& plan);
    /// Shows a factor and a kind of view, without telling of a change.
    void ShowCamera(double exaggeration, bool perspective);

signals:
    void Changed();
    void WholeAsked();
    void ExportAsked();
    void CopyAsked();
    void ExaggerationChanged(double factor);
    void PerspectiveChanged(bool perspective);

private:
    QPushButton* AddButton(terravo::Text text, const char* name);
    void AddColours();
    void AddHeights();
    void AddLook();
    void AddLayers();
    void AddLight();
    QCheckBox* AddCheck(terravo::Text text, const char* name, bool terravo::TerrainPlan::*field);
    QSlider* AddSlider(terravo::Text text, const char* name, int low, int high);
    void ShowFactor(double factor);

    const terravo::RunState& state_;
    terravo::TerrainPlan plan_;
    bool isShowing_ = false;
    QVBoxLayout* layout_;
    QComboBox* cmbColour = nullptr;
    QComboBox* cmbTheme = nullptr;
    struct Check {
        QCheckBox* box;
        bool terravo::TerrainPlan::*field;
    };
    std::vector<Check> checks_;
    QListWidget* lstTerrainLayers = nullptr;
    QCheckBox* chkParallel = nullptr;
    QSlider* sldHeights = nullptr;
    QLabel* lblFactor = nullptr;
    QPushButton* cmdTrueScale = nullptr;
    QSlider* sldLightFrom = nullptr;
    QSlider* sldLightHeight = nullptr;
};

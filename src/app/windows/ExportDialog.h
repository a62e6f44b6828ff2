// The dialog of a vector file: its format, what it is to hold, its units.
//
// Data: what was chosen last. Method: the boxes of what a format cannot hold are disabled; each
// format has ticks of its own, which come back with it.
#pragma once

#include "app/settings/ExportHabit.h"
#include "util/RunState.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <array>

class QFormLayout;

class ExportDialog : public QDialog {
    Q_OBJECT

public:
    /// @param state     texts and the decimal sign.
    /// @param settings  of the habits.
    /// @param levels    those in force, in words.
    ExportDialog(const terravo::RunState& state, const terravo::SettingsStore& settings,
                 const QString& levels, QWidget* parent = nullptr);

    [[nodiscard]] const terravo::VectorFormat& Format() const;
    /// What stands in the dialog.
    [[nodiscard]] terravo::ExportHabit Habit() const;
    /// Shows other levels.
    void SetLevels(const QString& levels) { lblLevels->setText(levels); }

    /// For what has its own levels, and lines as they are cut.
    void HideChoiceOfLines();

signals:
    /// The levels are to be chosen anew.
    void LevelsAsked();

private:
    void MakeControls();
    [[nodiscard]] QWidget* MakeContent();
    [[nodiscard]] QWidget* MakeDxf();
    void AddValues(QFormLayout& form);
    [[nodiscard]] QWidget* MakeButtons();
    void FillIn(const terravo::ExportHabit& habit);
    void ShowFormat();
    void ShowParts(const terravo::VectorParts& parts);
    void ShowWhetherItCan();
    void ShowSmooth();
    [[nodiscard]] terravo::VectorParts Parts() const;
    [[nodiscard]] bool EpsgIsGood() const;
    [[nodiscard]] bool HeightIsGood() const;

    const terravo::RunState& state_;
    const terravo::SettingsStore& settings_;
    QComboBox* cmbFormat;
    QLabel* lblLevels;
    QPushButton* cmdLevels = nullptr;
    std::array<QCheckBox*, terravo::kVectorPartCount> parts_{};
    QGroupBox* grpDxf = nullptr;
    QComboBox* cmbDxfVersion;
    QCheckBox* chkIn3D;
    QCheckBox* chkLayerPerLevel;
    QCheckBox* chkSmooth;
    bool wantsSmooth_ = false; // ticked, where the format has such lines
    QComboBox* cmbUnit;
    QLineEdit* txtEpsg;
    QComboBox* cmbDecimals;
    QLineEdit* txtTextHeight;
    QPushButton* cmdExport = nullptr;
};

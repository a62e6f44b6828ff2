// The dialog of the level rule: a number, a round interval, or a list of heights.
//
// Data: the rule in force, the heights of the present points. Method: whatever is typed makes a
// rule, whose levels, or the reason why there are none, are shown before anything is drawn; typing
// into the fields of a rule chooses it.
#pragma once

#include "contour/LevelRule.h"
#include "util/RunState.h"

#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>

class QGridLayout;

class LevelsDialog : public QDialog {
    Q_OBJECT

public:
    /// @param state    texts and the decimal sign.
    /// @param rule     in force.
    /// @param heights  of the points in use.
    LevelsDialog(const terravo::RunState& state, const terravo::LevelRule& rule,
                 const terravo::Extent& heights, QWidget* parent = nullptr);

    /// What stands in the dialog; without a fault after it was accepted.
    [[nodiscard]] terravo::LevelRule Rule() const;

private:
    void MakeControls();
    void FillIn(const terravo::LevelRule& rule);
    void Connect();
    [[nodiscard]] QLayout* MakeRules();
    [[nodiscard]] QLayout* MakeButtons();
    [[nodiscard]] QString Typed(double value) const;
    [[nodiscard]] double NumberIn(const QString& text) const;
    [[nodiscard]] std::vector<double> ListIn(const QString& text) const;
    void ShowLevels();

    const terravo::RunState& state_;
    terravo::Extent heights_;
    QRadioButton* optCount;
    QSpinBox* spnCount;
    QRadioButton* optInterval;
    QComboBox* cmbInterval;
    QLabel* lblBase;
    QLineEdit* txtBase;
    QRadioButton* optList;
    QLineEdit* txtList;
    QLabel* lblResult;
    QPlainTextEdit* txtLevels;
    QPushButton* cmdDraw = nullptr;
};

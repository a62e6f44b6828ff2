// The named styles beside a sheet: choose one, keep the present one under a name, delete it.
//
// Data: the styles of the settings. Method: a choice is told; who has the plan applies it and hands
// over the one to keep.
#pragma once

#include "app/settings/SheetStyles.h"
#include "util/RunState.h"

#include <QComboBox>
#include <QPushButton>
#include <QWidget>

#include <functional>

class SheetStyleBox : public QWidget {
    Q_OBJECT

public:
    SheetStyleBox(const terravo::RunState& state, terravo::SettingsStore& settings,
                  QWidget* parent = nullptr);

    [[nodiscard]] terravo::SheetStyles& Styles() { return styles_; }

    /// The plan that is kept under a new name. To be set.
    std::function<terravo::SheetPlan()> present;
    /// Asks for a name; empty where the user gives none.
    std::function<QString(const QString& proposed)> askName;

signals:
    void Chosen(const std::string& name);

private:
    void FillNames(const QString& shown);
    void Keep();
    void Remove();

    const terravo::RunState& state_;
    terravo::SheetStyles styles_;
    QComboBox* cmbStyle;
    QPushButton* cmdKeepStyle;
    QPushButton* cmdRemoveStyle;
};

// The dialog that asks how a file of points is to be read.
//
// Data: a draft of the plan, which knows the head of the file. Method: a control changes the draft,
// and everything is shown anew; the file is read after the dialog, by the plan that was chosen.
#pragma once

#include "survey/import/ImportChoice.h"
#include "survey/import/ImportDraft.h"
#include "util/RunState.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSpinBox>
#include <QTableView>

class PlanPreview;
class PreviewModel;
class QDialogButtonBox;
class QGridLayout;
class RoleHeader;

class ImportDialog : public QDialog {
    Q_OBJECT

public:
    /// @param state, inspection, remembered  see ImportDialogService.
    ImportDialog(const terravo::RunState& state, const std::string& path,
                 const terravo::Inspection& inspection,
                 const std::optional<terravo::ImportPlan>& remembered, QWidget* parent = nullptr);

    /// What stands in the dialog, after it was accepted.
    [[nodiscard]] terravo::ImportChoice Choice() const;

private:
    [[nodiscard]] QLayout* MakeChoices();
    [[nodiscard]] QWidget* MakePreview();
    [[nodiscard]] QLayout* MakeEnd();
    void AddChoice(QGridLayout& grid, int row, int column, terravo::Text caption, QWidget* control,
                   int width = 1);
    void FillLists();
    void Connect();
    void ShowDraft();
    void ShowChoices();
    void ShowColumns();
    void ShowTable();
    void ShowReason();
    void OrderTabs();
    void ScrollToColumn(int column);
    [[nodiscard]] QString Reason() const;

    const terravo::RunState& state_;
    terravo::ImportDraft draft_;
    QLabel* lblDoubt;
    QComboBox* cmbColumns;
    QComboBox* cmbSeparator;
    QComboBox* cmbDecimal;
    QSpinBox* spnHeaderLines;
    QComboBox* cmbEncoding;
    QLineEdit* txtVoids;
    QCheckBox* chkFreeList;
    QTableView* tblLines;
    RoleHeader* header_;
    PreviewModel* model_;
    PlanPreview* picPlan;
    QLabel* lblPoints;
    QPlainTextEdit* txtLeftOut;
    QCheckBox* chkSkipBad;
    QLabel* lblReason;
    QDialogButtonBox* buttons_;
};

/// Asks with the dialog, over the window that is active.
class QtImportDialogs : public terravo::ImportDialogService {
public:
    explicit QtImportDialogs(const terravo::RunState& state) : state_(state) {}
    std::optional<terravo::ImportChoice>
    Ask(const std::string& path, const terravo::Inspection& inspection,
        const std::optional<terravo::ImportPlan>& remembered) override;

private:
    const terravo::RunState& state_;
};

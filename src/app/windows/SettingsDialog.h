// The settings dialog: language and colours of the next start, thin above SettingsFiles.
#pragma once

#include "app/settings/OpeningWindows.h"
#include "util/RunState.h"

#include <QComboBox>
#include <QDialog>
#include <QLabel>

class SettingsDialog : public QDialog {
    Q_OBJECT

public:
    /// @param state  texts, and the user's folder that holds the files.
    explicit SettingsDialog(
        const terravo::RunState& state,
        terravo::OpeningWindows opensWith = terravo::OpeningWindows::MapAnd3DAndSheet,
        QWidget* parent = nullptr);

    /// The windows that are to open with a file; the caller keeps them.
    [[nodiscard]] terravo::OpeningWindows OpensWith() const;

    /// Writes what was changed and closes; a failure is said in the dialog, which stays open.
    void accept() override;

private:
    void FillLanguages();
    void FillColours();

    const terravo::RunState& state_;
    QComboBox* cmbLanguage;
    QComboBox* cmbColours;
    QComboBox* cmbOpensWith;
    QLabel* lblNote;
    int languageAtFirst_ = -1;
    int coloursAtFirst_ = -1;
};

// The window of what was measured: the measurements, newest first, and the figures of one.
//
// Data: the log of the run. Method: the row that is current shows its table, which can be copied
// for reading and for computing. Where the survey has changed, small ones are measured again at
// once; what is not is marked, and a button measures it again.
#pragma once

#include "app/session/MeasureLog.h"
#include "app/settings/ColourScheme.h"

#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTableWidget>
#include <QWidget>

class QBoxLayout;

class MeasureWindow : public QWidget {
    Q_OBJECT

public:
    /// @param log  outlives the window.
    MeasureWindow(const terravo::RunState& state, terravo::Session& session,
                  terravo::MeasureLog& log, const terravo::ColourScheme& scheme);

    /// The log, or whether its entries still hold, has changed.
    /// @param selectsNewest  whether the newest becomes the current one.
    void Refresh(bool selectsNewest = false);

signals:
    /// The window closes; its place is to be kept.
    void Closing();
    /// An entry of the log is to be measured again.
    void AgainAsked(std::size_t entry);
    void DifferenceSheetAsked();
    void DifferenceExportAsked();
    /// What there is to say for a moment.
    void Noted(const QString& text);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void MakeControls();
    QBoxLayout* MakeButtons();
    void ConnectControls();
    void ShowCurrent();
    void ShowTable(const terravo::MeasureReport& report);
    void Copy(const std::string& text);
    [[nodiscard]] const terravo::MeasureEntry* Current() const;

    const terravo::RunState& state_;
    terravo::Session& session_;
    terravo::MeasureLog& log_;
    QLabel* lblNothing = nullptr;
    QListWidget* lstMeasures = nullptr;
    QLabel* lblAbout = nullptr;
    QTableWidget* tblFigures = nullptr;
    QPushButton* cmdAgain = nullptr;
    QPushButton* cmdCopyText = nullptr;
    QPushButton* cmdCopyCsv = nullptr;
    QPushButton* cmdSaveCsv = nullptr;
    QPushButton* cmdDifferenceSheet = nullptr;
    QPushButton* cmdExportDifference = nullptr;
};

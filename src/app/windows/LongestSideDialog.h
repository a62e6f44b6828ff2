// The dialog of the longest side at the rim: a length, a proposal, and what it would hide.
//
// Data: the session, whose surface is looked at. Method: whatever is typed is tried on a copy of
// the rim, and its effect shown, before anything changes.
#pragma once

#include "app/session/Session.h"
#include "util/RunState.h"

#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

#include <optional>

class LongestSideDialog : public QDialog {
    Q_OBJECT

public:
    LongestSideDialog(const terravo::RunState& state, const terravo::Session& session,
                      QWidget* parent = nullptr);

    /// Nothing: no triangle is to be hidden.
    [[nodiscard]] std::optional<double> Length() const;

private:
    void Propose();
    void ShowEffect();
    [[nodiscard]] QString Number(double value) const;

    const terravo::RunState& state_;
    const terravo::Session& session_;
    QRadioButton* optNone;
    QRadioButton* optLength;
    QLineEdit* txtLength;
    QPushButton* cmdPropose;
    QLabel* lblWhy;
    QLabel* lblEffect;
    QPushButton* cmdOk = nullptr;
};

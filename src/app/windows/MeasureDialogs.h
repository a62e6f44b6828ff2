// The questions of measurements: a height, the spacing and width of cross-sections.
//
// Data: numbers that are proposed. Method: numbers with the user's decimal sign; nothing can be
// accepted that makes no sense.
#pragma once

#include "util/RunState.h"

#include <QCheckBox>
#include <QDialog>
#include <QDoubleSpinBox>
#include <QLabel>

#include <optional>

/// A box for lengths and heights.
QDoubleSpinBox* MakeNumberBox(QWidget* parent, const char* name, double value, double least);

class DatumDialog : public QDialog {
    Q_OBJECT

public:
    struct Proposal {
        double height = 0;
        double lowest = 0;
        double highest = 0;
        double balance = 0; // where cut and fill are equal
    };
    DatumDialog(const terravo::RunState& state, const Proposal& proposal,
                QWidget* parent = nullptr);

    /// As it was proposed, to the last digit, unless the user has changed it.
    [[nodiscard]] double Height() const { return height_; }

private:
    QDoubleSpinBox* spnHeight;
    double height_;
};

class CrossDialog : public QDialog {
    Q_OBJECT

public:
    struct Choice {
        double spacing = 0;
        double width = 0;
        std::optional<double> datum; // none: no areas, or those between two surveys
    };
    /// @param hasSecond  whether there are two surveys.
    /// @param height     proposed where there are not.
    CrossDialog(const terravo::RunState& state, const Choice& proposal, double height,
                bool hasSecond, QWidget* parent = nullptr);

    [[nodiscard]] Choice Chosen() const;

private:
    QDoubleSpinBox* spnSpacing;
    QDoubleSpinBox* spnWidth;
    QCheckBox* chkDatum = nullptr; // without a second survey
    QDoubleSpinBox* spnDatum = nullptr;
};

#include "app/windows/MeasureDialogs.h"

#include "app/session/MeasureReport.h"
#include "app/windows/Controls.h"
#include "app/windows/NumberBox.h"

#include <QBoxLayout>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QPushButton>

#include <algorithm>
#include <cmath>

using terravo::Text;

namespace {

constexpr double kMost = 1e9;
constexpr double kLeastLength = 0.001;

QDialogButtonBox* MakeButtons(const terravo::RunState& state, QDialog& dialog) {
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &dialog);
    Named(buttons->button(QDialogButtonBox::Ok), "cmdOk");
    Named(buttons->button(QDialogButtonBox::Cancel), "cmdCancel")
        ->setText(Caption(state, Text::Cancel));
    QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    return buttons;
}

void AddRow(QFormLayout& form, const QString& caption, QWidget* box) {
    form.addRow(caption, box);
    box->setAccessibleName(Spoken(caption));
}

} // namespace

QDoubleSpinBox* MakeNumberBox(QWidget* parent, const char* name, double value, double least) {
    constexpr int kDecimals = 3;
    auto* box = Named(new NumberBox(parent), name);
    box->setDecimals(kDecimals);
    box->setRange(least, kMost);
    box->setValue(value);
    box->setGroupSeparatorShown(false);
    box->setSuffix(QStringLiteral(" m"));
    return box;
}

DatumDialog::DatumDialog(const terravo::RunState& state, const Proposal& proposal, QWidget* parent)
    : QDialog(parent), spnHeight(MakeNumberBox(this, "spnHeight", proposal.height, -kMost)),
      height_(proposal.height) {
    connect(spnHeight, &QDoubleSpinBox::valueChanged, this,
            [this](double value) { height_ = value; });
    setObjectName(QStringLiteral("DatumDialog"));
    setWindowTitle(Caption(state, Text::MeasureDatumDialog));
    const auto number = [&state](double value) {
        return ToQString(terravo::ShownNumber(value, state.decimalSeparator));
    };
    auto* hint = new QLabel(
        Caption(state, Text::MeasureDatumHint)
            .arg(number(proposal.lowest), number(proposal.highest), number(proposal.balance)),
        this);
    hint->setWordWrap(true);
    auto* form = new QFormLayout;
    AddRow(*form, Caption(state, Text::MeasureDatumLabel), spnHeight);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(hint, 1);
    layout->addWidget(MakeButtons(state, *this));
    resize(380, 170);
    spnHeight->selectAll();
}

CrossDialog::CrossDialog(const terravo::RunState& state, const Choice& proposal, double height,
                         bool hasSecond, QWidget* parent)
    : QDialog(parent),
      spnSpacing(MakeNumberBox(this, "spnSpacing", proposal.spacing, kLeastLength)),
      spnWidth(MakeNumberBox(this, "spnWidth", proposal.width, kLeastLength)) {
    setObjectName(QStringLiteral("CrossDialog"));
    setWindowTitle(Caption(state, Text::MeasureCrossDialog));
    auto* form = new QFormLayout;
    AddRow(*form, Caption(state, Text::MeasureSpacingLabel), spnSpacing);
    AddRow(*form, Caption(state, Text::MeasureWidthLabel), spnWidth);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    if (hasSecond) {
        layout->addWidget(new QLabel(Caption(state, Text::MeasureCrossSecond), this));
    } else {
        chkDatum = Named(new QCheckBox(Caption(state, Text::MeasureCrossDatum), this), "chkDatum");
        spnDatum = MakeNumberBox(this, "spnDatum", proposal.datum.value_or(height), -kMost);
        spnDatum->setAccessibleName(Spoken(chkDatum->text()));
        chkDatum->setChecked(proposal.datum.has_value());
        spnDatum->setEnabled(chkDatum->isChecked());
        connect(chkDatum, &QCheckBox::toggled, spnDatum, &QWidget::setEnabled);
        form->addRow(chkDatum, spnDatum);
    }
    layout->addStretch(1);
    layout->addWidget(MakeButtons(state, *this));
    spnSpacing->selectAll();
}

CrossDialog::Choice CrossDialog::Chosen() const {
    Choice choice{spnSpacing->value(), spnWidth->value(), {}};
    if (chkDatum != nullptr && chkDatum->isChecked()) {
        choice.datum = spnDatum->value();
    }
    return choice;
}

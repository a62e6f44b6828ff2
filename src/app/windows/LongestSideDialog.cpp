#include "app/windows/LongestSideDialog.h"

#include "app/windows/Controls.h"
#include "util/NumberText.h"

#include <QBoxLayout>
#include <QDialogButtonBox>

#include <cmath>

using terravo::Text;

LongestSideDialog::LongestSideDialog(const terravo::RunState& state,
                                     const terravo::Session& session, QWidget* parent)
    : QDialog(parent), state_(state), session_(session),
      optNone(Named(new QRadioButton(Caption(state, Text::LongestSideOff), this), "optNone")),
      optLength(Named(new QRadioButton(Caption(state, Text::LongestSideLabel), this), "optLength")),
      txtLength(Named(new QLineEdit(this), "txtLength")),
      cmdPropose(
          Named(new QPushButton(Caption(state, Text::LongestSidePropose), this), "cmdPropose")),
      lblWhy(Named(new QLabel(this), "lblWhy")), lblEffect(Named(new QLabel(this), "lblEffect")) {
    setObjectName(QStringLiteral("LongestSideDialog"));
    setWindowTitle(Caption(state_, Text::LongestSideTitle));
    txtLength->setAccessibleName(Spoken(optLength->text()));
    lblWhy->setWordWrap(true);
    lblEffect->setWordWrap(true);
    auto* row = new QHBoxLayout;
    row->addWidget(txtLength, 1);
    row->addWidget(cmdPropose);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    cmdOk = Named(buttons->button(QDialogButtonBox::Ok), "cmdOk");
    buttons->button(QDialogButtonBox::Cancel)->setText(Caption(state_, Text::Cancel));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(optNone);
    layout->addWidget(optLength);
    layout->addLayout(row);
    layout->addWidget(lblWhy);
    layout->addWidget(lblEffect, 1);
    layout->addWidget(buttons);
    resize(460, 280);

    const std::optional<double> present = session_.TheSurvey().Plan().longestSide;
    (present ? optLength : optNone)->setChecked(true);
    txtLength->setText(present ? Number(*present) : QString());
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(cmdPropose, &QPushButton::clicked, this, &LongestSideDialog::Propose);
    connect(optNone, &QRadioButton::toggled, this, &LongestSideDialog::ShowEffect);
    connect(txtLength, &QLineEdit::textEdited, this, [this] {
        optLength->setChecked(true);
        ShowEffect();
    });
    ShowEffect();
}

QString LongestSideDialog::Number(double value) const {
    return ToQString(terravo::NumberText::FormatScreen(value, "#0.0##", state_.decimalSeparator));
}

std::optional<double> LongestSideDialog::Length() const {
    if (optNone->isChecked()) {
        return std::nullopt;
    }
    QString text = txtLength->text().trimmed();
    text.replace(QLatin1Char(state_.decimalSeparator), QLatin1Char('.'));
    bool isNumber = false;
    const double value = text.toDouble(&isNumber);
    return isNumber && std::isfinite(value) && value > 0 ? std::optional(value) : std::nullopt;
}

void LongestSideDialog::Propose() {
    const terravo::LongestSideProposal proposal = session_.ProposeLongestSide();
    optLength->setChecked(true);
    txtLength->setText(Number(proposal.length));
    QString why =
        Caption(state_, Text::LongestSideWhy).arg(Number(proposal.length), Number(proposal.step));
    if (!proposal.strays.empty() || proposal.sites > 1) {
        why += QLatin1Char('\n') + Caption(state_, Text::LongestSideStrays)
                                       .arg(proposal.strays.size())
                                       .arg(proposal.sites);
    }
    lblWhy->setText(why);
    ShowEffect();
}

void LongestSideDialog::ShowEffect() {
    const std::optional<double> length = Length();
    cmdOk->setEnabled(optNone->isChecked() || length);
    if (!length) {
        lblEffect->clear();
        return;
    }
    const terravo::LongestSideEffect effect = session_.EffectOfLongestSide(*length);
    const terravo::ShownSurface shown = session_.TheSurvey().Surface();
    const terravo::Index all =
        shown.shaped == nullptr ? shown.triangles.count : shown.shaped->all.triangles.count;
    lblEffect->setText(Caption(state_, Text::LongestSideEffect)
                           .arg(effect.triangles)
                           .arg(all)
                           .arg(effect.points.size()));
}

#include "app/windows/LevelsDialog.h"

#include "app/windows/Controls.h"
#include "contour/LevelRuleText.h"

#include <QBoxLayout>
#include <QDialogButtonBox>
#include <QGridLayout>

#include <limits>

using terravo::LevelRule;
using terravo::LevelRuleKind;
using terravo::Text;

LevelsDialog::LevelsDialog(const terravo::RunState& state, const LevelRule& rule,
                           const terravo::Extent& heights, QWidget* parent)
    : QDialog(parent), state_(state), heights_(heights),
      optCount(Named(new QRadioButton(this), "optCount")),
      spnCount(Named(new QSpinBox(this), "spnCount")),
      optInterval(Named(new QRadioButton(this), "optInterval")),
      cmbInterval(Named(new QComboBox(this), "cmbInterval")),
      lblBase(Named(new QLabel(this), "lblBase")), txtBase(Named(new QLineEdit(this), "txtBase")),
      optList(Named(new QRadioButton(this), "optList")),
      txtList(Named(new QLineEdit(this), "txtList")),
      lblResult(Named(new QLabel(this), "lblResult")),
      txtLevels(Named(new QPlainTextEdit(this), "txtLevels")) {
    setObjectName(QStringLiteral("LevelsDialog"));
    setWindowTitle(Caption(state_, Text::LevelsTitle));
    MakeControls();
    FillIn(rule);
    Connect();
    ShowLevels();
}

void LevelsDialog::MakeControls() {
    optCount->setText(Caption(state_, Text::RuleCount));
    optInterval->setText(Caption(state_, Text::RuleInterval));
    lblBase->setText(Caption(state_, Text::RuleBase));
    lblBase->setBuddy(txtBase);
    optList->setText(Caption(state_, Text::RuleList));
    spnCount->setRange(terravo::kFewestLevels, terravo::kMostLevels);
    spnCount->setAccessibleName(Spoken(optCount->text()));
    cmbInterval->setEditable(true);
    cmbInterval->setInsertPolicy(QComboBox::NoInsert);
    cmbInterval->setCompleter(nullptr); // it would finish "5" as "50"
    cmbInterval->setAccessibleName(Spoken(optInterval->text()));
    txtBase->setAccessibleName(Spoken(lblBase->text()));
    txtList->setPlaceholderText(Caption(state_, Text::RuleListHint));
    txtList->setAccessibleName(Spoken(optList->text()));
    txtList->setAccessibleDescription(txtList->placeholderText());
    lblResult->setWordWrap(true);
    txtLevels->setReadOnly(true);
    txtLevels->setTabChangesFocus(true);
    txtLevels->setAccessibleName(Caption(state_, Text::LevelsTitle));

    auto* lblRange = Named(new QLabel(this), "lblRange");
    lblRange->setText(ToQString(
        terravo::WithValues(state_.texts[Text::LevelsRange], {Typed(heights_.min).toStdString(),
                                                              Typed(heights_.max).toStdString()})));
    auto* lblHold = Named(new QLabel(Caption(state_, Text::LevelsHold), this), "lblHold");
    lblHold->setWordWrap(true);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(lblRange);
    layout->addLayout(MakeRules());
    layout->addWidget(lblResult);
    layout->addWidget(txtLevels, 1);
    layout->addWidget(lblHold);
    layout->addLayout(MakeButtons());
    resize(520, 380);
}

QLayout* LevelsDialog::MakeRules() {
    auto* grid = new QGridLayout;
    grid->addWidget(optCount, 0, 0);
    grid->addWidget(spnCount, 0, 1);
    grid->addWidget(optInterval, 1, 0);
    grid->addWidget(cmbInterval, 1, 1);
    grid->addWidget(lblBase, 1, 2, Qt::AlignRight | Qt::AlignVCenter);
    grid->addWidget(txtBase, 1, 3);
    grid->addWidget(optList, 2, 0);
    grid->addWidget(txtList, 2, 1, 1, 3);
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(3, 1);
    return grid;
}

QLayout* LevelsDialog::MakeButtons() {
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    cmdDraw = Named(buttons->button(QDialogButtonBox::Ok), "cmdDraw");
    cmdDraw->setText(Caption(state_, Text::LevelsDraw));
    auto* cancel = Named(buttons->button(QDialogButtonBox::Cancel), "cmdCancel");
    cancel->setText(Caption(state_, Text::Cancel));
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QHBoxLayout;
    layout->addWidget(buttons);
    return layout;
}

// What the rule in force does not say is proposed for the present heights.
void LevelsDialog::FillIn(const LevelRule& rule) {
    (rule.kind == LevelRuleKind::ByInterval ? optInterval
     : rule.kind == LevelRuleKind::ByList   ? optList
                                            : optCount)
        ->setChecked(true);
    spnCount->setValue(rule.count);
    const std::vector<double> proposed = terravo::ProposedIntervals(heights_);
    for (const double interval : proposed) {
        cmbInterval->addItem(Typed(interval));
    }
    if (rule.kind == LevelRuleKind::ByInterval) {
        cmbInterval->setEditText(Typed(rule.interval));
    } else if (proposed.empty()) {
        cmbInterval->setEditText(Typed(1));
    }
    txtBase->setText(Typed(rule.base));
    QStringList values;
    for (const double value : rule.values) {
        values += Typed(value);
    }
    txtList->setText(values.join(QLatin1Char(' ')));
}

void LevelsDialog::Connect() {
    for (QRadioButton* option : {optCount, optInterval, optList}) {
        connect(option, &QRadioButton::toggled, this, &LevelsDialog::ShowLevels);
    }
    const auto typedInto = [this](QRadioButton* option) {
        return [this, option] {
            option->setChecked(true);
            ShowLevels();
        };
    };
    connect(spnCount, &QSpinBox::valueChanged, this, typedInto(optCount));
    connect(cmbInterval, &QComboBox::editTextChanged, this, typedInto(optInterval));
    connect(cmbInterval, &QComboBox::activated, this, typedInto(optInterval)); // the shown one too
    connect(txtBase, &QLineEdit::textChanged, this, typedInto(optInterval));
    connect(txtList, &QLineEdit::textChanged, this, typedInto(optList));
}

QString LevelsDialog::Typed(double value) const {
    return ToQString(terravo::TypedNumber(value, state_.decimalSeparator));
}

// What is no number makes a rule that says so.
double LevelsDialog::NumberIn(const QString& text) const {
    return terravo::ParseLevelNumber(text.toStdString(), state_.decimalSeparator)
        .value_or(std::numeric_limits<double>::quiet_NaN());
}

std::vector<double> LevelsDialog::ListIn(const QString& text) const {
    const std::string typed = text.trimmed().toStdString();
    if (typed.empty()) {
        return {};
    }
    return terravo::ParseLevelList(typed, state_.decimalSeparator)
        .value_or(std::vector{std::numeric_limits<double>::quiet_NaN()});
}

LevelRule LevelsDialog::Rule() const {
    if (optInterval->isChecked()) {
        return terravo::RuleByInterval(NumberIn(cmbInterval->currentText()),
                                       NumberIn(txtBase->text()));
    }
    if (optList->isChecked()) {
        return terravo::RuleByList(ListIn(txtList->text()));
    }
    return terravo::RuleByCount(spnCount->value());
}

void LevelsDialog::ShowLevels() {
    const LevelRule rule = Rule();
    const terravo::LevelFault fault = FaultOf(rule, heights_);
    const bool isGood = fault == terravo::LevelFault::None;
    lblResult->setText(ToQString(isGood ? terravo::ResultText(rule, heights_, state_.texts)
                                        : terravo::SentenceOf(fault, rule, heights_, state_.texts,
                                                              state_.decimalSeparator)));
    txtLevels->setPlainText(ToQString(
        terravo::TextOfLevels(rule, LevelValuesOf(rule, heights_), state_.decimalSeparator)));
    txtLevels->setEnabled(isGood);
    cmdDraw->setEnabled(isGood);
}

#include "app/windows/SettingsDialog.h"

#include "app/settings/SettingsFiles.h"
#include "app/windows/Controls.h"
#include "util/AppError.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QPushButton>

using terravo::ColourScheme;
using terravo::Text;

namespace {

enum class ColourChoice { Dark, Light, AsInTheFile };

} // namespace

SettingsDialog::SettingsDialog(const terravo::RunState& state, terravo::OpeningWindows opensWith,
                               QWidget* parent)
    : QDialog(parent), state_(state), cmbLanguage(new QComboBox(this)),
      cmbColours(new QComboBox(this)), cmbOpensWith(new QComboBox(this)),
      lblNote(new QLabel(this)) {
    setObjectName(QStringLiteral("SettingsDialog"));
    setWindowTitle(Caption(state_, Text::SettingsTitle));
    cmbLanguage->setObjectName(QStringLiteral("cmbLanguage"));
    cmbColours->setObjectName(QStringLiteral("cmbColours"));
    cmbOpensWith->setObjectName(QStringLiteral("cmbOpensWith"));
    lblNote->setObjectName(QStringLiteral("lblNote"));
    lblNote->setText(Caption(state_, Text::NextStart));
    lblNote->setWordWrap(true);
    FillLanguages();
    FillColours();
    for (const Text text : {Text::OpensClassic, Text::OpensBoth, Text::OpensSheet}) {
        cmbOpensWith->addItem(Caption(state_, text)); // in the order of the choices
    }
    cmbOpensWith->setCurrentIndex(static_cast<int>(opensWith));

    auto* form = new QFormLayout;
    form->addRow(Caption(state_, Text::Language), cmbLanguage);
    form->addRow(Caption(state_, Text::Colours), cmbColours);
    for (QComboBox* box : {cmbLanguage, cmbColours}) {
        auto* label = qobject_cast<QLabel*>(form->labelForField(box));
        box->setAccessibleName(Spoken(label->text()));
        box->setAccessibleDescription(lblNote->text());
    }
    form->addRow(Caption(state_, Text::OpensLabel), cmbOpensWith);
    cmbOpensWith->setAccessibleName(Spoken(Caption(state_, Text::OpensLabel)));
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Save | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Save)->setText(Caption(state_, Text::Save));
    buttons->button(QDialogButtonBox::Cancel)->setText(Caption(state_, Text::Cancel));
    buttons->button(QDialogButtonBox::Save)->setObjectName(QStringLiteral("cmdSave"));
    buttons->button(QDialogButtonBox::Cancel)->setObjectName(QStringLiteral("cmdCancel"));
    connect(buttons, &QDialogButtonBox::accepted, this, &SettingsDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(lblNote);
    layout->addStretch(1);
    layout->addWidget(buttons);
    setMinimumWidth(380);
}

terravo::OpeningWindows SettingsDialog::OpensWith() const {
    return static_cast<terravo::OpeningWindows>(cmbOpensWith->currentIndex());
}

void SettingsDialog::FillLanguages() {
    for (const terravo::LanguageChoice& choice : terravo::LanguageChoices(state_.supportFolder)) {
        cmbLanguage->addItem(QString::fromStdString(choice.name),
                             QString::fromStdString(choice.prefix));
    }
    const std::string prefix = terravo::LanguageAtNextStart(state_.userFolder);
    // The file without a prefix is the English one under another name.
    const QString shown = prefix.empty() ? QStringLiteral("en") : QString::fromStdString(prefix);
    cmbLanguage->setCurrentIndex(cmbLanguage->findData(shown));
    if (cmbLanguage->currentIndex() < 0 && prefix.empty()) {
        cmbLanguage->setCurrentIndex(cmbLanguage->findData(QString()));
    }
    languageAtFirst_ = cmbLanguage->currentIndex();
}

void SettingsDialog::FillColours() {
    const auto add = [this](Text text, ColourChoice choice) {
        cmbColours->addItem(Caption(state_, text), static_cast<int>(choice));
    };
    add(Text::Dark, ColourChoice::Dark);
    add(Text::Light, ColourChoice::Light);
    const ColourScheme inForce = terravo::ReadColourScheme(state_.userFolder);
    if (inForce == terravo::LightScheme()) {
        cmbColours->setCurrentIndex(1);
    } else if (inForce != ColourScheme{}) {
        add(Text::AsInTheFile, ColourChoice::AsInTheFile);
        cmbColours->setCurrentIndex(2);
    }
    coloursAtFirst_ = cmbColours->currentIndex();
}

// A choice that was not changed leaves its file alone.
void SettingsDialog::accept() {
    try {
        if (cmbLanguage->currentIndex() != languageAtFirst_) {
            terravo::WriteLanguage(state_.userFolder,
                                   cmbLanguage->currentData().toString().toStdString());
        }
        if (cmbColours->currentIndex() != coloursAtFirst_) {
            const auto choice = static_cast<ColourChoice>(cmbColours->currentData().toInt());
            if (choice != ColourChoice::AsInTheFile) {
                terravo::WriteColourScheme(state_.userFolder, choice == ColourChoice::Light
                                                                  ? terravo::LightScheme()
                                                                  : ColourScheme{});
            }
        }
    } catch (const terravo::AppError& error) {
        lblNote->setText(Caption(state_, Text::NotSaved) + QLatin1Char('\n') +
                         QString::fromLocal8Bit(error.what()));
        return;
    }
    QDialog::accept();
}

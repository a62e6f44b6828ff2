#include "app/windows/SettingsDialog.h"

#include "app/settings/SettingsFiles.h"
#include "app/windows/HelpTexts.h"
#include "util/AppError.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QPushButton>

using terravo::ColourScheme;
namespace TextIndex = terravo::HelpTextIndex;

namespace {

enum class ColourChoice { Dark, Light, AsInTheFile };

} // namespace

SettingsDialog::SettingsDialog(const terravo::RunState& state, QWidget* parent)
    : QDialog(parent), state_(state), cmbLanguage(new QComboBox(this)),
      cmbColours(new QComboBox(this)), lblNote(new QLabel(this)) {
    setObjectName(QStringLiteral("SettingsDialog"));
    setWindowTitle(Text(TextIndex::kSettingsTitle, "Settings"));
    cmbLanguage->setObjectName(QStringLiteral("cmbLanguage"));
    cmbColours->setObjectName(QStringLiteral("cmbColours"));
    lblNote->setObjectName(QStringLiteral("lblNote"));
    lblNote->setText(
        Text(TextIndex::kNextStart, "Language and colours take effect at the next start."));
    lblNote->setWordWrap(true);
    FillLanguages();
    FillColours();

    auto* form = new QFormLayout;
    form->addRow(Text(TextIndex::kLanguage, "&Language:"), cmbLanguage);
    form->addRow(Text(TextIndex::kColours, "&Colours:"), cmbColours);
    for (QComboBox* box : {cmbLanguage, cmbColours}) {
        auto* label = qobject_cast<QLabel*>(form->labelForField(box));
        box->setAccessibleName(label->text().remove(QLatin1Char('&')).remove(QLatin1Char(':')));
        box->setAccessibleDescription(lblNote->text());
    }
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Save | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Save)->setText(Text(TextIndex::kSave, "&Save"));
    buttons->button(QDialogButtonBox::Cancel)->setText(Text(TextIndex::kCancel, "Cancel"));
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

QString SettingsDialog::Text(std::size_t index, const char* english) const {
    return QString::fromStdString(state_.TextOr(index, english));
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
    const auto add = [this](std::size_t index, const char* english, ColourChoice choice) {
        cmbColours->addItem(Text(index, english), static_cast<int>(choice));
    };
    add(TextIndex::kDark, "Dark", ColourChoice::Dark);
    add(TextIndex::kLight, "Light", ColourChoice::Light);
    const ColourScheme inForce = terravo::ReadColourScheme(state_.userFolder);
    if (inForce == terravo::LightScheme()) {
        cmbColours->setCurrentIndex(1);
    } else if (inForce != ColourScheme{}) {
        add(TextIndex::kAsInTheFile, "As in the file", ColourChoice::AsInTheFile);
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
        lblNote->setText(Text(TextIndex::kNotSaved, "The settings cannot be saved.") +
                         QLatin1Char('\n') + QString::fromLocal8Bit(error.what()));
        return;
    }
    QDialog::accept();
}

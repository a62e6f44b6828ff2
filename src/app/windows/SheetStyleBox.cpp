#include "app/windows/SheetStyleBox.h"

#include "app/windows/Controls.h"

#include <QGridLayout>
#include <QInputDialog>
#include <QLabel>

using terravo::Text;

SheetStyleBox::SheetStyleBox(const terravo::RunState& state, terravo::SettingsStore& settings,
                             QWidget* parent)
    : QWidget(parent), state_(state), styles_(settings),
      cmbStyle(Named(new QComboBox(this), "cmbStyle")),
      cmdKeepStyle(
          Named(new QPushButton(Caption(state, Text::SheetKeepStyle), this), "cmdKeepStyle")),
      cmdRemoveStyle(
          Named(new QPushButton(Caption(state, Text::SheetRemoveStyle), this), "cmdRemoveStyle")) {
    auto* label = new QLabel(Caption(state, Text::PanelStyle), this);
    label->setBuddy(cmbStyle);
    cmbStyle->setAccessibleName(Spoken(label->text()));
    cmbStyle->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(label, 0, 0);
    layout->addWidget(cmbStyle, 0, 1);
    layout->addWidget(cmdKeepStyle, 1, 0, 1, 2);
    layout->addWidget(cmdRemoveStyle, 2, 0, 1, 2);
    layout->setColumnStretch(1, 1);
    askName = [this](const QString& proposed) {
        return QInputDialog::getText(window(), Caption(state_, Text::SheetWindowTitle),
                                     Caption(state_, Text::SheetStyleName), QLineEdit::Normal,
                                     proposed);
    };
    FillNames({});
    connect(cmbStyle, &QComboBox::activated, this, [this](int index) {
        cmdRemoveStyle->setEnabled(index > 0);
        if (index > 0) {
            emit Chosen(cmbStyle->itemText(index).toStdString());
        }
    });
    connect(cmdKeepStyle, &QPushButton::clicked, this, &SheetStyleBox::Keep);
    connect(cmdRemoveStyle, &QPushButton::clicked, this, &SheetStyleBox::Remove);
}

// The first entry stands for none of them.
void SheetStyleBox::FillNames(const QString& shown) {
    cmbStyle->clear();
    cmbStyle->addItem(Caption(state_, Text::PanelOwnStyle));
    for (const std::string& name : styles_.Names()) {
        cmbStyle->addItem(ToQString(name));
    }
    const int index = shown.isEmpty() ? 0 : cmbStyle->findText(shown);
    cmbStyle->setCurrentIndex(std::max(index, 0));
    cmdRemoveStyle->setEnabled(cmbStyle->currentIndex() > 0);
}

void SheetStyleBox::Keep() {
    const QString proposed = cmbStyle->currentIndex() > 0 ? cmbStyle->currentText() : QString();
    const QString name = askName(proposed).simplified();
    if (!name.isEmpty()) {
        styles_.Keep(name.toStdString(), present());
        FillNames(name);
    }
}

void SheetStyleBox::Remove() {
    styles_.Remove(cmbStyle->currentText().toStdString());
    FillNames({});
}

#include "app/windows/CodesDialog.h"

#include "app/windows/Controls.h"

#include <QBoxLayout>
#include <QDialogButtonBox>
#include <QLabel>

using terravo::Text;

CodesDialog::CodesDialog(const terravo::RunState& state,
                         const std::vector<terravo::CodeCount>& codes, QWidget* parent)
    : QDialog(parent), lstCodes(Named(new QListWidget(this), "lstCodes")) {
    setObjectName(QStringLiteral("CodesDialog"));
    setWindowTitle(Caption(state, Text::CodesTitle));
    auto* hint = new QLabel(Caption(state, Text::CodesHint), this);
    hint->setWordWrap(true);
    lstCodes->setAccessibleName(hint->text());
    for (const terravo::CodeCount& code : codes) {
        auto* item = new QListWidgetItem(Caption(state, Text::CodesCount)
                                             .arg(ToQString(code.code))
                                             .arg(code.points)
                                             .arg(code.lines),
                                         lstCodes);
        item->setData(Qt::UserRole, ToQString(code.code));
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        item->setCheckState(code.hasMarks ? Qt::Checked : Qt::Unchecked);
    }
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    cmdOk = Named(buttons->button(QDialogButtonBox::Ok), "cmdOk");
    buttons->button(QDialogButtonBox::Cancel)->setText(Caption(state, Text::Cancel));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(hint);
    layout->addWidget(lstCodes, 1);
    layout->addWidget(buttons);
    resize(420, 380);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(lstCodes, &QListWidget::itemChanged, this, &CodesDialog::Follow);
    Follow();
}

std::vector<std::string> CodesDialog::Chosen() const {
    std::vector<std::string> chosen;
    for (int i = 0; i < lstCodes->count(); ++i) {
        const QListWidgetItem* item = lstCodes->item(i);
        if (item->checkState() == Qt::Checked) {
            chosen.push_back(item->data(Qt::UserRole).toString().toStdString());
        }
    }
    return chosen;
}

void CodesDialog::Follow() {
    cmdOk->setEnabled(!Chosen().empty());
}

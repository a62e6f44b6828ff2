#include "app/windows/ProjectQuestionBoxes.h"

#include "app/windows/Controls.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>

namespace terravo {
namespace {

// A question over the window that is active; commands show the wait cursor while they work.
class QuestionBox : public QMessageBox {
public:
    QuestionBox(const char* name, const std::string& text)
        : QMessageBox(QMessageBox::Question, QStringLiteral("Terravo"), ToQString(text),
                      QMessageBox::NoButton, QApplication::activeWindow()) {
        setObjectName(QLatin1String(name));
        setTextFormat(Qt::PlainText);
    }

    QAbstractButton* Ask() {
        QApplication::setOverrideCursor(Qt::ArrowCursor);
        exec();
        QApplication::restoreOverrideCursor();
        return clickedButton();
    }
};

} // namespace

SaveAnswer ProjectQuestionBoxes::AskToSave(const std::string& name) {
    QuestionBox box("saveQuestion", WithValues(state_.texts[Text::AskToSave], {name}));
    QPushButton* save = box.addButton(Caption(state_, Text::SaveWord), QMessageBox::AcceptRole);
    const QPushButton* discard =
        box.addButton(Caption(state_, Text::DontSave), QMessageBox::DestructiveRole);
    QPushButton* cancel = box.addButton(Caption(state_, Text::Cancel), QMessageBox::RejectRole);
    box.setDefaultButton(save);
    box.setEscapeButton(cancel);
    const QAbstractButton* answer = box.Ask();
    return answer == save      ? SaveAnswer::Save
           : answer == discard ? SaveAnswer::Discard
                               : SaveAnswer::Cancel;
}

bool ProjectQuestionBoxes::AskToGoOn(const std::string& sentence) {
    QuestionBox box("goOnQuestion", sentence);
    box.setIcon(QMessageBox::Warning);
    box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
    box.setDefaultButton(QMessageBox::No);
    return box.Ask() == box.button(QMessageBox::Yes);
}

RestoreAnswer ProjectQuestionBoxes::AskToRestore(const std::string& name) {
    QuestionBox box("restoreQuestion", WithValues(state_.texts[Text::AskToRestore], {name}));
    QPushButton* restore =
        box.addButton(Caption(state_, Text::RestoreWord), QMessageBox::AcceptRole);
    const QPushButton* discard =
        box.addButton(Caption(state_, Text::DiscardWord), QMessageBox::DestructiveRole);
    QPushButton* later = box.addButton(Caption(state_, Text::LaterWord), QMessageBox::RejectRole);
    box.setDefaultButton(restore);
    box.setEscapeButton(later);
    const QAbstractButton* answer = box.Ask();
    return answer == restore   ? RestoreAnswer::Restore
           : answer == discard ? RestoreAnswer::Discard
                               : RestoreAnswer::Later;
}

} // namespace terravo

#include "app/windows/LevelBox.h"

#include "app/session/LevelCountBox.h"

#include <QKeyEvent>
#include <QRegularExpressionValidator>

using terravo::LevelCountKey;

LevelBox::LevelBox(QWidget* parent) : QLineEdit(parent) {
    setContextMenuPolicy(Qt::NoContextMenu);
    // Pasting and input methods type no keys.
    setValidator(
        new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[0-9]*")), this));
    setAcceptDrops(false);
}

void LevelBox::ShowCount(terravo::Index count) {
    count_ = count;
    setText(QString::number(count));
}

void LevelBox::keyPressEvent(QKeyEvent* event) {
    const QString typed = event->text();
    // Keys that type nothing (arrows, Home, Delete) move and erase as in any box.
    if (typed.isEmpty() || event->key() == Qt::Key_Delete) {
        QLineEdit::keyPressEvent(event);
        return;
    }
    const LevelCountKey key = terravo::LevelCountKeyOf(typed.front().unicode());
    const terravo::LevelCountAnswer answer =
        terravo::AnswerLevelCountKey(key, text().toStdString(), count_);
    if (answer.boxText != text().toStdString()) {
        setText(QString::fromStdString(answer.boxText));
    }
    count_ = answer.levelCount;
    if (answer.redraw) {
        emit CountChosen(count_);
    }
    if (answer.discarded) {
        event->accept();
    } else {
        QLineEdit::keyPressEvent(event);
    }
}

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
    connect(this, &QLineEdit::textChanged, this, &LevelBox::MarkPending);
}

void LevelBox::MarkPending() {
    const bool pending = text() != QString::number(count_);
    QFont marked = font();
    marked.setBold(pending);
    marked.setItalic(pending);
    setFont(marked);
    if (pending && !isPending_) {
        emit CountPending();
    }
    isPending_ = pending;
}

// A line edit takes many shortcuts for itself, such as Ctrl+E for the end of the line.
bool LevelBox::event(QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride &&
        (static_cast<QKeyEvent*>(event)->modifiers() & (Qt::ControlModifier | Qt::AltModifier)) !=
            Qt::NoModifier) {
        return QWidget::event(event);
    }
    return QLineEdit::event(event);
}

void LevelBox::ShowCount(terravo::Index count) {
    count_ = count;
    setText(QString::number(count));
    MarkPending();
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
    MarkPending();
    if (answer.redraw) {
        emit CountChosen(count_);
    }
    if (answer.discarded) {
        event->accept();
    } else {
        QLineEdit::keyPressEvent(event);
    }
}

// The text box of the number of levels: digits only, Enter takes the number, Escape takes it back.
#pragma once

#include "util/Array1.h"

#include <QLineEdit>

class LevelBox : public QLineEdit {
    Q_OBJECT

public:
    explicit LevelBox(QWidget* parent = nullptr);

    /// Shows the count in force.
    void ShowCount(terravo::Index count);

signals:
    /// Enter was pressed on another count; the map is to be drawn with it.
    void CountChosen(terravo::Index count);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    terravo::Index count_ = 0;
};

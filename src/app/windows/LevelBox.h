// The text box of the number of levels: digits only, Enter takes the number, Escape takes it back.
// Until then what was typed is shown in bold italics.
#pragma once

#include "util/Array1.h"

#include <QLineEdit>

class LevelBox : public QLineEdit {
    Q_OBJECT

public:
    explicit LevelBox(QWidget* parent = nullptr);

    /// Shows the count in force.
    void ShowCount(terravo::Index count);
    [[nodiscard]] terravo::Index Count() const { return count_; }

signals:
    /// Enter was pressed on another count; the map is to be drawn with it.
    void CountChosen(terravo::Index count);
    /// Something was typed that is not in force until Enter is pressed.
    void CountPending();

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void MarkPending();

    terravo::Index count_ = 0;
    bool isPending_ = false;
};

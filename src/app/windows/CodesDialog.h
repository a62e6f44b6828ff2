// The dialog that asks which codes of points make breaklines.
//
// Data: the codes with their counts. Method: a list with a box for each; the codes that have marks
// are chosen to begin with, for only lines have these.
#pragma once

#include "survey/surface/CodeLines.h"
#include "util/RunState.h"

#include <QDialog>
#include <QListWidget>
#include <QPushButton>

#include <string>
#include <vector>

class CodesDialog : public QDialog {
    Q_OBJECT

public:
    CodesDialog(const terravo::RunState& state, const std::vector<terravo::CodeCount>& codes,
                QWidget* parent = nullptr);

    [[nodiscard]] std::vector<std::string> Chosen() const;

private:
    void Follow();

    QListWidget* lstCodes;
    QPushButton* cmdOk;
};

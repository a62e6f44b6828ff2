// The about box: name, version, licence, what the program does, a link to the system's own
// information tool.
#pragma once

#include "util/RunState.h"

#include <QDialog>

class AboutBox : public QDialog {
    Q_OBJECT

public:
    explicit AboutBox(const terravo::RunState& state, QWidget* parent = nullptr);

protected:
    void showEvent(QShowEvent* event) override;
};

/// The system-information tool that is installed, or an empty text.
QString FindSystemInformationTool();

// The about box: name, version, licence, what the program does, a link to the system's own
// information tool.
#pragma once

#include <QDialog>

class AboutBox : public QDialog {
    Q_OBJECT

public:
    explicit AboutBox(QWidget* parent = nullptr);

protected:
    void showEvent(QShowEvent* event) override;
};

/// The system-information tool that is installed, or an empty text.
QString FindSystemInformationTool();

#include "app/windows/AboutBox.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QProcess>
#include <QPropertyAnimation>
#include <QStandardPaths>
#include <QVBoxLayout>

namespace {

constexpr int kFadeMilliseconds = 300;

} // namespace

AboutBox::AboutBox(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("AboutBox"));
    setWindowTitle(QStringLiteral("Terravo"));
    auto* text = new QLabel(
        QStringLiteral("<h2>Terravo %1</h2>"
                       "<p>Routines for drawing contour lines from scattered points.</p>"
                       "<p>Copyright 2026 The Terravo developers. MIT licence: use, change and "
                       "share it freely, without warranty.</p>")
            .arg(QStringLiteral(TERRAVO_VERSION)),
        this);
    text->setWordWrap(true);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(text);
    const QString tool = FindSystemInformationTool();
    if (!tool.isEmpty()) {
        auto* link = new QLabel(QStringLiteral("<a href=\"tool\">System information...</a>"), this);
        link->setObjectName(QStringLiteral("systemInformation"));
        link->setTextInteractionFlags(Qt::TextBrowserInteraction);
        connect(link, &QLabel::linkActivated, this, [tool] { QProcess::startDetached(tool, {}); });
        layout->addWidget(link);
    }
    layout->addWidget(buttons);
    setMinimumWidth(380);
}

void AboutBox::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    auto* fade = new QPropertyAnimation(this, "windowOpacity", this);
    fade->setDuration(kFadeMilliseconds);
    fade->setStartValue(0.0);
    fade->setEndValue(1.0);
    fade->start(QAbstractAnimation::DeleteWhenStopped);
}

QString FindSystemInformationTool() {
    for (const char* name : {"kinfocenter", "hardinfo", "hardinfo2", "gnome-system-monitor",
                             "mate-system-monitor", "plasma-systemmonitor", "msinfo32"}) {
        QString path = QStandardPaths::findExecutable(QLatin1String(name));
        if (!path.isEmpty()) {
            return path;
        }
    }
    return {};
}

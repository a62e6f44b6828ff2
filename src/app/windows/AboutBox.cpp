#include "app/windows/AboutBox.h"

#include "app/windows/Controls.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QProcess>
#include <QPropertyAnimation>
#include <QStandardPaths>
#include <QVBoxLayout>

using terravo::Text;

namespace {

constexpr int kFadeMilliseconds = 300;

} // namespace

AboutBox::AboutBox(const terravo::RunState& state, QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("AboutBox"));
    setWindowTitle(Spoken(Caption(state, Text::About)).remove(QStringLiteral("...")));
    auto* text = new QLabel(QStringLiteral("<h2>Terravo %1</h2><p>%2</p><p>%3</p>")
                                .arg(QStringLiteral(TERRAVO_VERSION),
                                     Caption(state, Text::AboutPurpose).toHtmlEscaped(),
                                     Caption(state, Text::AboutLicence).toHtmlEscaped()),
                            this);
    text->setWordWrap(true);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(text);
    const QString tool = FindSystemInformationTool();
    if (!tool.isEmpty()) {
        auto* link = new QLabel(QStringLiteral("<a href=\"tool\">%1</a>")
                                    .arg(Caption(state, Text::SystemInformation).toHtmlEscaped()),
                                this);
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

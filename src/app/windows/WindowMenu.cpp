#include "app/windows/WindowMenu.h"

#include "app/windows/Controls.h"

#include <QHelpEvent>
#include <QMdiSubWindow>
#include <QToolTip>

using terravo::Text;

WindowMenu::WindowMenu(QMdiArea& area, DocumentPlaces& places, QWidget* parent)
    : QMenu(parent), area_(area), documents_(this) {
    setObjectName(QStringLiteral("mnuWindow"));
    mnuTile = Named(addAction(QString()), "mnuTile");
    mnuCascade = Named(addAction(QString()), "mnuCascade");
    addSeparator();
    mnuView3D = Named(addAction(QString()), "mnuView3D");
    addSeparator();
    connect(mnuTile, &QAction::triggered, &places, &DocumentPlaces::Tile);
    connect(mnuCascade, &QAction::triggered, &places, &DocumentPlaces::Cascade);
    connect(mnuView3D, &QAction::triggered, this, &WindowMenu::View3DAsked);
    connect(this, &QMenu::aboutToShow, this, &WindowMenu::ListDocuments);
    SetView3DPossible(false);
}

void WindowMenu::SetCaptions(const terravo::RunState& state) {
    setTitle(Caption(state, Text::WindowMenu));
    mnuTile->setText(Caption(state, Text::Tile));
    mnuCascade->setText(Caption(state, Text::Cascade));
    mnuView3D->setText(Caption(state, Text::View3DEntry));
    nothingToShow_ = Caption(state, Text::NothingIn3D);
    SetView3DPossible(mnuView3D->isEnabled());
}

void WindowMenu::SetView3DPossible(bool possible) {
    mnuView3D->setEnabled(possible);
    mnuView3D->setToolTip(possible ? QString() : nothingToShow_);
}

void WindowMenu::Activate(const QWidget& content) {
    for (QMdiSubWindow* frame : area_.subWindowList()) {
        if (frame->widget() == &content) {
            if (frame->isMinimized()) {
                frame->showNormal();
            }
            area_.setActiveSubWindow(frame);
            content.window()->activateWindow();
        }
    }
}

// The letter of an entry is its number, as among the recent files.
void WindowMenu::ListDocuments() {
    qDeleteAll(documents_.actions());
    for (QMdiSubWindow* frame : area_.subWindowList()) {
        QString title = frame->windowTitle().trimmed();
        title.replace(QLatin1Char('&'), QStringLiteral("&&"));
        const qsizetype number = documents_.actions().size() + 1;
        QAction* entry = documents_.addAction(QStringLiteral("&%1 %2").arg(number).arg(title));
        entry->setCheckable(true);
        entry->setChecked(frame == area_.currentSubWindow());
        connect(entry, &QAction::triggered, frame, [this, frame] { Activate(*frame->widget()); });
        addAction(entry);
    }
}

// Qt would show the tooltip of every entry, which is its caption where it has none of its own.
bool WindowMenu::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        const auto* help = static_cast<QHelpEvent*>(event);
        const QAction* entry = actionAt(help->pos());
        if (entry != nullptr && !entry->isEnabled()) {
            QToolTip::showText(help->globalPos(), entry->toolTip(), this);
            return true;
        }
    }
    return QMenu::event(event);
}

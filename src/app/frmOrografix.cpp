#include "app/frmOrografix.h"

#include "app/SchemeStyle.h"
#include "app/StatusPanel.h"
#include "app/frmProve.h"

#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QTimer>

namespace {

// The command is in the system menu, after a separator, and by its shortcut in the frame itself.
void RemoveCloseCommand(QMdiSubWindow& frame) {
    QMenu* menu = frame.systemMenu();
    for (QAction* action : menu->actions()) {
        if (action->shortcut() == QKeySequence(QKeySequence::Close)) {
            menu->removeAction(action);
            frame.removeAction(action);
        }
    }
    if (!menu->actions().isEmpty() && menu->actions().last()->isSeparator()) {
        menu->removeAction(menu->actions().last());
    }
}

} // namespace

frmOrografix::frmOrografix(const terravo::ColourScheme& scheme)
    : area_(new QMdiArea(this)), status_(new StatusPanel(this)) {
    setObjectName(QStringLiteral("frmOrografix"));
    setWindowTitle(QStringLiteral("Terravo"));
    resize(1100, 760);
    setAcceptDrops(true);
    area_->setObjectName(QStringLiteral("documents"));
    area_->setBackground(ToQColor(scheme.backColour).darker(120));
    area_->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    area_->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setCentralWidget(area_);
    area_->installEventFilter(this);
    setStatusBar(status_);
    ApplyColourScheme(*this, scheme);
    // These take the window's background from it, so they need the text that goes with it.
    for (QWidget* bar : std::initializer_list<QWidget*>{menuBar(), status_, area_}) {
        bar->setPalette(SchemePalette(bar->palette(), scheme));
    }
}

void frmOrografix::AddMainWindow(frmProve* window, const QRect& box) {
    mainWindow_ = window;
    window->AddMenus(*menuBar());
    // Without the close button: the window goes with the exit command and with its parent.
    mainFrame_ =
        area_->addSubWindow(window, Qt::SubWindow | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                                        Qt::WindowSystemMenuHint | Qt::WindowMinMaxButtonsHint);
    mainFrame_->setObjectName(QStringLiteral("frmProveFrame"));
    RemoveCloseCommand(*mainFrame_);
    // The style lights one edge of the frame, which shows as a white line on a dark background.
    QPalette framePalette = mainFrame_->palette();
    framePalette.setColor(QPalette::Light, framePalette.color(QPalette::Window));
    mainFrame_->setPalette(framePalette);
    window->SetFrame(mainFrame_);
    mainFrame_->setGeometry(box);
    connect(window, &frmProve::ExitAsked, this, &QWidget::close);
}

void frmOrografix::ShowIn(terravo::ParentState state) {
    switch (state) {
    case terravo::ParentState::Minimised:
        showMinimized();
        break;
    case terravo::ParentState::Maximised:
        showMaximized();
        break;
    case terravo::ParentState::AsDesigned:
        show();
        break;
    }
}

bool frmOrografix::eventFilter(QObject* watched, QEvent* event) {
    if (watched == area_ && event->type() == QEvent::Resize) {
        QTimer::singleShot(0, this, &frmOrografix::KeepMainWindowInside);
    }
    return QMainWindow::eventFilter(watched, event);
}

// A place from a larger screen, a random one or a smaller parent must not hide the window behind
// the parent's edge.
void frmOrografix::KeepMainWindowInside() {
    if (mainFrame_ == nullptr || mainFrame_->isMaximized() || mainFrame_->isMinimized()) {
        return;
    }
    const QRect room = area_->viewport()->rect();
    QRect box = mainFrame_->geometry();
    box.setSize(box.size().boundedTo(room.size()).expandedTo(mainFrame_->minimumSizeHint()));
    box.moveLeft(std::max(0, std::min(box.left(), room.width() - box.width())));
    box.moveTop(std::max(0, std::min(box.top(), room.height() - box.height())));
    mainFrame_->setGeometry(box);
}

void frmOrografix::dragEnterEvent(QDragEnterEvent* event) {
    mainWindow_->dragEnterEvent(event);
}

void frmOrografix::dropEvent(QDropEvent* event) {
    mainWindow_->dropEvent(event);
}

void frmOrografix::closeEvent(QCloseEvent* event) {
    area_->closeAllSubWindows();
    event->accept();
}

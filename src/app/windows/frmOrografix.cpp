#include "app/windows/frmOrografix.h"

#include "app/settings/WindowPosition.h"
#include "app/windows/SchemeStyle.h"
#include "app/windows/StatusPanel.h"
#include "app/windows/frm3D.h"
#include "app/windows/frmProve.h"

#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QGuiApplication>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QRandomGenerator>
#include <QScreen>
#include <QTimer>

#include <algorithm>

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

// The style lights one edge of the frame, which shows as a white line on a dark background.
void DarkenFrame(QMdiSubWindow& frame) {
    QPalette palette = frame.palette();
    palette.setColor(QPalette::Light, palette.color(QPalette::Window));
    frame.setPalette(palette);
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
    connect(status_, &StatusPanel::CloseWanted, this, &QWidget::close);
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
    DarkenFrame(*mainFrame_);
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
        QTimer::singleShot(0, this, &frmOrografix::KeepDocumentsInside);
    }
    return QMainWindow::eventFilter(watched, event);
}

// A place from a larger screen, a random one or a smaller parent must not hide a document behind
// the parent's edge.
void frmOrografix::KeepDocumentsInside() {
    const QRect room = area_->viewport()->rect();
    for (QMdiSubWindow* frame : area_->subWindowList()) {
        if (frame->isMaximized() || frame->isMinimized()) {
            continue;
        }
        QRect box = frame->geometry();
        box.setSize(box.size().boundedTo(room.size()).expandedTo(frame->minimumSizeHint()));
        box.moveLeft(std::max(0, std::min(box.left(), room.width() - box.width())));
        box.moveTop(std::max(0, std::min(box.top(), room.height() - box.height())));
        frame->setGeometry(box);
    }
}

void frmOrografix::SetView3D(std::function<frm3D*()> make, terravo::SettingsStore& settings) {
    makeView3D_ = std::move(make);
    settings_ = &settings;
    mainWindow_->view3D = [this](bool open) { return View3DWindow(open); };
}

frm3D* frmOrografix::View3DWindow(bool open) {
    if (view3D_ == nullptr && open) {
        OpenView3D()->show();
        KeepDocumentsInside();
    }
    return view3D_;
}

QMdiSubWindow* frmOrografix::OpenView3D() {
    constexpr QSize kDesigned(820, 610);
    view3D_ = makeView3D_();
    QMdiSubWindow* frame = area_->addSubWindow(view3D_);
    frame->setObjectName(QStringLiteral("frm3DFrame"));
    frame->setAttribute(Qt::WA_DeleteOnClose);
    DarkenFrame(*frame);
    frame->setGeometry(RestoredBox(*settings_, "frm3D", kDesigned));
    connect(view3D_, &frm3D::Closing, this, [this, frame] {
        const QRect box = frame->geometry();
        terravo::SaveWindowPosition(*settings_, "frm3D",
                                    {box.left(), box.top(), box.width(), box.height()},
                                    frame->isMinimized(), false);
    });
    return frame;
}

QRect RestoredBox(const terravo::SettingsStore& settings, const std::string& windowName,
                  QSize designed) {
    const QSize screen = QGuiApplication::primaryScreen()->size();
    const terravo::WindowBox box = terravo::RestoreWindowPosition(
        settings, windowName, {0, 0, designed.width(), designed.height()}, screen.width(),
        screen.height(),
        [](int low, int high) { return QRandomGenerator::global()->bounded(low, high + 1); });
    return {box.left, box.top, box.width, box.height};
}

void frmOrografix::dragEnterEvent(QDragEnterEvent* event) {
    mainWindow_->dragEnterEvent(event);
}

void frmOrografix::dropEvent(QDropEvent* event) {
    mainWindow_->dropEvent(event);
}

void frmOrografix::closeEvent(QCloseEvent* event) {
    if (status_->IsWorking()) {
        event->ignore();
        return;
    }
    area_->closeAllSubWindows();
    event->accept();
}

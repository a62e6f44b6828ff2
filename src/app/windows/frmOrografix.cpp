#include "app/windows/frmOrografix.h"

#include "app/settings/WindowPosition.h"
#include "app/windows/CheckWindow.h"
#include "app/windows/EditMenu.h"
#include "app/windows/MeasureDocuments.h"
#include "app/windows/SchemeStyle.h"
#include "app/windows/SheetMenu.h"
#include "app/windows/SheetWindow.h"
#include "app/windows/StatusPanel.h"
#include "app/windows/TerrainMenu.h"
#include "app/windows/WindowMenu.h"
#include "app/windows/frm3D.h"
#include "app/windows/frmProve.h"

#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QGuiApplication>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QRandomGenerator>
#include <QScopedValueRollback>
#include <QScreen>

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
    : area_(new QMdiArea(this)), places_(new DocumentPlaces(*area_)),
      status_(new StatusPanel(this)) {
    setObjectName(QStringLiteral("frmOrografix"));
    setWindowTitle(QStringLiteral("Terravo"));
    resize(1100, 760);
    setAcceptDrops(true);
    area_->setObjectName(QStringLiteral("documents"));
    area_->setBackground(ToQColor(scheme.backColour).darker(120));
    area_->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    area_->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setCentralWidget(area_);
    setStatusBar(status_);
    // The next command may have begun before this is heard.
    connect(status_, &StatusPanel::CloseWanted, this, [this] {
        if (status_->IsWorking()) {
            status_->CloseAfterWork();
        } else {
            close();
        }
    });
    ApplyColourScheme(*this, scheme);
    // These take the window's background from it, so they need the text that goes with it.
    for (QWidget* bar : std::initializer_list<QWidget*>{menuBar(), status_, area_}) {
        bar->setPalette(SchemePalette(bar->palette(), scheme));
    }
}

void frmOrografix::AddMainWindow(frmProve* window, const DocumentBox& box) {
    mainWindow_ = window;
    windowMenu_ = new WindowMenu(*area_, *places_, this);
    sheetMenu_ = new SheetMenu(this);
    editMenu_ = new EditMenu(window->TheSession(), this);
    terrainMenu_ = new TerrainMenu(this);
    measureMenu_ = new MeasureMenu(window->TheSession(), this);
    window->AddMenus(*menuBar(), {editMenu_, sheetMenu_, terrainMenu_, measureMenu_, windowMenu_});
    // Without the close button: the window goes with the exit command and with its parent.
    mainFrame_ =
        area_->addSubWindow(window, Qt::SubWindow | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                                        Qt::WindowSystemMenuHint | Qt::WindowMinMaxButtonsHint);
    mainFrame_->setObjectName(QStringLiteral("frmProveFrame"));
    RemoveCloseCommand(*mainFrame_);
    DarkenFrame(*mainFrame_);
    places_->Add(mainFrame_, box);
    window->placeToKeep = [this] { return places_->ToKeep(mainFrame_); };
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

void frmOrografix::SetView3D(std::function<frm3D*()> make, terravo::SettingsStore& settings) {
    makeView3D_ = std::move(make);
    settings_ = &settings;
    mainWindow_->view3D = [this](bool open) { return View3DWindow(open); };
}

frm3D* frmOrografix::View3DWindow(bool open) {
    if (view3D_ == nullptr && open) {
        OpenView3D()->show();
    }
    return view3D_;
}

QMdiSubWindow* frmOrografix::OpenView3D() {
    static constexpr DocumentKind kKind{"frm3D", {820, 610}, {560, 480}};
    view3D_ = makeView3D_();
    QMdiSubWindow* frame = AddDocument(view3D_, kKind);
    connect(view3D_, &frm3D::Closing, this, [this, frame] { KeepPlace(frame, kKind); });
    return frame;
}

void frmOrografix::SetCheck(std::function<CheckWindow*()> make) {
    makeCheck_ = std::move(make);
    connect(mainWindow_, &frmProve::CheckAsked, this, &frmOrografix::ShowCheck);
}

void frmOrografix::ShowCheck() {
    static constexpr DocumentKind kKind{"CheckWindow", {620, 640}, {420, 360}, true};
    if (check_ == nullptr) {
        check_ = makeCheck_();
        QMdiSubWindow* frame = AddDocument(check_, kKind);
        connect(check_, &CheckWindow::Closing, this, [this, frame] { KeepPlace(frame, kKind); });
        connect(mainWindow_, &frmProve::FindingsChanged, check_, &CheckWindow::Refresh);
        connect(mainWindow_, &frmProve::MarkChanged, check_, &CheckWindow::FollowMark);
        frame->show();
    }
    windowMenu_->Activate(*check_);
}

void frmOrografix::SetSheet(std::function<SheetWindow*()> make) {
    makeSheet_ = std::move(make);
    mainWindow_->hasSheet = [this] { return sheet_ != nullptr && sheet_->HasSheet(); };
    connect(mainWindow_, &frmProve::SheetAsked, this, &frmOrografix::ShowSheet);
    connect(sheetMenu_, &SheetMenu::OpenAsked, this, &frmOrografix::ShowSheet);
    connect(editMenu_, &EditMenu::SheetAsked, this, &frmOrografix::ShowSheet);
}

void frmOrografix::ShowSheet() {
    static constexpr DocumentKind kKind{"SheetWindow", {860, 620}, {520, 400}, true};
    if (sheet_ == nullptr) {
        sheet_ = makeSheet_();
        QMdiSubWindow* frame = AddDocument(sheet_, kKind);
        connect(sheet_, &SheetWindow::Closing, this, [this, frame] { KeepPlace(frame, kKind); });
        connect(mainWindow_, &frmProve::WorkEnded, sheet_, &SheetWindow::Refresh);
        connect(mainWindow_, &frmProve::PatchMade, sheet_, &SheetWindow::ShowPatch);
        connect(mainWindow_, &frmProve::MarkChanged, sheet_, &SheetWindow::FollowMark);
        sheetMenu_->SetWindow(sheet_);
        editMenu_->SetWindow(sheet_);
        measureMenu_->SetWindow(sheet_);
        if (measures_ != nullptr) {
            measures_->SetSheet(sheet_);
        }
        frame->show();
    }
    windowMenu_->Activate(*sheet_);
}

void frmOrografix::SetTerrain(std::function<TerrainWindow*()> make) {
    makeTerrain_ = std::move(make);
    connect(terrainMenu_, &TerrainMenu::OpenAsked, this, &frmOrografix::ShowTerrain);
}

void frmOrografix::ShowTerrain() {
    static constexpr DocumentKind kKind{"TerrainWindow", {860, 600}, {520, 400}, true};
    if (terrain_ == nullptr) {
        terrain_ = makeTerrain_();
        QMdiSubWindow* frame = AddDocument(terrain_, kKind);
        connect(terrain_, &TerrainWindow::Closing, this,
                [this, frame] { KeepPlace(frame, kKind); });
        connect(mainWindow_, &frmProve::WorkEnded, terrain_, &TerrainWindow::Refresh);
        connect(mainWindow_, &frmProve::MarkChanged, terrain_, &TerrainWindow::FollowMark);
        terrainMenu_->SetWindow(terrain_);
        frame->show();
    }
    windowMenu_->Activate(*terrain_);
}

void frmOrografix::SetMeasures(MeasureDocuments* measures) {
    measures_ = measures;
    measures_->SetRoom({[this](QWidget* content, const DocumentKind& kind) {
                            QMdiSubWindow* frame = AddDocument(content, kind);
                            frame->show();
                            return [this, frame, kind] { KeepPlace(frame, kind); };
                        },
                        [this](const QWidget& content) { windowMenu_->Activate(content); },
                        [this] { ShowSheet(); }});
    connect(measureMenu_, &MeasureMenu::Asked, measures_, &MeasureDocuments::Run);
    connect(measures_, &MeasureDocuments::FrameChanged, measureMenu_, &MeasureMenu::Follow);
    connect(mainWindow_, &frmProve::WorkEnded, measures_, &MeasureDocuments::Follow);
    connect(mainWindow_, &frmProve::PatchMade, measures_, &MeasureDocuments::Follow);
}

QMdiSubWindow* frmOrografix::AddDocument(QWidget* content, const DocumentKind& kind) {
    QMdiSubWindow* frame = area_->addSubWindow(content);
    frame->setObjectName(QLatin1String(kind.name) + QStringLiteral("Frame"));
    frame->setAttribute(Qt::WA_DeleteOnClose);
    DarkenFrame(*frame);
    places_->Add(frame, BoxFor(kind, frame->minimumSizeHint()));
    return frame;
}

void frmOrografix::KeepPlace(const QMdiSubWindow* frame, const DocumentKind& kind) {
    if (const std::optional<QRect> box = places_->ToKeep(frame)) {
        terravo::SaveWindowPosition(*settings_, kind.name,
                                    {box->left(), box->top(), box->width(), box->height()}, false,
                                    false);
    }
}

// Beside the map, so that both are seen, unless its user has put it elsewhere. Where only its place
// is kept, the designed size may reach out of the room.
DocumentBox frmOrografix::BoxFor(const DocumentKind& kind, QSize minimum) {
    DocumentBox wanted = RestoredBox(*settings_, kind.name, kind.designed);
    const QSize size = wanted.box.size().expandedTo(minimum);
    const QSize least = kind.useful.boundedTo(size).expandedTo(minimum);
    if (!wanted.isPlaceChosen) {
        wanted.box = BoxBesideMap(size, least)
                         .value_or(kind.isAtRightEdge ? BoxAtRightEdge(size) : wanted.box);
    } else if (!wanted.isSizeChosen) {
        const QPoint place = wanted.box.topLeft();
        wanted.box.setSize(
            size.boundedTo(places_->Room() - QSize(place.x(), place.y())).expandedTo(least));
    }
    return wanted;
}

// A map that nobody has placed makes room to its right.
std::optional<QRect> frmOrografix::BoxBesideMap(QSize size, QSize least) {
    if (mainFrame_->isMaximized() || mainFrame_->isMinimized()) {
        return std::nullopt;
    }
    const QSize room = places_->Room();
    QRect map = mainFrame_->geometry();
    if (!places_->Wanted(mainFrame_).isPlaceChosen) {
        map.moveLeft(std::max(0, std::min(map.left(), room.width() - map.width() - size.width())));
    }
    const std::optional<QRect> beside = BoxBeside(map, room, size, least);
    if (beside) {
        places_->Replace(mainFrame_, map);
    }
    return beside;
}

// In a narrow room the controls at the left of the map stay in sight.
QRect frmOrografix::BoxAtRightEdge(QSize size) {
    const QSize room = places_->Room();
    const QRect box(QPoint(0, 0), size.boundedTo(room));
    const bool isFree = !mainFrame_->isMaximized() && !mainFrame_->isMinimized() &&
                        !places_->Wanted(mainFrame_).isPlaceChosen;
    const QRect map = mainFrame_->geometry();
    if (isFree) {
        places_->Replace(mainFrame_, {QPoint(0, map.top()), map.size()});
    }
    return box.translated(room.width() - box.width(),
                          std::clamp(map.top(), 0, room.height() - box.height()));
}

DocumentBox RestoredBox(const terravo::SettingsStore& settings, const std::string& windowName,
                        QSize designed) {
    const QSize screen = QGuiApplication::primaryScreen()->size();
    const terravo::WindowBox box = terravo::RestoreWindowPosition(
        settings, windowName, {0, 0, designed.width(), designed.height()}, screen.width(),
        screen.height(),
        [](int low, int high) { return QRandomGenerator::global()->bounded(low, high + 1); });
    return {{box.left, box.top, box.width, box.height},
            terravo::HasSavedPlace(settings, windowName),
            terravo::HasSavedSize(settings, windowName)};
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
    // A question whose answer closes the window asks once.
    if (isAsking_) {
        event->ignore();
        return;
    }
    const QScopedValueRollback<bool> asking(isAsking_, true);
    if (mainWindow_ != nullptr && !mainWindow_->MayClose()) {
        event->ignore();
        return;
    }
    area_->closeAllSubWindows();
    event->accept();
}

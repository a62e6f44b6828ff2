#include "app/windows/frmProve.h"

#include "app/windows/EditMenu.h"

#include "app/settings/SettingsFiles.h"
#include "app/windows/AboutBox.h"
#include "app/windows/Controls.h"
#include "app/windows/GradientButton.h"
#include "app/windows/HelpWindow.h"
#include "app/windows/LevelBox.h"
#include "app/windows/LevelsDialog.h"
#include "app/windows/MeasureMenu.h"
#include "app/windows/SchemeStyle.h"
#include "app/windows/SettingsDialog.h"
#include "app/windows/SheetMenu.h"
#include "app/windows/StatusPanel.h"
#include "app/windows/SurfaceView.h"
#include "app/windows/TerrainMenu.h"
#include "app/windows/WindowMenu.h"
#include "app/windows/frm3D.h"
#include "survey/PointPlace.h"
#include "util/NumberText.h"
#include "util/StopSignals.h"

#include <QApplication>
#include <QBoxLayout>
#include <QClipboard>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QGuiApplication>
#include <QMenuBar>
#include <QMimeData>
#include <QPainter>
#include <QTimer>

using terravo::Text;

namespace {

constexpr std::size_t kRecentEntries = 5;
constexpr int kPauseMilliseconds = 700; // between two edits

} // namespace

frmProve::frmProve(terravo::RunState& state, terravo::Session& session, StatusPanel& status)
    : state_(state), session_(session), status_(status) {
    setObjectName(QStringLiteral("frmProve"));
    setWindowTitle(QStringLiteral("Livelli"));
    setAcceptDrops(true);
    MakeControls();
    ConnectControls();
    catchUp_.setSingleShot(true);
    catchUp_.setInterval(kPauseMilliseconds);
    connect(&catchUp_, &QTimer::timeout, this, &frmProve::CatchUp);
    session_.SetView(*this);
}

void frmProve::MakeControls() {
    Picture1 = new QWidget(this);
    Picture1->setObjectName(QStringLiteral("Picture1"));
    QSizePolicy keepsPlace(QSizePolicy::Expanding, QSizePolicy::Expanding);
    keepsPlace.setRetainSizeWhenHidden(true);
    Picture1->setSizePolicy(keepsPlace);
    picLivelli = new SurfaceView(Picture1);
    picLivelli->setObjectName(QStringLiteral("picLivelli"));
    picLivelli->setMinimumSize(260, 200);
    picLivelli->SetBackground(terravo::kBlack);
    auto* pictureLayout = new QVBoxLayout(Picture1);
    pictureLayout->setContentsMargins(0, 0, 0, 0);
    pictureLayout->addWidget(picLivelli);

    auto* layout = new QHBoxLayout(this);
    layout->addLayout(MakeOptionsColumn());
    layout->addWidget(Picture1, 1);
    Picture1->hide();
}

QBoxLayout* frmProve::MakeOptionsColumn() {
    Frame1 = new QGroupBox(this);
    Frame1->setObjectName(QStringLiteral("Frame1"));
    zLabel01 = Named(new QLabel(Frame1), "zLabel01");
    lblND = Named(new QLabel(QStringLiteral("0"), Frame1), "lblND");
    zLabel02 = Named(new QLabel(Frame1), "zLabel02");
    txtNLiv = new LevelBox(Frame1);
    txtNLiv->setObjectName(QStringLiteral("txtNLiv"));
    txtNLiv->setToolTip(QStringLiteral("Invio, per confermare "));
    txtNLiv->ShowCount(session_.Options().levels.count);
    txtNLiv->setMaximumWidth(70);
    zLabel02->setBuddy(txtNLiv);
    optLinee = Named(new QRadioButton(Frame1), "optLinee");
    optAree = Named(new QRadioButton(Frame1), "optAree");
    chkValoriLivelli = Named(new QCheckBox(Frame1), "chkValoriLivelli");
    chkTriangoli = Named(new QCheckBox(Frame1), "chkTriangoli");
    chkPerimetro = Named(new QCheckBox(Frame1), "chkPerimetro");
    XPButton1 = Named(new GradientButton(this), "XPButton1");
    XPButton1->setEnabled(false);
    optLinee->setChecked(true);

    auto* points = new QHBoxLayout;
    points->addWidget(zLabel01);
    points->addWidget(lblND, 1);
    auto* levels = new QHBoxLayout;
    levels->addWidget(zLabel02);
    levels->addWidget(txtNLiv);
    levels->addStretch(1);
    auto* options = new QVBoxLayout(Frame1);
    options->addLayout(points);
    options->addLayout(levels);
    for (QWidget* control : std::initializer_list<QWidget*>{optLinee, optAree, chkValoriLivelli,
                                                            chkTriangoli, chkPerimetro}) {
        options->addWidget(control);
    }
    // The box of the level values comes and goes; the others keep their places.
    QSizePolicy keepsPlace = chkValoriLivelli->sizePolicy();
    keepsPlace.setRetainSizeWhenHidden(true);
    chkValoriLivelli->setSizePolicy(keepsPlace);

    auto* column = new QVBoxLayout;
    column->addWidget(Frame1);
    column->addWidget(XPButton1);
    column->addStretch(1);
    return column;
}

void frmProve::AddMenus(QMenuBar& menuBar, const ParentMenus& others) {
    mnuFile = Named(menuBar.addMenu(QStringLiteral("&File")), "mnuFile");
    mnuLeggiDati = Named(mnuFile->addAction(QString()), "mnuLeggiDati");
    mnuLeggiDati->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_O));
    mnuSaveProject = Named(mnuFile->addAction(QString()), "mnuSaveProject");
    mnuSaveProject->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_S));
    mnuSaveProjectAs = Named(mnuFile->addAction(QString()), "mnuSaveProjectAs");
    for (QAction* entry : {mnuSaveProject, mnuSaveProjectAs}) {
        entry->setEnabled(false);
    }
    mnusalva = Named(mnuFile->addMenu(QString()), "mnusalva");
    mnut = {Named(mnusalva->addAction(QString()), "mnut0"),
            Named(mnusalva->addAction(QStringLiteral("Livel")), "mnut1")};
    mnusalva->setEnabled(false);
    mnuSavePoints = Named(mnuFile->addAction(QString()), "mnuSavePoints");
    mnuSavePoints->setEnabled(false);
    AddPictureEntries();
    mnuFile->addSeparator();
    mnuEsci = Named(mnuFile->addAction(QString()), "mnuEsci");
    mnuEsci->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q));
    mnuFile->addSeparator();
    for (std::size_t k = 0; k <= kRecentEntries; ++k) {
        const std::string name = "mnuRecenti" + std::to_string(k);
        mnuRecenti.push_back(Named(mnuFile->addAction(QString()), name.c_str()));
        mnuRecenti[k]->setVisible(false);
        if (k > 0) {
            connect(mnuRecenti[k], &QAction::triggered, this,
                    [this, k] { session_.OpenRecentFile(k); });
        }
    }
    mnuRecenti[0]->setEnabled(false);
    mnuEdit = others.edit;
    menuBar.addMenu(mnuEdit);
    mnuSurvey = Named(menuBar.addMenu(QString()), "mnuSurvey");
    mnuCheck = Named(mnuSurvey->addAction(QString()), "mnuCheck");
    mnuCheck->setShortcut(QKeySequence(Qt::Key_F7));
    mnuLevels = Named(mnuSurvey->addAction(QString()), "mnuLevels");
    mnuLevels->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_L));
    mnuLevels->setEnabled(false);
    mnuSurvey->setToolTipsVisible(true);
    mnuSurvey->addSeparator();
    AddSurfaceEntries();
    mnuSurvey->addSeparator();
    mnuExact = Named(mnuSurvey->addAction(QString()), "mnuExact");
    mnuExact->setCheckable(true);
    mnuFreeLists = Named(mnuSurvey->addAction(QString()), "mnuFreeLists");
    mnuFreeLists->setCheckable(true);
    mnuSheet = others.sheet;
    menuBar.addMenu(mnuSheet);
    mnuTerrain = others.terrain;
    menuBar.addMenu(mnuTerrain);
    mnuMeasures = others.measure;
    menuBar.addMenu(mnuMeasures);
    mnuWindow = others.windows;
    menuBar.addMenu(mnuWindow);
    mnuQM = Named(menuBar.addMenu(QStringLiteral("&?")), "mnuQM");
    mnuHelp = Named(mnuQM->addAction(QString()), "mnuHelp");
    mnuHelp->setShortcut(QKeySequence(Qt::Key_F1));
    mnuSettings = Named(mnuQM->addAction(QString()), "mnuSettings");
    mnuSettings->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Comma));
    mnuInformazioni = Named(mnuQM->addAction(QString()), "mnuInformazioni");

    connect(mnuLeggiDati, &QAction::triggered, this, [this] { session_.OpenPointFile(); });
    connect(mnuSaveProject, &QAction::triggered, this, [this] { session_.SaveProject(); });
    connect(mnuSaveProjectAs, &QAction::triggered, this, [this] { session_.SaveProjectAs(); });
    connect(mnut[0], &QAction::triggered, this,
            [this] { session_.Export(terravo::QrzKind::Triangles); });
    connect(mnut[1], &QAction::triggered, this,
            [this] { session_.Export(terravo::QrzKind::Levels); });
    connect(mnuEsci, &QAction::triggered, this, &frmProve::ExitAsked);
    connect(mnuCheck, &QAction::triggered, this, &frmProve::CheckAsked);
    connect(mnuLevels, &QAction::triggered, this, &frmProve::ShowLevels);
    connect(mnuExact, &QAction::triggered, this, [this](bool on) { session_.SetExact(on); });
    connect(mnuFreeLists, &QAction::triggered, this,
            [this](bool on) { session_.SetReadsFreeLists(on); });
    connect(mnuSavePoints, &QAction::triggered, this, [this] { session_.SavePoints(); });
    connect(mnuWindow, &WindowMenu::View3DAsked, this, &frmProve::ShowView3D);
    connect(mnuHelp, &QAction::triggered, this, &frmProve::ShowHelp);
    connect(mnuSettings, &QAction::triggered, this, &frmProve::ShowSettings);
    connect(mnuInformazioni, &QAction::triggered, this, &frmProve::ShowAbout);
}

// Selecting an option runs what a click runs; the buttons' own signal is that of a click.
void frmProve::ConnectControls() {
    connect(chkPerimetro, &QCheckBox::clicked, this,
            [this](bool on) { session_.SetShowPerimeter(on); });
    connect(chkTriangoli, &QCheckBox::clicked, this,
            [this](bool on) { session_.SetShowTriangles(on); });
    connect(chkValoriLivelli, &QCheckBox::clicked, this,
            [this](bool on) { session_.SetShowLevelValues(on); });
    connect(optLinee, &QRadioButton::clicked, this, [this] {
        chkValoriLivelli->setVisible(true);
        session_.SetMode(terravo::MapMode::Lines);
    });
    connect(optAree, &QRadioButton::clicked, this, [this] {
        chkValoriLivelli->setVisible(false);
        session_.SetMode(terravo::MapMode::Areas);
    });
    connect(txtNLiv, &LevelBox::CountChosen, this,
            [this](terravo::Index count) { session_.SetLevelCount(count); });
    connect(&status_, &StatusPanel::InterruptAsked, this, [this] { session_.Interrupt(); });
    connect(txtNLiv, &LevelBox::CountPending, this,
            [this] { status_.ShowNote(Caption(state_, Text::EnterConfirms)); });
    connect(XPButton1, &QPushButton::clicked, this, &frmProve::CopyPicture);
    connect(&status_, &StatusPanel::StopAsked, this, [this] { session_.RequestStop(); });
    connect(picLivelli, &SurfaceView::PointerMoved, this, &frmProve::ShowPointer);
    connect(picLivelli, &SurfaceView::PointerLeft, this, [this] { status_.ShowPointer({}); });
    connect(picLivelli, &SurfaceView::SizeSettled, this, [this] {
        if (session_.ResultViewsVisible()) {
            session_.DrawContourMap();
        }
    });
}

void frmProve::SetCaptions() {
    const auto text = [this](Text wanted) { return Caption(state_, wanted); };
    mnuLeggiDati->setText(text(Text::OpenFile));
    mnuSaveProject->setText(text(Text::SaveProject));
    mnuSaveProjectAs->setText(text(Text::SaveProjectAs));
    mnusalva->setTitle(text(Text::Save) + QStringLiteral(" File Vector QRZ"));
    SetPictureCaptions();
    mnuEsci->setText(text(Text::Exit));
    mnuRecenti[0]->setText(text(Text::RecentFiles));
    mnuSurvey->setTitle(text(Text::SurveyMenu));
    mnuCheck->setText(text(Text::CheckEntry));
    mnuLevels->setText(text(Text::LevelsEntry));
    mnuLevels->setToolTip(mnuLevels->isEnabled() ? QString() : text(Text::CheckNoPoints));
    mnuExact->setText(text(Text::ExactTriangulation));
    mnuFreeLists->setText(text(Text::ReadFreeLists));
    mnuSavePoints->setText(text(Text::SavePointsAs));
    mnuEdit->SetCaptions(state_);
    SetSurfaceCaptions();
    mnuSheet->SetCaptions(state_);
    mnuTerrain->SetCaptions(state_);
    mnuMeasures->SetCaptions(state_);
    mnuWindow->SetCaptions(state_);
    mnuHelp->setText(text(Text::Help));
    mnuSettings->setText(text(Text::Settings));
    language_ = terravo::LanguageAtNextStart(state_.userFolder); // of this run, at its start
    mnuInformazioni->setText(text(Text::About));
    XPButton1->setText(text(Text::CopyPicture));
    XPButton1->setToolTip(text(Text::PlotTitle) + QStringLiteral(" : ") +
                          Spoken(text(Text::CopyPicture)));
    zLabel01->setText(text(Text::PointsLabel));
    zLabel02->setText(text(Text::LevelsLabel));
    optLinee->setText(text(Text::Lines));
    optAree->setText(text(Text::Areas));
    chkTriangoli->setText(text(Text::Triangles));
    mnut[0]->setText(chkTriangoli->text());
    chkPerimetro->setText(text(Text::Perimeter));
    chkValoriLivelli->setText(text(Text::LevelValues));
    txtNLiv->setAccessibleName(Spoken(text(Text::LevelsLabel)));
    txtNLiv->setAccessibleDescription(text(Text::EnterConfirms));
    picLivelli->setAccessibleName(text(Text::PlotTitle));
    XPButton1->setAccessibleName(Spoken(text(Text::CopyPicture)));
}

void frmProve::SetColours(const terravo::ColourScheme& scheme) {
    ApplyColourScheme(*this, scheme);
    picLivelli->SetBackground(terravo::kBlack);
}

void frmProve::Start(const std::string& rawCommandLine, const std::string& namedFile) {
    session_.LoadRecentFiles();
    mnuFreeLists->setChecked(session_.ReadsFreeLists());
    chkValoriLivelli->setVisible(optLinee->isChecked());
    const bool isStartUp = namedFile.empty() && session_.NamesStartUpFile(rawCommandLine);
    if (!isStartUp && offerToRestore && offerToRestore()) {
        return;
    }
    if (namedFile.empty()) {
        session_.LoadStartUpFile(rawCommandLine);
    } else {
        session_.LoadNamedFile(namedFile);
    }
}

terravo::DrawSurface& frmProve::MapSurface() {
    // Hidden widgets are not laid out by themselves.
    layout()->activate();
    Picture1->layout()->activate();
    return picLivelli->FittedSurface();
}

void frmProve::ShowPointCount(terravo::Index count) {
    mnuSavePoints->setEnabled(count > 0);
    mnuLevels->setEnabled(count > 0);
    mnuLevels->setToolTip(count > 0 ? QString() : Caption(state_, Text::CheckNoPoints));
    for (QAction* entry : surfaceEntries_) {
        entry->setEnabled(count > 0);
        entry->setToolTip(count > 0 ? QString() : Caption(state_, Text::CheckNoPoints));
    }
    lblND->setText(QString::number(count));
}

// A number that is being typed stays, as long as another one does not come into force.
void frmProve::ShowLevelCount(terravo::Index count) {
    if (count != txtNLiv->Count()) {
        txtNLiv->ShowCount(count);
    }
}

void frmProve::SetResultViewsVisible(bool visible) {
    Picture1->setVisible(visible);
    XPButton1->setEnabled(visible);
    mnusalva->setEnabled(visible);
    mnuExportMap->setEnabled(visible);
    mnuExportVector->setEnabled(visible);
    mnuPrint->setEnabled(visible);
    mnuEdit->SetPossible(visible);
    mnuSheet->SetPossible(visible);
    mnuTerrain->SetPossible(visible);
    mnuMeasures->SetPossible(visible);
    mnuWindow->SetView3DPossible(visible);
    frm3D* view = view3D ? view3D(false) : nullptr;
    if (view != nullptr) {
        view->SetPictureVisible(visible);
    }
}

void frmProve::ShowTriangles3D(const terravo::PointSet& points,
                               const terravo::TriangleList& triangles, const std::string& title) {
    frm3D* view = view3D ? view3D(session_.OpensView3D()) : nullptr;
    if (view != nullptr) {
        connect(view, &frm3D::ExportAsked, this, &frmProve::Export3D, Qt::UniqueConnection);
        connect(view, &frm3D::PrintAsked, this, &frmProve::Print3D, Qt::UniqueConnection);
        connect(view, &frm3D::Copied, this, &frmProve::TellOfCopy, Qt::UniqueConnection);
        view->Commands().ShowTriangles(points, triangles, title);
        ShowMarkIn3D();
        if (session_.ResultViewsVisible()) {
            view->SetPictureVisible(true); // no change will say so to a new window
        }
    }
}

// Its points are still in it, or it is made anew for the present ones.
void frmProve::ShowView3D() {
    if (view3D && view3D(false) == nullptr) {
        session_.ShowView3D();
    }
    if (const frm3D* view = view3D ? view3D(false) : nullptr) {
        mnuWindow->Activate(*view);
    }
}

void frmProve::ShowRecentFiles() {
    const terravo::RecentFiles& recent = session_.Recent();
    for (std::size_t k = 1; k <= kRecentEntries; ++k) {
        const bool used = k <= recent.Paths().size();
        mnuRecenti[k]->setVisible(used);
        if (used) {
            // An "&" of the path itself would be taken for a mnemonic: doubled, it shows as one.
            QString caption = QString::fromStdString(recent.CaptionOf(k));
            caption.replace(1, caption.size() - 1,
                            caption.mid(1).replace(QLatin1Char('&'), QStringLiteral("&&")));
            mnuRecenti[k]->setText(caption);
        }
    }
    mnuRecenti[0]->setVisible(recent.HeadingVisible());
}

void frmProve::ShowStatus(const std::string& counts, const std::string& remark) {
    counts_ = QString::fromStdString(counts);
    status_.ShowCounts(counts_, QString::fromStdString(remark));
    DescribeMap();
}

void frmProve::ShowNote(const std::string& text) {
    status_.ShowNote(ToQString(text));
}

void frmProve::ShowFindings() {
    emit FindingsChanged();
}

void frmProve::ShowSheet() {
    emit SheetAsked();
}

// Whatever is saved or opened may change what is triangulated from now on.
void frmProve::ShowProject() {
    const bool canSave = session_.CanSaveProject();
    if (mnuSaveProject != nullptr) {
        mnuSaveProject->setEnabled(canSave);
        mnuSaveProjectAs->setEnabled(canSave);
        mnuExact->setChecked(session_.TheSurvey().Wish().exact);
    }
    emit ProjectChanged();
}

bool frmProve::MayClose() {
    // The system ends the session: nobody will answer a question, and the work waits to be
    // restored.
    return terravo::StopSignals::Received() != 0 || session_.MayClose();
}

void frmProve::ShowMark(std::optional<terravo::PlanPoint> place) {
    picLivelli->SetMark(place ? std::optional(terravo::UserPosition{place->x, place->y})
                              : std::nullopt);
    ShowMarkIn3D();
    emit MarkChanged();
}

void frmProve::ShowMarkIn3D() {
    if (frm3D* view = view3D ? view3D(false) : nullptr) {
        const std::optional<terravo::Index> point = session_.MarkedPoint();
        view->Commands().SetMark(
            point ? std::optional(terravo::PlaceOfPoint(session_.TheSurvey(), *point))
                  : std::nullopt);
    }
}

// What the map shows, for who hears the windows instead of seeing them.
void frmProve::DescribeMap() {
    QStringList parts{counts_, Spoken(zLabel02->text()) + QStringLiteral(": ") + txtNLiv->text()};
    for (const QAbstractButton* option : std::initializer_list<QAbstractButton*>{
             optLinee, optAree, chkValoriLivelli, chkTriangoli, chkPerimetro}) {
        if (option->isChecked() && !option->isHidden()) {
            parts += Spoken(option->text());
        }
    }
    picLivelli->setAccessibleDescription(parts.join(QStringLiteral(", ")));
}

bool frmProve::TakesPatches() const {
    return hasSheet && hasSheet();
}

void frmProve::ShowPatch(const terravo::SurfacePatch& patch) {
    emit PatchMade(patch);
    mnuEdit->Follow();
    ShowProject();
    catchUp_.start();
}

// While a dialog asks something, its answer comes first.
void frmProve::CatchUp() {
    if (QApplication::activeModalWidget() == nullptr) {
        session_.CatchUp();
    }
    if (session_.IsBehind()) {
        catchUp_.start();
    }
}

void frmProve::BeginWork() {
    status_.BeginWork(Caption(state_, Text::Working), Caption(state_, Text::Stop),
                      session_.GivesWay());
}

void frmProve::ShowProgress(double done) {
    status_.ShowProgress(done);
}

void frmProve::EndWork() {
    status_.EndWork();
    DescribeMap();
    mnuEdit->Follow();
    ShowProject();
    emit WorkEnded();
}

void frmProve::ShowPointer(double x, double y) {
    const auto single = [](double value) {
        return QString::fromStdString(terravo::NumberText::SingleText(static_cast<float>(value)));
    };
    picLivelli->setToolTip(QString());
    picLivelli->setToolTip(single(x) + QStringLiteral(", ") + single(y));
    constexpr double kReachPixels = 6;
    const QSizeF pixel = picLivelli->PixelInUnits();
    status_.ShowPointer(ToQString(session_.TextOfPlace(
        {x, y}, {kReachPixels * pixel.width(), kReachPixels * pixel.height()})));
}

void frmProve::CopyPicture() {
    QClipboard* clipboard = QGuiApplication::clipboard();
    clipboard->clear();
    clipboard->setImage(picLivelli->Picture());
    TellOfCopy();
}

void frmProve::TellOfCopy() {
    status_.ShowNote(Caption(state_, Text::PictureCopied));
}

void frmProve::ShowAbout() {
    AboutBox box(state_, this);
    box.exec();
}

void frmProve::ShowHelp() {
    if (help_ == nullptr) {
        help_ = new HelpWindow(state_, language_, window());
    }
    help_->show();
    help_->raise();
    help_->activateWindow();
}

void frmProve::ShowSettings() {
    SettingsDialog dialog(state_, session_.OpensWith(), this);
    if (dialog.exec() == QDialog::Accepted) {
        session_.SetOpensWith(dialog.OpensWith());
    }
}

void frmProve::ShowLevels() {
    LevelsDialog dialog(state_, session_.Options().levels,
                        session_.TheSurvey().ShownPoints().extentZ, this);
    if (dialog.exec() == QDialog::Accepted) {
        session_.SetLevelRule(dialog.Rule());
    }
}

void frmProve::SelectLines() {
    optLinee->setChecked(true);
    chkValoriLivelli->setVisible(true);
}

terravo::WindowBox frmProve::Box() const {
    const QRect box = (placeToKeep ? placeToKeep() : std::nullopt).value_or(geometry());
    return {box.left(), box.top(), box.width(), box.height()};
}

bool frmProve::IsMinimised() const {
    return placeToKeep ? !placeToKeep() : isMinimized();
}

void frmProve::CloseWindow() {
    QTimer::singleShot(0, this, &frmProve::ExitAsked);
}

// The first file of what is dragged; empty when it holds none of this machine.
std::string frmProve::DroppedFile(const QMimeData& data) {
    const QList<QUrl> urls = data.urls();
    return urls.isEmpty() ? std::string() : urls.first().toLocalFile().toStdString();
}

void frmProve::closeEvent(QCloseEvent* event) {
    session_.Close();
    event->accept();
    // However the window came to close, the program ends with it.
    emit ExitAsked();
}

void frmProve::dragEnterEvent(QDragEnterEvent* event) {
    if (!DroppedFile(*event->mimeData()).empty()) {
        event->acceptProposedAction();
    }
}

void frmProve::dropEvent(QDropEvent* event) {
    event->acceptProposedAction();
    session_.LoadNamedFile(DroppedFile(*event->mimeData()));
}

// Before the first map its place says how to get one.
void frmProve::paintEvent(QPaintEvent* event) {
    QWidget::paintEvent(event);
    if (!Picture1->isHidden()) {
        return;
    }
    QPainter painter(this);
    painter.setPen(optLinee->palette().color(QPalette::WindowText));
    painter.drawText(Picture1->geometry(), Qt::AlignCenter,
                     Spoken(mnuLeggiDati->text()) + QStringLiteral("  (") +
                         mnuLeggiDati->shortcut().toString(QKeySequence::NativeText) +
                         QLatin1Char(')'));
}

#include "app/windows/SheetWindow.h"

#include "app/windows/Controls.h"
#include "app/windows/SchemeStyle.h"
#include "app/windows/StatusPanel.h"
#include "export/SheetPainter.h"
#include "sheet/SheetLayout.h"
#include "util/AppError.h"
#include "util/NumberText.h"

#include <QBoxLayout>
#include <QCloseEvent>
#include <QGridLayout>
#include <QLocale>
#include <QScrollArea>
#include <QScrollBar>
#include <QSplitter>

using terravo::SheetPlan;
using terravo::Text;

namespace {

constexpr int kSoonMilliseconds = 150;
constexpr int kAfterInterruption = 700;       // milliseconds
constexpr terravo::Index kManyPoints = 20000; // fewer are drawn while one types

} // namespace

SheetWindow::SheetWindow(const terravo::RunState& state, terravo::Session& session,
                         StatusPanel& status, terravo::SettingsStore& settings,
                         const terravo::ColourScheme& scheme)
    : state_(state), session_(session), status_(status) {
    setObjectName(QStringLiteral("SheetWindow"));
    setWindowTitle(Caption(state_, Text::SheetWindowTitle));
    picSheet = Named(new SheetView(this), "picSheet");
    picSheet->setAccessibleName(Caption(state_, Text::SheetWindowTitle));
    picSheet->SetHint(Caption(state_, Text::SheetNoPoints));
    picSheet->setToolTip(Caption(state_, Text::SheetViewHint));
    auto* splitter = new QSplitter(Qt::Horizontal, this);
    splitter->addWidget(picSheet);
    splitter->addWidget(MakeColumn(settings));
    splitter->setStretchFactor(0, 1);
    splitter->setCollapsible(0, false);
    constexpr int kColumnWidth = 280;
    splitter->setSizes({width(), std::max(kColumnWidth, splitter->widget(1)->minimumWidth())});
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(splitter);
    soon_.setSingleShot(true);
    connect(&soon_, &QTimer::timeout, this, &SheetWindow::MakeNow);
    ApplyColourScheme(*this, scheme);
    pnlSheet->SetPlan(session_.KeptSheet().value_or(pnlStyles->Styles().Last()));
    ConnectControls();
    ConnectView();
    Refresh();
    ShowState();
}

QWidget* SheetWindow::MakeColumn(terravo::SettingsStore& settings) {
    auto* column = new QWidget;
    auto* layout = new QVBoxLayout(column);
    QBoxLayout* buttons = MakeButtons(column); // the Tab key goes in the order of making
    lblSheet = Named(new QLabel(column), "lblSheet");
    lblSheet->setWordWrap(true);
    pnlStyles = new SheetStyleBox(state_, settings, column);
    pnlSheet = new SheetPanel(state_, column);
    pnlStyles->present = [this] { return pnlSheet->Plan(); };
    layout->addLayout(buttons);
    layout->addWidget(lblSheet);
    layout->addWidget(pnlStyles);
    layout->addWidget(pnlSheet);
    layout->addStretch(1);
    auto* scroll = Named(new QScrollArea(this), "sheetControls");
    scroll->setWidget(column);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setFocusPolicy(Qt::NoFocus);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setMinimumWidth(column->minimumSizeHint().width() +
                            scroll->verticalScrollBar()->sizeHint().width());
    return scroll;
}

QBoxLayout* SheetWindow::MakeButtons(QWidget* parent) {
    auto* grid = new QGridLayout;
    const auto button = [&](Text caption, const char* name, int row, int column) {
        auto* made = Named(new QPushButton(Caption(state_, caption), parent), name);
        grid->addWidget(made, row, column);
        return made;
    };
    cmdFit = button(Text::SheetFitEntry, "cmdFit", 0, 0);
    cmdTrueSize = button(Text::SheetTrueSizeEntry, "cmdTrueSize", 0, 1);
    cmdMeasure = button(Text::SheetMeasureEntry, "cmdMeasure", 1, 0);
    cmdCentre = button(Text::SheetCentreEntry, "cmdCentre", 1, 1);
    cmdMeasure->setCheckable(true);
    auto* column = new QVBoxLayout;
    column->addLayout(grid);
    cmdExport = button(Text::SheetExportEntry, "cmdExport", 2, 0);
    cmdPrint = button(Text::SheetPrintEntry, "cmdPrint", 3, 0);
    for (QPushButton* wide : {cmdExport, cmdPrint}) {
        grid->removeWidget(wide);
        column->addWidget(wide);
    }
    return column;
}

void SheetWindow::ConnectControls() {
    connect(cmdFit, &QPushButton::clicked, picSheet, &SheetView::Fit);
    connect(cmdTrueSize, &QPushButton::clicked, picSheet, &SheetView::ShowTrueSize);
    connect(cmdMeasure, &QPushButton::clicked, this, [this] { Toggle(SheetTool::Measure); });
    connect(cmdCentre, &QPushButton::clicked, this, &SheetWindow::CentreAgain);
    connect(cmdExport, &QPushButton::clicked, this, &SheetWindow::Export);
    connect(cmdPrint, &QPushButton::clicked, this, &SheetWindow::Print);
    connect(pnlSheet, &SheetPanel::Changed, this, &SheetWindow::MakeSoon);
    connect(pnlStyles, &SheetStyleBox::Chosen, this, [this](const std::string& name) {
        SheetPlan plan = pnlSheet->Plan();
        if (pnlStyles->Styles().Apply(name, plan)) {
            pnlSheet->SetPlan(plan);
            MakeSoon();
        }
    });
}

void SheetWindow::ConnectView() {
    picSheet->SetMeasureText([this](const SheetDistance& d) { return MeasureText(d); });
    connect(picSheet, &SheetView::PointerMoved, this, &SheetWindow::ShowPointer);
    connect(picSheet, &SheetView::PointerLeft, this, [this] { status_.ShowPointer({}); });
    connect(picSheet, &SheetView::MapMoved, this, &SheetWindow::MoveMap);
    connect(picSheet, &SheetView::ToolChanged, this, [this] {
        if (picSheet->Tool() == SheetTool::Measure) {
            status_.ShowNote(Caption(state_, Text::MeasureHint));
        }
        ShowState();
    });
    tools_ = new SurfaceTools(state_, session_, *picSheet);
    measuring_ = new MeasureTools(state_, session_, *picSheet);
    connect(measuring_, &MeasureTools::Note, this,
            [this](const QString& text) { status_.ShowNote(text); });
    connect(tools_, &SurfaceTools::Note, this,
            [this](const QString& text) { status_.ShowNote(text); });
    connect(picSheet, &SheetView::Measured, this, [this](const QString& text) {
        if (!text.isEmpty()) {
            status_.ShowNote(text);
        }
    });
}

SheetWindow::Origin SheetWindow::WantedOrigin() const {
    return {pnlSheet->Plan(), session_.SheetLevels(), session_.TheSurvey().Version()};
}

void SheetWindow::Refresh() {
    if (!session_.IsBehind() && made_ != WantedOrigin()) {
        MakeSoon();
    }
}

void SheetWindow::ShowPatch(const terravo::SurfacePatch& patch) {
    soon_.stop();
    if (!made_) {
        return;
    }
    if (std::optional<terravo::SheetScene> scene =
            session_.MakeSheetPatch(made_->plan, patch, terravo::SheetTextMeasure())) {
        picSheet->AddPatch(std::move(*scene));
    }
}

void SheetWindow::MakeSoon() {
    if (session_.Points().count > 0) { // there is nothing to open while the first sheet is made
        picSheet->SetHint(QString());
    }
    soon_.start(session_.Points().count > kManyPoints ? kSoonMilliseconds : 0);
}

// A place of the map belongs to the points of one file.
void SheetWindow::ForgetPlaceOfOtherFile() {
    const terravo::PointSet& points = session_.Points();
    const std::string file = points.sourceFolder + points.sourceName;
    if (file != file_) {
        file_ = file;
        pnlSheet->SetCentre(std::nullopt);
        picSheet->Fit();
    }
}

// A window that was closed comes back as it was, too.
void SheetWindow::TakeSheetOfProject() {
    if (session_.KeptSheet() && (session_.SheetRevision() != projectSheet_ || !made_)) {
        pnlSheet->SetPlan(*session_.KeptSheet());
    }
    projectSheet_ = session_.SheetRevision();
}

void SheetWindow::MakeNow() {
    if (status_.IsWorking()) { // the points may be half read
        soon_.start(kSoonMilliseconds);
        return;
    }
    ForgetPlaceOfOtherFile();
    TakeSheetOfProject();
    const Origin wanted = WantedOrigin();
    if (session_.Points().count > 0) {
        session_.KeepSheet(wanted.plan);
    }
    if (made_ == wanted) {
        return;
    }
    const std::optional<Origin> before = std::exchange(made_, wanted);
    trouble_.clear();
    std::optional<terravo::SheetScene> scene;
    bool wasInterrupted = false;
    try {
        scene = MakeSheet(wanted.plan, wasInterrupted);
        if (wasInterrupted) {
            made_ = before;
            soon_.start(kAfterInterruption);
            return;
        }
        if (!scene && session_.Points().count > 0) {
            trouble_ = Caption(state_, Text::SheetStopped);
        }
    } catch (const terravo::AppError& error) {
        trouble_ = Caption(state_, Text::SheetNotMade).arg(ToQString(error.what()));
    }
    ShowSheet(std::move(scene));
}

// The changed parts are there to be seen meanwhile.
std::optional<terravo::SheetScene> SheetWindow::MakeSheet(const SheetPlan& plan,
                                                          bool& wasInterrupted) {
    const terravo::SheetTextMeasure measure;
    return picSheet->HasPatches() ? session_.MakeSheetMeanwhile(plan, measure, wasInterrupted)
                                  : session_.MakeSheet(plan, measure);
}

void SheetWindow::ShowSheet(std::optional<terravo::SheetScene> scene) {
    const terravo::PointSet& points = session_.Points();
    if (scene) {
        pnlSheet->SetLargestStep(session_.FiguresOfSheet().largestStep);
        if (shownSmoothing_ != made_->plan.smoothing) { // not after every edit
            shownSmoothing_ = made_->plan.smoothing;
            status_.ShowNote(SmoothText());
        }
        pnlStyles->Styles().KeepLast(made_->plan);
        picSheet->Show(std::make_shared<const terravo::SheetScene>(std::move(*scene)),
                       terravo::LayOut(made_->plan, session_.TheSurvey().ShownPoints()).view);
    } else if (points.count == 0 || trouble_ != Caption(state_, Text::SheetStopped)) {
        picSheet->Show(nullptr, {});
        picSheet->SetHint(trouble_.isEmpty() ? Caption(state_, Text::SheetNoPoints) : trouble_);
    }
    ShowState();
}

// How far smooth lines leave their height at most; empty for others.
QString SheetWindow::SmoothText() const {
    const std::optional<terravo::SmoothError> worst = session_.FiguresOfSheet().smooth;
    if (!worst) {
        return {};
    }
    const auto bound = [this](double value) {
        return ToQString(terravo::NumberText::RoundedUp(value, 2, state_.decimalSeparator));
    };
    return Caption(state_, Text::SheetSaysSmooth).arg(bound(worst->height), bound(worst->interval));
}

QString SheetWindow::Description() const {
    const terravo::SheetScene* scene = picSheet->Scene();
    if (scene == nullptr) {
        return trouble_;
    }
    const auto number = [](double value) { return ToQString(terravo::NumberText::General(value)); };
    QStringList lines{Caption(state_, Text::SheetSaysScale)
                          .arg(number(scene->scale), number(scene->width), number(scene->height))};
    const terravo::LabelReport& labels = scene->labels;
    if (labels.lines > 0) {
        lines += Caption(state_, Text::SheetSaysLabels)
                     .arg(labels.labelled)
                     .arg(labels.lines)
                     .arg(labels.tooShort)
                     .arg(labels.noRoom);
    }
    if (const QString smooth = SmoothText(); !smooth.isEmpty()) {
        lines += smooth;
    }
    for (const terravo::Statement& remark : scene->remarks) {
        lines += ToQString(terravo::WithValues(state_.texts[remark.sentence], remark.values));
    }
    if (!trouble_.isEmpty()) {
        lines += trouble_;
    }
    return lines.join(QLatin1Char('\n'));
}

void SheetWindow::ShowState() {
    const bool has = HasSheet();
    lblSheet->setText(Description());
    lblSheet->setVisible(!lblSheet->text().isEmpty());
    picSheet->setAccessibleDescription(Description() + QLatin1Char('\n') +
                                       Caption(state_, Text::SheetViewHint));
    for (QPushButton* button : {cmdFit, cmdTrueSize, cmdMeasure, cmdExport, cmdPrint}) {
        button->setEnabled(has);
    }
    cmdCentre->setEnabled(has && pnlSheet->Plan().centre.has_value());
    cmdMeasure->setChecked(picSheet->Tool() == SheetTool::Measure);
    emit StateChanged();
}

void SheetWindow::FollowMark() {
    const std::optional<terravo::Index> point = session_.MarkedPoint();
    const terravo::PointSet& points = session_.TheSurvey().AllPoints();
    picSheet->SetMark(point ? std::optional(terravo::PlanPoint{points.x[*point], points.y[*point]})
                            : std::nullopt);
}

void SheetWindow::ShowPointer(double x, double y) {
    constexpr double kReachPixels = 6;
    const terravo::PlanPoint a = picSheet->PlanAt({0, 0});
    const terravo::PlanPoint b = picSheet->PlanAt({kReachPixels, 0});
    const double reach = DistanceOf(a, b).distance;
    status_.ShowPointer(ToQString(session_.TextOfPlace({x, y}, {reach, reach})));
}

QString SheetWindow::MeasureText(const SheetDistance& distance) const {
    constexpr int kDecimals = 3;
    const QLocale locale = QLocale::c();
    QString text = Caption(state_, Text::MeasureResult)
                       .arg(locale.toString(distance.distance, 'f', kDecimals),
                            locale.toString(distance.azimuth, 'f', kDecimals));
    // Only numbers have a period.
    return text.replace(QLatin1Char('.'), QLatin1Char(state_.decimalSeparator));
}

void SheetWindow::MoveMap(double right, double down) {
    const terravo::SheetScene* scene = picSheet->Scene();
    if (scene == nullptr || !made_) {
        return;
    }
    const terravo::MapView view =
        terravo::LayOut(pnlSheet->Plan(), session_.TheSurvey().ShownPoints()).view;
    pnlSheet->SetCentre(view.ToPlan({view.middle.x - right, view.middle.y - down}));
    MakeNow();
}

void SheetWindow::CentreAgain() {
    pnlSheet->SetCentre(std::nullopt);
    MakeSoon();
}

void SheetWindow::Toggle(SheetTool tool) {
    picSheet->SetTool(picSheet->Tool() == tool ? SheetTool::Pan : tool);
    picSheet->setFocus();
    ShowState();
}

void SheetWindow::closeEvent(QCloseEvent* event) {
    status_.ShowPointer({});
    emit Closing();
    event->accept();
}

#include "app/windows/TerrainWindow.h"

#include "app/settings/ColourScheme.h"
#include "app/settings/SheetStyles.h"
#include "app/windows/Controls.h"
#include "app/windows/QtTexts.h"
#include "app/windows/SchemeStyle.h"
#include "app/windows/StatusPanel.h"
#include "plot2d/PictureFile.h"
#include "survey/PointPlace.h"
#include "util/AppError.h"
#include "util/NumberText.h"
#include "view3d/gl/TerrainFurniture.h"

#include <QClipboard>
#include <QCloseEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QInputDialog>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollArea>
#include <QVBoxLayout>

#include <cmath>
#include <numbers>
#include <utility>

using terravo::Index;
using terravo::SpacePoint;
using terravo::TerrainCamera;
using terravo::TerrainSide;
using terravo::Text;

TerrainWindow::TerrainWindow(const terravo::RunState& state, terravo::Session& session,
                             StatusPanel& status, const terravo::ColourScheme& scheme)
    : state_(state), session_(session), status_(status) {
    setObjectName(QStringLiteral("TerrainWindow"));
    setWindowTitle(Caption(state, Text::TerrainWord));
    MakeControls();
    ApplyColourScheme(*this, scheme);
    soon_.setSingleShot(true);
    connect(&soon_, &QTimer::timeout, this, &TerrainWindow::MakeNow);
    MakeNow();
}

void TerrainWindow::MakeControls() {
    auto* columns = new QHBoxLayout(this);
    columns->setContentsMargins(4, 4, 4, 4);
    if (!TerrainView::IsPossible()) {
        auto* none =
            Named(new QLabel(Caption(state_, Text::TerrainNoGraphics), this), "lblNoGraphics");
        none->setWordWrap(true);
        none->setAlignment(Qt::AlignCenter);
        columns->addWidget(none);
        return;
    }
    auto* left = new QVBoxLayout;
    picTerrain = new TerrainView(state_, this);
    lblReading = Named(new QLabel(Caption(state_, Text::TerrainHint), this), "lblReading");
    lblReading->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    left->addWidget(picTerrain, 1);
    left->addWidget(lblReading);
    columns->addLayout(left, 1);
    auto* column = new QWidget(this);
    auto* rows = new QVBoxLayout(column);
    rows->setContentsMargins(4, 0, 4, 0);
    pnlTerrain = new TerrainPanel(state_, column);
    rows->addWidget(pnlTerrain, 1);
    auto* scroll = new QScrollArea(this);
    scroll->setWidget(column);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    constexpr int kScrollBar = 16;
    scroll->setFixedWidth(column->sizeHint().width() + kScrollBar);
    columns->addWidget(scroll);
    ConnectView();
    TakeHabit();
}

void TerrainWindow::ConnectView() {
    connect(pnlTerrain, &TerrainPanel::WholeAsked, this, &TerrainWindow::Reset);
    connect(pnlTerrain, &TerrainPanel::ExportAsked, this, &TerrainWindow::Export);
    connect(pnlTerrain, &TerrainPanel::CopyAsked, this, &TerrainWindow::Copy);
    connect(pnlTerrain, &TerrainPanel::Changed, this, [this] {
        picTerrain->SetPlan(pnlTerrain->Plan());
        habit_.plan = pnlTerrain->Plan();
        KeepHabit();
    });
    connect(pnlTerrain, &TerrainPanel::ExaggerationChanged, this, [this](double factor) {
        picTerrain->Change([&](TerrainCamera& camera) { camera.SetExaggeration(factor); });
        habit_.factorOf = file_;
        habit_.factor = picTerrain->Camera().Exaggeration();
        KeepHabit();
    });
    connect(pnlTerrain, &TerrainPanel::PerspectiveChanged, this, [this](bool on) {
        picTerrain->Change([&](TerrainCamera& camera) { camera.SetPerspective(on); });
        habit_.perspective = on;
        KeepHabit();
    });
    connect(picTerrain, &TerrainView::CameraMoved, this, [this] {
        pnlTerrain->ShowCamera(picTerrain->Camera().Exaggeration(),
                               picTerrain->Camera().IsPerspective());
    });
    connect(picTerrain, &TerrainView::Hovered, this, &TerrainWindow::ShowReading);
    connect(picTerrain, &TerrainView::PointerLeft, this,
            [this] { lblReading->setText(Caption(state_, Text::TerrainHint)); });
    connect(picTerrain, &TerrainView::Clicked, this, &TerrainWindow::Mark);
    picTerrain->sides = [this] {
        return terravo::SidesOf(session_.TheSurvey().Surface().triangles);
    };
    picTerrain->groundAt = [this](double x, double y) -> std::optional<SpacePoint> {
        const auto hit = HitAt(x, y);
        return hit ? std::optional(hit->place) : std::nullopt;
    };
}

void TerrainWindow::TakeHabit() {
    habit_ = terravo::LoadTerrainHabit(session_.Settings());
    pnlTerrain->SetPlan(habit_.plan);
    picTerrain->SetPlan(habit_.plan);
    picTerrain->Change([&](TerrainCamera& camera) { camera.SetPerspective(habit_.perspective); });
}

void TerrainWindow::KeepHabit() {
    terravo::KeepTerrainHabit(session_.Settings(), habit_);
}

// That of the sheet; a sheet that nobody has opened is as the last one was.
std::optional<terravo::SmoothingOptions> TerrainWindow::Smoothing() const {
    const std::optional<terravo::SheetPlan>& sheet = session_.KeptSheet();
    return sheet ? sheet->smoothing : terravo::SheetStyles(session_.Settings()).Last().smoothing;
}

void TerrainWindow::Refresh() {
    soon_.start(0);
}

void TerrainWindow::MakeNow() {
    constexpr int kAfterWork = 100; // milliseconds
    if (picTerrain == nullptr || session_.IsBehind()) {
        return;
    }
    if (status_.IsWorking()) {
        soon_.start(kAfterWork);
        return;
    }
    const Origin wanted{session_.TheSurvey().Version(), session_.SheetLevels(), Smoothing()};
    if (made_ == wanted) {
        return;
    }
    made_ = wanted; // before the work, whose end comes here again
    pick_.reset();
    std::optional<terravo::TerrainContent> content = session_.MakeTerrain(wanted.smoothing);
    const terravo::PointSet& points = session_.TheSurvey().AllPoints();
    const std::string file = points.sourceFolder + points.sourceName;
    content_ =
        content ? std::make_shared<const terravo::TerrainContent>(std::move(*content)) : nullptr;
    const bool isSame = content_ != nullptr && file == file_;
    picTerrain->Show(content_, isSame);
    if (const auto factor = habit_.FactorFor(file); factor && content_ != nullptr && !isSame) {
        picTerrain->SetFactor(*factor);
    }
    file_ = content_ != nullptr ? file : std::string();
    FollowMark();
    emit StateChanged();
}

// A point that was marked elsewhere comes into the middle, near enough to see what is about it.
void TerrainWindow::FollowMark() {
    if (picTerrain == nullptr) {
        return;
    }
    const std::optional<Index> point = session_.MarkedPoint();
    const bool isOther = std::exchange(shownMark_, point) != point;
    if (!point || content_ == nullptr) {
        picTerrain->SetMark(std::nullopt);
        return;
    }
    const SpacePoint place = terravo::PlaceOfPoint(session_.TheSurvey(), *point);
    picTerrain->SetMark(place);
    if (isOther && !isMarking_) {
        constexpr double kNear = 0.12; // of the terrain: what is about the point can be seen
        const SpacePoint local = content_->frame.Local(place);
        const double wanted =
            kNear * 4 * std::max(content_->frame.reach.x, content_->frame.reach.y);
        picTerrain->Change([&](TerrainCamera& camera) {
            camera.CentreOn(local);
            if (camera.Distance() > wanted) {
                camera.ZoomAt(local, camera.Distance() / wanted);
            }
        });
    }
}

std::optional<terravo::TerrainHit> TerrainWindow::HitAt(double x, double y) {
    if (content_ == nullptr) {
        return std::nullopt;
    }
    if (pick_ == nullptr) {
        pick_ = std::make_unique<terravo::TerrainPick>(content_->mesh);
    }
    return pick_->FirstOn(picTerrain->Camera().RayAt(x, y));
}

std::optional<TerrainWindow::Reading> TerrainWindow::ReadAt(double x, double y) {
    constexpr double kReach = 8; // pixels
    const auto hit = HitAt(x, y);
    // An edit that has not been caught up with has other triangles.
    if (!hit || !made_ || made_->survey != session_.TheSurvey().Version()) {
        return std::nullopt;
    }
    const terravo::ShownSurface surface = session_.TheSurvey().Surface();
    const SpacePoint& middle = content_->frame.middle;
    Reading reading;
    reading.place = {hit->place.x + middle.x, hit->place.y + middle.y, hit->place.z + middle.z};
    reading.slope = terravo::SlopeOf(content_->mesh, hit->triangle);
    const Index near = terravo::PointNear(picTerrain->Camera(), content_->mesh, surface.triangles,
                                          surface.SurveyedPoints(), *hit, {x, y, 0}, kReach);
    if (near > 0) {
        reading.point = session_.TheSurvey().NumberAmongAll(near);
        reading.place = {surface.points.x[near], surface.points.y[near], surface.points.z[near]};
    }
    return reading;
}

void TerrainWindow::ShowReading(double x, double y) {
    const std::optional<Reading> reading = ReadAt(x, y);
    if (!reading) {
        lblReading->setText(Caption(state_, Text::TerrainHint));
        return;
    }
    const auto number = [this](double value, const char* form) {
        return ToQString(terravo::NumberText::FormatScreen(value, form, state_.decimalSeparator));
    };
    QString text;
    if (reading->point) {
        const terravo::PointLabels& labels = session_.TheSurvey().AllPoints().labels;
        text = ToQString(labels.NameOrNumber(*reading->point));
        if (labels.HasLabels()) {
            text += QLatin1Char(' ') + ToQString(std::string(labels.Code(*reading->point)));
        }
        text = text.trimmed() + QStringLiteral("   ");
    }
    text += QStringLiteral("x: %1   y: %2   z: %3   ")
                .arg(number(reading->place.x, "#0.0##"), number(reading->place.y, "#0.0##"),
                     number(reading->place.z, "#0.0##"));
    lblReading->setText(
        text + Caption(state_, Text::TerrainSlopeSays).arg(number(reading->slope, "#0.0")));
}

void TerrainWindow::Mark(double x, double y) {
    const QScopedValueRollback<bool> marking(isMarking_, true);
    const std::optional<Reading> reading = ReadAt(x, y);
    session_.MarkPoint(reading ? reading->point : std::nullopt);
    ShowReading(x, y);
}

void TerrainWindow::LookFrom(TerrainSide side) {
    picTerrain->LookFrom(side);
}

void TerrainWindow::Reset() {
    picTerrain->LookFrom(TerrainCamera().Azimuth(), TerrainCamera().Elevation());
}

QImage TerrainWindow::PictureWithFurniture(int width, int height) {
    QImage picture = picTerrain->Picture(width, height);
    if (!picture.isNull()) {
        TerrainCamera camera = picTerrain->Camera();
        camera.SetSize(width, height);
        QPainter painter(&picture);
        terravo::PaintTerrainFurniture(painter,
                                       {picTerrain->Plan(), camera, content_->frame, state_.texts,
                                        state_.decimalSeparator, "m", width, height});
    }
    return picture;
}

// As wide as the user says, in the shape of the window.
void TerrainWindow::Export() {
    constexpr int kUsual = 2400;
    constexpr int kMost = 16000;
    if (!HasTerrain()) {
        return;
    }
    bool isGiven = false;
    const int width = QInputDialog::getInt(
        this, Caption(state_, Text::TerrainWord), Caption(state_, Text::TerrainPictureWidth),
        std::max(kUsual, picTerrain->width()), 16, kMost, 100, &isGiven);
    if (!isGiven) {
        return;
    }
    const int height =
        std::max(16, static_cast<int>(std::lround(static_cast<double>(width) *
                                                  picTerrain->height() / picTerrain->width())));
    session_.ExportPicture("terrain", [&](const std::string& path) {
        const QImage picture = PictureWithFurniture(width, height);
        if (picture.isNull()) {
            throw terravo::AppError(terravo::ErrorNumber::kDrawing, "TerrainWindow",
                                    state_.texts[Text::TerrainNoGraphics]);
        }
        terravo::SavePicture(picture, {path});
    });
}

void TerrainWindow::Copy() {
    if (HasTerrain()) {
        const double ratio = picTerrain->devicePixelRatioF();
        QGuiApplication::clipboard()->setImage(
            PictureWithFurniture(static_cast<int>(std::lround(picTerrain->width() * ratio)),
                                 static_cast<int>(std::lround(picTerrain->height() * ratio))));
        status_.ShowNote(Caption(state_, Text::PictureCopied));
    }
}

void TerrainWindow::closeEvent(QCloseEvent* event) {
    emit Closing();
    event->accept();
}

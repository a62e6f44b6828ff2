#include "app/windows/TerrainView.h"

#include "app/windows/Controls.h"
#include "util/AppError.h"
#include "util/Stopwatch.h"
#include "view3d/gl/TerrainFurniture.h"
#include "view3d/gl/TerrainPicture.h"

#include <QMouseEvent>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QPainter>

#include <cmath>

using terravo::SpacePoint;
using terravo::TerrainCamera;
using terravo::TerrainSide;
using terravo::Text;

namespace {

constexpr int kRestMilliseconds = 250;
constexpr double kQuick = 80; // milliseconds: such a picture is drawn once more, refined

QSurfaceFormat WantedFormat() {
    QSurfaceFormat format;
    format.setVersion(3, 3);
    format.setProfile(QSurfaceFormat::CoreProfile);
    format.setDepthBufferSize(24);
    return format;
}

bool FindGraphics() {
    QOpenGLContext context;
    context.setFormat(WantedFormat());
    if (!context.create() || context.isOpenGLES() || context.format().version() < qMakePair(3, 3)) {
        return false;
    }
    QOffscreenSurface surface;
    surface.setFormat(context.format());
    surface.create();
    return context.makeCurrent(&surface);
}

} // namespace

TerrainView::TerrainView(const terravo::RunState& state, QWidget* parent)
    : QOpenGLWidget(parent), state_(state) {
    setObjectName(QStringLiteral("picTerrain"));
    setFormat(WantedFormat());
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(Caption(state, Text::TerrainWord));
    setAccessibleDescription(Caption(state, Text::TerrainHint));
    rest_.setSingleShot(true);
    connect(&rest_, &QTimer::timeout, this, &TerrainView::ComeToRest);
    hover_.setSingleShot(true);
    connect(&hover_, &QTimer::timeout, this, [this] {
        const QPoint at = mapFromGlobal(QCursor::pos());
        if (rect().contains(at) && !drag_) {
            emit Hovered(at.x(), at.y());
        }
    });
}

// The graphics take their things back while their context is there.
TerrainView::~TerrainView() {
    if (renderer_ != nullptr) {
        makeCurrent();
        renderer_.reset();
        doneCurrent();
    }
}

bool TerrainView::IsPossible() {
    static const bool kIsPossible = FindGraphics();
    return kIsPossible;
}

void TerrainView::Show(std::shared_ptr<const terravo::TerrainContent> content, bool keepsCamera) {
    content_ = std::move(content);
    isLoaded_ = false;
    if (content_ != nullptr) {
        camera_.SetReach(content_->frame.reach);
        if (!keepsCamera) {
            const bool perspective = camera_.IsPerspective();
            camera_ = TerrainCamera();
            camera_.SetPerspective(perspective);
            camera_.SetReach(content_->frame.reach);
            camera_.SetSize(width(), height());
            camera_.SetExaggeration(terravo::ProposedExaggeration(content_->frame.reach));
            camera_.Fit();
            isFitted_ = true;
        }
    }
    ForgetRefined();
    emit CameraMoved();
}

void TerrainView::SetPlan(const terravo::TerrainPlan& plan) {
    plan_ = plan;
    ForgetRefined();
}

void TerrainView::LookFrom(double azimuth, double elevation) {
    Change([&](TerrainCamera& camera) {
        camera.SetDirection(azimuth, elevation);
        camera.Fit();
    });
    isFitted_ = true;
}

void TerrainView::SetFactor(double factor) {
    Change([&](TerrainCamera& camera) {
        camera.SetExaggeration(factor);
        camera.Fit();
    });
    isFitted_ = true;
}

void TerrainView::LookFrom(TerrainSide side) {
    TerrainCamera there;
    there.LookFrom(side);
    LookFrom(there.Azimuth(), there.Elevation());
}

void TerrainView::Change(const std::function<void(TerrainCamera& camera)>& change) {
    camera_.SetSize(width(), height());
    change(camera_);
    isFitted_ = false;
    ForgetRefined();
    emit CameraMoved();
}

void TerrainView::SetMark(std::optional<SpacePoint> place) {
    if (mark_ != place) {
        mark_ = place;
        ForgetRefined();
    }
}

void TerrainView::ForgetRefined() {
    refined_ = {};
    rest_.start(kRestMilliseconds);
    update();
}

// Until the hand has rested for a moment.
void TerrainView::Moves() {
    isMoving_ = true;
    isFitted_ = false;
    ForgetRefined();
    emit CameraMoved();
}

void TerrainView::ComeToRest() {
    if (drag_ && drag_->hasMoved) {
        rest_.start(kRestMilliseconds);
        return;
    }
    const bool wasMoving = isMoving_;
    isMoving_ = false;
    if (wasMoving && content_ != nullptr && !content_->coarse.empty()) {
        rest_.start(kRestMilliseconds);
        update();
    } else if (content_ != nullptr && isVisible() && tookMilliseconds_ < kQuick) {
        const double ratio = devicePixelRatioF();
        refined_ = Picture(static_cast<int>(std::lround(width() * ratio)),
                           static_cast<int>(std::lround(height() * ratio)));
        update();
    }
}

void TerrainView::initializeGL() {
    try {
        renderer_ = std::make_unique<terravo::TerrainRenderer>();
        isLoaded_ = false;
    } catch (const terravo::AppError& error) {
        trouble_ = ToQString(error.what());
    }
}

void TerrainView::Load() {
    if (!isLoaded_ && content_ != nullptr) {
        renderer_->Load(*content_);
        isLoaded_ = true;
    }
    if (isLoaded_ && plan_.triangles && !renderer_->HasSides() && sides) {
        renderer_->LoadSides(sides());
    }
}

terravo::TerrainShot TerrainView::ViewOf(const TerrainCamera& camera, int width, int height,
                                         double ratio) const {
    terravo::TerrainShot view{plan_, camera, width, height, ratio, isMoving_, {}};
    if (mark_ && content_ != nullptr) {
        view.mark = content_->frame.Local(*mark_);
    }
    return view;
}

void TerrainView::resizeGL(int /*width*/, int /*height*/) {
    camera_.SetSize(width(), height());
    if (isFitted_ && content_ != nullptr) {
        camera_.Fit();
    }
    refined_ = {};
    rest_.start(kRestMilliseconds);
}

void TerrainView::paintGL() {
    const double ratio = devicePixelRatioF();
    const int pixelsWide = static_cast<int>(std::lround(width() * ratio));
    const int pixelsHigh = static_cast<int>(std::lround(height() * ratio));
    const bool hasTerrain = renderer_ != nullptr && content_ != nullptr;
    camera_.SetSize(width(), height());
    if (hasTerrain && refined_.isNull()) {
        terravo::Stopwatch watch;
        Load();
        renderer_->Draw(ViewOf(camera_, pixelsWide, pixelsHigh, ratio),
                        {0, 0, pixelsWide, pixelsHigh});
        glFinish();
        tookMilliseconds_ = watch.Lap() * 1e3;
    }
    QPainter painter(this);
    if (!hasTerrain) {
        painter.fillRect(rect(), palette().color(QPalette::Window));
        painter.setPen(palette().color(QPalette::WindowText));
        painter.drawText(rect().adjusted(12, 12, -12, -12), Qt::AlignCenter | Qt::TextWordWrap,
                         trouble_.isEmpty() ? Caption(state_, Text::TerrainNothing) : trouble_);
        return;
    }
    if (!refined_.isNull()) {
        painter.drawImage(rect(), refined_);
    }
    terravo::PaintTerrainFurniture(painter, {plan_, camera_, content_->frame, state_.texts,
                                             state_.decimalSeparator, "m", width(), height()});
}

QImage TerrainView::Picture(int pictureWidth, int pictureHeight) {
    if (renderer_ == nullptr || content_ == nullptr) {
        return {};
    }
    makeCurrent();
    QImage picture;
    try {
        Load();
        TerrainCamera camera = camera_;
        camera.SetSize(pictureWidth, pictureHeight);
        terravo::TerrainShot view = ViewOf(camera, pictureWidth, pictureHeight,
                                           static_cast<double>(pictureHeight) / height());
        view.isMoving = false;
        const terravo::TerrainPixels pixels = terravo::DrawTerrainPicture(*renderer_, view);
        picture = QImage(pixels.bytes.data(), pixels.width, pixels.height, 3 * pixels.width,
                         QImage::Format_RGB888)
                      .convertToFormat(QImage::Format_RGB32);
    } catch (const terravo::AppError& error) {
        trouble_ = ToQString(error.what());
    }
    doneCurrent();
    return picture;
}

void TerrainView::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton || event->button() == Qt::MiddleButton) {
        const bool pans =
            event->button() == Qt::MiddleButton || event->modifiers().testFlag(Qt::ShiftModifier);
        drag_ = Drag{event->position(), event->position(), pans};
    }
}

void TerrainView::mouseMoveEvent(QMouseEvent* event) {
    constexpr double kStill = 4; // pixels that a click may move
    if (!drag_) {
        hover_.start(40);
        return;
    }
    const QPointF way = event->position() - drag_->from;
    if (!drag_->hasMoved && std::hypot(way.x(), way.y()) < kStill) {
        return;
    }
    const QPointF step = event->position() - drag_->last;
    drag_->last = event->position();
    drag_->hasMoved = true;
    camera_.SetSize(width(), height());
    if (drag_->pans) {
        camera_.Pan(step.x(), step.y());
    } else {
        camera_.Orbit(step.x(), step.y());
    }
    Moves();
}

void TerrainView::mouseReleaseEvent(QMouseEvent* event) {
    const bool isClick = drag_ && !drag_->hasMoved && event->button() == Qt::LeftButton;
    drag_.reset();
    if (isClick) {
        emit Clicked(event->position().x(), event->position().y());
    }
}

void TerrainView::mouseDoubleClickEvent(QMouseEvent* event) {
    const QPointF at = event->position();
    if (const auto ground = groundAt ? groundAt(at.x(), at.y()) : std::nullopt) {
        Change([&](TerrainCamera& camera) { camera.CentreOn(*ground); });
    }
}

void TerrainView::wheelEvent(QWheelEvent* event) {
    constexpr double kPerStep = 1.2; // of 120 units
    Zoom(event->position(), std::pow(kPerStep, event->angleDelta().y() / 120.0));
    event->accept();
}

void TerrainView::Zoom(QPointF around, double factor) {
    camera_.SetSize(width(), height());
    const auto ground = groundAt ? groundAt(around.x(), around.y()) : std::nullopt;
    camera_.ZoomAt(ground.value_or(camera_.PlaceAcross(around.x(), around.y())), factor);
    Moves();
}

void TerrainView::keyPressEvent(QKeyEvent* event) {
    if (!TakeKey(event->key())) {
        QOpenGLWidget::keyPressEvent(event);
    }
}

bool TerrainView::TakeKey(int key) {
    constexpr double kStep = 12; // pixels
    constexpr double kZoom = 1.25;
    const auto look = [this](TerrainSide side) {
        LookFrom(side);
        return true;
    };
    const auto turn = [this](double right, double down) {
        camera_.Orbit(right, down);
        Moves();
        return true;
    };
    const QPointF middle(width() / 2.0, height() / 2.0);
    switch (key) {
    case Qt::Key_T:
        return look(TerrainSide::Top);
    case Qt::Key_N:
        return look(TerrainSide::FromNorth);
    case Qt::Key_S:
        return look(TerrainSide::FromSouth);
    case Qt::Key_E:
        return look(TerrainSide::FromEast);
    case Qt::Key_W:
        return look(TerrainSide::FromWest);
    case Qt::Key_Home:
        LookFrom(TerrainCamera().Azimuth(), TerrainCamera().Elevation());
        return true;
    case Qt::Key_Left:
        return turn(-kStep, 0);
    case Qt::Key_Right:
        return turn(kStep, 0);
    case Qt::Key_Up:
        return turn(0, -kStep);
    case Qt::Key_Down:
        return turn(0, kStep);
    case Qt::Key_Plus:
        Zoom(middle, kZoom);
        return true;
    case Qt::Key_Minus:
        Zoom(middle, 1 / kZoom);
        return true;
    default:
        return false;
    }
}

void TerrainView::leaveEvent(QEvent* event) {
    QOpenGLWidget::leaveEvent(event);
    hover_.stop();
    emit PointerLeft();
}

#include "app/windows/frm3D.h"

#include "app/windows/Controls.h"
#include "app/windows/GradientButton.h"
#include "app/windows/SchemeStyle.h"
#include "app/windows/SurfaceView.h"

#include <QApplication>
#include <QBoxLayout>
#include <QClipboard>
#include <QCloseEvent>
#include <QCursor>
#include <QGridLayout>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStandardItemModel>

#include <memory>

using terravo::Text;
using terravo::ViewMode;

namespace {

constexpr int kTimerMilliseconds = 100;
constexpr int kIndicatorSide = 10;
constexpr double kKeyStep = 8; // pixels of the picture

// The position indicator: a ring on the point that is read out.
class Indicator : public QWidget {
public:
    explicit Indicator(QWidget* parent) : QWidget(parent) {
        setFixedSize(kIndicatorSide, kIndicatorSide);
        setAttribute(Qt::WA_TransparentForMouseEvents);
    }

protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(Qt::yellow, 2));
        painter.drawEllipse(QRectF(rect()).adjusted(1, 1, -1, -1));
    }
};

// Shows that the picture has the keyboard focus.
class FocusRing : public QWidget {
public:
    explicit FocusRing(QWidget* parent) : QWidget(parent) {
        setAttribute(Qt::WA_TransparentForMouseEvents);
    }

protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        painter.setPen(QPen(Qt::white, 2));
        painter.drawRect(rect().adjusted(1, 1, -1, -1));
    }
};

// Controls above each other, as wide as they are; where the window is lower than they are, they can
// be scrolled.
class ScrollColumn : public QScrollArea {
public:
    ScrollColumn(QWidget* controls, QWidget* parent) : QScrollArea(parent) {
        setFrameShape(QFrame::NoFrame);
        setFocusPolicy(Qt::NoFocus);
        setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
        setWidgetResizable(true);
        setWidget(controls);
        viewport()->setAutoFillBackground(false);
        controls->setAutoFillBackground(false);
        controls->installEventFilter(this);
        connect(verticalScrollBar(), &QScrollBar::rangeChanged, this, [this] { updateGeometry(); });
    }
    [[nodiscard]] QSize sizeHint() const override {
        return {NeededWidth(), widget()->sizeHint().height()};
    }
    [[nodiscard]] QSize minimumSizeHint() const override { return {NeededWidth(), 0}; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (watched == widget() && event->type() == QEvent::LayoutRequest) {
            updateGeometry();
        }
        return QScrollArea::eventFilter(watched, event);
    }

private:
    [[nodiscard]] int NeededWidth() const {
        const bool scrolls = verticalScrollBar()->maximum() > 0;
        return widget()->sizeHint().width() +
               (scrolls ? verticalScrollBar()->sizeHint().width() : 0);
    }
};

QHBoxLayout* Row(std::initializer_list<QWidget*> widgets) {
    auto* row = new QHBoxLayout;
    for (QWidget* widget : widgets) {
        row->addWidget(widget);
    }
    return row;
}

} // namespace

frm3D::frm3D(const terravo::RunState& state, terravo::MessageService& messages,
             const terravo::ColourScheme& scheme)
    : state_(state), messages_(messages), commands_(state, messages, *this) {
    setObjectName(QStringLiteral("frm3D"));
    setWindowTitle(Caption(state, Text::ViewTitle));
    MakeControls();
    MakePictureMenu();
    ConnectControls();
    SetColours(scheme);
    commands_.ShowControls();
}

void frm3D::MakeControls() {
    Picture1 = Named(new QWidget(this), "Picture1");
    QSizePolicy keepsPlace(QSizePolicy::Expanding, QSizePolicy::Expanding);
    keepsPlace.setRetainSizeWhenHidden(true);
    Picture1->setSizePolicy(keepsPlace);
    pic3D = Named(new SurfaceView(Picture1), "pic3D");
    pic3D->setMinimumSize(260, 200);
    pic3D->setCursor(Qt::CrossCursor);
    pic3D->SetBackground(terravo::kBlack);
    pic3D->setAccessibleName(windowTitle().trimmed());
    auto* pictureLayout = new QVBoxLayout(Picture1);
    pictureLayout->setContentsMargins(0, 0, 0, 0);
    pictureLayout->addWidget(pic3D);
    shpInd = Named(new Indicator(pic3D), "shpInd");
    shpInd->hide();
    focusRing = Named(new FocusRing(pic3D), "focusRing");
    focusRing->hide();
    pic3D->setFocusPolicy(Qt::TabFocus);
    pic3D->installEventFilter(this);

    auto* controls = new QWidget(this);
    auto* column = new QVBoxLayout(controls);
    column->setContentsMargins(0, 0, 0, 0);
    column->addLayout(MakeMarks());
    column->addWidget(MakeViews());
    column->addWidget(MakeRotation());
    column->addLayout(MakeReadOut());
    column->addStretch(1);
    auto* layout = new QHBoxLayout(this);
    layout->addWidget(new ScrollColumn(controls, this));
    layout->addWidget(Picture1, 1);
    setTabOrder(cmdCopiaGrafico, pic3D);
    // A coarse timer may be early or late by a twentieth, which shows as an uneven turn.
    Timer1.setTimerType(Qt::PreciseTimer);
    Timer1.setInterval(kTimerMilliseconds);
}

// How the marks look and what they are.
QBoxLayout* frm3D::MakeMarks() {
    const auto text = [this](Text wanted) { return Caption(state_, wanted); };
    optCol = Named(new QRadioButton(text(Text::InColour), this), "optCol");
    optBN = Named(new QRadioButton(text(Text::BlackAndWhite), this), "optBN");
    optCol->setChecked(true);
    cmbKind = Named(new QComboBox(this), "cmbKind");
    for (const auto& [kind, caption] : {std::pair{ViewMode::Points, Text::KindPoints},
                                        std::pair{ViewMode::Triangles, Text::KindTriangles},
                                        std::pair{ViewMode::Surface, Text::KindSurface}}) {
        cmbKind->addItem(text(caption), static_cast<int>(kind));
    }
    auto* label = new QLabel(text(Text::PictureKind), this);
    label->setBuddy(cmbKind);
    cmbKind->setAccessibleName(Spoken(label->text()));
    auto* column = new QVBoxLayout;
    column->addWidget(optCol);
    column->addWidget(optBN);
    QHBoxLayout* kind = Row({label, cmbKind});
    kind->setStretch(1, 1);
    column->addLayout(kind);
    return column;
}

QGroupBox* frm3D::MakeViews() {
    zFrame1 = Named(new QGroupBox(Caption(state_, Text::Views), this), "zFrame1");
    cmdXY = Named(new GradientButton(zFrame1), "cmdXY");
    cmdZX = Named(new GradientButton(zFrame1), "cmdZX");
    cmdZY = Named(new GradientButton(zFrame1), "cmdZY");
    cmdInitial = Named(new GradientButton(zFrame1), "cmdInitial");
    cmdXY->setText(Caption(state_, Text::ViewXY));
    cmdZX->setText(QStringLiteral("&Z -Y"));
    cmdZY->setText(QStringLiteral("Z - &Y"));
    cmdInitial->setText(Caption(state_, Text::InitialView));
    auto* views = new QGridLayout(zFrame1);
    views->addWidget(cmdXY, 0, 0);
    views->addWidget(cmdZX, 0, 1);
    views->addWidget(cmdZY, 1, 0);
    views->addWidget(cmdInitial, 1, 1);
    return zFrame1;
}

QGroupBox* frm3D::MakeRotation() {
    zFrame2 = Named(new QGroupBox(Caption(state_, Text::Rotation), this), "zFrame2");
    cmdRuota = Named(new GradientButton(zFrame2), "cmdRuota");
    cmdPausa = Named(new GradientButton(zFrame2), "cmdPausa");
    lblTheta = Named(new QLabel(zFrame2), "lblTheta");
    updTheta = Named(new QSpinBox(zFrame2), "updTheta");
    updTheta->setRange(-1, 360);
    updTheta->setToolTip(Caption(state_, Text::RotationAngle));
    updTheta->setAccessibleName(updTheta->toolTip());
    updTheta->setKeyboardTracking(false);
    auto* unit = new QLabel(QStringLiteral("[Grd]:"), zFrame2);
    auto* rotation = new QVBoxLayout(zFrame2);
    rotation->addWidget(cmdRuota);
    rotation->addWidget(cmdPausa);
    rotation->addLayout(Row({unit, lblTheta, updTheta}));
    return zFrame2;
}

QBoxLayout* frm3D::MakeReadOut() {
    const auto labelled = [this](const QString& caption, QLabel*& value, const char* name) {
        auto* label = new QLabel(caption, this);
        value = Named(new QLabel(this), name);
        value->setAutoFillBackground(true);
        return Row({label, value});
    };
    lblIstruzioni = Named(new QLabel(Caption(state_, Text::HowToDrag), this), "lblIstruzioni");
    lblIstruzioni->setToolTip(Caption(state_, Text::ArrowKeys));
    lblIstruzioni->setWordWrap(true);
    // As wide as the other controls make the column.
    QSizePolicy takesTheWidth = lblIstruzioni->sizePolicy();
    takesTheWidth.setHorizontalPolicy(QSizePolicy::Ignored);
    lblIstruzioni->setSizePolicy(takesTheWidth);
    lblIstruzioni->setMinimumWidth(160);
    cmdCopiaGrafico = Named(new GradientButton(this), "cmdCopiaGrafico");
    cmdCopiaGrafico->setText(Caption(state_, Text::CopyPicture));
    auto* column = new QVBoxLayout;
    column->addLayout(labelled(QStringLiteral("RAyx:"), lblRAyx, "lblRAyx"));
    column->addLayout(labelled(QStringLiteral("[Grd]:"), lblAlfa, "lblAlfa"));
    column->addLayout(labelled(QStringLiteral("x:"), lblX, "lblX"));
    column->addLayout(labelled(QStringLiteral("y:"), lblY, "lblY"));
    column->addLayout(labelled(QStringLiteral("z:"), lblZ, "lblZ"));
    lblName = Named(new QLabel(this), "lblName");
    lblName->hide(); // most files have no names
    column->addWidget(lblName);
    column->addWidget(cmdCopiaGrafico);
    column->addWidget(lblIstruzioni);
    return column;
}

void frm3D::MakePictureMenu() {
    const auto addAction = [this](const char* name, Text text) {
        auto* action = new QAction(Caption(state_, text), pic3D);
        action->setObjectName(QLatin1String(name));
        action->setEnabled(false);
        pic3D->addAction(action);
        return action;
    };
    mnuExport3D = addAction("mnuExport3D", Text::ExportPicture);
    mnuPrint3D = addAction("mnuPrint3D", Text::Print);
    pic3D->setContextMenuPolicy(Qt::ActionsContextMenu);
    connect(mnuExport3D, &QAction::triggered, this, &frm3D::ExportAsked);
    connect(mnuPrint3D, &QAction::triggered, this, &frm3D::PrintAsked);
}

void frm3D::ConnectControls() {
    using terravo::StandardView;
    connect(cmdXY, &QPushButton::clicked, this,
            [this] { commands_.SetStandardView(StandardView::XY); });
    connect(cmdZX, &QPushButton::clicked, this,
            [this] { commands_.SetStandardView(StandardView::ZX); });
    connect(cmdZY, &QPushButton::clicked, this,
            [this] { commands_.SetStandardView(StandardView::ZY); });
    connect(cmdInitial, &QPushButton::clicked, this,
            [this] { commands_.SetStandardView(StandardView::Initial); });
    connect(cmbKind, &QComboBox::activated, this, [this](int index) {
        commands_.SetKind(static_cast<ViewMode>(cmbKind->itemData(index).toInt()));
    });
    connect(cmdRuota, &QPushButton::clicked, this, [this] { commands_.ToggleRotation(); });
    connect(cmdPausa, &QPushButton::clicked, this, [this] { commands_.TogglePause(); });
    connect(updTheta, &QSpinBox::valueChanged, this,
            [this](int degrees) { commands_.StepAngle(degrees); });
    connect(&Timer1, &QTimer::timeout, this, [this] { commands_.Tick(); });
    connect(optCol, &QRadioButton::clicked, this, [this] { commands_.SetColour(true); });
    connect(optBN, &QRadioButton::clicked, this, [this] { commands_.SetColour(false); });
    connect(cmdCopiaGrafico, &QPushButton::clicked, this, &frm3D::CopyPicture);
    connect(pic3D, &SurfaceView::SizeSettled, this, [this] { commands_.Redraw(true); });
    connect(pic3D, &SurfaceView::PointerMoved, this,
            [this](double, double) { commands_.PlaceAxisLabels(); });
    connect(pic3D, &SurfaceView::PointerLeft, this, [this] { commands_.LeaveArea(); });
    connect(pic3D, &SurfaceView::DragBegun, this, [this] {
        pic3D->setCursor(Qt::ClosedHandCursor);
        commands_.BeginDrag();
    });
    connect(pic3D, &SurfaceView::Dragged, this,
            [this](double x, double z) { commands_.Drag(x, z); });
    connect(pic3D, &SurfaceView::DragEnded, this, [this] {
        pic3D->setCursor(Qt::CrossCursor);
        commands_.EndDrag();
    });
}

void frm3D::SetColours(const terravo::ColourScheme& scheme) {
    ApplyColourScheme(*this, scheme);
    updTheta->setPalette(SchemePalette(updTheta->palette(), scheme));
    pic3D->SetBackground(terravo::kBlack);
}

void frm3D::SetPictureVisible(bool visible) {
    Picture1->setVisible(visible);
    mnuExport3D->setEnabled(visible);
    mnuPrint3D->setEnabled(visible);
    if (visible) {
        commands_.PlaceAxisLabels(); // the pointer may already be there
    }
}

terravo::Picture frm3D::PictureNow() const {
    const terravo::RasterSurface& shown = pic3D->Surface();
    const auto view = std::make_shared<terravo::AxonometricView>(commands_.View());
    return {shown.PixelWidth(), shown.PixelHeight(), pic3D->devicePixelRatioF(), view->Data().title,
            [view, &run = state_, &messages = messages_](terravo::DrawSurface& surface) {
                const auto failure = view->Redraw(surface, false, run);
                if (failure) {
                    messages.ShowCritical(failure->text, failure->title);
                }
                return !failure;
            }};
}

terravo::DrawSurface& frm3D::Surface3D() {
    layout()->activate();
    Picture1->layout()->activate();
    return pic3D->FittedSurface();
}

// By itself, as a document of the parent, or with the parent.
bool frm3D::IsMinimised() const {
    const QWidget* widget = this;
    while (widget != nullptr && !widget->isMinimized()) {
        widget = widget->parentWidget();
    }
    return widget != nullptr;
}

int frm3D::OuterHeight() const {
    return pic3D->Surface().PixelHeight();
}

std::optional<terravo::PixelPoint> frm3D::PointerPixel() const {
    const QPoint pointer = QCursor::pos();
    if (QApplication::widgetAt(pointer) != pic3D) {
        return std::nullopt;
    }
    const QPointF place = QPointF(pic3D->mapFromGlobal(pointer)) * pic3D->devicePixelRatioF();
    return terravo::PixelPoint{qRound(place.x()), qRound(place.y())};
}

void frm3D::ShowControls(const terravo::View3DControls& controls) {
    cmdRuota->setText(ToQString(controls.rotateCaption));
    cmdRuota->setEnabled(controls.rotateEnabled);
    cmdPausa->setText(ToQString(controls.pauseCaption));
    cmdPausa->setEnabled(controls.pauseEnabled);
    updTheta->setEnabled(controls.stepUsable);
    const QSignalBlocker quiet(updTheta);
    updTheta->setValue(controls.thetaDegrees);
    lblTheta->setText(ToQString(controls.theta));
    lblRAyx->setText(ToQString(controls.rayx));
    lblAlfa->setText(ToQString(controls.alfa));
    ShowKinds(controls);
    pic3D->setAccessibleDescription(
        ToQString(commands_.View().Data().title + ", " + state_.texts[Text::RotationAngle] + " " +
                  controls.theta + ", RAyx: " + controls.rayx + ", [Grd]: " + controls.alfa + ". " +
                  state_.texts[Text::ArrowKeys]));
    if (controls.timerOn != Timer1.isActive()) {
        controls.timerOn ? Timer1.start() : Timer1.stop();
    }
}

void frm3D::ShowKinds(const terravo::View3DControls& controls) {
    cmbKind->setCurrentIndex(cmbKind->findData(static_cast<int>(controls.kind)));
    const auto* kinds = qobject_cast<const QStandardItemModel*>(cmbKind->model());
    const auto enable = [&](ViewMode kind, bool can) {
        kinds->item(cmbKind->findData(static_cast<int>(kind)))->setEnabled(can);
    };
    enable(ViewMode::Points, controls.canShowPoints);
    enable(ViewMode::Triangles, controls.canShowTriangles);
    enable(ViewMode::Surface, controls.canShowSurface);
    cmbKind->setToolTip(controls.canShowSurface ? QString()
                                                : Caption(state_, Text::SurfaceNeedsGrid));
}

void frm3D::ShowReadOut(const std::optional<terravo::View3DReadOut>& readOut) {
    lblX->setText(readOut ? ToQString(readOut->x) : QString());
    lblY->setText(readOut ? ToQString(readOut->y) : QString());
    lblZ->setText(readOut ? ToQString(readOut->z) : QString());
    lblName->setText(readOut ? ToQString(readOut->label) : QString());
    lblName->setVisible(lblName->isVisibleTo(this) || !lblName->text().isEmpty());
    shpInd->setVisible(readOut.has_value());
    if (readOut) {
        const QPointF middle =
            QPointF(readOut->pixel.x, readOut->pixel.y) / pic3D->devicePixelRatioF();
        shpInd->move(qRound(middle.x()) - kIndicatorSide / 2,
                     qRound(middle.y()) - kIndicatorSide / 2);
    }
}

void frm3D::ShowMark(const std::optional<terravo::PixelPosition>& pixel) {
    pic3D->SetMark(pixel ? std::optional(pic3D->Surface().ToUser(pixel->x, pixel->y))
                         : std::nullopt);
}

void frm3D::CopyPicture() {
    QClipboard* clipboard = QGuiApplication::clipboard();
    clipboard->clear();
    clipboard->setImage(pic3D->Picture());
    emit Copied();
}

void frm3D::mouseMoveEvent(QMouseEvent* event) {
    QWidget::mouseMoveEvent(event);
    commands_.LeaveArea();
}

bool frm3D::eventFilter(QObject* watched, QEvent* event) {
    if (watched == pic3D) {
        switch (event->type()) {
        case QEvent::FocusIn:
        case QEvent::FocusOut:
        case QEvent::Resize:
            focusRing->setGeometry(pic3D->rect());
            focusRing->setVisible(pic3D->hasFocus());
            break;
        case QEvent::Paint:
            // Seen again: a picture cannot be drawn while another one is shown.
            if (commands_.OwesPicture()) {
                QTimer::singleShot(0, this, [this] { commands_.CatchUp(); });
            }
            break;
        case QEvent::KeyPress:
            if (MoveAxisEnd(static_cast<QKeyEvent*>(event)->key())) {
                return true;
            }
            break;
        default:
            break;
        }
    }
    return QWidget::eventFilter(watched, event);
}

bool frm3D::MoveAxisEnd(int key) {
    const double right = key == Qt::Key_Right ? kKeyStep : key == Qt::Key_Left ? -kKeyStep : 0;
    const double up = key == Qt::Key_Up ? kKeyStep : key == Qt::Key_Down ? -kKeyStep : 0;
    if (right == 0 && up == 0) {
        return false;
    }
    commands_.MoveAxisEnd(right, up);
    return true;
}

void frm3D::closeEvent(QCloseEvent* event) {
    Timer1.stop();
    emit Closing();
    event->accept();
}

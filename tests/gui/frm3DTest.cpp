#include "app/windows/frm3D.h"
#include "gui/WindowFixture.h"

#include <QClipboard>
#include <QElapsedTimer>
#include <QMouseEvent>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>

#include <cmath>

namespace terravo {
namespace {

struct frm3DTest : ::testing::Test {
    RunState state;
    FakeMessages messages;
    std::unique_ptr<frm3D> window;

    /// Shows the window with four points far from each other.
    void Open(const std::string& language = "en") {
        const test::TemporaryFolder folder;
        state.texts = TextCatalogue(
            LoadTextTable(FindSupportFolder(folder.Path()) + LanguageFileName(language)));
        window = std::make_unique<frm3D>(state, messages, ColourScheme{});
        window->resize(820, 610);
        window->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(window.get()));
        Table<Index> triangles(1, 3);
        for (Index j = 1; j <= 3; ++j) {
            triangles(1, j) = j;
        }
        window->Commands().Triangoli({0, 10, 0, 10}, {0, 0, 20, 20}, {0, 300, 600, 1500}, triangles,
                                     "four points");
    }
    template <class Widget>
    Widget* Find(const char* name) const {
        auto* found = window->findChild<Widget*>(QLatin1String(name));
        EXPECT_NE(found, nullptr) << name;
        return found;
    }
    [[nodiscard]] SurfaceView* Area() const { return Find<SurfaceView>("pic3D"); }
    [[nodiscard]] QImage Picture() const { return Area()->Picture(); }
    [[nodiscard]] const AxonometricView& View() const { return window->Commands().View(); }
    [[nodiscard]] std::string LabelText(const char* name) const {
        return Find<QLabel>(name)->text().toStdString();
    }
    void Click(const char* name) const {
        auto* button = Find<QAbstractButton>(name);
        ASSERT_TRUE(button->isVisible() && button->isEnabled()) << name;
        QTest::mouseClick(button, Qt::LeftButton, {}, {8, button->height() / 2});
    }
    void ExpectControls(const char* rotate, bool canRotate, const char* pause, bool canPause,
                        bool canStep) const {
        EXPECT_EQ(Find<QPushButton>("cmdRuota")->text().toStdString(), rotate);
        EXPECT_EQ(Find<QPushButton>("cmdRuota")->isEnabled(), canRotate);
        EXPECT_EQ(Find<QPushButton>("cmdPausa")->text().toStdString(), pause);
        EXPECT_EQ(Find<QPushButton>("cmdPausa")->isEnabled(), canPause);
        EXPECT_EQ(Find<QSpinBox>("updTheta")->isEnabled(), canStep);
    }
    [[nodiscard]] bool ReachesDegrees(double degrees) const {
        return Soon([&] { return std::stod(LabelText("lblTheta")) >= degrees; });
    }
    /// The place in the drawing area's layout of one of its pixels.
    [[nodiscard]] QPoint Place(PixelPosition pixel) const {
        return (QPointF(pixel.x, pixel.y) / Area()->devicePixelRatioF()).toPoint();
    }
    [[nodiscard]] QPoint PlaceOf(double x, double y, double z) const {
        return Place(View().Drawing().projection.Project(x, y, z));
    }
    void Move(QPoint place, Qt::MouseButtons buttons = {}) const {
        if (!buttons) {
            QTest::mouseMove(Area(), place);
        }
        QMouseEvent move(QEvent::MouseMove, place, Area()->mapToGlobal(place), Qt::NoButton,
                         buttons, {});
        QApplication::sendEvent(Area(), &move);
    }
};

TEST_F(frm3DTest, WalksThroughTheStatesOfTheRotation) {
    Open();
    const QImage still = Picture();
    ExpectControls("&Rotate", true, "&Pause", false, false);
    QTest::qWait(250);
    EXPECT_EQ(LabelText("lblTheta"), "0.0") << "the timer is off at first";
    Click("cmdRuota");
    ExpectControls("&Stop", true, "&Pause", true, false);
    EXPECT_TRUE(ReachesDegrees(2));
    EXPECT_NE(Picture(), still);

    Click("cmdPausa");
    ExpectControls("&Stop", false, "Co&nt.", true, true);
    const QImage turned = Picture();
    QTest::qWait(250);
    EXPECT_EQ(Picture(), turned);
    auto* step = Find<QSpinBox>("updTheta");
    step->setValue(359);
    QTest::keyClick(step, Qt::Key_Up);
    EXPECT_EQ(LabelText("lblTheta"), "0.0");
    EXPECT_NE(Picture(), turned);

    Click("cmdPausa");
    EXPECT_TRUE(ReachesDegrees(2));
    Click("cmdRuota");
    ExpectControls("&Rotate", true, "&Pause", false, false);
    EXPECT_EQ(Picture(), still);
    Click("cmdRuota");
    window->close();
    QTest::qWait(250);
    EXPECT_EQ(LabelText("lblTheta"), "0.0") << "a closed window does not turn";
}

TEST_F(frm3DTest, ALateTickTurnsByOneDegreeAndMissedTicksAreNotMadeUp) {
    Open();
    Click("cmdRuota");
    ASSERT_TRUE(ReachesDegrees(1));
    const double before = std::stod(LabelText("lblTheta"));
    QTest::qSleep(650); // as long as a redraw of many points takes
    QElapsedTimer since;
    since.start();
    const auto turned = [&] { return std::stod(LabelText("lblTheta")) - before; };
    for (int i = 0; i < 20; ++i) {
        QApplication::processEvents();
    }
    EXPECT_GE(turned(), 1);
    EXPECT_LE(turned(), 1 + static_cast<double>(since.elapsed() / 100));
    EXPECT_TRUE(ReachesDegrees(before + 4));
    EXPECT_LE(turned(), 1 + static_cast<double>(since.elapsed() / 100)) << "the pace afterwards";
}

TEST_F(frm3DTest, ClicksChangeTheViewAndTheColours) {
    Open();
    EXPECT_EQ(LabelText("lblRAyx"), "1.000");
    EXPECT_EQ(LabelText("lblAlfa"), "30.000");
    const QImage colour = Picture();
    Click("optBN");
    const QImage grey = Picture();
    EXPECT_NE(grey, colour);
    Click("optCol");
    EXPECT_EQ(Picture(), colour);

    Click("cmdXY");
    EXPECT_EQ(LabelText("lblAlfa"), "90.000");
    EXPECT_NE(LabelText("lblRAyx"), "0.000");
    const QImage plan = Picture();
    Click("cmdZX");
    EXPECT_EQ(LabelText("lblAlfa"), "90.000");
    EXPECT_EQ(LabelText("lblRAyx"), "0.000");
    EXPECT_NE(Picture(), plan);
    Click("cmdZY");
    EXPECT_EQ(LabelText("lblAlfa"), "0.000");
    EXPECT_EQ(LabelText("lblRAyx"), "1000.000");

    QGuiApplication::clipboard()->setText("old");
    const QSignalSpy copied(window.get(), &frm3D::Copied);
    Click("cmdCopiaGrafico");
    EXPECT_EQ(copied.count(), 1);
    EXPECT_EQ(QGuiApplication::clipboard()->image().convertToFormat(QImage::Format_RGB32),
              Picture());
    EXPECT_TRUE(messages.boxes.empty());
}

TEST_F(frm3DTest, TheEndOfTheYAxisFollowsTheDrag) {
    Open();
    const SpaceExtents e = View().Drawing().projection.Frame().extents;
    const QPoint origin = PlaceOf(e.xmin, e.ymin, e.zmin);
    const auto cursor = Area()->cursor().shape();
    QTest::mousePress(Area(), Qt::LeftButton, {}, origin + QPoint(60, -60));
    EXPECT_NE(Area()->cursor().shape(), cursor);
    Move(origin - QPoint(50, 90), Qt::LeftButton);
    const std::string dragged = LabelText("lblAlfa");
    EXPECT_NEAR(std::stod(dragged), std::atan2(90.0, -50.0) * kDegreesPerRadian, 1);
    QTest::mouseRelease(Area(), Qt::LeftButton, {}, origin - QPoint(50, 90));
    EXPECT_EQ(Area()->cursor().shape(), cursor);
    Move(origin + QPoint(30, -30));
    EXPECT_EQ(LabelText("lblAlfa"), dragged) << "only while the button is down";
}

TEST_F(frm3DTest, ReadsOutThePointUnderThePointer) {
    Open();
    const PixelPoint pixel = View().Drawing().screenPoint[4];
    const QPoint place = Place({static_cast<double>(pixel.x), static_cast<double>(pixel.y)});
    // The screen may be smaller than the window; the pointer stays on the screen.
    window->move(window->pos() + QPoint(200, 200) - Area()->mapToGlobal(place));
    Move(place + QPoint(2, 1));
    EXPECT_EQ(LabelText("lblX"), "10.000 ");
    EXPECT_EQ(LabelText("lblY"), "20.000 ");
    EXPECT_EQ(LabelText("lblZ"), "1500.000 ");
    auto* indicator = Find<QWidget>("shpInd");
    EXPECT_TRUE(indicator->isVisible());
    const QPoint middle =
        Area()->mapFromGlobal(indicator->mapToGlobal(QPoint(0, 0))) + QPoint(5, 5);
    EXPECT_LE((middle - place).manhattanLength(), 2);

    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(Area(), &leave);
    EXPECT_FALSE(indicator->isVisible());
    EXPECT_EQ(LabelText("lblX") + LabelText("lblY") + LabelText("lblZ"), "");
}

TEST_F(frm3DTest, ReadsOutThePointUnderAPointerThatWaitsForTheData) {
    Open();
    const PixelPoint pixel = View().Drawing().screenPoint[4];
    const QPoint place = Place({static_cast<double>(pixel.x), static_cast<double>(pixel.y)});
    window->move(window->pos() + QPoint(200, 200) - Area()->mapToGlobal(place));
    window->SetPictureVisible(false);
    QCursor::setPos(Area()->mapToGlobal(place));
    QApplication::processEvents();
    window->Commands().LeaveArea();
    window->Commands().Triangoli({0, 10, 0, 10}, {0, 0, 20, 20}, {0, 300, 600, 1500}, {}, "next");
    EXPECT_EQ(LabelText("lblX"), "") << "hidden";
    window->SetPictureVisible(true);
    EXPECT_EQ(LabelText("lblX"), "10.000 ");
    EXPECT_TRUE(Find<QWidget>("shpInd")->isVisible());
}

TEST_F(frm3DTest, DrawsThePictureAnewOnceItsSizeHasSettled) {
    Open();
    const QSize before = Picture().size();
    window->resize(700, 520);
    EXPECT_TRUE(Soon([&] { return Picture().size() != before; }));
    const QImage settled = Picture();
    window->Commands().Redraw(true);
    EXPECT_EQ(Picture(), settled);
    window->resize(600, 500);
    const SpaceExtents reversed{5, 0, 0, 1, 0, 1};
    window->Commands().Triangoli({0, 10}, {0, 1}, {0, 1}, {}, "t", &reversed);
    EXPECT_NE(Picture().size(), settled.size());
    EXPECT_EQ(Picture().pixelColor(5, 5), QColor(Qt::black)) << "empty after a frame that failed";
}

TEST_F(frm3DTest, OffersTheKindsOfPictureThatTheDataHave) {
    Open();
    auto* kinds = Find<QComboBox>("cmbKind");
    EXPECT_EQ(kinds->currentText().toStdString(), "Triangles");
    const QImage triangles = Picture();
    kinds->setFocus();
    QTest::keyClick(kinds, Qt::Key_Down);
    EXPECT_EQ(View().Data().mode, ViewMode::Surface) << "four points of a grid";
    EXPECT_NE(Picture(), triangles);
    QTest::keyClick(kinds, Qt::Key_Home);
    EXPECT_EQ(View().Data().mode, ViewMode::Points);
    window->Commands().Triangoli({0, 10, 1, 3}, {0, 0, 20, 9}, {0, 3, 6, 1}, {}, "no grid");
    QTest::keyClick(kinds, Qt::Key_End);
    EXPECT_EQ(View().Data().mode, ViewMode::Triangles) << "the last that can be chosen";
    EXPECT_EQ(kinds->toolTip().toStdString(), "A surface needs points on a regular grid.");
    Click("cmdZX");
    Click("cmdInitial");
    EXPECT_EQ(LabelText("lblRAyx"), "1.000");
}

// Neither cut off nor squeezed.
void ExpectWhole(const QWidget& control) {
    if (control.objectName().startsWith("qt_")) {
        return; // insides of a control
    }
    const QSize least = control.minimumSizeHint();
    const int height =
        control.hasHeightForWidth() ? control.heightForWidth(control.width()) : least.height();
    EXPECT_TRUE(control.height() >= height && control.width() >= least.width() &&
                control.parentWidget()->rect().contains(control.geometry()))
        << control.objectName().toStdString();
}

TEST_F(frm3DTest, ShowsAllControlsInEveryLanguageAndScrollsThemWhereThereIsNoRoom) {
    for (const char* language : {"en", "it", "de", "fr", "es"}) {
        Open(language);
        auto* column = window->findChild<QScrollArea*>();
        EXPECT_EQ(column->verticalScrollBar()->maximum(), 0) << language;
        for (const QSize& size : {QSize(820, 610), QSize(480, 300)}) {
            for (const char* value : {"", "520003.755 ", "-123456789012345678.125 "}) {
                SCOPED_TRACE(std::string(language) + ", " + std::to_string(size.width()) + value);
                window->resize(size);
                window->ShowReadOut(View3DReadOut{value, value, value, "P12 tree", {}});
                for (int level = 0; level < 4; ++level) { // each layout asks the one around it
                    QApplication::processEvents();
                }
                EXPECT_LE(column->widget()->width(), column->viewport()->width());
                for (const QWidget* control : column->widget()->findChildren<QWidget*>()) {
                    ExpectWhole(*control);
                }
            }
        }
        EXPECT_GT(column->verticalScrollBar()->maximum(), 0);
    }
}

struct View3DWindowTest : WindowFixture {
    [[nodiscard]] frm3D* Window3D() const { return parent->findChild<frm3D*>("frm3D"); }
    void Load(const std::string& bytes) { session->LoadNamedFile(folder.Write("next.dat", bytes)); }
};

TEST_F(View3DWindowTest, OpensWithAFileKeepsItsPlaceAndHidesAfterAFailedDrawing) {
    Open();
    parent->SetView3D([this] { return new frm3D(state, messages, scheme); }, settings);
    EXPECT_EQ(Window3D(), nullptr);
    Load(HillsText(5));
    const QPointer<frm3D> first = Window3D();
    ASSERT_NE(first, nullptr);
    EXPECT_TRUE(first->isVisible());
    EXPECT_EQ(first->Commands().View().Data().PointCount(), 25);
    EXPECT_EQ(first->Commands().View().Data().triangles.Rows(), 32);
    Load(HillsText(4));
    EXPECT_EQ(Window3D(), first) << "one window for all files";
    EXPECT_EQ(first->Commands().View().Data().PointCount(), 16);

    auto* picture = first->findChild<QWidget*>("Picture1");
    Load("1,1,1\n2,2,2\n3,3,3\n");
    EXPECT_FALSE(picture->isVisible());
    Load(HillsText(3));
    EXPECT_TRUE(picture->isVisible());

    auto* frame = Find<QMdiSubWindow>("frm3DFrame");
    auto* area = first->findChild<SurfaceView*>("pic3D");
    frame->showMinimized();
    const QImage before = area->Picture();
    Load(HillsText(7));
    EXPECT_EQ(area->Picture(), before) << "nobody sees it";
    frame->showNormal();
    EXPECT_TRUE(Soon([&] { return first->Commands().View().IsDrawn(); }));
    EXPECT_NE(area->Picture(), before);

    frame->move(50, 20);
    frame->close();
    EXPECT_EQ(settings.Get("PosizioniForms", "frm3D_Left"), "750") << "15 twips to the pixel";
    EXPECT_EQ(settings.Get("PosizioniForms", "frm3D_Top"), "300");
    EXPECT_TRUE(Soon([&] { return first.isNull(); }));
    EXPECT_TRUE(window->isVisible());
    Load(HillsText(6));
    ASSERT_NE(Window3D(), nullptr);
    EXPECT_TRUE(Window3D()->isVisible());
    EXPECT_EQ(Window3D()->Commands().View().Data().PointCount(), 36);
    EXPECT_EQ(Find<QMdiSubWindow>("frm3DFrame")->pos(), QPoint(50, 20));
}

} // namespace
} // namespace terravo

#include "app/windows/TerrainWindow.h"

#include "app/windows/CheckWindow.h"
#include "app/windows/SheetWindow.h"
#include "app/windows/frm3D.h"
#include "gui/WindowFixture.h"
#include "view3d/terrain/TerrainPalette.h"

#include <QClipboard>
#include <QWheelEvent>

namespace terravo {
namespace {

// A plane that rises to the east, 200 by 200, from 0 to 100.
std::string RampText() {
    std::string text;
    for (int i = 0; i < 21 * 21; ++i) {
        const int x = 10 * (i % 21);
        text += std::to_string(500000 + x) + "," + std::to_string(4800000 + 10 * (i / 21)) + "," +
                std::to_string(x / 2.0) + "\n";
    }
    return text;
}

struct TerrainWindowTest : WindowFixture {
    QPointer<TerrainWindow> terrain;
    ::TerrainView* view = nullptr;

    void OpenTerrain() {
        Open();
        parent->SetView3D([this] { return new frm3D(state, messages, scheme); }, settings);
        parent->SetSheet([this] {
            return new SheetWindow(state, *session, parent->Status(), settings, scheme);
        });
        parent->SetCheck([this] { return new CheckWindow(state, *session, scheme); });
        parent->SetTerrain(
            [this] { return new TerrainWindow(state, *session, parent->Status(), scheme); });
        session->LoadNamedFile(folder.Write("ramp.dat", RampText()));
        Choose("mnuOpenTerrain");
        terrain = Find<TerrainWindow>("TerrainWindow");
        if (::TerrainView::IsPossible()) {
            view = Find<::TerrainView>("picTerrain");
            ASSERT_TRUE(Soon([this] { return view->LastPictureTook() > 0; }));
        }
    }
    [[nodiscard]] PicturePlace PixelOf(double x, double y, double z) const {
        return *view->Camera().Project(view->Content()->frame.Local({500000 + x, 4800000 + y, z}));
    }
    void Send(QEvent::Type type, QPointF at, Qt::MouseButton button, Qt::MouseButtons held) const {
        QMouseEvent event(type, at, view->mapToGlobal(at), button, held, Qt::NoModifier);
        QApplication::sendEvent(view, &event);
    }
};

// What the graphics show at a place is the colour of its height, as dark as the light has it.
TEST_F(TerrainWindowTest, ShowsTheGroundInTheColoursOfItsHeights) {
    OpenTerrain();
    if (view == nullptr) {
        EXPECT_FALSE(qEnvironmentVariableIsSet("TERRAVO_TEST_DISPLAY"));
        EXPECT_NE(LabelText("lblNoGraphics").find("OpenGL"), std::string::npos);
        EXPECT_FALSE(terrain->HasTerrain());
        terrain->Refresh();
        return;
    }
    TerrainPlan plan;
    plan.contours = plan.lines = plan.plate = plan.legend = false;
    for (const bool isSmooth : {true, false}) {
        plan.smooth = isSmooth;
        view->SetPlan(plan);
        terrain->LookFrom(TerrainSide::Top);
        QTest::qWait(600); // the refined picture too
        const QImage picture = view->grabFramebuffer();
        const double ratio = view->devicePixelRatioF();
        const TerrainPalette palette = MakeTerrainPalette(plan);
        for (const double x : {20.0, 60.0, 100.0, 140.0, 180.0}) {
            const PicturePlace at = PixelOf(x, 100, x / 2);
            const QColor shown =
                picture.pixelColor(static_cast<int>(at.x * ratio), static_cast<int>(at.y * ratio));
            const Colour base = palette[static_cast<std::size_t>(x / 200 * 255)];
            const double light = static_cast<double>(shown.green()) / GreenOf(base);
            EXPECT_NEAR(shown.red(), light * RedOf(base), 6) << x;
            EXPECT_NEAR(shown.blue(), light * BlueOf(base), 6) << x;
            // The slope leans to the west, the light comes from the north-west at 45 degrees.
            const double steep = std::atan(0.5);
            const double lit = std::sin(steep) * 0.5 + std::cos(steep) * std::sqrt(0.5);
            EXPECT_NEAR(light, 0.42 + 0.75 * lit, 0.03) << x;
        }
        EXPECT_EQ(picture.pixelColor(2, 2), QColor(244, 244, 242));
    }
    // A picture larger than the window, drawn in tiles that fit together.
    const QImage large = view->Picture(3000, 2400);
    ASSERT_EQ(large.size(), QSize(3000, 2400));
    const QColor middle = large.pixelColor(1500, 1200);
    for (const int x : {1022, 1024, 1026, 2046, 2049}) {
        EXPECT_NEAR(large.pixelColor(x, 1200).greenF(), middle.greenF(), 0.3);
        EXPECT_NE(large.pixelColor(x, 1200), QColor(244, 244, 242));
    }
}

TEST_F(TerrainWindowTest, FollowsTheHandAndMarksPointsEverywhere) {
    OpenTerrain();
    if (view == nullptr) {
        return;
    }
    const double azimuth = view->Camera().Azimuth();
    const QPointF from(view->width() / 2.0, view->height() / 2.0);
    Send(QEvent::MouseButtonPress, from, Qt::LeftButton, Qt::LeftButton);
    Send(QEvent::MouseMove, from + QPointF(50, 0), Qt::NoButton, Qt::LeftButton);
    Send(QEvent::MouseButtonRelease, from + QPointF(50, 0), Qt::LeftButton, {});
    EXPECT_NEAR(view->Camera().Azimuth(), azimuth + 20, 1e-9);
    EXPECT_FALSE(session->MarkedPoint());
    EXPECT_TRUE(view->IsMoving());
    EXPECT_TRUE(Soon([this] { return !view->IsMoving(); }));
    QTest::keyClick(view, Qt::Key_T);
    EXPECT_EQ(view->Camera().Elevation(), 90);

    // A click beside point 11 * 21 + 6 of the file.
    const PicturePlace at = PixelOf(50, 110, 25);
    const double distance = view->Camera().Distance();
    QWheelEvent wheel({at.x, at.y}, view->mapToGlobal(QPointF(at.x, at.y)), {}, {0, 240}, {}, {},
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(view, &wheel);
    EXPECT_LT(view->Camera().Distance(), distance);
    EXPECT_NEAR(PixelOf(50, 110, 25).x, at.x, 0.5);
    const QPointF click(at.x + 2, at.y);
    Send(QEvent::MouseButtonPress, click, Qt::LeftButton, Qt::LeftButton);
    Send(QEvent::MouseButtonRelease, click, Qt::LeftButton, {});
    EXPECT_EQ(session->MarkedPoint(), std::optional<Index>(11 * 21 + 6));
    EXPECT_NE(LabelText("lblReading").find("x: 500050.0   y: 4800110.0   z: 25.0"),
              std::string::npos)
        << LabelText("lblReading");
    EXPECT_NE(LabelText("lblReading").find("26.6"), std::string::npos);
    const auto reading = terrain->ReadAt(3, 3);
    EXPECT_FALSE(reading);

    // One that is marked elsewhere comes into the middle.
    session->MarkPoint(Index{1});
    EXPECT_NEAR(PixelOf(0, 0, 0).x, view->width() / 2.0, 0.5);
    EXPECT_NEAR(PixelOf(0, 0, 0).y, view->height() / 2.0, 0.5);
    const QImage axonometric = Find<QWidget>("pic3D")->grab().toImage();
    int ring = 0;
    for (int i = 0; i < axonometric.width() * axonometric.height(); ++i) {
        ring += axonometric.pixelColor(i % axonometric.width(), i / axonometric.width()) ==
                        QColor(255, 60, 200)
                    ? 1
                    : 0;
    }
    EXPECT_GT(ring, 20);
    // Other points, and then none at all.
    session->SetExcluded({5}, true);
    EXPECT_TRUE(Soon([this] {
        return view->Content() != nullptr && view->Content()->mesh.vertices.size() == 440;
    }));
    terrain->Copy();
    EXPECT_FALSE(QGuiApplication::clipboard()->image().isNull());
    parent->resize(50, 50);
    QTest::qWait(50);
}

TEST_F(TerrainWindowTest, LooksAsItDidLast) {
    OpenTerrain();
    if (view == nullptr) {
        return;
    }
    Click("chkDark");
    Click("chkParallel");
    Find<QSlider>("sldHeights")->setValue(100);
    Find<QListWidget>("lstTerrainLayers")->item(2)->setCheckState(Qt::Checked);
    TerrainWindow next(state, *session, parent->Status(), scheme);
    const TerrainPlan& plan = next.View().Plan();
    EXPECT_TRUE(plan.dark && plan.points && plan.contours);
    EXPECT_EQ(plan, next.Panel().Plan());
    EXPECT_FALSE(next.View().Camera().IsPerspective());
    EXPECT_EQ(next.View().Camera().Exaggeration(), 10);
    // Another file has a factor of its own, in the same kind of view.
    session->LoadNamedFile(folder.Write("other.dat", RampText()));
    EXPECT_TRUE(Soon([this] { return view->Camera().Exaggeration() == 1; }));
    EXPECT_FALSE(view->Camera().IsPerspective());
}

} // namespace
} // namespace terravo

#include "view3d/View3D.h"

#include "support/FakeServices.h"
#include "support/RecordingSurface.h"

#include <gtest/gtest.h>

#include <cmath>

namespace terravo {
namespace {

struct FakeDisplay : View3DDisplay {
    RecordingSurface surface{640, 480};
    std::optional<PixelPoint> pointer;
    View3DControls controls;
    std::optional<View3DReadOut> readOut;

    DrawSurface& Surface3D() override { return surface; }
    bool minimised = false;
    [[nodiscard]] bool IsMinimised() const override { return minimised; }
    [[nodiscard]] int OuterHeight() const override { return 480; }
    [[nodiscard]] std::optional<PixelPoint> PointerPixel() const override { return pointer; }
    void ShowControls(const View3DControls& shown) override { controls = shown; }
    void ShowReadOut(const std::optional<View3DReadOut>& shown) override { readOut = shown; }
    std::optional<PixelPosition> mark;
    void ShowMark(const std::optional<PixelPosition>& shown) override { mark = shown; }

    /// Pictures drawn since the last question.
    int Pictures() {
        const auto count = surface.PixelCallsOf(PixelCall::Kind::Refresh).size();
        surface.Forget();
        return static_cast<int>(count);
    }
};

struct View3DTest : testing::Test {
    RunState run;
    FakeMessages messages;
    FakeDisplay display;
    View3D commands{run, messages, display};

    View3DTest() { commands.ShowControls(); }
    void ShowPoints(double top = 900) {
        commands.Triangoli({0, 10, 0, 10}, {0, 0, 20, 20}, {0, 300, 600, top}, {}, "t");
        static_cast<void>(display.Pictures());
    }
    [[nodiscard]] const AxonometricView& View() const { return commands.View(); }
    [[nodiscard]] const Projection& Drawn() const { return View().Drawing().projection; }
    [[nodiscard]] std::string Theta() const { return display.controls.theta; }
};

TEST_F(View3DTest, ATurnEndsAtZeroAndNeverShows360) {
    ShowPoints();
    commands.ToggleRotation();
    int ticks = 0;
    do {
        commands.Tick();
        ++ticks;
        ASSERT_NE(Theta(), "360.0");
        ASSERT_LT(View().Parameters().theta, 6.2831855F);
    } while (View().Parameters().theta > 0 && ticks < 400);
    EXPECT_NEAR(ticks, 360, 1);
    EXPECT_EQ(Theta(), "0.0");
    commands.Tick();
    EXPECT_EQ(Theta(), "1.0");
}

TEST_F(View3DTest, SingleDegreesWrapAtBothEnds) {
    ShowPoints();
    commands.ToggleRotation();
    commands.TogglePause();
    struct Case {
        int asked;
        const char* shown;
        int upDown;
    };
    for (const Case& c : {Case{359, "359.0", 359}, Case{360, "0.0", 0}, Case{-1, "359.0", 359},
                          Case{1, "1.0", 1}, Case{0, "0.0", 0}}) {
        commands.StepAngle(c.asked);
        EXPECT_EQ(Theta(), c.shown);
        EXPECT_EQ(display.controls.thetaDegrees, c.upDown);
        EXPECT_NEAR(static_cast<double>(View().Parameters().theta),
                    c.upDown * std::acos(-1.0) / 180, 1e-6);
        EXPECT_EQ(display.Pictures(), 1);
    }
}

TEST_F(View3DTest, AMarkStaysOnItsPoint) {
    commands.SetMark(SpacePoint{0, 20, 600});
    EXPECT_FALSE(display.mark) << "nothing is drawn";
    for (const double top : {900.0, 900000.0}) { // heights divided by a power of ten
        ShowPoints(top);
        for (const StandardView view :
             {StandardView::XY, StandardView::ZX, StandardView::Initial}) {
            commands.SetStandardView(view);
            commands.ToggleRotation();
            commands.Tick();
            const PixelPoint point = View().Drawing().screenPoint[3];
            ASSERT_TRUE(display.mark);
            EXPECT_NEAR(display.mark->x, point.x, 1);
            EXPECT_NEAR(display.mark->y, point.y, 1);
            commands.ToggleRotation();
        }
    }
    commands.SetMark(std::nullopt);
    EXPECT_FALSE(display.mark);
}

TEST_F(View3DTest, DraggingTheYAxisKeepsItsEndUnderThePointer) {
    ShowPoints();
    const auto pixelOf = [this](double y) {
        const SpaceExtents& e = Drawn().Frame().extents;
        return Drawn().Project(e.xmin, y, e.zmin);
    };
    struct Case {
        double right; // pixels from the origin of the frame
        double up;
        const char* alfa;
    };
    for (const Case& c : {Case{0, 120, "90.000"}, Case{-80, 80, "135.000"}, Case{90, 0, "0.000"},
                          Case{-70, 0, "180.000"}, Case{50, -50, "-45.000"},
                          Case{-50, -50, "-135.000"}, Case{0, -40, "-90.000"}}) {
        const SpaceExtents e = Drawn().Frame().extents;
        const PixelPosition origin = pixelOf(e.ymin);
        const PixelPosition pointer{origin.x + c.right, origin.y - c.up};
        commands.BeginDrag();
        std::string length;
        for (int held = 0; held < 3; ++held) {
            const UserPosition place = display.surface.ToUser(pointer.x, pointer.y);
            commands.Drag(place.x, place.y);
            EXPECT_EQ(display.controls.alfa, c.alfa);
            EXPECT_TRUE(held == 0 || display.controls.rayx == length) << "a hand held still";
            length = display.controls.rayx;
            EXPECT_EQ(display.Pictures(), 1);
            EXPECT_NEAR(pixelOf(e.ymax).x, pointer.x, 0.01) << c.alfa;
            EXPECT_NEAR(pixelOf(e.ymax).y, pointer.y, 0.01) << c.alfa;
        }
        commands.EndDrag();
        EXPECT_EQ(display.Pictures(), 1) << "fits again";
        EXPECT_EQ(display.controls.rayx, length);
        for (const PixelPosition end : {pixelOf(e.ymin), pixelOf(e.ymax)}) {
            EXPECT_TRUE(end.x > 0 && end.x < 640 && end.y > 0 && end.y < 480) << c.alfa;
        }
    }
    commands.BeginDrag();
    commands.PlaceAxisLabels();
    EXPECT_EQ(display.Pictures(), 0) << "nothing was dragged";
    commands.Drag(1e9, 0);
    EXPECT_EQ(display.controls.rayx, "1000.000") << "capped";
    commands.PlaceAxisLabels();
    EXPECT_FALSE(View().Parameters().held) << "the button went up elsewhere";
}

TEST_F(View3DTest, ShowsTheMessageOfADrawingThatFailed) {
    const SpaceExtents reversed{5, 0, 0, 1, 0, 1};
    commands.Triangoli({0, 10}, {0, 1}, {0, 1}, {}, "t", &reversed);
    EXPECT_EQ(messages.boxes, (std::vector<FakeMessages::Box>{
                                  {" Error Scale X.", "Error in: scale of the axes3D3D"}}));
    ShowPoints();
    EXPECT_EQ(messages.boxes.size(), 1U);
}

TEST_F(View3DTest, ADrawingThatFailsWhileTurningStopsTheRotationAndIsToldOnce) {
    const SpaceExtents reversed{5, 0, 0, 1, 0, 1};
    for (const bool paused : {false, true}) {
        ShowPoints();
        commands.ToggleRotation();
        if (paused) {
            commands.TogglePause();
        }
        messages.boxes.clear();
        commands.Triangoli({0, 10}, {0, 1}, {0, 1}, {}, "t", &reversed);
        EXPECT_FALSE(display.controls.timerOn);
        EXPECT_FALSE(display.controls.stepUsable);
        EXPECT_FALSE(display.controls.pauseEnabled);
        EXPECT_TRUE(display.controls.rotateEnabled);
        EXPECT_EQ(Theta(), "0.0");
        EXPECT_EQ(messages.boxes.size(), 1U);
    }
}

TEST_F(View3DTest, ReadsOutTheNearestPointInTheUnitOfTheData) {
    ShowPoints(1500);
    display.pointer = View().Drawing().screenPoint[4];
    commands.PlaceAxisLabels();
    ASSERT_TRUE(display.readOut.has_value());
    EXPECT_EQ(display.readOut->z, "1500.000 ");
    // Each of these hides it: the place that it marks is no longer the point's.
    const std::vector<void (*)(View3D&)> hiders{
        [](View3D& view) { view.LeaveArea(); }, [](View3D& view) { view.BeginDrag(); },
        [](View3D& view) { view.Drag(5, 500); }, [](View3D& view) { view.ToggleRotation(); }};
    for (const auto& hide : hiders) {
        commands.PlaceAxisLabels();
        ASSERT_TRUE(display.readOut.has_value());
        hide(commands);
        EXPECT_FALSE(display.readOut.has_value());
    }
    display.pointer = {0, 0};
    ShowPoints();
    EXPECT_TRUE(display.readOut.has_value()) << "also after new data";
}

TEST_F(View3DTest, WithoutDataNothingIsDrawn) {
    display.pointer = {10, 10};
    commands.SetStandardView(StandardView::XY);
    commands.ToggleRotation();
    commands.Tick();
    commands.ToggleRotation();
    commands.Drag(5, 5);
    commands.PlaceAxisLabels();
    EXPECT_TRUE(display.surface.pixelCalls.empty());
    EXPECT_FALSE(display.readOut.has_value());
    EXPECT_TRUE(messages.boxes.empty());
}

TEST_F(View3DTest, TheInitialViewIsThatOfTheFirstPictureAtRest) {
    ShowPoints();
    const Array1<PixelPoint> first = View().Drawing().screenPoint;
    commands.MoveAxisEnd(-300, 40);
    commands.ToggleRotation();
    commands.TogglePause();
    commands.StepAngle(70);
    commands.SetStandardView(StandardView::Initial);
    EXPECT_EQ(View().Drawing().screenPoint, first);
    EXPECT_EQ(display.controls.rayx, "1.000");
    EXPECT_EQ(display.controls.alfa, "30.000");
    EXPECT_EQ(Theta(), "0.0");
    EXPECT_TRUE(display.controls.rotateEnabled && !display.controls.pauseEnabled);
}

TEST_F(View3DTest, DrawsNothingWhileMinimisedAndCatchesUp) {
    ShowPoints();
    commands.ToggleRotation();
    display.minimised = true;
    commands.Tick();
    commands.Triangoli({0, 70, 0}, {0, 0, 40}, {1, 2, 3}, {}, "t");
    commands.Tick();
    commands.CatchUp();
    EXPECT_EQ(display.Pictures(), 0);
    EXPECT_EQ(Theta(), "2.0") << "it turns all the same";
    EXPECT_TRUE(commands.OwesPicture());
    display.minimised = false;
    commands.CatchUp();
    EXPECT_EQ(display.Pictures(), 1);
    EXPECT_EQ(Drawn().Measures().xRange, 70) << "measured anew";
    EXPECT_FALSE(commands.OwesPicture());
    commands.CatchUp();
    EXPECT_EQ(display.Pictures(), 0);
}

TEST_F(View3DTest, TheKindOfPictureIsKeptForTheDataThatCanBeShownSo) {
    const auto showsAs = [this](ViewMode kind) {
        return View().Data().mode == kind && display.controls.kind == kind;
    };
    const auto showGrid = [this] {
        commands.Triangoli({5, 0, 5, 0}, {0, 20, 20, 0}, {0, 3000, 6000, 9000},
                           Table<Index>(1, 3, 1), "grid");
    };
    const auto showOthers = [this] {
        commands.Triangoli({0, 1, 5, 0}, {0, 20, 30, 7}, {0, 1, 2, 3}, Table<Index>(1, 3, 1), "t");
    };
    showGrid();
    EXPECT_TRUE(showsAs(ViewMode::Triangles)) << "at first";
    EXPECT_TRUE(display.controls.canShowPoints && display.controls.canShowSurface);
    commands.SetKind(ViewMode::Surface);
    ASSERT_TRUE(showsAs(ViewMode::Surface));
    EXPECT_EQ(View().Data().gridZ(1, 2), 3);
    EXPECT_EQ(View().Data().zExponent, 3);
    EXPECT_EQ(View().Data().extents, (SpaceExtents{0, 5, 0, 20, 0, 9}));
    EXPECT_EQ(View().Data().cellColour(1, 1),
              ViewData::Superficie({0, 5}, {0, 20}, View().Data().gridZ, "").cellColour(1, 1));

    showOthers();
    EXPECT_TRUE(showsAs(ViewMode::Triangles)) << "no grid";
    EXPECT_FALSE(display.controls.canShowSurface);
    showGrid();
    EXPECT_TRUE(showsAs(ViewMode::Surface)) << "still wanted";

    commands.SetKind(ViewMode::Points);
    showOthers();
    ASSERT_TRUE(showsAs(ViewMode::Points));
    EXPECT_EQ(View().Data().Y, (Array1<double>{30, 20, 7, 0}));
    EXPECT_EQ(View().Data().Z, (Array1<double>{2, 1, 3, 0}));
    EXPECT_EQ(
        View().Data().pointColour,
        ViewData::Punti({0, 1, 5, 0}, {0, 20, 30, 7}, {0, 1, 2, 3}, "", messages).pointColour);
    commands.SetKind(ViewMode::Triangles);
    EXPECT_EQ(View().Data().triangles.Rows(), 1);

    commands.Punti({0, 1, 2}, {0, 5, 1}, {1, 2, 3}, "p");
    EXPECT_TRUE(showsAs(ViewMode::Points)) << "triangles are not known";
    EXPECT_FALSE(display.controls.canShowTriangles);
    commands.Superficie({0, 1}, {0, 1}, Table<double>(2, 2, 3), "s");
    EXPECT_TRUE(showsAs(ViewMode::Surface));
    for (const auto& [x, y] : {std::pair{Array1<double>{0, 1, 0, 1}, Array1<double>{0, 0, 1, 0}},
                               std::pair{Array1<double>{0, 0, 0, 0}, Array1<double>{0, 1, 2, 3}},
                               std::pair{Array1<double>{0, 1, 0, 2}, Array1<double>{0, 0, 1, 1}}}) {
        commands.Punti(x, y, {1, 2, 3, 4}, "no grid");
        EXPECT_FALSE(display.controls.canShowSurface);
    }
}

TEST_F(View3DTest, ShowsOnlyThePointsThatCount) {
    PointSet points;
    for (const double k : {0.0, 1.0, 2.0}) {
        points.Append(k, k * k, k);
    }
    points.count = 2; // the arrays of a file before may be longer
    commands.ShowTriangles(points, TriangleList{}, "t");
    EXPECT_EQ(View().Data().PointCount(), 2);
    EXPECT_EQ(View().Data().extents.xmax, 1);
}

} // namespace
} // namespace terravo

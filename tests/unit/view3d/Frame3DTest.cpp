#include "view3d/Frame3D.h"

#include "support/FakeServices.h"
#include "support/RecordingSurface.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace terravo {
namespace {

struct Frame3DTest : testing::Test {
    RecordingSurface surface{640, 480};
    RunState run;
    FakeMessages messages;
    AxonometricView view;

    Frame3DTest() {
        view.title = "hills";
        view.extents = {1.2F, 8.7F, 12, 47, 101, 163};
    }

    bool Draw() {
        const bool drawn = DrawFrame3D(surface, view, kGreen, run, messages);
        view.TakeFrame();
        return drawn;
    }

    // Whether a line of the frame joins two pixels, give or take.
    [[nodiscard]] bool IsDrawn(PixelPosition from, PixelPosition to, double tolerance) const {
        const auto near = [tolerance](PixelPosition a, PixelPosition b) {
            return std::fabs(a.x - b.x) <= tolerance && std::fabs(a.y - b.y) <= tolerance;
        };
        const auto strokes = surface.PixelCallsOf(PixelCall::Kind::Stroke);
        return std::any_of(strokes.begin(), strokes.end(), [&](const PixelCall& stroke) {
            return stroke.pen.colour == kGreen && stroke.pen.style == DrawStyles::kSolid &&
                   ((near(stroke.a, from) && near(stroke.b, to)) ||
                    (near(stroke.a, to) && near(stroke.b, from)));
        });
    }
};

TEST_F(Frame3DTest, WidensTheExtentsToWholeStepsAndLabelsThem) {
    ASSERT_TRUE(Draw());
    EXPECT_EQ(view.extents, (SpaceExtents{1, 9, 10, 50, 100, 170}));
    for (const char* text : {"1.0", "9.0", "10.0", "50.0", "100.000", "170.000", "x", "y", "z"}) {
        EXPECT_TRUE(surface.FindText(text)) << text;
    }
    const auto title = surface.FindText("hills");
    ASSERT_TRUE(title);
    EXPECT_EQ(title->colour, kRed);
    EXPECT_TRUE(title->fontBold);
    ASSERT_FALSE(surface.pixelCalls.empty());
    EXPECT_EQ(surface.pixelCalls[0].kind, PixelCall::Kind::Rect) << "clears first";
    EXPECT_EQ(surface.pixelCalls[0].pen.colour, surface.BackColor());
    view.zLabel = "z [10^3]";
    run.decimalSeparator = ',';
    surface.Forget();
    ASSERT_TRUE(Draw());
    EXPECT_TRUE(surface.FindText("z [10^3]"));
    EXPECT_TRUE(surface.FindText("170,000"));
    EXPECT_TRUE(messages.boxes.empty());
}

TEST_F(Frame3DTest, ItsCoefficientsPutTheAxesOnTheLinesThatItDraws) {
    struct Case {
        float alfa;
        float rayx;
        SpaceExtents extents;
        double tolerance; // pixels: single-precision offsets of national grids are coarse
    };
    const SpaceExtents small{1.2F, 8.7F, 12, 47, 101, 163};
    const SpaceExtents grid{520000, 520070, 4520000, 4520070, 91, 109};
    const SpaceExtents below{-70, -3, -0.5F, 0.7F, -9, -2};
    for (const Case& c :
         {Case{0.5235988F, 1, small, 1}, Case{0.5235988F, 1, grid, 2},
          Case{0.5235988F, 1, below, 1}, Case{2.2F, 0.8F, small, 1}, Case{3.1F, 1.5F, below, 1},
          Case{-0.7F, 0.6F, small, 1}, Case{-2.4F, 2, small, 1}, Case{kHalfPi, 0.9F, small, 1},
          Case{kHalfPi, 0, small, 1}, Case{0, 1000, small, 1}, Case{1.2F, 40, small, 1}}) {
        view.alfa = c.alfa;
        view.rayx = c.rayx;
        view.extents = c.extents;
        surface.Forget();
        ASSERT_TRUE(Draw());
        SCOPED_TRACE(testing::Message() << "alfa " << c.alfa << " rayx " << c.rayx);
        const SpaceExtents& e = view.extents;
        const auto at = [this](float x, float y, float z) {
            return view.Project(static_cast<double>(x), static_cast<double>(y),
                                static_cast<double>(z));
        };
        const PixelPosition origin = at(e.xmin, e.ymin, e.zmin);
        const PixelPosition xEnd = at(e.xmax, e.ymin, e.zmin);
        const PixelPosition yEnd = at(e.xmin, e.ymax, e.zmin);
        const PixelPosition zEnd = at(e.xmin, e.ymin, e.zmax);
        for (const PixelPosition end : {xEnd, yEnd, zEnd}) {
            EXPECT_TRUE(IsDrawn(origin, end, c.tolerance)) << end.x << ", " << end.y;
            EXPECT_TRUE(end.x >= 0 && end.x < 640 && end.y >= 0 && end.y < 480)
                << end.x << ", " << end.y;
        }
        EXPECT_GE(xEnd.x, origin.x);
        EXPECT_LT(zEnd.y, origin.y);
        const double length = std::hypot(yEnd.x - origin.x, yEnd.y - origin.y);
        EXPECT_NEAR(length, static_cast<double>(view.rayx * view.xRange * view.coefficients.Ax), 2);
        EXPECT_NEAR(yEnd.x - origin.x, length * std::cos(static_cast<double>(c.alfa)), 2);
        EXPECT_NEAR(origin.y - yEnd.y, length * std::sin(static_cast<double>(c.alfa)), 2);
        // The scale it leaves behind is the same map.
        const PixelPosition corner =
            surface.ToPixels(static_cast<double>(e.xmax), static_cast<double>(e.zmax));
        EXPECT_NEAR(corner.x, xEnd.x, c.tolerance);
        EXPECT_NEAR(corner.y, zEnd.y, c.tolerance);
        EXPECT_EQ(surface.ScaleMode(), ScaleUnit::User);
    }
}

TEST_F(Frame3DTest, ReportsReversedExtentsAndLeavesThePictureAlone) {
    const std::string title = "Error in: scale of the axes3D3D";
    const auto messageFor = [this](const SpaceExtents& extents) {
        messages.boxes.clear();
        view.extents = extents;
        EXPECT_FALSE(DrawFrame3D(surface, view, kGreen, run, messages));
        return messages.boxes;
    };
    using Boxes = std::vector<FakeMessages::Box>;
    EXPECT_EQ(messageFor({2, 1, 2, 1, 2, 1}), (Boxes{{" Error Scale X.", title}}));
    EXPECT_EQ(messageFor({1, 2, 2, 1, 2, 1}), (Boxes{{" Error Scale Y.", title}}));
    EXPECT_EQ(messageFor({1, 2, 1, 2, 2, 1}), (Boxes{{" Error Scale Z.", title}}));
    EXPECT_TRUE(surface.userCalls.empty());
    messages.boxes.clear();
    view.extents = {5, 5, -3, -3, 250, 250};
    EXPECT_TRUE(Draw()) << "equal limits are no error";
    EXPECT_LT(view.extents.zmin, 250);
    EXPECT_GT(view.extents.zmax, 250);
    EXPECT_TRUE(messages.boxes.empty());
}

TEST_F(Frame3DTest, ReportsOnceWhatItCannotDraw) {
    for (const auto& [width, height] : {std::pair{40, 480}, std::pair{640, 30}, std::pair{1, 1}}) {
        RecordingSurface tiny(width, height);
        messages.boxes.clear();
        EXPECT_FALSE(DrawFrame3D(tiny, view, kGreen, run, messages)) << width << " x " << height;
        EXPECT_EQ(messages.boxes.size(), 1U);
        EXPECT_EQ(tiny.ScaleMode(), ScaleUnit::User);
    }
    messages.boxes.clear();
    view.extents = {0, 1, 0, 1, 0, INFINITY};
    EXPECT_FALSE(Draw());
    view.extents = {3e8F, 3e8F, 0, 1, 0, 1};
    EXPECT_FALSE(Draw()) << "no room between neighbouring numbers";
    EXPECT_EQ(messages.boxes.size(), 2U);
}

} // namespace
} // namespace terravo

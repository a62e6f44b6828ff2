#include "view3d/Frame3D.h"

#include "support/RecordingSurface.h"
#include "view3d/Projection.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace terravo {
namespace {

struct Frame3DTest : testing::Test {
    RecordingSurface surface{640, 480};
    RunState run;
    ViewData data;
    ViewParameters parameters;

    Frame3DTest() {
        data.title = "hills";
        data.extents = {1.2, 8.7, 12, 47, 101, 163};
    }

    std::variant<Frame3D, Message> Draw() {
        return DrawFrame3D(surface, data, parameters, kGreen, run);
    }
    /// A frame that must come out well.
    Frame3D Drawn() {
        auto drawn = Draw();
        EXPECT_TRUE(std::holds_alternative<Frame3D>(drawn));
        return std::holds_alternative<Frame3D>(drawn) ? std::get<Frame3D>(drawn) : Frame3D{};
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
    EXPECT_EQ(Drawn().extents, (SpaceExtents{1, 9, 10, 50, 100, 170}));
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
    data.zLabel = "z [10^3]";
    run.decimalSeparator = ',';
    surface.Forget();
    Drawn();
    EXPECT_TRUE(surface.FindText("z [10^3]"));
    EXPECT_TRUE(surface.FindText("170,000"));
}

TEST_F(Frame3DTest, ItsCoefficientsPutTheAxesOnTheLinesThatItDraws) {
    struct Case {
        float alfa;
        float rayx;
        SpaceExtents extents;
    };
    const SpaceExtents small{1.2, 8.7, 12, 47, 101, 163};
    const SpaceExtents site{520003.1, 520008, 4520001.3, 4520006.1, 4111.2, 4112};
    const SpaceExtents patch{520003.1, 520003.3, 4520001.3, 4520001.5, 111.23, 111.24};
    const SpaceExtents below{-70, -3, -0.5, 0.7, -9, -2};
    for (const Case& c :
         {Case{0.5235988F, 1, small}, Case{0.5235988F, 1, site}, Case{0.5235988F, 1, patch},
          Case{0.5235988F, 1, below}, Case{2.2F, 0.8F, small}, Case{3.1F, 1.5F, below},
          Case{-0.7F, 0.6F, small}, Case{-2.4F, 2, small}, Case{kHalfPi, 0.9F, small},
          Case{kHalfPi, 0, small}, Case{0, 1000, small}, Case{1.2F, 40, small}}) {
        parameters.alfa = c.alfa;
        parameters.rayx = c.rayx;
        data.extents = c.extents;
        surface.Forget();
        const Frame3D frame = Drawn();
        const Projection projection(parameters, frame, MeasureFrame(frame, c.alfa));
        SCOPED_TRACE(testing::Message() << "alfa " << c.alfa << " rayx " << c.rayx);
        const SpaceExtents& e = frame.extents;
        const PixelPosition origin = projection.Project(e.xmin, e.ymin, e.zmin);
        const PixelPosition xEnd = projection.Project(e.xmax, e.ymin, e.zmin);
        const PixelPosition yEnd = projection.Project(e.xmin, e.ymax, e.zmin);
        const PixelPosition zEnd = projection.Project(e.xmin, e.ymin, e.zmax);
        for (const PixelPosition end : {xEnd, yEnd, zEnd}) {
            EXPECT_TRUE(IsDrawn(origin, end, 1)) << end.x << ", " << end.y;
            EXPECT_TRUE(end.x >= 0 && end.x < 640 && end.y >= 0 && end.y < 480)
                << end.x << ", " << end.y;
        }
        EXPECT_GE(xEnd.x, origin.x);
        EXPECT_LT(zEnd.y, origin.y);
        const double length = std::hypot(yEnd.x - origin.x, yEnd.y - origin.y);
        EXPECT_NEAR(length, static_cast<double>(c.rayx) * frame.LengthX(), 1);
        EXPECT_NEAR(yEnd.x - origin.x, length * std::cos(static_cast<double>(c.alfa)), 1);
        EXPECT_NEAR(origin.y - yEnd.y, length * std::sin(static_cast<double>(c.alfa)), 1);
        // The scale it leaves behind is the same map.
        const PixelPosition corner = surface.ToPixels(e.xmax, e.zmax);
        EXPECT_NEAR(corner.x, xEnd.x, 1);
        EXPECT_NEAR(corner.y, zEnd.y, 1);
        EXPECT_EQ(surface.ScaleMode(), ScaleUnit::User);
    }
}

TEST_F(Frame3DTest, TicksASmallSiteAtLargeCoordinates) {
    data.extents = {520003.1, 520003.3, 4520001.3, 4520001.5, 111.23, 111.24};
    const Frame3D frame = Drawn();
    EXPECT_NEAR(frame.extents.xmin, 520003.1, 1e-9);
    EXPECT_NEAR(frame.extents.ymax, 4520001.5, 1e-9);
    EXPECT_EQ(frame.Coefficients().Ax, static_cast<float>(frame.scale.perX));
    EXPECT_LT(frame.Coefficients().Az, 0);
    for (const char* text : {"520003.1", "520003.2", "520003.3", "4520001.4", "111.235"}) {
        EXPECT_TRUE(surface.FindText(text)) << text;
    }
}

TEST_F(Frame3DTest, KeepsLabelsSideBySideApart) {
    for (int width = 400; width < 900; width += 5) {
        RecordingSurface wide(width, 480);
        DrawFrame3D(wide, data, parameters, kGreen, run);
        const auto texts = wide.UserCallsOf(UserCall::Kind::Text);
        for (std::size_t k = 1; k < texts.size(); ++k) {
            const UserCall& before = texts[k - 1];
            const double gap = texts[k].x1 - before.x1 -
                               kRecordedCharWidth * static_cast<double>(before.text.size());
            EXPECT_TRUE(texts[k].y1 > before.y1 || texts[k].y1 < before.y1 || gap >= 3) << width;
        }
    }
}

TEST_F(Frame3DTest, LeavesRoomForTheWidestLabelsOfEveryAxis) {
    constexpr float kWide = 1.2e12F;
    for (const SpaceExtents& extents :
         {SpaceExtents{0, kWide, 0, 1, 0, 1}, SpaceExtents{0, 1, 0, kWide, 0, 1},
          SpaceExtents{0, 1, -kWide, 0, 0, 1}, SpaceExtents{0, 1, 0, 1, 0, kWide}}) {
        for (const float alfa : {0.1F, 0.5F, kHalfPi, 2.2F}) {
            data.extents = extents;
            parameters.alfa = alfa;
            surface.Forget();
            Drawn();
            const auto labels = surface.PixelCallsOf(PixelCall::Kind::Text);
            EXPECT_GT(labels.size(), 6U);
            for (const PixelCall& label : labels) {
                const double width = kRecordedCharWidth * static_cast<double>(label.text.size());
                EXPECT_TRUE(label.a.x >= 0 && label.a.x + width <= 640) << label.text << alfa;
            }
        }
    }
}

TEST(RotatePoint, TurnsAboutItsCentreFromXToY) {
    constexpr double kQuarter = std::numbers::pi / 2;
    const PlanPlace quarter = RotatePoint(3, 2, kQuarter, 1, -1);
    EXPECT_NEAR(quarter.x, -2, 1e-12);
    EXPECT_NEAR(quarter.y, 1, 1e-12);
    const PlanPlace eighth = RotatePoint(3, 0, kQuarter / 2, 1, 0);
    EXPECT_NEAR(eighth.x, 1 + std::sqrt(2), 1e-12);
    EXPECT_NEAR(eighth.y, std::sqrt(2), 1e-12);
}

TEST_F(Frame3DTest, ReturnsReversedExtentsAsAMessageAndLeavesThePictureAlone) {
    const auto messageFor = [this](const SpaceExtents& extents) {
        data.extents = extents;
        const auto drawn = Draw();
        const auto* message = std::get_if<Message>(&drawn);
        return message != nullptr ? *message : Message{};
    };
    const std::string title = "Error in: scale of the axes3D3D";
    EXPECT_EQ(messageFor({2, 1, 2, 1, 2, 1}), (Message{" Error Scale X.", title}));
    EXPECT_EQ(messageFor({1, 2, 2, 1, 2, 1}), (Message{" Error Scale Y.", title}));
    EXPECT_EQ(messageFor({1, 2, 1, 2, 2, 1}), (Message{" Error Scale Z.", title}));
    EXPECT_TRUE(surface.userCalls.empty());
    data.extents = {5, 5, -3, -3, 250, 250};
    const Frame3D equalLimits = Drawn();
    EXPECT_LT(equalLimits.extents.zmin, 250);
    EXPECT_GT(equalLimits.extents.zmax, 250);
}

TEST_F(Frame3DTest, ReturnsWhatItCannotDrawAsAMessage) {
    for (const auto& [width, height] : {std::pair{40, 480}, std::pair{640, 30}, std::pair{1, 1}}) {
        RecordingSurface tiny(width, height);
        const auto drawn = DrawFrame3D(tiny, data, parameters, kGreen, run);
        EXPECT_TRUE(std::holds_alternative<Message>(drawn)) << width << " x " << height;
        EXPECT_EQ(tiny.ScaleMode(), ScaleUnit::User);
    }
    data.extents = {0, 1, 0, 1, 0, INFINITY};
    EXPECT_TRUE(std::holds_alternative<Message>(Draw()));
    data.extents = {3e17, 3e17, 0, 1, 0, 1};
    EXPECT_TRUE(std::holds_alternative<Message>(Draw())) << "no room between neighbouring numbers";
}

} // namespace
} // namespace terravo

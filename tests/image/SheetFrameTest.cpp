// The picture of a sheet in its window.
#include "export/SheetFrame.h"

#include <gtest/gtest.h>

#include <cmath>

namespace terravo {
namespace {

std::shared_ptr<const SheetScene> Scene() {
    auto scene = std::make_shared<SheetScene>();
    scene->width = 210;
    scene->height = 297;
    scene->map = {20, 20, 190, 200};
    const SheetPoint corners[] = {{0, 0}, {210, 0}, {210, 297}, {0, 297}};
    scene->AddArea(SheetLayer::Paper, kWhite, corners);
    for (int i = 1; i < 60; ++i) {
        std::vector<SheetPoint> points;
        for (int k = 0; k < 400; ++k) {
            const double turn = 2 * std::acos(-1.0) * k / 400;
            const double r = i * (1 + 0.2 * std::sin(5 * turn + 0.1 * i));
            points.push_back({105 + r * std::cos(turn), 110 + r * std::sin(turn)});
        }
        scene->AddLine(SheetLayer::Contours, {0xFF0000, i % 5 == 0 ? 0.35 : 0.18, {}}, points,
                       true);
    }
    scene->texts.push_back(
        {SheetLayer::Labels, "123.5", {80, 90}, TextAnchor::Centre, 4, 0.4, kRed, false});
    SheetMarks marks;
    marks.ink = scene->InkNumber({});
    for (int i = 0; i < 200; ++i) {
        marks.places.push_back({20.0 + i % 20 * 8, 20.0 + std::floor(i / 20) * 18});
    }
    scene->marks.push_back(marks);
    return scene;
}

struct SheetFrameTest : ::testing::Test {
    std::shared_ptr<const SheetScene> scene = Scene();
    SheetFrame frame;

    SheetFrameTest() { Prepare(frame); }
    void Prepare(SheetFrame& other) const {
        other.SetSize({300, 240});
        other.SetGround(Qt::darkGray);
        other.SetScene(scene);
    }
    [[nodiscard]] QImage Anew(const SheetPlace& place) const {
        SheetFrame other;
        Prepare(other);
        return other.Picture(place, false);
    }
};

// Pixels that differ by more than a little in a channel.
int Different(const QImage& a, const QImage& b, int tolerance) {
    int count = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            const QColor p = a.pixelColor(x, y);
            const QColor q = b.pixelColor(x, y);
            count += std::abs(p.red() - q.red()) > tolerance ||
                     std::abs(p.green() - q.green()) > tolerance ||
                     std::abs(p.blue() - q.blue()) > tolerance;
        }
    }
    return count;
}

TEST_F(SheetFrameTest, ShowsAfterAWayInAllDirectionsWhatItWouldDrawAnew) {
    for (const double pixels : {0.8, 3.0, 11.0}) {
        SheetPlace place{pixels, QPointF(-20, -15)};
        frame.Picture(place, false);
        for (const QPointF by : {QPointF(13, 0), QPointF(0, -21), QPointF(-40, 9), QPointF(7, 50),
                                 QPointF(-90, -110)}) {
            place.corner += by;
            const QImage moved = frame.Picture(place, true).copy();
            EXPECT_LT(Different(moved, Anew(place), 40), 30) << pixels << " pixels a millimetre";
        }
    }
}

TEST_F(SheetFrameTest, HasEveryPartOfTheSheetInItsPicture) {
    const SheetPlace place{4, QPointF(-250, -300)};
    const QImage picture = Anew(place);
    const auto colourAt = [&](SheetPoint p) {
        return picture.pixelColor(place.ToPixels(p).toPoint());
    };
    EXPECT_LT(colourAt({100, 128}).lightness(), 40) << "a dot";
    EXPECT_EQ(Anew({1, QPointF(20, 20)}).pixelColor(5, 5), QColor(Qt::darkGray));
    int red = 0;
    int blue = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const QColor colour = picture.pixelColor(x, y);
            red += colour.red() > 200 && colour.blue() < 120;
            blue += colour.blue() > 200 && colour.red() < 120;
        }
    }
    EXPECT_GT(red, 20);
    EXPECT_GT(blue, 1000);
}

TEST_F(SheetFrameTest, IsSharpAgainWhenItRests) {
    SheetPlace place{3, QPointF(0, 0)};
    frame.Picture(place, false);
    place.pixels = 3.3;
    frame.Picture(place, true); // coarse or not, by the machine
    const QImage rested = frame.Picture(place, false).copy();
    EXPECT_FALSE(frame.IsCoarse());
    EXPECT_EQ(rested, Anew(place));
}

} // namespace
} // namespace terravo

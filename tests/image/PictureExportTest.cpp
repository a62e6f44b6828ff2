#include "export/PictureExport.h"

#include "plot2d/RasterSurface.h"
#include "plot2d/SurfaceFont.h"
#include "support/TemporaryFolder.h"
#include "util/AppError.h"

#include <gtest/gtest.h>

#include <QPainter>
#include <QSvgRenderer>

#include <array>
#include <filesystem>

namespace terravo {
namespace {

constexpr Colour kYellow = RGB(255, 255, 0);

// Something of everything that maps and 3D pictures draw.
bool DrawSample(DrawSurface& surface) {
    surface.SetScaleMode(ScaleUnit::Pixels);
    surface.Line(0, 0, surface.PixelWidth(), surface.PixelHeight(), surface.BackColor(),
                 Box::Filled);
    const std::array<PixelPosition, 3> area{{{20, 200}, {120, 60}, {150, 210}}};
    PaintTools tools;
    tools.penColour = kYellow;
    tools.brush = kYellow;
    surface.FillPolygon(area, tools);
    const std::array<PixelPosition, 8> holed{{{170, 60},
                                              {300, 60},
                                              {300, 160},
                                              {170, 160},
                                              {200, 80},
                                              {270, 80},
                                              {270, 140},
                                              {200, 140}}};
    const std::array<std::int32_t, 2> counts{4, 4};
    tools.brush = RGB(0, 0, 255);
    surface.FillPolyPolygon(holed, counts, tools);
    tools.penColour = kWhite;
    tools.brush = kRed;
    surface.FillDisc({235, 190}, 12, tools);
    surface.Line(10, 20, 310, 20, kWhite);
    surface.SetDrawStyle(DrawStyles::kDash);
    surface.Line(10, 30, 310, 50, kGreen);
    surface.SetDrawStyle(DrawStyles::kSolid);
    surface.SetDrawWidth(5);
    surface.Line(15, 230, 305, 220, kRed);
    surface.PSet(300, 190, kWhite);
    surface.SetFontSize(16);
    surface.SetForeColor(kYellow);
    surface.SetCurrentX(30);
    surface.SetCurrentY(60);
    surface.Print("12.5 < é & x", NewLine::No);
    surface.Line(surface.CurrentX(), 60, surface.CurrentX(), 80, kRed);
    return true;
}

Picture Sample() {
    return {320, 240, 1, "Sample <1>\x01", DrawSample};
}

QImage Rendered(const std::string& svg) {
    QSvgRenderer renderer(QByteArray::fromStdString(svg));
    EXPECT_TRUE(renderer.isValid());
    EXPECT_EQ(renderer.viewBox(), QRect(0, 0, 320, 240));
    QImage image(320, 240, QImage::Format_RGB32);
    image.fill(Qt::magenta);
    QPainter painter(&image);
    renderer.render(&painter);
    return image;
}

// The largest difference of a channel between squares of 16 pixels, of 255: positions and colours
// count, the smoothing of edges does not.
int LargestDifference(const QImage& a, const QImage& b) {
    const auto coarse = [](const QImage& image) {
        return image.scaled(20, 15, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
            .convertToFormat(QImage::Format_RGB32);
    };
    const QImage p = coarse(a);
    const QImage q = coarse(b);
    int largest = 0;
    for (int y = 0; y < p.height(); ++y) {
        for (int x = 0; x < p.width(); ++x) {
            const QColor left = p.pixelColor(x, y);
            const QColor right = q.pixelColor(x, y);
            largest = std::max({largest, std::abs(left.red() - right.red()),
                                std::abs(left.green() - right.green()),
                                std::abs(left.blue() - right.blue())});
        }
    }
    return largest;
}

TEST(PictureExport, DrawsTheSameAsSvgAsInPixels) {
    const test::TemporaryFolder folder;
    ASSERT_TRUE(WritePicture(folder.File("p.png"), PictureKind::Png, Sample(), {}));
    ASSERT_TRUE(WritePicture(folder.File("p.svg"), PictureKind::Svg, Sample(), {Paper::Black, {}}));
    const QImage pixels(QString::fromStdString(folder.File("p.png")));
    const QImage svg = Rendered(folder.Read("p.svg"));
    EXPECT_LE(LargestDifference(pixels, svg), 24);
    EXPECT_NE(folder.Read("p.svg").find("12.5 &lt; é &amp; x</text>"), std::string::npos);
    EXPECT_NE(folder.Read("p.svg").find("<title>Sample &lt;1&gt; </title>"), std::string::npos);
    EXPECT_NE(folder.Read("p.svg").find(" stroke=\"#ff0000\" stroke-width=\"5\"/>"),
              std::string::npos);
    EXPECT_EQ(folder.Read("p.svg").find("stroke-width=\"1\""), std::string::npos);
}

TEST(PictureExport, PutsBlanksForWhatNoXmlTextMayHold) {
    EXPECT_EQ(PrintableText("\x01 a\x1F!\x7F\xEF\xBF\xBD\xEF\xBF\xBE\xEF\xBF\xBF"),
              QStringLiteral("  a !\x7F\uFFFD  "));
}

// Lines, an area and a dot between the pixels, and a line without length.
bool DrawFractions(DrawSurface& surface) {
    surface.SetScaleMode(ScaleUnit::Pixels);
    surface.Line(0.25, 0, 0.25, 3, kRed);
    surface.Line(1.23449, 2.9996, 1.5, -0.0001, kRed);
    surface.Line(3, 0.5, 3, 0.5, kRed);
    PaintTools tools;
    tools.penColour = kGreen;
    tools.brush = kGreen;
    surface.FillPolygon(std::array<PixelPosition, 3>{{{1.75, 1}, {2.25, 1}, {2.25, 1.125}}}, tools);
    surface.PSet(3, 2.75, kWhite);
    return true;
}

TEST(PictureExport, WritesPlacesToAThousandthOfAPixelAndNoMoreDigitsThanThat) {
    const test::TemporaryFolder folder;
    ASSERT_TRUE(WritePicture(folder.File("p.svg"), PictureKind::Svg, {4, 4, 1, "", DrawFractions},
                             {Paper::Black, {}}));
    const std::string svg = folder.Read("p.svg");
    for (const char* element :
         {"points=\"0.25,0 0.25,3\"", "points=\"1.234,3 1.5,0\"", "points=\"3,0.5 3,0.5\"",
          "d=\"M1.75,1L2.25,1L2.25,1.125Z\"", "cx=\"3\" cy=\"2.75\" r=\"0.5\""}) {
        EXPECT_NE(svg.find(element), std::string::npos) << element << svg;
    }
}

TEST(PictureExport, PaintsPlacesBetweenThePixelsOnAPage) {
    constexpr int kEnlarged = 100;
    QImage image(4 * kEnlarged, 4 * kEnlarged, QImage::Format_RGB32);
    image.fill(Qt::blue);
    QPainter painter(&image);
    ASSERT_TRUE(
        DrawFitted(painter, QRectF(image.rect()), {4, 4, 1, "", DrawFractions}, Paper::Black));
    painter.end();
    // A pixel reaches half its width to both sides of a place, which is in the middle of it.
    EXPECT_EQ(image.pixelColor(24, 200), QColor(Qt::blue));
    EXPECT_EQ(image.pixelColor(26, 200), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(123, 200), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(350, 100), QColor(Qt::red)) << "a line without length is a dot";
    EXPECT_EQ(image.pixelColor(305, 55), QColor(Qt::blue)) << "which is round";
    EXPECT_EQ(image.pixelColor(250, 155), QColor(Qt::green));
    EXPECT_EQ(image.pixelColor(350, 325), QColor(Qt::white));
}

TEST(PictureExport, KeepsWhitePaperWhiteAndStrokesReadable) {
    const test::TemporaryFolder folder;
    ASSERT_TRUE(WritePicture(folder.File("p.svg"), PictureKind::Svg, Sample(), {Paper::White, {}}));
    const std::string svg = folder.Read("p.svg");
    EXPECT_EQ(svg.find("stroke=\"#ffffff\""), std::string::npos);
    const QImage image = Rendered(svg);
    EXPECT_EQ(image.pixelColor(5, 5), QColor(Qt::magenta)) << "no background is painted";
    EXPECT_LT(image.pixelColor(300, 190).lightness(), 20) << "a white dot becomes black";
    EXPECT_EQ(image.pixelColor(120, 150), QColor(Qt::yellow)) << "an area keeps its colour";
    EXPECT_EQ(svg.find("<text fill=\"#ffff00\""), std::string::npos) << "a light text is darkened";
}

TEST(PictureExport, LeavesNoFileOfAPictureThatIsNotComplete) {
    const test::TemporaryFolder folder;
    Picture stopped = Sample();
    stopped.draw = [](DrawSurface& surface) { return !DrawSample(surface); };
    Picture failing = Sample();
    failing.draw = [](DrawSurface& surface) -> bool {
        DrawSample(surface);
        throw AppError(ErrorNumber::kInvalidCall, "draw", "not drawn");
    };
    for (const PictureKind kind : {PictureKind::Png, PictureKind::Svg, PictureKind::Pdf}) {
        EXPECT_FALSE(WritePicture(folder.File("p"), kind, stopped, {}));
        EXPECT_THROW(WritePicture(folder.File("p"), kind, failing, {}), AppError);
        for (const std::string& path : {folder.File("missing/p"), std::string("/dev/full")}) {
            try {
                WritePicture(path, kind, Sample(), {});
                ADD_FAILURE() << path;
            } catch (const AppError& error) {
                EXPECT_EQ(error.number(), ErrorNumber::kDeviceIo);
                EXPECT_TRUE(std::string(error.what()).find(path) != std::string::npos)
                    << error.what();
            }
        }
    }
    EXPECT_TRUE(folder.Names().empty());
}

} // namespace
} // namespace terravo

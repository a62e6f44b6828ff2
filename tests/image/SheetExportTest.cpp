#include "export/SheetExport.h"

#include "export/SheetPainter.h"
#include "sheet/SheetCurve.h"
#include "support/TemporaryFolder.h"
#include "util/AppError.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QSvgRenderer>
#include <QXmlStreamReader>

#include <map>

namespace terravo {
namespace {

// A bit of everything, on a paper of 100 x 80 mm.
SheetScene Sample() {
    SheetScene scene;
    scene.width = 100;
    scene.height = 80;
    const SheetPoint paper[] = {{0, 0}, {100, 0}, {100, 80}, {0, 80}};
    scene.AddArea(SheetLayer::Paper, kWhite, paper);
    scene.AddBox(SheetLayer::Frame, {kBlack, 0.5, {}}, {10, 10, 90, 70});
    const SheetPoint line[] = {{20, 40}, {50, 20.0004}, {80, 40}};
    scene.AddLine(SheetLayer::IndexContours, {kRed, 1, {}}, line);
    scene.lines.back().level = 512.5;
    scene.AddPiece(line, true);
    scene.lines.back().pieces = 2;
    scene.AddLine(SheetLayer::Hull, {RGB(0, 0, 255), 1, {2, 1}}, line);
    scene.marks.push_back({SheetLayer::Points,
                           SheetMarkShape::Dot,
                           scene.InkNumber({kGreen, 0.1, {}}),
                           2,
                           {{20, 65}, {80, 65}}});
    SheetText text;
    text.text = "1:500 <\x01 & \xC3\xA9>";
    text.place = {50, 50};
    text.anchor = TextAnchor::Centre;
    text.height = 5;
    text.angle = 0.5;
    scene.texts.push_back(text);
    return scene;
}

struct SheetExportTest : ::testing::Test {
    test::TemporaryFolder folder;

    std::string Written(const std::string& name, PictureKind kind,
                        const SheetFileWish& wish) const {
        WriteSheet(folder.File(name), kind, Sample(), wish);
        return folder.Read(name);
    }
};

TEST_F(SheetExportTest, TheSvgHasAGroupForEachLayerInMillimetres) {
    const std::string svg = Written("a.svg", PictureKind::Svg, {"Hills & <vales>", 300});
    QXmlStreamReader xml(QByteArray::fromStdString(svg));
    std::vector<std::string> groups;
    std::map<std::string, QXmlStreamAttributes> first; // of each group's elements
    std::string text;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement) {
            continue;
        }
        if (xml.name() == QLatin1String("svg")) {
            EXPECT_EQ(xml.attributes().value("width").toString().toStdString(), "100mm");
            EXPECT_EQ(xml.attributes().value("viewBox").toString().toStdString(), "0 0 100 80");
        } else if (xml.name() == QLatin1String("g")) {
            groups.push_back(xml.attributes().value("id").toString().toStdString());
        } else if (!groups.empty()) {
            first.try_emplace(groups.back(), xml.attributes());
            if (xml.name() == QLatin1String("text")) {
                text = xml.readElementText().toStdString();
            }
        }
    }
    EXPECT_FALSE(xml.hasError()) << xml.errorString().toStdString();
    EXPECT_EQ(groups, (std::vector<std::string>{"paper", "index-contours", "hull", "points",
                                                "labels", "frame"}));
    const auto of = [&](const char* group, const char* name) {
        return first[group].value(QLatin1String(name)).toString().toStdString();
    };
    EXPECT_EQ(of("index-contours", "data-level"), "512.5");
    EXPECT_EQ(of("index-contours", "d"), "M20 40L50 20L80 40M20 40L50 20L80 40Z");
    EXPECT_EQ(of("hull", "stroke-dasharray"), "2 1");
    EXPECT_EQ(of("points", "d"), "M20 65h.001M80 65h.001");
    EXPECT_EQ(text, "1:500 <  & \xC3\xA9>");
}

TEST_F(SheetExportTest, EveryFormatShowsTheSameAtItsTrueSize) {
    const std::string svg = Written("a.svg", PictureKind::Svg, {});
    QImage fromSvg(400, 320, QImage::Format_RGB32);
    QPainter painter(&fromSvg);
    QSvgRenderer(QByteArray::fromStdString(svg)).render(&painter);
    painter.end();
    static_cast<void>(Written("a.png", PictureKind::Png, {"", 254}));
    const QImage png(QString::fromStdString(folder.File("a.png")));
    EXPECT_EQ(png.size(), QSize(1000, 800));
    EXPECT_EQ(png.dotsPerMeterX(), 10000);
    const struct {
        double x;
        double y;
        QRgb colour;
    } places[] = {{3, 3, 0xFFFFFFFF},
                  {50, 40, 0xFFFF0000},
                  {20, 65, 0xFF00FF00},
                  {10, 30, 0xFF000000},
                  {90, 30, 0xFF000000}};
    for (const auto& place : places) {
        for (const QImage* picture : {&png, static_cast<const QImage*>(&fromSvg)}) {
            const double scale = picture->width() / 100.0;
            const QColor seen = picture->pixelColor(static_cast<int>(place.x * scale),
                                                    static_cast<int>(place.y * scale));
            const QColor wanted(place.colour);
            constexpr int kNear = 90; // a thin line is mixed with what is beside it
            EXPECT_TRUE(std::abs(seen.red() - wanted.red()) < kNear &&
                        std::abs(seen.green() - wanted.green()) < kNear &&
                        std::abs(seen.blue() - wanted.blue()) < kNear)
                << place.x << " " << place.y << " " << seen.name().toStdString();
        }
    }
}

// The first stream of a PDF that is one of drawing, as text.
std::string PageOf(const std::string& pdf) {
    const std::string key = "stream\n";
    for (std::size_t at = 0; (at = pdf.find(key, at)) != std::string::npos;) {
        at += key.size();
        QByteArray packed("\x00\x10\x00\x00", 4); // about how long it will be
        packed.append(pdf.data() + at, static_cast<qsizetype>(pdf.find("endstream", at) - at));
        const std::string page = qUncompress(packed).toStdString();
        if (page.find(" m\n") != std::string::npos) {
            return page;
        }
    }
    return {};
}

TEST_F(SheetExportTest, CurvesAreCubicsInFilesAndLieThereInPixels) {
    SheetScene scene = Sample();
    const SheetPoint curve[] = {{20, 60}, {20, 20}, {80, 20}, {80, 60},
                                {80, 62}, {80, 64}, {80, 66}};
    FlatCurve flat;
    Flatten(curve, false, kCurveTolerance, flat);
    scene.texts.clear();
    scene.lines.clear();
    scene.AddLine(SheetLayer::Contours, {kRed, 1, {}}, flat.points);
    scene.CurveLastPiece(curve, 0, 2);
    const auto written = [&](const char* name, PictureKind kind) {
        WriteSheet(folder.File(name), kind, scene, {"", 254});
        return folder.Read(name);
    };
    const std::string svg = written("c.svg", PictureKind::Svg);
    EXPECT_NE(svg.find(" d=\"M20 60C20 20 80 20 80 60L80 66\""), std::string::npos);
    const std::string page = PageOf(written("c.pdf", PictureKind::Pdf));
    const auto count = [&](const std::string& command) {
        std::size_t found = 0;
        for (std::size_t at = 0; (at = page.find(command, at)) != std::string::npos; ++at) {
            ++found;
        }
        return found;
    };
    EXPECT_EQ(count("80 20 80 60 c\n"), 1U);
    EXPECT_EQ(count("80 66 l\n"), 1U);
    static_cast<void>(written("c.png", PictureKind::Png));
    const QColor seen = QImage(QString::fromStdString(folder.File("c.png"))).pixelColor(500, 300);
    EXPECT_GT(seen.red(), 200);
    EXPECT_LT(seen.green(), 60);
}

TEST_F(SheetExportTest, TheSamePdfTwiceHasTheSamePageAndNoDateOfItsOwn) {
    const std::string pdf = Written("a.pdf", PictureKind::Pdf, {"Hills", 300});
    EXPECT_NE(pdf.find("/CreationDate (D:20000101000000"), std::string::npos);
    EXPECT_NE(pdf.find("/MediaBox [0 0 283"), std::string::npos) << "100 mm are 283.46 points";
    EXPECT_NE(pdf.find("/FontFile2"), std::string::npos) << "letters, not outlines";
    EXPECT_EQ(Written("b.pdf", PictureKind::Pdf, {"Hills", 300}), pdf);
}

TEST_F(SheetExportTest, SheetsThatBelongTogetherArePagesOrNumberedFiles) {
    std::vector<SheetScene> scenes(3, Sample());
    scenes[1].width = 60; // upright among those across
    EXPECT_EQ(WriteSheets(folder.File("a.b.pdf"), PictureKind::Pdf, scenes, {}),
              std::vector{folder.File("a.b.pdf")});
    const std::string pdf = folder.Read("a.b.pdf");
    EXPECT_NE(pdf.find("/Count 3"), std::string::npos);
    EXPECT_NE(pdf.find("/MediaBox [0 0 170"), std::string::npos) << "60 mm are 170.08 points";
    const std::vector<std::string> paths =
        WriteSheets(folder.File("a.b.svg"), PictureKind::Svg, scenes, {});
    EXPECT_EQ(paths, (std::vector{folder.File("a.b-1.svg"), folder.File("a.b-2.svg"),
                                  folder.File("a.b-3.svg")}));
    for (const std::string& path : paths) {
        EXPECT_TRUE(std::filesystem::exists(path)) << path;
    }
    scenes.resize(1);
    EXPECT_EQ(WriteSheets(folder.File("c.png"), PictureKind::Png, scenes, {}),
              std::vector{folder.File("c.png")});
    EXPECT_EQ(folder.Read("c.png"), Written("d.png", PictureKind::Png, {}));
}

TEST_F(SheetExportTest, AWishToStopIsHeardAmongTheElements) {
    for (const PictureKind kind : {PictureKind::Pdf, PictureKind::Png}) {
        int asked = 0;
        StopToken* self = nullptr;
        StopToken stop(
            [&](std::string_view, double) { ++asked == 2 ? self->RequestStop() : void(); });
        self = &stop;
        EXPECT_FALSE(WriteSheet(folder.File("stopped"), kind, Sample(), {"", 300, &stop}));
        EXPECT_EQ(asked, 2 + 4) << "the other elements are asked for, not painted";
        EXPECT_FALSE(std::filesystem::exists(folder.File("stopped")));
    }
}

TEST_F(SheetExportTest, WhatCannotBeWrittenLeavesNothing) {
    EXPECT_THROW(WriteSheet(folder.File("none/a.pdf"), PictureKind::Pdf, Sample(), {}), AppError);
    SheetScene huge = Sample();
    huge.width = 1e5;
    huge.height = 1e5;
    EXPECT_THROW(WriteSheet(folder.File("a.png"), PictureKind::Png, huge, {"", 2400}), AppError);
    EXPECT_EQ(folder.Read("a.png"), "");
}

} // namespace
} // namespace terravo

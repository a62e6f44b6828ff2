// The summary and the vector files of terravo-batch. Other files are in outputs.sh, what it refuses
// in refusals.sh.
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

#include <cmath>

namespace terravo {
namespace {

struct Ended {
    int exitCode = -1;
    QByteArray output;
    std::string error;
};

Ended Batch(const std::vector<std::string>& arguments) {
    QStringList list;
    for (const std::string& argument : arguments) {
        list.append(QString::fromStdString(argument));
    }
    QProcess process;
    process.start(QStringLiteral(TERRAVO_BATCH_PROGRAM), list);
    if (!process.waitForFinished(120000) || process.exitStatus() != QProcess::NormalExit) {
        return {};
    }
    return {process.exitCode(), process.readAllStandardOutput(),
            process.readAllStandardError().toStdString()};
}

std::string DataFile(const std::string& name) {
    return std::string(TERRAVO_TEST_DATA_DIR) + "/" + name;
}

std::string ReadData(const std::string& name) {
    std::ifstream file(DataFile(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

TEST(BatchProgram, TellsWhatItDidAsJson) {
    const test::TemporaryFolder folder;
    const std::string map = folder.File("m.png");
    const Ended ended = Batch({DataFile("small.dat"), "--summary", "json", "--levels", "4",
                               "--size", "320x240", "--map", map, "--labels", "--triangles"});
    ASSERT_EQ(ended.exitCode, 0) << ended.error;
    const QJsonObject summary = QJsonDocument::fromJson(ended.output).object();
    EXPECT_EQ(summary["points"].toInt(), 6);
    EXPECT_EQ(summary["unused_points"].toInt(), 1);
    EXPECT_EQ(summary["triangles"].toInt(), 4);
    EXPECT_EQ(summary["hull_edges"].toInt(), 4);
    EXPECT_EQ(summary["levels"].toInt(), 4);
    EXPECT_EQ(summary["segments"].toInt(), 10);
    EXPECT_EQ(summary["level_values"].toArray(), (QJsonArray{0, 10 / 3.0, 20 / 3.0, 10}));
    EXPECT_EQ(summary["extents"].toObject()["x"].toArray(), (QJsonArray{0.5, 9.0}));
    EXPECT_EQ(summary["files"].toArray(), (QJsonArray{QString::fromStdString(map)}));
    for (const char* stage : {"read", "triangulate", "contour", "draw", "write", "total"}) {
        EXPECT_TRUE(summary["milliseconds"].toObject()[QLatin1String(stage)].isDouble()) << stage;
    }
    EXPECT_EQ(QImage(QString::fromStdString(map)).size(), QSize(320, 240));
}

TEST(BatchProgram, FollowsALevelRuleInEveryOutput) {
    const test::TemporaryFolder folder;
    const struct {
        std::vector<std::string> options;
        QJsonArray levels;
    } cases[] = {
        {{"--interval", "2.5"}, {2.5, 5, 7.5}},
        {{"--interval=5", "--base=-2"}, {3, 8}},
        {{"--interval", "0.7", "--base", "9.9"},
         {0.1, 0.8, 1.5, 2.2, 2.9, 3.6, 4.3, 5, 5.7, 6.4, 7.1, 7.8, 8.5, 9.2, 9.9}},
        {{"--level-list", "8,3,99, 3"}, {3, 8}},
    };
    for (const auto& c : cases) {
        for (const char* mode : {"lines", "areas"}) {
            std::vector<std::string> call{
                DataFile("small.dat"), "--summary", "json", "--mode", mode, "--out", folder.Path()};
            call.insert(call.end(), c.options.begin(), c.options.end());
            const Ended ended = Batch(call);
            ASSERT_EQ(ended.exitCode, 0) << ended.error;
            const QJsonObject summary = QJsonDocument::fromJson(ended.output).object();
            EXPECT_EQ(summary["level_values"].toArray(), c.levels) << c.options.front();
            EXPECT_EQ(summary["levels"].toInt(), c.levels.size());
            const std::string count = std::to_string(c.levels.size());
            EXPECT_EQ(folder.Read("levels.qrz").find("N.Layer -\r\n " + count + " \r\n"), 0U);
        }
    }
}

int CountOf(const std::string& text, const std::string& part) {
    int count = 0;
    for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        ++count;
    }
    return count;
}

// The lines of the contours are as many as the segments, however short those are; what the frame
// needs is in every map of a survey.
TEST(BatchProgram, WritesMapsAndViewsAsVectorFiles) {
    const test::TemporaryFolder folder;
    const auto draw = [&](const std::string& points, const char* levels) {
        const Ended ended =
            Batch({points, "--levels", levels, "--summary", "json", "--map", folder.File("m.svg"),
                   "--segments", folder.File("s"), "--view3d", folder.File("v.svg")});
        EXPECT_EQ(ended.exitCode, 0) << ended.error;
        const QJsonObject summary = QJsonDocument::fromJson(ended.output).object();
        EXPECT_EQ(summary["files"].toArray().size(), 3);
        return CountOf(folder.Read("m.svg"), "<polyline") - summary["segments"].toInt();
    };
    const std::string volcano = DataFile("../../samples/volcano.dat");
    const int volcanoFrameLines = draw(volcano, "2");
    EXPECT_GT(volcanoFrameLines, 0);
    EXPECT_EQ(draw(volcano, "10"), volcanoFrameLines);
    EXPECT_EQ(CountOf(folder.Read("s"), "\n"), 2 * 2656);
    const int frameLines = draw(DataFile("small.dat"), "4");
    EXPECT_EQ(folder.Read("s"), ReadData("small.livelli.txt"));
    EXPECT_EQ(draw(DataFile("small.dat"), "7"), frameLines);
    const std::string map = folder.Read("m.svg");
    EXPECT_NE(map.find(">Contour map : small.dat</text>"), std::string::npos);
    EXPECT_NE(map.find("viewBox=\"0 0 1200 900\""), std::string::npos);
    // Six points, of which one repeats another and is drawn all the same.
    EXPECT_EQ(CountOf(folder.Read("v.svg"), "<circle"), 6);
}

// The object or number at a path such as "areas.plan" or "sections.0.gaps".
QJsonValue At(const QJsonObject& root, const char* path) {
    QJsonValue value = root;
    for (const QString& key : QString::fromLatin1(path).split(QLatin1Char('.'))) {
        value = value.isArray() ? value.toArray()[key.toInt()] : value.toObject()[key];
    }
    return value;
}

// A pyramid on a square of 4, 3 high, beside a plane at height 1 that is as large.
class Pyramid : public test::TemporaryFolder {
public:
    Pyramid() {
        Write("pyramid.dat", "0,0,0\n2,0,0\n2,2,0\n0,2,0\n1,1,3\n");
        Write("flat.dat", "0,0,1\n2,0,1\n2,2,1\n0,2,1\n");
        Write("far.dat", "9,0,1\n11,0,1\n11,2,1\n");
        Write("ring.txt", "0 0\n1 0\n1 1\n0 1\n");
        Write("line.txt", "Ridge\n-1 1\n3 1\n\nRim\n0 0\n2 0\n");
    }
    [[nodiscard]] Ended Measure(std::vector<std::string> options) const {
        options.insert(options.begin(), File("pyramid.dat"));
        return Batch(options);
    }
    [[nodiscard]] QJsonObject Json(std::vector<std::string> options) const {
        options.insert(options.end(), {"--summary", "json"});
        const Ended ended = Measure(options);
        EXPECT_EQ(ended.exitCode, 0) << ended.error;
        return QJsonDocument::fromJson(ended.output).object()["measure"].toObject();
    }

private:
    void Write(const char* name, const char* text) const {
        std::ofstream(File(name), std::ios::binary) << text;
    }
};

TEST(BatchProgram, MeasuresWhatIsAskedFor) {
    const Pyramid folder;
    const std::string flat = folder.File("flat.dat");
    const std::string ring = folder.File("ring.txt");
    const struct {
        std::vector<std::string> options;
        std::vector<std::pair<const char*, double>> figures;
    } cases[] = {
        {{"--areas"},
         {{"areas.plan", 4},
          {"areas.surface", 4 * std::sqrt(10.0)},
          {"areas.perimeter", 8},
          {"areas.mean_height", 1},
          {"areas.max_slope", 3},
          {"areas.z.1", 3}}},
        {{"--areas", "--within", ring}, {{"areas.plan", 1}, {"within.rings", 1}}},
        {{"--hypsometry", "--level-list", "1.5"},
         {{"hypsometry.0.band_area", 3},
          {"hypsometry.1.height", 1.5},
          {"hypsometry.1.area_above", 1},
          {"hypsometry.1.volume_above", 0.5}}},
        {{"--volume", "1.5", "--volume", "-1"},
         {{"volume.datum", 1.5},
          {"volume.cut", 0.5},
          {"volume.fill", 2.5},
          {"volume.net", -2},
          {"volume.cut_area", 1},
          {"volumes.1.cut", 8}}},
        {{"--volume-to", flat},
         {{"volume_to.cut", 32.0 / 27},
          {"volume_to.fill", 32.0 / 27},
          {"volume_to.cut_area", 16.0 / 9},
          {"volume_to.plan_area", 4},
          {"volume_to.second_plan_area", 4}}},
        {{"--volume-to", flat, "--within", ring}, {{"volume_to.first_plan_area", 1}}},
        {{"--section=-1,1,3,1", "--volume", "1.5"},
         {{"sections.0.length", 4},
          {"sections.0.vertices", 3},
          {"sections.0.heights.1", 3},
          {"sections.0.gaps.1.0", 3},
          {"sections.0.areas.cut", 0.75}}},
        {{"--section", folder.File("line.txt"), "--volume-to", flat},
         {{"sections.1.ground_length", 2}, {"sections.1.second.heights.0", 1}}},
        {{"--section=0,1,2,1", "--cross-sections", "1,1", "--volume", "0"},
         {{"cross_sections.sections.1.station", 1},
          {"cross_sections.sections.1.areas.cut", 2.25},
          {"cross_sections.end_areas.cut", 2.25},
          {"cross_sections.exact.net", 2.75}}},
        {{"--height-at", "1,0.5", "--volume-to", flat},
         {{"heights.0.height", 1.5},
          {"heights.0.slope", 3},
          {"heights.0.aspect", 180},
          {"heights.0.nearest.number", 5},
          {"heights.0.nearest.distance", 0.5},
          {"heights.0.second.height", 1}}},
    };
    for (const auto& c : cases) {
        const QJsonObject measure = folder.Json(c.options);
        EXPECT_EQ(measure["unit"], QStringLiteral("data units"));
        for (const auto& [path, value] : c.figures) {
            EXPECT_NEAR(At(measure, path).toDouble(-1e9), value, 1e-12) << path;
        }
    }
    const QJsonObject beside = folder.Json({"--height-at", "9,9", "--units", "foot"});
    EXPECT_TRUE(At(beside, "heights.0.height").isNull());
    EXPECT_EQ(beside["unit"], QStringLiteral("foot"));
}

TEST(BatchProgram, MeasuresNothingBetweenSurveysWithoutCommonGround) {
    const Pyramid folder;
    const std::string far = folder.File("far.dat");
    const QJsonObject measure = folder.Json({"--volume-to", far});
    EXPECT_EQ(At(measure, "volume_to.plan_area").toDouble(-1), 0);
    EXPECT_EQ(At(measure, "volume_to.second_plan_area").toDouble(), 2);
    EXPECT_TRUE(measure["remarks"].toArray().contains(
        QStringLiteral("The two surveys have no ground in common.")));
    const Ended ended = folder.Measure(
        {"--volume-to", far, "--difference", folder.File("d.dxf"), "--difference-sheet",
         folder.File("d.pdf"), "--section=0,1,2,1", "--section-csv", folder.File("s.csv")});
    EXPECT_EQ(ended.exitCode, 5) << "two files are left out";
    EXPECT_NE(ended.error.find("d.dxf: there is no difference"), std::string::npos) << ended.error;
    EXPECT_NE(ended.error.find("d.pdf: there is no difference"), std::string::npos) << ended.error;
    EXPECT_FALSE(QFile::exists(QString::fromStdString(folder.File("d.dxf"))));
    EXPECT_NE(folder.Read("s.csv"), "");
}

TEST(BatchProgram, WritesSectionsAndDifferences) {
    const Pyramid folder;
    const std::string table = folder.File("s.csv");
    const std::string difference = folder.File("d.geojson");
    const Ended ended = folder.Measure(
        {"--volume-to", folder.File("flat.dat"), "--section=-1,1,3,1", "--cross-sections", "4,1",
         "--section-csv", table, "--difference", difference, "--content", "contours,triangles"});
    ASSERT_EQ(ended.exitCode, 0) << ended.error;
    EXPECT_EQ(folder.Read("s.csv"),
              "station,x,y,section,axis_station,survey,run,mark,on_line,line,height\n"
              "1,0,1,1,,1,1,edge,0,,0\n2,1,1,1,,1,1,corner,0,,3\n3,2,1,1,,1,1,edge,0,,0\n"
              "1,0,1,1,,2,1,edge,0,,1\n2,1,1,1,,2,1,edge,0,,1\n3,2,1,1,,2,1,edge,0,,1\n");
    EXPECT_TRUE(ended.output.contains(
        "volume to " + QByteArray::fromStdString(folder.File("flat.dat")) +
        ": cut 1.185, fill 1.185, net 0.0; plan area 4.0 (cut 1.778, fill 2.222)\n"))
        << ended.output.toStdString();
    double zeroLine = 0; // round the pyramid, where it is 1 high
    double rise = 0;     // of its sides over the plane
    for (const QJsonValue feature :
         QJsonDocument::fromJson(QByteArray::fromStdString(folder.Read("d.geojson")))
             .object()["features"]
             .toArray()) {
        const QJsonArray places = feature["geometry"]["coordinates"].toArray();
        if (feature["properties"]["kind"] == QStringLiteral("contour") &&
            feature["properties"]["elevation"].toDouble(-1) == 0) {
            for (int i = 1; i < places.size(); ++i) {
                zeroLine += std::abs(places[i][0].toDouble() - places[i - 1][0].toDouble()) +
                            std::abs(places[i][1].toDouble() - places[i - 1][1].toDouble());
            }
        } else if (feature["properties"]["kind"] == QStringLiteral("triangle")) {
            rise = std::max(rise, places[0][0][2].toDouble());
        }
    }
    EXPECT_NEAR(zeroLine, 16.0 / 3, 1e-12);
    EXPECT_EQ(rise, 1);
}

// Several sheets are pages of a PDF, but files otherwise.
TEST(BatchProgram, DrawsSectionsAndDifferences) {
    const Pyramid folder;
    const std::string flat = folder.File("flat.dat");
    const auto draw = [&](const char* name, const std::vector<std::string>& more) {
        std::vector<std::string> call{"--volume-to", flat, "--section-picture", folder.File(name)};
        call.insert(call.end(), more.begin(), more.end());
        const Ended ended = folder.Measure(call);
        EXPECT_EQ(ended.exitCode, 0) << ended.error;
        return ended.output.toStdString();
    };
    draw("one.svg", {"--section=-1,1,3,1", "--exaggeration", "0.5", "--title", "Ridge 7"});
    EXPECT_NE(folder.Read("one.svg").find("Ridge 7"), std::string::npos);
    draw("two.png", {"--section", folder.File("line.txt"), "--dpi", "30"});
    EXPECT_FALSE(QFile::exists(QString::fromStdString(folder.File("two.png"))));
    EXPECT_NE(QImage(QString::fromStdString(folder.File("two-1.png"))),
              QImage(QString::fromStdString(folder.File("two-2.png"))));
    draw("all.pdf", {"--section", "0,1,2,1", "--cross-sections", "1,1", "--paper", "A3"});
    EXPECT_EQ(CountOf(folder.Read("all.pdf"), "/Type /Page\n"), 2);
    const std::string said =
        draw("s.pdf", {"--section", "0,1,2,1", "--difference-sheet", folder.File("d.svg")});
    EXPECT_NE(said.find("wrote " + folder.File("d.svg")), std::string::npos);
    EXPECT_NE(folder.Read("d.svg").find("flat.dat"), std::string::npos);
}

} // namespace
} // namespace terravo

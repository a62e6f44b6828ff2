// The summary and the vector files of terravo-batch. Other files are in outputs.sh, what it refuses
// in refusals.sh.
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

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

} // namespace
} // namespace terravo

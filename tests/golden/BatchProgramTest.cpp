// terravo-batch as a user calls it: exit codes, sentences, and the bytes that it writes.
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

#include <csignal>
#include <unistd.h>

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

TEST(BatchProgram, WritesTheExchangeFilesByteByByte) {
    const test::TemporaryFolder folder;
    const Ended ended =
        Batch({DataFile("small.dat"), "--levels", "4", "--out", folder.Path(), "--quiet"});
    EXPECT_EQ(ended.exitCode, 0) << ended.error;
    EXPECT_EQ(ended.output, "");
    EXPECT_EQ(ended.error, "");
    EXPECT_EQ(folder.Read("livelli.txt"), ReadData("small.livelli.txt"));
    EXPECT_EQ(folder.Read("point_qrw.txt"), ReadData("small.point_qrw.txt"));
    EXPECT_EQ(folder.Read("triangles.qrz"), ReadData("small.triangles.qrz"));
    EXPECT_EQ(folder.Read("levels.qrz"), ReadData("small.levels.qrz"));
    EXPECT_EQ(QImage(QString::fromStdString(folder.File("view3d.png"))).size(), QSize(1200, 900));
    EXPECT_EQ(folder.Names().size(), 6U);
    EXPECT_EQ(QImage(QString::fromStdString(folder.File("map.png"))).size(), QSize(1200, 900));
}

TEST(BatchProgram, WritesTheSameSegmentsBesideAMapOfAreas) {
    const test::TemporaryFolder folder;
    const Ended ended = Batch({DataFile("small.dat"), "--levels", "4", "--mode", "areas", "--out",
                               folder.Path(), "--quiet"});
    EXPECT_EQ(ended.exitCode, 0) << ended.error;
    EXPECT_EQ(folder.Read("livelli.txt"), ReadData("small.livelli.txt"));
    EXPECT_EQ(folder.Read("levels.qrz"), ReadData("small.levels.qrz"));
    const QImage areas(QString::fromStdString(folder.File("map.png")));
    EXPECT_EQ(
        Batch({DataFile("small.dat"), "--levels", "4", "--map", folder.File("l.png")}).exitCode, 0);
    EXPECT_NE(areas, QImage(QString::fromStdString(folder.File("l.png"))));
}

TEST(BatchProgram, DrawsEveryKindOfAxonometricPicture) {
    const test::TemporaryFolder folder;
    // A grid in no particular order.
    const std::string grid = folder.Write("grid.dat", "2,1,5\n1,2,3\n1,1,4\n3,2,9\n2,2,6\n3,1,7\n");
    std::vector<QImage> pictures;
    const std::vector<std::vector<std::string>> calls{
        {},       {"--view3d-kind", "points"}, {"--surface"},    {"--theta", "40"},
        {"--bw"}, {"--alfa", "100"},           {"--rayx", "0.3"}};
    for (std::vector<std::string> call : calls) {
        call.insert(call.end(), {grid, "--quiet", "--view3d", folder.File("v.png")});
        const Ended ended = Batch(call);
        ASSERT_EQ(ended.exitCode, 0) << ended.error;
        const QImage picture(QString::fromStdString(folder.File("v.png")));
        EXPECT_FALSE(picture.isNull());
        for (const QImage& other : pictures) {
            EXPECT_NE(picture, other) << call[0];
        }
        pictures.push_back(picture);
    }
}

TEST(BatchProgram, ReadsItsOwnPointsBack) {
    const test::TemporaryFolder folder;
    const std::string mesh = ReadData("small.point_qrw.txt");
    const std::string points = mesh.substr(mesh.find(" 6 \r\n") + 5);
    const std::string path = folder.Write("back.dat", points);
    EXPECT_EQ(Batch({path, "--mesh", folder.File("mesh"), "--quiet"}).exitCode, 0);
    EXPECT_EQ(folder.Read("mesh"), mesh);
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
    EXPECT_EQ(summary["extents"].toObject()["x"].toArray(), (QJsonArray{0.5, 9.0}));
    EXPECT_EQ(summary["files"].toArray(), (QJsonArray{QString::fromStdString(map)}));
    for (const char* stage : {"read", "triangulate", "contour", "draw", "write", "total"}) {
        EXPECT_TRUE(summary["milliseconds"].toObject()[QLatin1String(stage)].isDouble()) << stage;
    }
    EXPECT_EQ(QImage(QString::fromStdString(map)).size(), QSize(320, 240));
}

int CountOf(const std::string& text, const std::string& part) {
    int count = 0;
    for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        ++count;
    }
    return count;
}

// The lines of the contours are as many as the segments; what the frame needs is in both maps.
TEST(BatchProgram, WritesMapsAndViewsAsVectorFiles) {
    const test::TemporaryFolder folder;
    const auto draw = [&](const char* levels) {
        const Ended ended = Batch({DataFile("small.dat"), "--levels", levels, "--summary", "json",
                                   "--map", folder.File("m.svg"), "--segments", folder.File("s"),
                                   "--view3d", folder.File("v.svg")});
        EXPECT_EQ(ended.exitCode, 0) << ended.error;
        const QJsonObject summary = QJsonDocument::fromJson(ended.output).object();
        EXPECT_EQ(summary["files"].toArray().size(), 3);
        return CountOf(folder.Read("m.svg"), "<polyline") - summary["segments"].toInt();
    };
    const int frameLines = draw("4");
    EXPECT_EQ(folder.Read("s"), ReadData("small.livelli.txt"));
    EXPECT_EQ(draw("7"), frameLines);
    const std::string map = folder.Read("m.svg");
    EXPECT_NE(map.find(">Contour map : small.dat</text>"), std::string::npos);
    EXPECT_NE(map.find("viewBox=\"0 0 1200 900\""), std::string::npos);
    // Six points, of which one repeats another and is drawn all the same.
    EXPECT_EQ(CountOf(folder.Read("v.svg"), "<circle"), 6);
}

TEST(BatchProgram, WritesPdfPagesThatHoldTheirTexts) {
    const test::TemporaryFolder folder;
    const Ended ended =
        Batch({DataFile("small.dat"), "--quiet", "--mode", "areas", "--paper", "a3", "--map",
               folder.File("m.pdf"), "--view3d", folder.File("v.PDF"), "--background", "black"});
    EXPECT_EQ(ended.exitCode, 0) << ended.error;
    EXPECT_TRUE(folder.Read("v.PDF").starts_with("%PDF-"));
    const auto run = [](const char* program, const QStringList& arguments) {
        QProcess process;
        process.start(QLatin1String(program), arguments);
        EXPECT_TRUE(process.waitForFinished()) << program;
        EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
        return process.readAllStandardOutput().toStdString();
    };
    const QString pdf = QString::fromStdString(folder.File("m.pdf"));
    const std::string text = run("pdftotext", {pdf, QStringLiteral("-")});
    EXPECT_NE(text.find("Contour map : small.dat"), std::string::npos) << text;
    const std::string info = run("pdfinfo", {pdf});
    EXPECT_NE(info.find("1191 x 842"), std::string::npos) << info;
    EXPECT_NE(info.find("Contour map : small.dat"), std::string::npos) << info;
    // Black to the edge of the picture, which is as high as the page inside its margins.
    run("pdftoppm", {QStringLiteral("-singlefile"), QStringLiteral("-png"), QStringLiteral("-r"),
                     QStringLiteral("25.4"), pdf, QString::fromStdString(folder.File("page"))});
    const QImage page(QString::fromStdString(folder.File("page.png")));
    EXPECT_EQ(page.pixelColor(210, 5), QColor(Qt::white));
    EXPECT_EQ(page.pixelColor(210, 285), QColor(Qt::black));
}

TEST(BatchProgram, DrawsTheSameMapEveryTimeAndAnotherWithAnotherLanguage) {
    const test::TemporaryFolder folder;
    const auto map = [&folder](std::vector<std::string> options) {
        options.insert(options.end(),
                       {DataFile("small.dat"), "--quiet", "--map", folder.File("m.png")});
        EXPECT_EQ(Batch(options).exitCode, 0);
        return folder.Read("m.png");
    };
    const std::string english = map({});
    EXPECT_EQ(map({"--language", "en"}), english);
    EXPECT_NE(map({"--language", "it"}), english);
    EXPECT_NE(map({"--decimal-comma"}), english);
}

TEST(BatchProgram, EndsBadPointFilesWithOne) {
    const test::TemporaryFolder folder;
    const auto sentence = [](const std::string& path) {
        const Ended ended = Batch({path, "--quiet"});
        EXPECT_EQ(ended.exitCode, 1) << path;
        return ended.error;
    };
    const std::string bad = folder.Write("bad.dat", "1,2,3\n4,five,6\n");
    EXPECT_EQ(sentence(bad),
              "terravo-batch: " + bad + ", line 2, field 2: \"five\" is not a number.\n");
    const std::string seven = folder.Write("seven.dat", "1 2 3\n4 5 6\n7\n");
    EXPECT_EQ(sentence(seven),
              "terravo-batch: " + seven + ", line 3: the file ends where a number is expected.\n");
    EXPECT_EQ(sentence(folder.File("none.dat")),
              "terravo-batch: " + folder.File("none.dat") + ": No such file or directory.\n");
    EXPECT_EQ(sentence(folder.Path()), "terravo-batch: " + folder.Path() + ": Is a directory.\n");
    if (geteuid() != 0) {
        const std::string locked = folder.Write("locked.dat", "1,2,3\n");
        std::filesystem::permissions(locked, std::filesystem::perms::none);
        EXPECT_EQ(sentence(locked), "terravo-batch: " + locked + ": Permission denied.\n");
    }
}

TEST(BatchProgram, EndsPointsWithoutTrianglesWithThree) {
    const test::TemporaryFolder folder;
    const struct {
        const char* points;
        const char* cause;
    } cases[] = {
        {"", "holds no points"},
        {"1,2,3\n", "1 point; three are needed"},
        {"1,2,3\n4,5,6\n", "2 points: all of them lie on one line"},
        {"1,1,3\n2,2,6\n5,5,9\n7,7,1\n", "4 points: all of them lie on one line"},
        {"0,0,1\n5,5,2\n9,1,3\n", "the first two points do not count as distinct"},
        {"5,5,1\n5,5,2\n9,1,3\n", "the first two points do not count as distinct"},
    };
    for (const auto& c : cases) {
        const Ended ended = Batch({folder.Write("p.dat", c.points), "--out", folder.Path()});
        EXPECT_EQ(ended.exitCode, 3) << c.points;
        EXPECT_NE(ended.error.find(c.cause), std::string::npos) << ended.error;
        EXPECT_EQ(folder.Names().size(), 1U) << "no output is left";
    }
}

TEST(BatchProgram, EndsWrongCallsWithTwo) {
    const test::TemporaryFolder folder;
    const std::string points = folder.Write("p.dat", "1,1,0\n9,1,5\n5,7,9\n");
    const std::vector<std::vector<std::string>> calls{
        {},
        {points, points},
        {points, "--nonsense"},
        {points, "--levels", "1"},
        {points, "--levels", "0"},
        {points, "--levels", "-3"},
        {points, "--levels", "1000000000"},
        {points, "--levels", "1e9"},
        {points, "--levels", "ten"},
        {points, "--size", "0x0"},
        {points, "--size", "100000x100000"},
        {points, "--size", "300"},
        {points, "--mode", "dots"},
        {points, "--summary", "xml"},
        {points, "--language", "xx"},
        {points, "--map", folder.File("map.gif")},
        {points, "--map", ""},
        {points, "--view3d", folder.File("v.gif")},
        {points, "--map", folder.File("m.pdf"), "--paper", "B7"},
        {points, "--map", folder.File("m.svg"), "--background", "grey"},
        {points, "--view3d", folder.File("v.png"), "--surface"},
        {points, "--view3d-kind", "cubes"},
        {points, "--theta", "360"},
        {points, "--alfa", "steep"},
        {points, "--rayx", "1001"},
        {points, "--segments", points},
        {points, "--segments", folder.File("a"), "--mesh", folder.File("a")},
    };
    for (const auto& call : calls) {
        const Ended ended = Batch(call);
        std::string text;
        for (const std::string& argument : call) {
            text += " " + argument;
        }
        EXPECT_EQ(ended.exitCode, 2) << text;
        EXPECT_TRUE(ended.error.starts_with("terravo-batch: ")) << text;
        EXPECT_EQ(std::count(ended.error.begin(), ended.error.end(), '\n'), 1) << text;
    }
    EXPECT_EQ(folder.Names().size(), 1U);
    EXPECT_EQ(folder.Read("p.dat"), "1,1,0\n9,1,5\n5,7,9\n");
}

TEST(BatchProgram, EndsOutputsThatCannotBeWrittenWithFour) {
    const test::TemporaryFolder folder;
    std::vector<std::string> outputs{folder.File("missing/map.png"), "/proc/map.png",
                                     "/proc/map.svg"};
    if (std::filesystem::exists("/dev/full")) {
        outputs.push_back("/dev/full");
    }
    for (const std::string& output : outputs) {
        const Ended ended = Batch({DataFile("small.dat"), "--map", output});
        EXPECT_EQ(ended.exitCode, 4) << output;
        EXPECT_NE(ended.error.find(output), std::string::npos) << ended.error;
    }
    EXPECT_EQ(Batch({DataFile("small.dat"), "--out", folder.File("missing")}).exitCode, 4);
    EXPECT_TRUE(folder.Names().empty());
}

TEST(BatchProgram, EndsNumericFailuresWithFive) {
    const test::TemporaryFolder folder;
    const std::string huge = folder.Write("huge.dat", "1e200,1e200,0\n-1e200,2e200,1\n"
                                                      "3e200,-1e200,2\n1e199,5e199,3\n");
    EXPECT_EQ(Batch({huge, "--quiet"}).exitCode, 5);
    const Ended narrow =
        Batch({DataFile("small.dat"), "--size", "20x20", "--map", folder.File("m.png")});
    EXPECT_EQ(narrow.exitCode, 5);
    EXPECT_NE(narrow.error.find("narrow"), std::string::npos) << narrow.error;
    EXPECT_FALSE(std::filesystem::exists(folder.File("m.png")));
}

TEST(BatchProgram, LeavesNothingBehindWhenItIsInterrupted) {
    const test::TemporaryFolder folder;
    std::string text;
    for (std::int64_t i = 0; i < 300000; ++i) {
        text += std::to_string(1 + i * 7919 % 100003) + "," +
                std::to_string(1 + i * 104729 % 99991) + "," +
                std::to_string(i * 7919 % 100003 / 1000) + "\n";
    }
    const QString points = QString::fromStdString(folder.Write("points.dat", text));
    std::filesystem::create_directory(folder.File("out"));
    QProcess process;
    // A shell that runs the tests in the background has its children ignore this signal.
    process.setChildProcessModifier([] { std::signal(SIGINT, SIG_DFL); });
    process.start(QStringLiteral(TERRAVO_BATCH_PROGRAM),
                  {points, QStringLiteral("--progress"), QStringLiteral("--levels"),
                   QStringLiteral("300"), QStringLiteral("--out"),
                   QString::fromStdString(folder.File("out"))});
    process.setReadChannel(QProcess::StandardError);
    ASSERT_TRUE(process.waitForReadyRead(60000));
    ASSERT_EQ(kill(static_cast<pid_t>(process.processId()), SIGINT), 0);
    ASSERT_TRUE(process.waitForFinished(60000));
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(process.exitCode(), 130);
    EXPECT_TRUE(process.readAllStandardError().contains("stopped; no file has been written"));
    EXPECT_TRUE(std::filesystem::is_empty(folder.File("out")));
}

TEST(BatchProgram, AnswersHelpAndVersion) {
    const Ended help = Batch({"--help"});
    EXPECT_EQ(help.exitCode, 0);
    EXPECT_TRUE(help.output.contains("--perimeter"));
    const Ended version = Batch({"--version"});
    EXPECT_EQ(version.exitCode, 0);
    EXPECT_TRUE(version.output.startsWith("terravo-batch "));
}

} // namespace
} // namespace terravo

#include "export/QrzWriter.h"

#include "export/MeshFile.h"
#include "support/FakeServices.h"
#include "support/Surveys.h"
#include "support/TemporaryFolder.h"
#include "survey/KeptTriangulation.h"
#include "util/NumberText.h"

#include <gtest/gtest.h>

#include <sstream>

namespace terravo {
namespace {

struct QrzTest : ::testing::Test {
    test::TemporaryFolder folder;
    RunState state;
    FakeClipboard clipboard;
    FakeMessages messages;
    FakeLog log;

    QrzTest() {
        state.workFolder = folder.Path();
        state.qrzExportPath = folder.File("out.qrz");
        state.lastLevelCount = 7;
        clipboard.text = "before";
    }

    std::string Levels(const std::string& segments) {
        static_cast<void>(folder.Write("livelli.txt", segments));
        QrzWriter::WriteQrzLevels(state, clipboard, log);
        return folder.Read("out.qrz");
    }
    std::string Triangles(const std::string& mesh) {
        static_cast<void>(folder.Write("point_qrw.txt", mesh));
        QrzWriter::WriteQrzTriangles(state, clipboard, messages, log);
        return folder.Read("out.qrz");
    }
    void ExpectNothingWritten() {
        EXPECT_FALSE(std::filesystem::exists(folder.File("out.qrz")));
        EXPECT_EQ(clipboard.text, "before");
        EXPECT_EQ(state.lastQrzExportPath, "");
    }
};

// Names of the layers and, for each entity, its kind and layer.
std::string Outline(const std::string& qrz) {
    std::istringstream lines(qrz);
    std::string line;
    std::string outline;
    const auto next = [&] {
        std::getline(lines, line);
        EXPECT_TRUE(line.ends_with('\r')) << line;
        line.pop_back();
    };
    while (lines.peek() != EOF) {
        next();
        if (line.ends_with(")Name Layer:")) {
            outline += line.substr(0, line.find(')') + 1);
            next();
            outline += line + " ";
        } else if (line == "Type Entity:") {
            next();
            outline += line;
            next();
            next();
            outline += "@" + line + " ";
        }
    }
    return outline;
}

const std::string kHeaderOf7 = "N.Layer -\r\n 7 \r\nN.Entity -\r\n 7 \r\nN.Block -\r\n 0\r\n"
                               "N.Styles Dim.-\r\n 0\r\n"
                               "----------------------------------------------\r\n";

TEST_F(QrzTest, WritesALayerForEachRunOfEqualLevel) {
    EXPECT_EQ(Outline(Levels("1 1 5\n2 2 5\n3 3 5\n4 4 5\n1 1 10\n2 2 10\n1 1 5\n9 9 5\n")),
              " 1)LL_0  2)LL_1  3)LL_2 LINE@LL_0 LINE@LL_0 LINE@LL_1 LINE@LL_2 ");
    EXPECT_EQ(clipboard.text, state.qrzExportPath);
    EXPECT_EQ(state.lastQrzExportPath, state.qrzExportPath);
    std::string many;
    for (int level = 1; level <= 11; ++level) {
        many += "1 1 " + std::to_string(level) + "\n2 2 0\n";
    }
    EXPECT_NE(Outline(Levels(many)).find(" 10)LL_9  11)LL_10 "), std::string::npos);
}

TEST_F(QrzTest, WritesTheHeaderAloneForNoSegments) {
    EXPECT_EQ(Levels(""), kHeaderOf7);
    EXPECT_EQ(clipboard.text, state.qrzExportPath);
}

TEST_F(QrzTest, WritesTheHeaderAloneAndStaysSilentWhenTheFirstLevelIsZero) {
    EXPECT_EQ(Levels("1 1 0\n2 2 0\n1 1 5\n2 2 5\n"), kHeaderOf7);
    EXPECT_EQ(clipboard.text, "before");
    EXPECT_EQ(state.lastQrzExportPath, "");
    // Zero further on is a level like any other.
    EXPECT_EQ(Outline(Levels("1 1 -1\n2 2 -1\n1 1 0\n2 2 0\n")),
              " 1)LL_0  2)LL_1 LINE@LL_0 LINE@LL_1 ");
}

TEST_F(QrzTest, EndsSilentlyOnAMissingOrMalformedSegmentFile) {
    QrzWriter::WriteQrzLevels(state, clipboard, log);
    ExpectNothingWritten();
    Levels("1 1 5\n2 2 5\n3 3\n");
    ExpectNothingWritten();
    Levels("1 1 5\n2 two 5\n");
    ExpectNothingWritten();
    EXPECT_EQ(log.lines.size(), 3U);
    EXPECT_TRUE(messages.boxes.empty());
}

TEST_F(QrzTest, WritesTrianglesFromTheMeshFile) {
    const std::string qrz = Triangles(" 1 \r\n 3 1 2 \r\n----\r\n 3 \r\n 1 1 -.5 \r\n"
                                      " 12.5 3.25 100 \r\n 123456789.12345 0 1E-07 \r\n");
    EXPECT_EQ(Outline(qrz), " 1)Lay_Point POLYLINE@Lay_Point ");
    EXPECT_NE(qrz.find(" 0\r\n 123456789.12345             0             1E-07 \r\n"
                       " 1             1            -.5 \r\n"
                       " 12.5          3.25          100 \r\nTexture:\r\n"),
              std::string::npos)
        << qrz;
    EXPECT_EQ(clipboard.text, state.qrzExportPath);
    EXPECT_TRUE(messages.boxes.empty());

    const std::string none = Triangles(" 0 \r\n----\r\n 0 \r\n");
    EXPECT_EQ(Outline(none), " 1)Lay_Point ");
    EXPECT_NE(none.find("N.Entity -\r\n 0 \r\n"), std::string::npos);
}

// The coordinate lines of all entities of a kind, in order.
std::string CoordinatesOf(const std::string& qrz, const std::string& kind) {
    std::istringstream lines(qrz);
    std::string line;
    std::string coordinates;
    bool inside = false;
    while (std::getline(lines, line)) {
        if (line == kind + "\r") {
            inside = true;
        } else if (line.starts_with("Texture:") || line.starts_with("-----")) {
            inside = false;
        } else if (inside && line.size() >= 33) {
            coordinates += line + "\n";
        }
    }
    return coordinates;
}

TEST_F(QrzTest, GivesBackExactlyTheTrianglesAndSegmentsOfTheExchangeFiles) {
    const PointSet points = test::HillySurvey(test::RandomPoints(200, 12), false);
    KeptTriangulation kept;
    const TriangleList& triangles = kept.For(points).triangles;
    WriteMeshFile(folder.File("point_qrw.txt"), points, triangles);
    QrzWriter::WriteQrzTriangles(state, clipboard, messages, log);
    std::string corners;
    for (Index t = 1; t <= triangles.count; ++t) {
        for (int j = 1; j <= 3; ++j) {
            const Index i = triangles.Vertex(j, t);
            NumberText::AppendPrintedLine(corners, points.x[i], points.y[i], points.z[i]);
        }
    }
    EXPECT_EQ(CoordinatesOf(folder.Read("out.qrz"), "POLYLINE"), corners);

    std::string segments;
    for (Index i = 2; i <= points.count; i += 2) {
        NumberText::AppendPrintedLine(segments, points.x[i - 1], points.y[i - 1], points.z[i]);
        NumberText::AppendPrintedLine(segments, points.x[i], points.y[i], points.z[i]);
    }
    EXPECT_EQ(CoordinatesOf(Levels(segments), "LINE"), segments);
}

TEST_F(QrzTest, TellsABadMeshFileInOneMessage) {
    const std::vector<std::string> meshes{"",
                                          " 1 \r\n 1 2 3 \r\n",
                                          " 1 \r\n 1 2 3 \r\n 3 \r\n 1 1 1 \r\n",
                                          " 1 \r\n 1 2 9 \r\n----\r\n 1 \r\n 1 1 1 \r\n",
                                          " -4 \r\n",
                                          " 9999999999 \r\n"};
    for (const std::string& mesh : meshes) {
        messages.boxes.clear();
        Triangles(mesh);
        ASSERT_EQ(messages.boxes.size(), 1U) << mesh;
        EXPECT_EQ(messages.boxes[0].text, "Error Point FILE QRZ..");
        ExpectNothingWritten();
    }
}

TEST_F(QrzTest, KeepsAnOldExportWhenTheNewOneCannotBeWritten) {
    const std::string good = Levels("1 1 5\n2 2 5\n");
    Levels("1 1 5\n2 2\n");
    EXPECT_EQ(folder.Read("out.qrz"), good);
    state.qrzExportPath = folder.File("missing/out.qrz");
    Triangles(" 0 \r\n----\r\n 0 \r\n");
    EXPECT_EQ(messages.boxes.size(), 1U);
    EXPECT_EQ(state.lastQrzExportPath, folder.File("out.qrz"));
}

} // namespace
} // namespace terravo

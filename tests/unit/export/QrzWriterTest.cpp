#include "export/QrzWriter.h"

#include "support/TemporaryFolder.h"
#include "util/AppError.h"

#include <gtest/gtest.h>

#include <sstream>

namespace terravo {
namespace {

struct QrzTest : ::testing::Test {
    test::TemporaryFolder folder;
    QrzWriter::Content content = QrzWriter::Content::Whole;

    std::string Levels(const std::string& segments) {
        content = QrzWriter::WriteQrzLevels(folder.Write("livelli.txt", segments), 7,
                                            folder.File("out.qrz"));
        return folder.Read("out.qrz");
    }
    std::string Triangles(const std::string& mesh) {
        QrzWriter::WriteQrzTriangles(folder.Write("point_qrw.txt", mesh), folder.File("out.qrz"));
        return folder.Read("out.qrz");
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
    std::string many;
    for (int level = 1; level <= 11; ++level) {
        many += "1 1 " + std::to_string(level) + "\n2 2 0\n";
    }
    EXPECT_NE(Outline(Levels(many)).find(" 10)LL_9  11)LL_10 "), std::string::npos);
}

TEST_F(QrzTest, WritesTheHeaderAloneForNoSegments) {
    EXPECT_EQ(Levels(""), kHeaderOf7);
}

TEST_F(QrzTest, WritesTheHeaderAloneWhenTheFirstLevelIsZero) {
    EXPECT_EQ(Levels("1 1 0\n2 2 0\n1 1 5\n2 2 5\n"), kHeaderOf7);
    EXPECT_EQ(content, QrzWriter::Content::HeaderOnly);
    QrzWriter::WriteQrzLevels(folder.Write("livelli.txt", "1 1 0\n2 2 0\n1 1 5\n2 2 5\n"), 7,
                              folder.File("out.qrz"), QrzWriter::ZeroLevelFor(RuleByInterval(5)));
    EXPECT_EQ(Outline(folder.Read("out.qrz")), " 1)LL_0  2)LL_1 LINE@LL_0 LINE@LL_1 ");
    // Zero further on is a level like any other.
    EXPECT_EQ(Outline(Levels("1 1 -1\n2 2 -1\n1 1 0\n2 2 0\n")),
              " 1)LL_0  2)LL_1 LINE@LL_0 LINE@LL_1 ");
}

TEST_F(QrzTest, WritesALayerForNoTriangles) {
    const std::string none = Triangles(" 0 \r\n----\r\n 0 \r\n");
    EXPECT_EQ(Outline(none), " 1)Lay_Point ");
    EXPECT_NE(none.find("N.Entity -\r\n 0 \r\n"), std::string::npos);
}

TEST_F(QrzTest, KeepsAnOldExportWhenAFileIsMissingOrMalformed) {
    EXPECT_THROW(QrzWriter::WriteQrzLevels(folder.File("none"), 7, folder.File("out.qrz")),
                 AppError);
    EXPECT_TRUE(folder.Names().empty());
    const std::string good = Levels("1 1 5\n2 2 5\n");
    for (const std::string segments : {"1 1 5\n2 2 5\n3 3\n", "1 1 5\n2 two 5\n", "1 1 5\n"}) {
        EXPECT_THROW(Levels(segments), AppError) << segments;
    }
    for (const std::string mesh :
         {"", " 1 \r\n 1 2 3 \r\n", " 1 \r\n 1 2 3 \r\n 3 \r\n 1 1 1 \r\n",
          " 1 \r\n 1 2 9 \r\n----\r\n 1 \r\n 1 1 1 \r\n", " -4 \r\n", " 9999999999 \r\n"}) {
        EXPECT_THROW(Triangles(mesh), AppError) << mesh;
    }
    EXPECT_EQ(folder.Read("out.qrz"), good);
}

} // namespace
} // namespace terravo

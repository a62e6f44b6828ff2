#include "survey/surface/CodeLines.h"

#include "support/LineTexts.h"
#include "survey/import/PointImport.h"
#include "survey/surface/LineFile.h"
#include "triangulation/TriangulatePoints.h"
#include "triangulation/constrained/VisibleSurface.h"

#include <gtest/gtest.h>

#include <sstream>

namespace terravo {
namespace {

// Points at (i, 0, 10 i) with codes divided by ",".
PointSet PointsWith(const std::string& codes) {
    PointSet points;
    std::istringstream words(codes);
    for (std::string code; std::getline(words, code, ',');) {
        const Index i = points.count + 1;
        points.Append(i, i % 2, 10.0 * i);
        points.labels.Append(std::to_string(i), code);
        points.labels.NoteLine(i, i + 1);
    }
    return points;
}

std::string TextOf(const std::vector<CodeCount>& codes) {
    std::string text;
    for (const CodeCount& count : codes) {
        text += count.code + (count.hasMarks ? "*" : "") + " " + std::to_string(count.points) +
                "/" + std::to_string(count.lines) + ", ";
    }
    return text;
}

TEST(CodeLines, FollowMarks) {
    const struct {
        const char* points;
        std::vector<std::string> codes;
        const char* lines;
        std::vector<std::string> remarks = {};
    } cases[] = {
        {"W,T,W,W", {"W"}, "2 W: 1,1,10 3,1,30 4,0,40\n"},
        {"W,W,K,K", {"W", "K"}, "2 W: 1,1,10 2,0,20\n4 K: 3,1,30 4,0,40\n"},
        {"W B,W,W b,W", {"W"}, "2 W: 1,1,10 2,0,20\n4 W: 3,1,30 4,0,40\n"},
        {"W,W end,W,W", {"W"}, "2 W: 1,1,10 2,0,20\n4 W: 3,1,30 4,0,40\n"},
        {"W.ST,W,W/Close", {"W"}, "2 W closed: 1,1,10 2,0,20 3,1,30\n"},
        {"W1,W2,W1,W2", {"W1", "W2"}, "2 W1: 1,1,10 3,1,30\n3 W2: 2,0,20 4,0,40\n"},
        {"W1,W2,W1,W2,X", {"W*"}, "2 W1: 1,1,10 3,1,30\n3 W2: 2,0,20 4,0,40\n"},
        {"W1,w1,W1", {"W1"}, "2 W1: 1,1,10 3,1,30\n"},
        {"old wall B,old wall,B,B",
         {"old wall", "B"},
         "2 old wall: 1,1,10 2,0,20\n4 B: 3,1,30 4,0,40\n"},
        {"W,T",
         {"W", "T"},
         "",
         {"codes, line 2: the line \"W\" is left out: it has one vertex.",
          "codes, line 3: the line \"T\" is left out: it has one vertex."}},
        {"W,W C",
         {"W"},
         "",
         {"codes, line 2: the line \"W\" is left out: a ring has three places at least."}},
        {"W,W", {"V", ""}, ""},
        {",,", {"*"}, ""},
    };
    for (const auto& [points, codes, lines, remarks] : cases) {
        SCOPED_TRACE(points);
        const CodeLineReading reading = LinesFromCodes(PointsWith(points), codes);
        EXPECT_EQ(test::TextOf(reading.lines), lines);
        EXPECT_EQ(reading.remarks, remarks);
        for (const SurfaceLine& line : reading.lines) {
            EXPECT_EQ(line.source, "codes");
        }
    }
}

TEST(CodeLines, AreCountedByCode) {
    EXPECT_EQ(TextOf(CodesOf(PointsWith("T,W B,W,,W E,W,W,T,K C,K"))), "W* 5/2, K* 2/0, T 2/1, ");
    EXPECT_EQ(TextOf(CodesOf(PointsWith(""))), "");
    PointSet bare;
    bare.Append(1, 2, 3);
    EXPECT_TRUE(CodesOf(bare).empty());
    EXPECT_TRUE(LinesFromCodes(bare, {"*"}).lines.empty());
}

std::string Sample(const char* name) {
    return TERRAVO_SAMPLES "/site/" + std::string(name);
}

std::vector<SpacePoint> InPlan(std::vector<SpacePoint> vertices) {
    for (SpacePoint& vertex : vertices) {
        vertex.z = 0;
    }
    return vertices;
}

// The same lines as in the files beside it, and a stray.
TEST(CodeLines, OfTheSampleSiteAreThoseOfItsFiles) {
    PointSet points;
    ASSERT_FALSE(ImportPoints(Sample("points.csv"), {}, BadRecords::Refuse, points).failure);
    EXPECT_EQ(TextOf(CodesOf(points)),
              "KERB* 7/1, FENCE* 6/1, WALLFOOT* 5/1, WALLTOP* 5/1, HOUSE* 4/1, BENCHMARK 1/0, ");
    const CodeLineReading codes = LinesFromCodes(points, {"WALL*", "FENCE", "HOUSE"});
    const LineReading wall = ReadLineFile(Sample("wall.csv"), LineClosing::AsTheyAre);
    const LineReading fence = ReadLineFile(Sample("boundary.txt"), LineClosing::Always);
    const LineReading house = ReadLineFile(Sample("house.txt"), LineClosing::Always);
    EXPECT_TRUE(codes.remarks.empty() && fence.remarks.empty() && house.remarks.empty());
    ASSERT_EQ(codes.lines.size(), 4U);
    for (std::size_t i = 0; i < 2; ++i) {
        EXPECT_EQ(codes.lines[i].line.vertices, wall.lines.at(i).line.vertices);
        const SpaceLine& ring = (i == 0 ? fence : house).lines.at(0).line;
        EXPECT_EQ(InPlan(codes.lines[2 + i].line.vertices), InPlan(ring.vertices));
        EXPECT_TRUE(codes.lines[2 + i].line.closed && ring.closed);
    }
    Array1<PlanPoint> plan;
    for (Index i = 1; i <= points.count; ++i) {
        plan.Append({points.x[i], points.y[i]});
    }
    const LongestSideProposal proposal =
        ProposeLongestSide(plan, TriangulatePoints(plan).triangles);
    EXPECT_EQ(proposal.strays, std::vector<Index>{points.count});
    EXPECT_LT(proposal.length, 50);
}

} // namespace
} // namespace terravo

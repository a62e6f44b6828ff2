#include "app/session/ContourMap.h"

#include "support/FakeServices.h"
#include "support/RecordingSurface.h"
#include "support/Surveys.h"
#include "support/TemporaryFolder.h"
#include "survey/PointFile.h"

#include <gtest/gtest.h>

namespace terravo {
namespace {

struct ContourMapTest : ::testing::Test {
    test::TemporaryFolder folder;
    RunState state;
    FakeMessages messages;
    FakeClock clock;
    ContourMap map{state, messages, clock};
    RecordingSurface surface{800, 600};
    std::vector<bool> shown;

    ContourMapTest() {
        state.workFolder = folder.Path();
        state.textTable.resize(37);
        for (std::size_t i = 0; i < 37; ++i) {
            state.textTable[i] = "text" + std::to_string(i);
        }
        map.showResultViews = [this](bool visible) { shown.push_back(visible); };
    }

    void Load(PointSet points) {
        map.points = std::move(points);
        map.PointsChanged();
    }
};

TEST_F(ContourMapTest, DrawsTheFrameThenTheLinesAndRewritesTheSegmentFile) {
    Load(test::HillySurvey(test::RandomPoints(50, 2), false));
    std::ofstream(folder.File("livelli.txt")) << "old";
    const MapReport report = map.DrawContourMap(surface);
    EXPECT_TRUE(report.frameDrawn);
    EXPECT_GT(report.segments, 50);
    EXPECT_EQ(state.lastDrawError, "");
    EXPECT_TRUE(messages.boxes.empty());
    const std::string bytes = folder.Read("livelli.txt");
    EXPECT_EQ(std::count(bytes.begin(), bytes.end(), '\n'), 2 * report.segments);
    const auto texts = surface.UserCallsOf(UserCall::Kind::Text);
    ASSERT_FALSE(texts.empty());
    EXPECT_EQ(texts.back().text, "text23 : hills.dat") << "no labels unless asked for";

    map.options.showLevelValues = true;
    map.DrawContourMap(surface);
    EXPECT_EQ(surface.UserCallsOf(UserCall::Kind::Text).back().fontName, "Courier New");
}

TEST_F(ContourMapTest, KeepsTheTriangulationUntilThePointsChange) {
    Load(test::HillySurvey(test::RandomPoints(50, 2), false));
    map.DrawContourMap(surface);
    const TriangleList* kept = &map.Triangulation().triangles;
    const Index count = kept->count;
    map.points.x[1] += 500; // unnoticed: nobody said so
    map.DrawContourMap(surface);
    EXPECT_EQ(map.Triangulation().triangles.count, count);
    Load(test::HillySurvey(test::RandomPoints(20, 3), false));
    EXPECT_NE(map.Triangulation().triangles.count, count);
}

TEST_F(ContourMapTest, ShowsAndKeepsTheErrorOfADrawing) {
    Load(test::MakeSurvey({{1, 1, 0}, {2, 2, 1}, {3, 3, 2}}));
    map.DrawContourMap(surface);
    EXPECT_EQ(state.lastDrawError, "text25 IERR = 225\ntext26");
    ASSERT_EQ(messages.boxes.size(), 1U);
    EXPECT_EQ(messages.boxes[0].title, "Disegna/Livelli");
    Load(test::HillySurvey(test::RandomPoints(9, 2), false));
    map.DrawContourMap(surface);
    EXPECT_EQ(state.lastDrawError, "") << "cleared by the next success";
}

TEST_F(ContourMapTest, ReportsASegmentFileThatCannotBeWritten) {
    state.workFolder = folder.File("missing/");
    Load(test::HillySurvey(test::RandomPoints(9, 2), false));
    map.DrawContourMap(surface);
    EXPECT_EQ(state.lastDrawError, folder.File("missing/livelli.txt: No such file or directory"));
}

TEST_F(ContourMapTest, AnEmptyPointSetHasNoFrame) {
    EXPECT_FALSE(map.DrawContourMap(surface).frameDrawn);
    ASSERT_FALSE(messages.boxes.empty());
    EXPECT_EQ(messages.boxes[0], (FakeMessages::Box{"Error Scale X.", "text33text30"}));
    EXPECT_EQ(shown, std::vector<bool>{false});
}

TEST_F(ContourMapTest, WritesTheMeshFileAndKeepsTheOldOneWithoutATriangulation) {
    Load(test::MakeSurvey({{1, 1, -0.5}, {5, 1, 1}, {1, 5, 2e20}}));
    EXPECT_TRUE(map.TriangulateAndShow3D());
    const std::string bytes = " 1 \r\n"
                              " 1             2             3 \r\n"
                              "----\r\n"
                              " 3 \r\n"
                              " 1             1            -.5 \r\n"
                              " 5             1             1 \r\n"
                              " 1             5             2E+20 \r\n";
    EXPECT_EQ(folder.Read("point_qrw.txt"), bytes);

    Load(test::MakeSurvey({{1, 1, 0}, {2, 2, 1}, {3, 3, 2}}));
    EXPECT_FALSE(map.TriangulateAndShow3D());
    ASSERT_EQ(messages.boxes.size(), 1U);
    EXPECT_EQ(messages.boxes[0], (FakeMessages::Box{"text25 IERR = 225\r\ntext26", " Prova"}));
    EXPECT_EQ(folder.Read("point_qrw.txt"), bytes);
}

} // namespace
} // namespace terravo

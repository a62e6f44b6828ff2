#include "app/session/Session.h"

#include "support/FakeRun.h"
#include "support/FakeView.h"

#include <gtest/gtest.h>

namespace terravo {
namespace {

std::string Data(const std::string& name) {
    return std::string(TERRAVO_TEST_DATA_DIR) + "/gis/" + name;
}

struct GisSessionTest : FakeRun, ::testing::Test {
    FakeView view;
    Session session{state, Services()};

    GisSessionTest() {
        state.workFolder = folder.Path();
        session.SetView(view);
    }
    ~GisSessionTest() override { EXPECT_EQ(view.working, 0) << "every command has ended"; }
};

TEST_F(GisSessionTest, AsksWhatIsReadAndRemembersItForARecentFile) {
    session.LoadNamedFile(Data("drawing.dxf"));
    ASSERT_EQ(gis.begins.size(), 1U);
    EXPECT_EQ(gis.begins[0].layers, std::vector<std::string>{"POINTS"});
    EXPECT_EQ(session.Points().count, 0) << "cancelled";
    EXPECT_TRUE(session.Recent().Paths().empty());
    EXPECT_TRUE(messages.boxes.empty());

    gis.answer = GisPlan();
    gis.answer->layers = {"BREAK", "TIN"};
    session.LoadNamedFile(Data("drawing.dxf"));
    EXPECT_EQ(session.Points().count, 4);
    EXPECT_EQ(session.Points().sourceName, "drawing.dxf");
    EXPECT_EQ(session.Points().labels.Code(1), "BREAK");
    EXPECT_EQ(view.title3D, "Delaunay 2D : drawing.dxf, 2");
    ASSERT_EQ(session.Recent().Paths(), std::vector<std::string>{Data("drawing.dxf")});

    session.OpenRecentFile(1);
    EXPECT_EQ(gis.begins.size(), 2U) << "read as it was chosen";
    session.LoadNamedFile(Data("drawing.dxf"));
    EXPECT_EQ(gis.begins.at(2), *gis.answer) << "the question begins with it";
}

TEST_F(GisSessionTest, LeavesEverythingAsItWasWhenNothingCanBeRead) {
    gis.answer = GisPlan();
    session.LoadNamedFile(Data("survey.geojson"));
    EXPECT_EQ(session.Points().count, 8);
    session.LoadNamedFile(Data("picture.tif"));
    EXPECT_EQ(gis.begins.size(), 1U) << "there is nothing to choose";
    session.LoadNamedFile(folder.Write("half.geojson", "{\"type\": \"FeatureCollection\","));
    gis.answer->toEpsg = 4326; // no projected system
    session.LoadNamedFile(Data("degrees.kml"));
    ASSERT_EQ(messages.boxes.size(), 3U);
    EXPECT_NE(messages.boxes[0].text.find("this is a picture"), std::string::npos);
    EXPECT_NE(messages.boxes[2].text.find("EPSG:4326 is no projected system"), std::string::npos);
    EXPECT_EQ(session.Points().sourceName, "survey.geojson");
    EXPECT_EQ(session.Recent().Paths().size(), 1U);
}

} // namespace
} // namespace terravo

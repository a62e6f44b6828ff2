#include "app/session/ContourMap.h"

#include "support/FakeServices.h"
#include "support/RecordingSurface.h"
#include "support/Surveys.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace terravo {
namespace {

struct ContourMapTest : ::testing::Test {
    RunState state;
    FakeMessages messages;
    FakeClock clock;
    Survey survey;
    ContourMap map{survey, state, messages, clock};
    MapOptions options;
    RecordingSurface surface{800, 600};
};

TEST_F(ContourMapTest, DrawsTheFrameThenTheLinesAndHandsThemOn) {
    survey.Replace(test::HillySurvey(test::RandomPoints(50, 2), false));
    Index levels = 0;
    std::int64_t segments = 0;
    const MapReport report =
        map.Draw(surface, options, StopToken(),
                 [&](double /*level*/, const std::vector<LevelPiece>& pieces) {
                     ++levels;
                     segments += std::count_if(pieces.begin(), pieces.end(),
                                               [](const LevelPiece& p) { return p.isSegment; });
                 });
    EXPECT_FALSE(report.frameFailure);
    EXPECT_EQ(report.contours.error, "");
    EXPECT_EQ(levels, 10);
    EXPECT_GT(segments, 50);
    EXPECT_EQ(report.contours.segments, segments);
    const auto texts = surface.UserCallsOf(UserCall::Kind::Text);
    ASSERT_FALSE(texts.empty());
    EXPECT_EQ(texts.back().text, "Contour map : hills.dat") << "no labels unless asked for";

    options.showLevelValues = true;
    map.Draw(surface, options);
    EXPECT_EQ(surface.UserCallsOf(UserCall::Kind::Text).back().fontName, "Courier New");
}

TEST_F(ContourMapTest, ReturnsTheErrorOfADrawing) {
    survey.Replace(test::MakeSurvey({{1, 1, 0}, {2, 2, 1}, {3, 3, 2}}));
    EXPECT_EQ(map.Draw(surface, options).contours.error,
              state.texts[Text::NoTriangulation] + " IERR = 225\n" +
                  state.texts[Text::NoTriangulationAdvice]);
    survey.Replace(test::HillySurvey(test::RandomPoints(9, 2), false));
    const MapReport failed = map.Draw(surface, options, StopToken(), [](double, const auto&) {
        throw AppError(ErrorNumber::kDeviceIo, "here", "the disk is full");
    });
    EXPECT_EQ(failed.contours.error, "the disk is full");
    EXPECT_EQ(failed.contours.errorNumber, ErrorNumber::kDeviceIo);
    EXPECT_TRUE(messages.boxes.empty()) << "whoever asked for the drawing tells";
}

TEST_F(ContourMapTest, AnEmptyPointSetHasNoFrame) {
    EXPECT_EQ(map.Draw(surface, options).frameFailure,
              (Message{"Error Scale X.", "Error in: scale of the axes"}));
}

} // namespace
} // namespace terravo

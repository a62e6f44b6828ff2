#include "app/session/ContourMap.h"

#include "plot2d/ColourScale.h"
#include "support/FakeServices.h"
#include "support/RecordingSurface.h"
#include "support/Surveys.h"

#include <gtest/gtest.h>

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

TEST_F(ContourMapTest, FillsTheSurfaceBelowTheFirstLevelOfAnIntervalInTheLowestColour) {
    survey.Replace(test::MakeSurvey({{1, 1, 0}, {9, 1, 4}, {5, 9, 10}}));
    options.mode = MapMode::Areas;
    const auto coloursBy = [this](const LevelRule& rule) {
        surface.Forget();
        options.levels = rule;
        EXPECT_EQ(map.Draw(surface, options).contours.error, "");
        std::vector<Colour> colours;
        for (const UserCall& call : surface.UserCallsOf(UserCall::Kind::Polygons)) {
            colours.push_back(*call.tools.brush);
        }
        return colours;
    };
    const std::vector<Colour> palette = ColourScale::MakePalette(256);
    EXPECT_EQ(coloursBy(RuleByInterval(5)), (std::vector{palette[0], palette[128]}));
    EXPECT_EQ(coloursBy(RuleByList({2, 5})), (std::vector{palette[0], palette[51], palette[128]}));
}

} // namespace
} // namespace terravo

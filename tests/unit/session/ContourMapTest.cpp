#include "app/session/ContourMap.h"

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

} // namespace
} // namespace terravo

#include "survey/Survey.h"

#include "support/Surveys.h"

#include <gtest/gtest.h>

namespace terravo {
namespace {

TEST(Survey, KeepsItsTriangulationUntilThePointsChange) {
    Survey survey(test::HillySurvey(test::RandomPoints(50, 2), false));
    const TriangleList* made = &survey.Triangulation().triangles;
    const Index count = made->count;
    EXPECT_EQ(&survey.Triangulation().triangles, made);
    const std::uint64_t before = survey.Version();
    survey.Replace(test::HillySurvey(test::RandomPoints(20, 3), false));
    EXPECT_NE(survey.Version(), before);
    EXPECT_NE(survey.Triangulation().triangles.count, count);
}

TEST(Survey, HandsItsPointsOutToBeFilledAgain) {
    Survey survey(test::HillySurvey(test::RandomPoints(50, 2), false));
    survey.RememberFolder("/here/");
    survey.Triangulation();
    PointSet points = survey.Take();
    EXPECT_EQ(points.count, 50);
    EXPECT_EQ(survey.Points().count, 0);
    EXPECT_EQ(survey.Points().sourceFolder, "/here/");
    EXPECT_EQ(survey.Triangulation().triangles.count, 0) << "nothing is left of what they made";
    survey.Replace(std::move(points));
    EXPECT_GT(survey.Triangulation().triangles.count, 0);
}

} // namespace
} // namespace terravo

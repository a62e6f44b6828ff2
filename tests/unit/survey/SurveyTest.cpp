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

TEST(Survey, LeavesExcludedPointsOutAndTakesThemBack) {
    PointSet points = test::HillySurvey(test::RandomPoints(50, 2), false);
    points.Append(1e6, 1e6, 9);
    for (Index i = 1; i <= points.count; ++i) {
        points.labels.Append("P" + std::to_string(i), i == 51 ? "TREE" : "");
        points.labels.NoteLine(i, 10 + i + (i > 30 ? 5 : 0));
    }
    const PointSet asRead = points;
    Survey survey(std::move(points));
    const Index triangles = survey.Triangulation().triangles.count;
    const std::uint64_t before = survey.Version();

    EXPECT_TRUE(survey.SetExcluded({51, 7}, true));
    EXPECT_NE(survey.Version(), before);
    EXPECT_EQ(survey.Points().count, 49);
    EXPECT_EQ(survey.AllPoints().count, 51);
    EXPECT_LT(survey.Points().extentX.max, 1e6);
    EXPECT_LT(survey.Triangulation().triangles.count, triangles);
    for (Index i = 1; i <= 49; ++i) {
        const Index number = survey.NumberAmongAll(i);
        EXPECT_EQ(number, i < 7 ? i : i + 1);
        EXPECT_EQ(survey.Points().x[i], asRead.x[number]);
        EXPECT_EQ(survey.Points().labels.Name(i), asRead.labels.Name(number));
        EXPECT_EQ(survey.Points().labels.Line(i), asRead.labels.Line(number));
    }
    EXPECT_EQ(survey.ExcludedPoints(), (std::vector<Index>{7, 51}));
    EXPECT_FALSE(survey.SetExcluded({7}, true)) << "nothing changes";

    EXPECT_TRUE(survey.SetExcluded({7}, false));
    EXPECT_FALSE(survey.IsExcluded(7));
    EXPECT_TRUE(survey.IsExcluded(51));
    EXPECT_TRUE(survey.SetExcluded({51, 1}, false));
    EXPECT_EQ(survey.Points().x, asRead.x);
    EXPECT_EQ(survey.Points().extentX, asRead.extentX);
    EXPECT_EQ(survey.Points().labels.Code(51), "TREE");
    EXPECT_EQ(survey.Triangulation().triangles.count, triangles);

    survey.SetExcluded({1}, true);
    survey.Replace(test::HillySurvey(test::RandomPoints(20, 3), false));
    EXPECT_TRUE(survey.ExcludedPoints().empty()) << "another file";
}

} // namespace
} // namespace terravo

#include "support/Surveys.h"
#include "survey/SurfaceHeight.h"
#include "survey/Survey.h"
#include "survey/check/SurfaceFindings.h"
#include "survey/surface/SurfacePick.h"
#include "survey/surface/VerifySurface.h"
#include "triangulation/HullRings.h"

#include <gtest/gtest.h>

#include <cmath>

namespace terravo {
namespace {

SharedLine Line(std::vector<SpacePoint> vertices, bool closed = false, std::string name = {}) {
    return std::make_shared<const SurfaceLine>(
        SurfaceLine{{std::move(vertices), closed, std::move(name)}, "lines.txt", 3});
}

SpacePoint At(double x, double y, double z = kNoHeight) {
    return {x, y, z};
}

// 400 points in a square of 1000 m.
struct SurveySurfaceTest : ::testing::Test {
    Survey survey{test::HillySurvey(test::RandomPoints(400, 5), false)};
    SurfacePlan plan;

    SurveySurfaceTest() {
        const PointSet& points = survey.Points();
        low = {points.extentX.min, points.extentY.min};
        width = points.extentX.max - low.x;
        height = points.extentY.max - low.y;
    }
    PlanPoint low;
    double width = 0;
    double height = 0;

    [[nodiscard]] SpacePoint Part(double x, double y, double z = kNoHeight) const {
        return At(low.x + x * width, low.y + y * height, z);
    }
    [[nodiscard]] std::optional<double> HeightAt(double x, double y) const {
        const ShownSurface shown = survey.Surface();
        Index near = 1;
        return SurfaceHeight(shown.points, shown.triangles, PlanOf(Part(x, y)), near);
    }
    void ExpectSound() const { EXPECT_EQ(VerifySurface(survey), std::nullopt); }
};

TEST_F(SurveySurfaceTest, IsTheTriangulationItselfWithoutConstraints) {
    const ShownSurface shown = survey.Surface();
    EXPECT_EQ(&shown.triangles, &survey.Triangulation().triangles);
    EXPECT_EQ(&shown.points, &survey.Points());
    EXPECT_EQ(shown.SurveyedPoints(), 400);
    ExpectSound();
}

TEST_F(SurveySurfaceTest, KeepsTheTriangulationWhenOnlyHeightsOrLinesChange) {
    const TriangleList* made = &survey.Triangulation().triangles;
    const double before = survey.Points().z[7];
    plan.heights = {{7, 500}};
    EXPECT_TRUE(survey.SetPlan(plan));
    EXPECT_FALSE(survey.SetPlan(plan)) << "nothing changes";
    EXPECT_EQ(survey.Points().z[7], 500);
    EXPECT_EQ(survey.Points().extentZ.max, 500);
    EXPECT_EQ(survey.AllPoints().z[7], before);
    EXPECT_NE(survey.KnownTriangulation(), nullptr);

    plan.excluded = {3};
    survey.SetPlan(plan);
    EXPECT_EQ(survey.KnownTriangulation(), nullptr);
    EXPECT_EQ(survey.Points().z[6], 500) << "the same point, numbered without the excluded one";
    plan = {};
    survey.SetPlan(plan);
    EXPECT_EQ(survey.Points().z[7], before);
    EXPECT_EQ(&survey.Triangulation().triangles, made);
}

TEST_F(SurveySurfaceTest, RingsHideWhatLiesOutsideAndChangeNothingInside) {
    const std::vector<std::pair<double, double>> inside{{0.3, 0.3}, {0.35, 0.7}, {0.7, 0.25}};
    std::vector<double> before;
    for (const auto& [x, y] : inside) {
        before.push_back(*HeightAt(x, y));
    }
    plan.boundary = {Line({Part(0.2, 0.2), Part(0.8, 0.2), Part(0.8, 0.4), Part(0.4, 0.4),
                           Part(0.4, 0.8), Part(0.2, 0.8)},
                          true)};
    plan.holes = {Line({Part(0.5, 0.25), Part(0.6, 0.25), Part(0.6, 0.35), Part(0.5, 0.35)}, true)};
    survey.SetPlan(plan);
    const ShownSurface shown = survey.Surface();
    ASSERT_NE(shown.shaped, nullptr);
    const SurfaceFigures figures = FiguresOf(*shown.shaped);
    EXPECT_NEAR(figures.planArea, (0.6 * 0.2 + 0.2 * 0.4 - 0.01) * width * height,
                1e-9 * width * height);
    EXPECT_EQ(figures.rings, 2);
    EXPECT_GT(figures.hiddenTriangles, 0);
    EXPECT_EQ(shown.points.count, 400 + static_cast<Index>(shown.shaped->all.added.size()));
    for (std::size_t i = 0; i < inside.size(); ++i) {
        EXPECT_NEAR(*HeightAt(inside[i].first, inside[i].second), before[i], 1e-9);
    }
    EXPECT_EQ(HeightAt(0.55, 0.3), std::nullopt) << "in the hole";
    EXPECT_EQ(HeightAt(0.6, 0.6), std::nullopt) << "in the notch";
    ExpectSound();
}

TEST_F(SurveySurfaceTest, BreaklinesAreClippedTracedAndToldOf) {
    plan.boundary = {Line({Part(0.1, 0.1), Part(0.9, 0.1), Part(0.9, 0.9), Part(0.1, 0.9)}, true)};
    plan.breaklines = {Line({Part(0, 0.5, 200), Part(1, 0.52, 200)}, false, "WALL"),
                       Line({Part(0.5, 0.2, 90), Part(0.5, 0.8, 90)}, false, "BRIDGE"),
                       Line({Part(0.2, 0.3, 90), Part(0.2, 0.3, 90)})};
    plan.holes = {Line({Part(3, 3), Part(4, 3), Part(3, 4)}, true, "HOLE")};
    survey.SetPlan(plan);
    const ShownSurface shown = survey.Surface();
    const std::vector<VisibleCourse> courses = VisibleCourses(*shown.shaped, LineRole::Breakline);
    ASSERT_EQ(courses.size(), 1U);
    EXPECT_EQ(courses[0].number, 0U);
    EXPECT_NEAR(shown.points.x[courses[0].points.front()], Part(0.1, 0).x, 1e-6);
    EXPECT_NEAR(shown.points.x[courses[0].points.back()], Part(0.9, 0).x, 1e-6);
    for (const Index point : courses[0].points) {
        EXPECT_NEAR(shown.points.z[point], 200, 1e-9);
    }
    std::vector<std::string> sentences;
    for (const Finding& finding : FindingsOf(*shown.shaped, plan, survey.Points())) {
        sentences.push_back(SentenceOf(finding, {}, TextCatalogue()));
    }
    const auto says = [&](const std::string& begin) {
        return std::any_of(sentences.begin(), sentences.end(), [&](const std::string& sentence) {
            return sentence.rfind(begin, 0) == 0;
        });
    };
    EXPECT_TRUE(says("The line BRIDGE (lines.txt, 3) is left out: it crosses the line WALL"));
    EXPECT_TRUE(says("The line 3 (lines.txt, 3) is left out: it has too few"));
    EXPECT_TRUE(says("Part of the line WALL"));
    EXPECT_TRUE(says("The line HOLE (lines.txt, 3) lies where the surface is hidden"));
    EXPECT_EQ(LostLines(*shown.shaped, plan, survey.Points()).size(), 3U);
    ExpectSound();

    plan.crossings.earlierWins = true;
    survey.SetPlan(plan);
    EXPECT_EQ(VisibleCourses(*survey.Surface().shaped, LineRole::Breakline).size(), 2U);
    ExpectSound();
}

TEST_F(SurveySurfaceTest, AFlippedSideIsHeldUntilItIsTakenBack) {
    SurfacePick pick(survey);
    const std::optional<PickedPoint> point =
        pick.PointAt({survey.Points().x[9] + 0.01, survey.Points().y[9]}, 0.1);
    ASSERT_TRUE(point);
    EXPECT_EQ(point->number, 9);
    int flipped = 0;
    for (double x = 0.3; x < 0.7; x += 0.05) {
        const PlanPoint place = PlanOf(Part(x, 0.5));
        const std::optional<PickedSide> side = pick.SideAt(place);
        ASSERT_TRUE(side);
        const std::optional<HeldSide> other = side->flipped;
        if (!other) {
            continue;
        }
        ++flipped;
        plan.held = {*other};
        survey.SetPlan(plan);
        const PlanPoint middle{(other->from.x + other->to.x) / 2,
                               (other->from.y + other->to.y) / 2};
        const std::optional<PickedSide> now = pick.SideAt(middle);
        ASSERT_TRUE(now);
        EXPECT_TRUE(now->isConstrained);
        EXPECT_EQ(now->flipped, std::nullopt) << "it is held";
        ExpectSound();
        survey.SetPlan({});
    }
    EXPECT_GT(flipped, 2);
}

TEST_F(SurveySurfaceTest, TheLongestSideMayHideEverything) {
    plan.longestSide = 1e-3;
    survey.SetPlan(plan);
    EXPECT_EQ(survey.Surface().triangles.count, 0);
    EXPECT_EQ(FiguresOf(*survey.Surface().shaped).rings, 0);
    plan.longestSide = 1e9;
    survey.SetPlan(plan);
    EXPECT_EQ(survey.Surface().triangles.count, survey.Triangulation().triangles.count);
}

} // namespace
} // namespace terravo

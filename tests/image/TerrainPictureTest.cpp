#include "view3d/gl/TerrainPicture.h"

#include "app/session/TerrainMaker.h"
#include "support/Surveys.h"
#include "survey/Survey.h"

#include <gtest/gtest.h>

namespace terravo {
namespace {

// Without a window: the same bytes twice, and tiles that fit together.
TEST(TerrainPictureTest, IsTheSameTwiceAndInTiles) {
    const OffscreenGl graphics;
    const Survey survey(
        test::HillySurvey(test::Moved(test::RandomPoints(3000, 4), 5e5, 4.8e6, 1), false));
    const TerrainContent content = MakeTerrainContent(survey.Surface(), {ContourSet(), {}});
    TerrainRenderer renderer;
    renderer.Load(content);
    renderer.LoadSides(SidesOf(survey.Surface().triangles));
    TerrainPlan plan;
    plan.triangles = plan.points = true;
    TerrainCamera camera;
    constexpr int kWidth = 1300; // drawn at twice the size: more than one tile
    constexpr int kHeight = 500;
    camera.SetSize(kWidth, kHeight);
    camera.SetReach(content.frame.reach);
    camera.Fit();
    const TerrainShot shot{plan, camera, kWidth, kHeight, 1, false, SpacePoint{0, 0, 0}};
    TerrainPixels first = DrawTerrainPicture(renderer, shot);
    EXPECT_EQ(first.bytes, DrawTerrainPicture(renderer, shot).bytes);
    // Of the seam between the tiles no column differs more from its neighbour than others do.
    const auto differenceAt = [&](int x) {
        int sum = 0;
        for (int y = 0; y < kHeight; ++y) {
            sum += std::abs(first.At(x, y)[1] - first.At(x + 1, y)[1]);
        }
        return sum;
    };
    int most = 0;
    for (int x = 900; x < 1000; ++x) {
        most = std::max(most, differenceAt(x));
    }
    EXPECT_LE(differenceAt(1023), most * 3 / 2);
    // The mark is red and in the middle of the terrain.
    const auto at = camera.Project({0, 0, 0});
    const std::uint8_t* pixel = first.At(static_cast<int>(at->x), static_cast<int>(at->y));
    EXPECT_GT(pixel[0], 200);
    EXPECT_LT(pixel[1], 60);
}

// Where lines would lie nearer than pixels can tell they are left out: the ground keeps its colour.
TEST(TerrainPictureTest, DenseContoursLeaveTheGroundInSight) {
    const OffscreenGl graphics;
    const Survey survey(test::HillySurvey(test::RandomPoints(3000, 4), false));
    SurveyContours contours(survey);
    constexpr int kWidth = 200;
    constexpr int kHeight = 150;
    TerrainCamera camera;
    camera.SetSize(kWidth, kHeight);
    camera.SetExaggeration(20);
    TerrainPlan plan;
    plan.colouring = TerrainColouring::Plain;
    const auto brightness = [&](Index levels, bool hasContours) {
        const LevelRule rule = RuleByCount(levels);
        EXPECT_TRUE(contours.Prepare(rule));
        const TerrainContent content = MakeTerrainOf(contours, &rule, false);
        TerrainRenderer renderer;
        renderer.Load(content);
        camera.SetReach(content.frame.reach);
        camera.Fit();
        plan.contours = hasContours;
        const TerrainPixels pixels =
            DrawTerrainPicture(renderer, {plan, camera, kWidth, kHeight, 1, false, {}});
        double sum = 0;
        for (const std::uint8_t byte : pixels.bytes) {
            sum += byte;
        }
        return sum / static_cast<double>(pixels.bytes.size());
    };
    const double bare = brightness(10, false);
    for (const Index levels : {10, 100, 1000}) {
        const double lined = brightness(levels, true);
        EXPECT_GT(lined, bare - 22) << levels;
        EXPECT_LT(lined, bare - 0.5) << levels << ": some lines are left";
    }
}

} // namespace
} // namespace terravo

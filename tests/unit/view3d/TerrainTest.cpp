#include "app/session/TerrainMaker.h"
#include "support/Surveys.h"
#include "survey/PointPlace.h"
#include "survey/Survey.h"
#include "view3d/terrain/TerrainContent.h"
#include "view3d/terrain/TerrainLegend.h"
#include "view3d/terrain/TerrainPalette.h"
#include "view3d/terrain/TerrainPick.h"
#include "view3d/terrain/TerrainPlate.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace terravo {
namespace {

using test::HillySurvey;
using test::MakeSurvey;

TerrainCamera CameraOver(const TerrainReach& reach, int width = 800, int height = 600) {
    TerrainCamera camera;
    camera.SetSize(width, height);
    camera.SetReach(reach);
    camera.Fit();
    return camera;
}

// The way of a place through the matrix, in pixels.
PicturePlace ByMatrix(const TerrainCamera& camera, const SpacePoint& place, int width, int height) {
    const std::array<float, 16> m = camera.Matrix();
    const std::array<double, 4> in{place.x, place.y, place.z, 1};
    std::array<double, 4> out{};
    for (std::size_t row = 0; row < 4; ++row) {
        for (std::size_t column = 0; column < 4; ++column) {
            out[row] += static_cast<double>(m[4 * column + row]) * in[column];
        }
    }
    EXPECT_LE(std::fabs(out[2]), out[3] * 1.0001) << "within the near and the far side";
    return {(out[0] / out[3] + 1) / 2 * width, (1 - out[1] / out[3]) / 2 * height, out[3]};
}

TEST(TerrainCameraTest, PicturesGraphicsAndRaysAgree) {
    const TerrainReach reach{100, 60, 8};
    for (const bool perspective : {true, false}) {
        for (const double exaggeration : {1.0, 5.0}) {
            TerrainCamera camera = CameraOver(reach);
            camera.SetPerspective(perspective);
            camera.SetExaggeration(exaggeration);
            camera.SetDirection(200, 25);
            camera.Fit();
            for (const SpacePoint& place :
                 {SpacePoint{0, 0, 0}, SpacePoint{90, -50, 7}, SpacePoint{-100, 60, -8}}) {
                const auto at = camera.Project(place);
                ASSERT_TRUE(at);
                EXPECT_TRUE(at->x >= 0 && at->x <= 800 && at->y >= 0 && at->y <= 600);
                const PicturePlace drawn = ByMatrix(camera, place, 800, 600);
                EXPECT_NEAR(at->x, drawn.x, 0.01);
                EXPECT_NEAR(at->y, drawn.y, 0.01);
                // The ray through the pixel passes the place.
                const SightRay ray = camera.RayAt(at->x, at->y);
                const SpacePoint to{place.x - ray.eye.x, place.y - ray.eye.y, place.z - ray.eye.z};
                const double far =
                    (to.x * ray.direction.x + to.y * ray.direction.y) /
                    (ray.direction.x * ray.direction.x + ray.direction.y * ray.direction.y);
                EXPECT_GT(far, 0);
                EXPECT_NEAR(ray.eye.z + far * ray.direction.z, place.z, 1e-6);
                EXPECT_NEAR(ray.eye.x + far * ray.direction.x, place.x, 1e-6);
            }
        }
    }
}

TEST(TerrainCameraTest, TheHandMovesWhatItHolds) {
    TerrainCamera camera = CameraOver({100, 100, 10});
    const SpacePoint hill{30, 20, 9};
    const auto before = camera.Project(hill);
    camera.ZoomAt(hill, 3);
    EXPECT_NEAR(camera.Project(hill)->x, before->x, 1e-6);
    EXPECT_NEAR(camera.Project(hill)->y, before->y, 1e-6);
    camera.CentreOn(hill);
    EXPECT_NEAR(camera.Project(hill)->x, 400, 1e-9);
    camera.Pan(40, -25); // the place looked at goes with the hand
    EXPECT_NEAR(camera.Project(hill)->x, 440, 1e-6);
    EXPECT_NEAR(camera.Project(hill)->y, 275, 1e-6);
    // What is nearer goes to the right with a drag to the right, and down with one down.
    TerrainCamera turned = CameraOver({100, 100, 10});
    turned.SetDirection(0, 30);
    const SpacePoint near{0, -90, 0};
    const auto first = turned.Project(near);
    turned.Orbit(20, 20);
    EXPECT_GT(turned.Project(near)->x, first->x);
    EXPECT_GT(turned.Project(near)->y, first->y);
    turned.Orbit(0, 1e6);
    EXPECT_EQ(turned.Elevation(), 90);
    // From above north is up and east is right; from the south east is right as well.
    for (const auto& [side, right] : {std::pair(TerrainSide::Top, SpacePoint{50, 0, 0}),
                                      {TerrainSide::FromSouth, SpacePoint{50, 0, 0}},
                                      {TerrainSide::FromNorth, SpacePoint{-50, 0, 0}},
                                      {TerrainSide::FromEast, SpacePoint{0, 50, 0}},
                                      {TerrainSide::FromWest, SpacePoint{0, -50, 0}}}) {
        camera.LookFrom(side);
        camera.Fit();
        EXPECT_GT(camera.Project(right)->x, camera.Project({0, 0, 0})->x + 50);
    }
}

TEST(TerrainCameraTest, HeightsAreProposedWhereTheyCanBeSeen) {
    EXPECT_EQ(ProposedExaggeration({100, 80, 20}), 1);
    EXPECT_EQ(ProposedExaggeration({1000, 800, 5}), 50);
    EXPECT_DOUBLE_EQ(ProposedExaggeration({3, 3, 150}), 0.005);
    EXPECT_EQ(ProposedExaggeration({100, 100, 0}), 1);
    EXPECT_EQ(ProposedExaggeration({0, 0, 0}), 1);
    TerrainCamera flat = CameraOver({0, 0, 0}); // one place
    EXPECT_TRUE(std::isfinite(flat.Project({0, 0, 0})->x));
}

// Rays from above find the triangle and the point that are there, far from the origin too.
TEST(TerrainPickTest, FindsWhatIsUnderThePointer) {
    for (const double shift : {0.0, 4.8e6}) {
        const Survey survey(
            HillySurvey(test::Moved(test::RandomPoints(3000, 11), shift, shift, 1), false));
        const ShownSurface surface = survey.Surface();
        const TerrainContent content = MakeTerrainContent(surface, {ContourSet(), {}});
        const TerrainPick pick(content.mesh);
        TerrainCamera camera = CameraOver(content.frame.reach);
        camera.SetDirection(0, 90);
        camera.Fit();
        for (Index point = 7; point <= 3000; point += 311) {
            const SpacePoint place = content.frame.Local(
                {surface.points.x[point], surface.points.y[point], surface.points.z[point]});
            const auto pixel = camera.Project(place);
            const auto hit = pick.FirstOn(camera.RayAt(pixel->x + 0.3, pixel->y));
            if (!hit) {
                continue; // on the hull
            }
            EXPECT_NEAR(hit->place.z, place.z, 0.1 * content.frame.reach.z);
            EXPECT_EQ(PointNear(camera, content.mesh, surface.triangles, 3000, *hit, *pixel, 3),
                      point);
        }
        EXPECT_FALSE(pick.FirstOn(camera.RayAt(-500, -500)));
    }
}

// A wall hides what lies behind it.
TEST(TerrainPickTest, SeesTheNearestFirst) {
    const Survey survey(MakeSurvey({{0, 0, 0},
                                    {100, 0, 0},
                                    {0, 50, 40},
                                    {100, 50, 40},
                                    {0, 51, 0},
                                    {100, 51, 0},
                                    {0, 100, 0},
                                    {100, 100, 0}}));
    const TerrainContent content = MakeTerrainContent(survey.Surface(), {ContourSet(), {}});
    TerrainCamera camera = CameraOver(content.frame.reach);
    camera.SetDirection(0, 10); // from the south
    camera.Fit();
    const auto behind = camera.Project(content.frame.Local({50, 90, 0}));
    const auto hit = TerrainPick(content.mesh).FirstOn(camera.RayAt(behind->x, behind->y));
    ASSERT_TRUE(hit);
    EXPECT_LT(hit->place.y + content.frame.middle.y, 51);
    EXPECT_NEAR(SlopeOf(content.mesh, hit->triangle), std::atan(0.8) * 180 / 3.14159265358979,
                1e-3);
}

TEST(TerrainMeshTest, ACoarseMeshKeepsWhatStandsOut) {
    Array1<PlanPoint> plan = test::RandomPoints(120000, 5);
    PointSet points = HillySurvey(plan, false);
    points.z[60001] += 5000;
    points.extentZ.Include(points.z[60001]);
    const Survey survey(points);
    const TerrainContent content = MakeTerrainContent(survey.Surface(), {ContourSet(), {}});
    const std::size_t coarse = content.coarse.size() / 3;
    EXPECT_GT(coarse, kTrianglesInMotion / 3);
    EXPECT_LT(coarse, kTrianglesInMotion * 3 / 2);
    EXPECT_TRUE(std::find(content.coarse.begin(), content.coarse.end(), 60000U) !=
                content.coarse.end());
    EXPECT_EQ(SidesOf(survey.Surface().triangles).size() / 2,
              static_cast<std::size_t>(survey.Surface().triangles.count) * 3 / 2 +
                  static_cast<std::size_t>(CountHullEdges(survey.Surface().triangles) + 1) / 2);
    // Normals lean downhill.
    const Survey slope(MakeSurvey({{0, 0, 0}, {10, 0, 10}, {10, 10, 10}, {0, 10, 0}}));
    const TerrainContent tilted = MakeTerrainContent(slope.Surface(), {ContourSet(), {}});
    EXPECT_EQ(tilted.mesh.vertices[0].normal, (std::array<std::int8_t, 4>{-90, 0, 90, 0}));
}

// The height of the first triangle at a place; NaN where there is none.
double HeightOn(const TerrainMesh& mesh, const std::array<float, 3>& at) {
    const SightRay down{{at[0], at[1], 1e4}, {0, 0, -1}};
    const auto hit = TerrainPick(mesh).FirstOn(down);
    return hit ? hit->place.z : std::numeric_limits<double>::quiet_NaN();
}

TEST(TerrainContentTest, ContoursLieOnTheGroundAndKnowHowFarTheNextIs) {
    const Survey survey(HillySurvey(test::Moved(test::RandomPoints(300, 6), 5e5, 4.8e6, 1), false));
    SurveyContours contours(survey);
    const LevelRule rule = RuleByCount(12);
    ASSERT_TRUE(contours.Prepare(rule));
    ASSERT_TRUE(contours.PrepareSmooth(SmoothingOptions()));
    const double step = contours.Levels()[2].value - contours.Levels()[1].value;
    std::size_t straight = 0;
    for (const bool areSmooth : {false, true}) {
        const TerrainContent content = MakeTerrainOf(contours, &rule, areSmooth);
        const auto& lines = content.Lines(TerrainLine::Contour);
        ASSERT_GT(lines.size(), 200U);
        EXPECT_GT(lines.size(), straight);
        straight = lines.size();
        std::size_t met = 0;
        std::size_t looked = 0;
        for (std::size_t i = 0; i < lines.size(); i += 7) {
            const TerrainSegment& line = lines[i];
            std::array<float, 3> at{};
            for (std::size_t k = 0; k < 3; ++k) {
                at[k] = (line.from[k] + line.to[k]) / 2;
            }
            const double ground = HeightOn(content.mesh, at);
            if (std::isnan(ground)) {
                continue; // on the hull
            }
            EXPECT_NEAR(at[2], ground, 1e-3 * step) << (areSmooth ? "smooth " : "straight ") << i;
            EXPECT_NEAR(line.rise, step, 1e-3 * step);
            const std::array<float, 3> beside{at[0] + 0.3F * line.uphill[0],
                                              at[1] + 0.3F * line.uphill[1], 0};
            const double gained = HeightOn(content.mesh, beside) - ground;
            if (!std::isnan(gained)) {
                ++looked;
                met += gained > 0.1 * step && gained < 0.6 * step ? 1 : 0;
            }
        }
        EXPECT_GT(met, looked * 3 / 4) << "it is a mean of the ground about";
    }
    EXPECT_TRUE(MakeTerrainOf(contours, nullptr, false).Lines(TerrainLine::Contour).empty());
}

TEST(TerrainMakerTest, FindsThePlaceOfAPointAsItIsInUse) {
    Survey survey(MakeSurvey({{0, 0, 1}, {9, 0, 2}, {9, 9, 3}, {0, 9, 4}, {4, 4, 5}}));
    SurfacePlan plan;
    plan.excluded = {2};
    plan.heights = {{4, 40}};
    survey.SetPlan(plan);
    for (const auto& [point, height] :
         {std::pair(1, 1.0), {2, 2.0}, {3, 3.0}, {4, 40.0}, {5, 5.0}}) {
        EXPECT_EQ(PlaceOfPoint(survey, point).z, height) << point;
    }
}

TEST(TerrainLegendTest, TellsNeighboursApartInFewLetters) {
    struct Case {
        double low;
        double high;
        const char* base;
        std::vector<std::string> values;
    };
    for (const Case& c : std::vector<Case>{
             {60, 188, "", {"60", "92", "124", "156", "188"}},
             {1, 3, "", {"1.00", "1.50", "2.00", "2.50", "3.00"}},
             {0, 100, "", {"0", "25", "50", "75", "100"}},
             {-1e8, 3e8, "", {"-1.0E+08", "0.0E+08", "1.0E+08", "2.0E+08", "3.0E+08"}},
             {1e-6, 5e-6, "", {"1.0E-06", "2.0E-06", "3.0E-06", "4.0E-06", "5.0E-06"}},
             {1e8, 1e8 + 4, "100000000", {"+0.0", "+1.0", "+2.0", "+3.0", "+4.0"}},
             {412345.125,
              412345.129,
              "412345.1",
              {"+0.0250", "+0.0260", "+0.0270", "+0.0280", "+0.0290"}},
             {7, 7, "", {"7.0"}},
             {4e9, 4e9, "", {"4.00E+09"}}}) {
        const TerrainLegendTexts texts = MakeTerrainLegend(c.low, c.high, 4, '.');
        EXPECT_EQ(texts.base, c.base) << c.low;
        EXPECT_EQ(texts.values, c.values) << c.low;
    }
    for (const double low : {1e-250, 1.0, 1e15, -1e300, 123456789.0}) {
        for (const double range : {1e-12, 1e-3, 1.0, 1e6}) {
            const double high = low + std::fabs(low) * range;
            const TerrainLegendTexts texts = MakeTerrainLegend(low, high, 4, ',');
            std::vector<std::string> values = texts.values;
            for (const std::string& value : values) {
                EXPECT_LE(value.size(), 16U) << value;
            }
            values.erase(std::unique(values.begin(), values.end()), values.end());
            EXPECT_EQ(values.size(), texts.values.size()) << low << ' ' << range;
        }
    }
}

TEST(TerrainPlateTest, ValuesStandInFrontAndApart) {
    const Survey survey(HillySurvey(test::Moved(test::RandomPoints(200, 3), 5e5, 4e6, 1), false));
    const TerrainContent content = MakeTerrainContent(survey.Surface(), {ContourSet(), {}});
    TerrainCamera camera = CameraOver(content.frame.reach);
    const TerrainPlate plate = MakeTerrainPlate(content.frame, 1);
    EXPECT_GE(plate.eastings.size(), 3U);
    for (const double azimuth : {20.0, 110.0, 200.0, 290.0}) {
        camera.SetDirection(azimuth, 35);
        camera.Fit();
        const auto texts = TextsOfPlate(plate, content.frame, camera, 8, '.');
        EXPECT_GE(texts.size(), 4U);
        const double middle = camera.Project({0, 0, plate.corners[0].z})->y;
        for (const TerrainText& text : texts) {
            EXPECT_GT(text.y, middle - 80);
        }
    }
    EXPECT_TRUE(MakeTerrainPlate(FrameOf(PointSet()), 1).eastings.size() < 20);
}

TEST(TerrainPaletteTest, AspectEndsAsItBegins) {
    TerrainPlan plan;
    plan.colouring = TerrainColouring::Aspect;
    const TerrainPalette palette = MakeTerrainPalette(plan);
    EXPECT_EQ(palette.front(), palette.back());
    plan.colouring = TerrainColouring::Height;
    EXPECT_NE(MakeTerrainPalette(plan).front(), MakeTerrainPalette(plan).back());
}

} // namespace
} // namespace terravo

#include "analysis/Profile.h"

#include "analysis/CrossSections.h"
#include "support/Surveys.h"
#include "survey/SurfaceHeight.h"
#include "survey/Survey.h"

#include <gtest/gtest.h>

#include <cmath>

namespace terravo {
namespace {

using test::HillySurvey;
using test::MakeSurvey;

Profile ProfileOf(const Survey& survey, const std::vector<PlanPoint>& line) {
    const ShownSurface shown = survey.Surface();
    const MeasuredSurface surface = MeasureFrom(shown.points, shown.triangles);
    return SectionCutter(surface,
                         shown.shaped == nullptr ? LineSides() : SidesOfLines(*shown.shaped))
        .Cut(line);
}

std::vector<double> HeightsOf(const ProfileRun& run) {
    std::vector<double> heights;
    for (const ProfilePoint& point : run) {
        heights.push_back(point.z);
    }
    return heights;
}

std::string MarksOf(const ProfileRun& run) {
    std::string marks;
    for (const ProfilePoint& point : run) {
        marks += "nec"[static_cast<std::size_t>(point.mark)];
    }
    return marks;
}

// A square roof with its ridge along x = 5.
PointSet Roof() {
    return MakeSurvey({{0, 0, 0}, {5, 0, 5}, {10, 0, 0}, {0, 10, 0}, {5, 10, 5}, {10, 10, 0}});
}

TEST(ProfileTest, FollowsSidesCornersAndBends) {
    const Survey roof(Roof());
    const auto only = [&](const std::vector<PlanPoint>& line) {
        const Profile profile = ProfileOf(roof, line);
        EXPECT_EQ(profile.runs.size(), 1U);
        return profile.runs.empty() ? ProfileRun() : profile.runs.front();
    };
    // Along the ridge, through its corners and beyond both.
    EXPECT_EQ(HeightsOf(only({{5, -3}, {5, 13}})), (std::vector<double>{5, 5}));
    EXPECT_EQ(MarksOf(only({{5, -3}, {5, 13}})), "cc");
    // Across it within the roof; the bend lies on the ridge and is there once.
    const ProfileRun across = only({{1, 4}, {5, 4}, {9, 4}});
    EXPECT_DOUBLE_EQ(across.front().z, 1);
    EXPECT_DOUBLE_EQ(across.back().z, 1);
    EXPECT_DOUBLE_EQ(across.back().station, 8);
    std::size_t onRidge = 0;
    for (std::size_t i = 0; i < across.size(); ++i) {
        onRidge += std::fabs(across[i].station - 4) < 1e-12 ? 1U : 0U;
        EXPECT_NEAR(across[i].z, 5 - std::fabs(across[i].place.x - 5), 1e-12);
        EXPECT_TRUE(i == 0 || across[i - 1].station < across[i].station);
    }
    EXPECT_EQ(onRidge, 1U);
    // There and back again, and a line that only touches or misses.
    EXPECT_DOUBLE_EQ(only({{1, 4}, {3, 4}, {1, 4}}).back().station, 4);
    EXPECT_TRUE(ProfileOf(roof, {{-1, 1}, {1, -1}}).runs.empty());
    EXPECT_TRUE(ProfileOf(roof, {{20, 0}, {20, 10}}).runs.empty());
    EXPECT_TRUE(ProfileOf(roof, {{3, 3}, {3, 3}}).runs.empty());
}

TEST(ProfileTest, LeavesGapsAndMarksBreaklines) {
    Survey survey(HillySurvey(test::GridPoints(8), false));
    SurfacePlan plan;
    const double side = survey.Points().extentX.max;
    const auto line = [](std::vector<SpacePoint> vertices, bool closed, const char* name) {
        return std::make_shared<const SurfaceLine>(
            SurfaceLine{{std::move(vertices), closed, name}, "", 0});
    };
    const double low = side * 0.4;
    const double high = side * 0.6;
    plan.holes.push_back(line({{low, low, kNoHeight},
                               {high, low, kNoHeight},
                               {high, high, kNoHeight},
                               {low, high, kNoHeight}},
                              true, "pit"));
    plan.breaklines.push_back(
        line({{side * 0.21, 0, kNoHeight}, {side * 0.21, side, kNoHeight}}, false, "wall"));
    survey.SetPlan(plan);
    const Profile profile = ProfileOf(survey, {{-10, side * 0.503}, {side + 10, side * 0.503}});
    ASSERT_EQ(profile.runs.size(), 2U);
    EXPECT_NEAR(profile.runs[0].back().station - 10, low, 1e-9);
    EXPECT_NEAR(profile.runs[1].front().station - 10, high, 1e-9);
    std::vector<std::string> met;
    for (const ProfilePoint& point : profile.runs[0]) {
        if (point.line > 0) {
            met.push_back(LineNameAt(profile, point));
        }
        EXPECT_TRUE(point.line == 0 || std::fabs(point.place.x - side * 0.21) < 1e-9 ||
                    std::fabs(point.place.x - low) < 1e-9);
    }
    EXPECT_EQ(met, (std::vector<std::string>{"wall", "pit"}));
    EXPECT_FALSE(HeightAtStation(profile, side / 2 + 10).has_value());
}

// Between its vertices a profile is the surface, and it has a vertex at every crossing.
TEST(ProfileTest, IsTheSurfaceEverywhere) {
    for (const test::PointCloud& cloud : test::CloudsOfEveryKind(300, 9)) {
        SCOPED_TRACE(cloud.name);
        const Survey survey(HillySurvey(cloud.points, false));
        const TriangleList& triangles = survey.Triangulation().triangles;
        const PointSet& points = survey.Points();
        if (triangles.count == 0) {
            continue;
        }
        const auto at = [&](double u, double v) {
            return PlanPoint{points.extentX.min + u * (points.extentX.max - points.extentX.min),
                             points.extentY.min + v * (points.extentY.max - points.extentY.min)};
        };
        const std::vector<PlanPoint> line{
            at(-0.1, 0.2), at(0.7, 0.4), at(0.31, 0.9), {points.x[1], points.y[1]}, at(1.1, 0.55)};
        const Profile profile = ProfileOf(survey, line);
        ASSERT_FALSE(profile.runs.empty());
        for (const ProfileRun& run : profile.runs) {
            for (std::size_t i = 1; i < run.size(); ++i) {
                const ProfilePoint& a = run[i - 1];
                const ProfilePoint& b = run[i];
                ASSERT_LE(a.station, b.station);
                for (const double part : {0.25, 0.5}) {
                    const PlanPoint place{a.place.x + part * (b.place.x - a.place.x),
                                          a.place.y + part * (b.place.y - a.place.y)};
                    Index near = 1;
                    const auto height = SurfaceHeight(points, triangles, place, near);
                    if (height && b.station - a.station > 1e-6 * profile.length) {
                        EXPECT_NEAR(*height, a.z + part * (b.z - a.z), 1e-6);
                    }
                }
            }
        }
    }
}

TEST(ProfileTest, AreasAreThoseOfPolygons) {
    const Survey roof(Roof());
    const Survey level(MakeSurvey({{-2, 0, 2}, {8, 0, 2}, {8, 10, 2}, {-2, 10, 2}}));
    const std::vector<PlanPoint> line{{-5, 5}, {15, 5}};
    const Profile a = ProfileOf(roof, line);
    const SectionAreas between = AreasBetween(a, ProfileOf(level, line));
    // From 0 to 8: below for 2, above from 2 to 8 with its top at 5.
    EXPECT_NEAR(between.fill, 2, 1e-12);
    EXPECT_NEAR(between.cut, 9, 1e-12);
    EXPECT_NEAR(between.length, 8, 1e-12);
    const SectionAreas datum = AreasAgainst(a, 2);
    EXPECT_NEAR(datum.fill, 4, 1e-12);
    EXPECT_NEAR(datum.cut, 9, 1e-12);
    EXPECT_EQ(PlaceAtStation(line, 7), (PlanPoint{2, 5}));
    EXPECT_DOUBLE_EQ(StationNearest(line, {3, 9}), 8);
}

TEST(CrossSectionsTest, EndAreasOfAPrismAreExact) {
    const CrossSectionPlan plan{{{0, 5}, {0, 25}}, 6, 8};
    const std::vector<CrossSection> sections = LayCrossSections(plan);
    ASSERT_EQ(sections.size(), 5U); // 0, 6, 12, 18, 20
    EXPECT_EQ(sections.back().station, 20);
    EXPECT_EQ(sections[1].line, (std::vector<PlanPoint>{{-4, 11}, {4, 11}}));
    const VolumeFigures volume = EndAreaVolume(sections, std::vector<SectionAreas>(5, {3, 1, 8}));
    EXPECT_DOUBLE_EQ(volume.cut, 60);
    EXPECT_DOUBLE_EQ(volume.net, 40);
    EXPECT_DOUBLE_EQ(volume.planArea, 160);
    // A right angle: the strip keeps its width.
    const PlanRing bent = CorridorOf({{{0, 0}, {10, 0}, {10, 10}}, 5, 2});
    EXPECT_EQ(bent, (PlanRing{{0, -1}, {11, -1}, {11, 10}, {9, 10}, {9, 1}, {0, 1}}));
    EXPECT_TRUE(LayCrossSections({{{0, 0}, {1e9, 0}}, 1, 1}).empty());
}

} // namespace
} // namespace terravo

#include "contour/LevelCut.h"

#include "contour/TriangleCut.h"
#include "plot2d/ColourScale.h"
#include "support/Surveys.h"
#include "survey/Survey.h"

#include <gtest/gtest.h>

namespace terravo {
namespace {

LevelSet Levels(const PointSet& points, Index count, bool nudge) {
    LevelRequest request;
    request.levelCount = count;
    request.nudgeEnds = nudge;
    return MakeLevelSet(points.extentZ, ColourScale::MakePalette(256), request);
}

// Every triangle against the level, without a shortcut.
std::vector<LevelPiece> CutPlainly(const PointSet& points, const TriangleList& triangles,
                                   double level) {
    std::vector<LevelPiece> pieces;
    for (Index t = 1; t <= triangles.count; ++t) {
        std::array<SpacePoint, 3> corners;
        for (int j = 1; j <= 3; ++j) {
            const Index i = triangles.Vertex(j, t);
            corners[static_cast<std::size_t>(j) - 1] = {points.x[i], points.y[i], points.z[i]};
        }
        const CutPoints cut = CutTriangleByPlane(corners, Plane::AtLevel(level));
        if (cut.Count() == 1 || cut.Count() == 2) {
            const SpacePoint& end = cut[cut.Count()];
            pieces.push_back({cut[1].x, cut[1].y, end.x, end.y, cut.Count() == 2});
        }
    }
    return pieces;
}

bool SamePieces(const std::vector<LevelPiece>& a, const std::vector<LevelPiece>& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](const LevelPiece& p, const LevelPiece& q) {
                          return p.x1 == q.x1 && p.y1 == q.y1 && p.x2 == q.x2 && p.y2 == q.y2 &&
                                 p.isSegment == q.isSegment;
                      });
}

TEST(LevelCutter, GivesEveryPieceInTriangleOrder) {
    for (const bool wholeMetres : {false, true}) {
        const Survey survey(test::HillySurvey(test::RandomPoints(600, 8), wholeMetres));
        const PointSet& points = survey.Points();
        const TriangleList& triangles = survey.Triangulation().triangles;
        for (const Index count : {2, 3, 10, 61, 400}) {
            for (const bool nudge : {false, true}) {
                const LevelSet levels = Levels(points, count, nudge);
                LevelCutter cutter(points, triangles, levels);
                for (Index k = 1; k <= count; ++k) {
                    ASSERT_TRUE(
                        SamePieces(cutter.Cut(k), CutPlainly(points, triangles, levels[k].value)))
                        << "level " << k << " of " << count;
                }
            }
        }
    }
}

TEST(LevelCutter, CutsLevelsThatAreUnevenOrOutOfOrder) {
    const Survey survey(test::HillySurvey(test::RandomPoints(200, 4), true));
    const PointSet& points = survey.Points();
    const TriangleList& triangles = survey.Triangulation().triangles;
    LevelSet levels = Levels(points, 60, false);
    const double range = levels[60].value - levels[1].value;
    for (Index k = 2; k < 59; ++k) {
        levels[k].value = levels[1].value + k * k * range / 3600;
    }
    levels[59].value = levels[60].value;
    for (int round = 0; round < 2; ++round) {
        LevelCutter cutter(points, triangles, levels);
        for (Index k = 1; k <= 60; ++k) {
            ASSERT_TRUE(SamePieces(cutter.Cut(k), CutPlainly(points, triangles, levels[k].value)));
        }
        std::swap(levels[2], levels[4]);
    }
}

TEST(LevelCutter, FindsNothingOnLevelGround) {
    const Survey survey(test::MakeSurvey({{1, 1, 5}, {9, 1, 5}, {9, 9, 5}, {1, 9, 5}}));
    const LevelSet levels = Levels(survey.Points(), 4, true);
    LevelCutter cutter(survey.Points(), survey.Triangulation().triangles, levels);
    for (Index k = 1; k <= 4; ++k) {
        EXPECT_TRUE(cutter.Cut(k).empty());
    }
}

} // namespace
} // namespace terravo

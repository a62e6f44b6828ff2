#include "contour/LevelCut.h"

#include "contour/LevelRule.h"
#include "plot2d/ColourScale.h"
#include "support/CheckContours.h"
#include "support/Surveys.h"
#include "survey/Survey.h"

#include <gtest/gtest.h>

namespace terravo {
namespace {

LevelSet Levels(const PointSet& points, Index count, bool nudge) {
    LevelRequest request;
    request.nudgeEnds = nudge;
    return MakeLevelSet(RuleByCount(count), points.extentZ, ColourScale::MakePalette(256), request);
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
                        test::ArePiecesOf(points, triangles, levels[k].value, cutter.Cut(k)))
                        << "level " << k << " of " << count;
                }
            }
        }
    }
}

} // namespace
} // namespace terravo

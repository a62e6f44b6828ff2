#include "contour/ContourSet.h"

#include "contour/LevelRule.h"
#include "plot2d/ColourScale.h"
#include "support/CheckContours.h"
#include "support/Surveys.h"
#include "survey/Survey.h"

#include <gtest/gtest.h>
#include <random>

namespace terravo {
namespace {

LevelSet LevelsAt(std::initializer_list<double> values) {
    LevelSet levels;
    for (const double value : values) {
        levels.Append({value, 0, 1, {}, 0, 10});
    }
    return levels;
}

LevelSet LevelsOver(const PointSet& points, Index count, bool nudge) {
    LevelRequest request;
    request.nudgeEnds = nudge;
    return MakeLevelSet(RuleByCount(count), points.extentZ, ColourScale::MakePalette(256), request);
}

// Heights in rows from north to south; every second row lies half a step to the east, so that each
// inner point has six neighbours. Triangles do not depend on heights.
struct Honeycomb {
    PointSet points;
    TriangleList triangles;

    explicit Honeycomb(const std::vector<std::string>& rows, double x0 = 1, double y0 = 1) {
        for (std::size_t r = 0; r < rows.size(); ++r) {
            for (std::size_t c = 0; c < rows[r].size(); ++c) {
                const double x = static_cast<double>(c) + (r % 2 == 0 ? 0 : 0.5);
                const double y = 0.875 * static_cast<double>(rows.size() - r);
                points.Append(x0 + x, y0 + y, rows[r][c] - '0');
            }
        }
        triangles = Survey(points).Triangulation().triangles;
    }
};

// "O4 C6 R2 Q5 P": open and closed lines, ridges and closed ridges with their vertices, points.
std::string Summary(const ContourLevel& level) {
    std::string text;
    for (const ContourLine& line : level.lines) {
        const char kind = line.ridge ? (line.closed ? 'Q' : 'R') : (line.closed ? 'C' : 'O');
        text += kind + std::to_string(line.count) + ' ';
    }
    for (std::size_t i = 0; i < level.isolatedPoints.size(); ++i) {
        text += "P ";
    }
    return text;
}

TEST(ContourSet, TakesDegenerateTerrainApart) {
    struct Case {
        const char* name;
        std::vector<std::string> rows;
        const char* lines; // at height 5
    };
    const std::vector<Case> cases = {
        {"peak on the hull", {"000", "000", "500"}, "P "},
        {"valley at the level", {"99999", "95599", "99999"}, ""},
        {"edge of the hull", {"5555", "0000"}, "O4 "},
        {"ridge that meets the hull", {"0000", "0000", "5550", "0000", "0000"}, "R3 "},
        {"fork", {"00000", "05000", "00550", "05000", "00000"}, "R2 R2 R2 "},
        {"rim", {"00000", "05500", "05050", "05500", "00000"}, "Q6 "},
        {"rim with a spur", {"000000", "055000", "050550", "055000", "000000"}, "Q6 R2 "},
        {"rim with a hill", {"00000", "05500", "05090", "05500", "00000"}, "C6 R5 "},
        {"hill with a spur", {"000000", "095500", "000000"}, "C6 R2 "},
        {"hills on a ridge", {"0000000", "0955900", "0000000"}, "C6 C6 R2 "},
        {"hills at a saddle", {"000000", "095900", "000000"}, "C12 "},
        {"pass at the level", {"00000", "0000", "99599", "0000", "00000"}, "O9 O9 "},
    };
    for (const Case& c : cases) {
        Honeycomb terrain(c.rows);
        const LevelSet levels = LevelsAt({5});
        EXPECT_EQ(Summary((*MakeContourSet(terrain.points, terrain.triangles, levels))[1]), c.lines)
            << c.name;
        EXPECT_EQ(test::ContourFaultOf(terrain.points, terrain.triangles, levels), "") << c.name;
    }
}

TEST(ContourSet, JoinsEveryPieceOfEveryKindOfSurvey) {
    for (const test::PointCloud& cloud : test::CloudsOfEveryKind(150, 3)) {
        for (const bool wholeMetres : {false, true}) {
            const Survey survey(test::HillySurvey(cloud.points, wholeMetres));
            const PointSet& points = survey.Points();
            const TriangleList& triangles = survey.Triangulation().triangles;
            const LevelSet levels = LevelsOver(points, wholeMetres ? 7 : 12, !wholeMetres);
            EXPECT_EQ(test::ContourFaultOf(points, triangles, levels), "")
                << cloud.name << (wholeMetres ? ", whole metres" : "");
        }
    }
}

// Few heights on few points: peaks, plateaus, ridges and hull edges at the level side by side.
TEST(ContourSet, JoinsEveryPieceOfSmallHardMeshes) {
    const double below5 = std::nextafter(5.0, 0.0);
    const double above5 = std::nextafter(5.0, 9.0);
    const std::array<double, 12> heights{0, 0, 0, 5, 5, 5, 5, 9, 3, 4.75, below5, above5};
    const LevelSet levels = LevelsAt({0, below5, 5, 5, above5, 8});
    std::mt19937 engine(11);
    for (const double origin : {1.0, 4.52e6}) {
        for (const std::size_t kinds : {7U, 10U, 12U}) {
            Honeycomb terrain(std::vector<std::string>(5, "000000"), origin / 9, origin);
            for (int round = 0; round < 300; ++round) {
                for (Index i = 1; i <= terrain.points.count; ++i) {
                    terrain.points.z[i] = heights[engine() % kinds];
                }
                ASSERT_EQ(test::ContourFaultOf(terrain.points, terrain.triangles, levels), "")
                    << origin << ", " << kinds << ", round " << round;
            }
        }
    }
    for (int round = 0; round < 500; ++round) {
        PointSet points;
        const auto below = [&](unsigned n) { return static_cast<int>(engine() % n); };
        for (int left = 4 + below(16); left > 0; --left) {
            const int x = 1 + below(5);
            points.Append(x, 1 + below(7), heights[engine() % 8]);
        }
        const Survey survey(std::move(points));
        ASSERT_EQ(test::ContourFaultOf(survey.Points(), survey.Triangulation().triangles, levels),
                  "")
            << round;
    }
}

TEST(ContourSet, EndsWhenAsked) {
    Honeycomb hill({"0000", "0900", "0000"});
    const LevelSet levels = LevelsAt({1, 2, 3});
    int asked = 0;
    StopToken stop([&](std::string_view, double) {
        if (++asked == 2) {
            stop.RequestStop();
        }
    });
    EXPECT_FALSE(MakeContourSet(hill.points, hill.triangles, levels, stop).has_value());
    EXPECT_EQ(asked, 2);
    EXPECT_EQ(MakeContourSet(hill.points, hill.triangles, {})->UpperBound(), 0);
}

} // namespace
} // namespace terravo

#include "survey/check/SurveyCheck.h"

#include "support/Surveys.h"
#include "survey/Survey.h"
#include "survey/check/FirstLook.h"
#include "survey/import/PointImport.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <numbers>
#include <numeric>
#include <random>
#include <utility>

namespace terravo {
namespace {

using test::GridPoints;
using test::RandomPoints;

// The same numbers everywhere: the engine's sequence is fixed, the distributions' are not.
class Chance {
public:
    explicit Chance(unsigned seed) : engine_(seed) {}
    double Part() { return static_cast<double>(engine_()) * 0x1p-32; }
    double Normal() {
        return std::sqrt(-2 * std::log(Part() + 1e-12)) * std::cos(2 * std::numbers::pi * Part());
    }
    Index Number(Index count) { return 1 + static_cast<Index>(Part() * count); }

private:
    std::mt19937 engine_;
};

double Rounded(double value, int decimals) {
    const double unit = std::pow(10.0, decimals);
    return std::round(value * unit) / unit;
}

using Ground = std::function<double(double u, double v)>;

/// Points ten metres apart at coordinates of a national grid; the ground is asked at places within
/// the unit square.
PointSet Survey2D(const Array1<PlanPoint>& plan, const Ground& ground, int decimals = 3) {
    Extent x;
    Extent y;
    for (const PlanPoint& p : plan) {
        x.Include(p.x);
        y.Include(p.y);
    }
    const double side = 10 * std::sqrt(plan.UpperBound());
    PointSet points;
    for (const PlanPoint& p : plan) {
        const double u = (p.x - x.min) / (x.max - x.min);
        const double v = (p.y - y.min) / (y.max - y.min);
        points.Append(500000 + Rounded(side * u, 3), 4520000 + Rounded(side * v, 3),
                      Rounded(ground(u, v), decimals));
    }
    return points;
}

std::vector<Finding> Check(const PointSet& points, const CheckOptions& options = {},
                           const ImportReport* report = nullptr) {
    const Survey survey(points);
    return CheckSurvey(points, survey.Triangulation(), report, options);
}

/// "error lone-point 17, warning ..." with the points.
std::string Told(const std::vector<Finding>& findings) {
    std::string text;
    for (const Finding& f : findings) {
        text += (text.empty() ? "" : "; ") + std::string(NameOf(f.severity)) + " " + NameOf(f.kind);
        for (const Index i : f.points) {
            text += " " + std::to_string(i);
        }
    }
    return text;
}

double Hills(double u, double v) {
    return 300 + 80 * v + 30 * std::sin(8 * u + 1) * std::cos(7 * v) +
           5 * std::sin(20 * u + 13 * v);
}

struct Ground2D {
    std::string name;
    Ground height;
    int decimals = 3;
};

std::vector<Ground2D> CleanGrounds(Chance& chance) {
    const auto noise = [&](double size) { return size * chance.Normal(); };
    return {
        {"hills", Hills},
        {"hills in whole metres", Hills, 0},
        {"hills and noise", [=](double u, double v) { return Hills(u, v) + noise(0.05); }},
        {"noise", [=](double, double) { return 100 + noise(1); }},
        {"benches", [](double u, double v) { return 100 + 10 * std::floor(6 * (u + 0.3 * v)); }},
        {"pit",
         [=](double u, double v) {
             return 100 + 10 * std::floor(8 * std::hypot(u - 0.5, v - 0.5)) + noise(0.03);
         }},
        {"block",
         [=](double u, double v) {
             return (u > 0.4 && u < 0.7 && v > 0.3 && v < 0.6 ? 112 : 100) + noise(0.02);
         }},
        {"peak",
         [](double u, double v) {
             return 100 + 200 * std::exp(-60 * (std::pow(u - 0.5, 2) + std::pow(v - 0.5, 2)));
         }},
        {"cone",
         [](double u, double v) {
             return 100 + std::max(0.0, 300 - 1200 * std::hypot(u - 0.5, v - 0.5));
         }},
        {"slope", [](double u, double) { return 100 + 5 * u; }},
    };
}

TEST(CheckSurvey, FindsNothingInCleanScatterAndGrids) {
    Chance chance(7);
    for (const Ground2D& ground : CleanGrounds(chance)) {
        for (const Index side : {8, 17, 45}) {
            const PointSet grid = Survey2D(GridPoints(side), ground.height, ground.decimals);
            EXPECT_EQ(Told(Check(grid)), "") << ground.name << " grid " << side;
            for (const unsigned seed : {1U, 2U, 3U}) {
                const PointSet scatter =
                    Survey2D(RandomPoints(side * side, seed), ground.height, ground.decimals);
                EXPECT_EQ(Told(Check(scatter)), "")
                    << ground.name << " scatter " << side << " seed " << seed;
            }
        }
    }
}

TEST(CheckSurvey, FindsNothingInMuchNoiseACornerOfABenchAndAGridOfWholeMetres) {
    Chance chance(2);
    const auto noise = [&](double, double) { return 100 + chance.Normal(); };
    EXPECT_EQ(Told(Check(Survey2D(RandomPoints(20000, 4), noise))), "");
    const auto corner = [&](double u, double v) {
        return 100 + 10 * std::floor(3.9 * u) + (u > 0.9 && v > 0.9 ? 10 : 0) +
               0.03 * chance.Normal();
    };
    EXPECT_EQ(Told(Check(Survey2D(GridPoints(17), corner))), "");
    PointSet grid;
    for (int i = 0; i < 400; ++i) {
        const int column = i % 20;
        const int row = i / 20;
        grid.Append(column, row, Rounded(Hills(column / 20.0, row / 20.0), 1));
    }
    EXPECT_EQ(Told(Check(grid)), "");
}

/// Closed contours about a summit, points two to twenty metres apart along them.
PointSet Contours(double apart) {
    PointSet points;
    for (int level = 0; level < 12; ++level) {
        const double radius = 30 + 25 * level;
        const int count = static_cast<int>(2 * std::numbers::pi * radius / apart);
        for (int i = 0; i < count; ++i) {
            const double a = 2 * std::numbers::pi * i / count;
            const double r = radius * (1 + 0.2 * std::sin(3 * a) + 0.1 * std::cos(5 * a));
            points.Append(Rounded(1000 + r * std::cos(a), 2),
                          Rounded(2000 + 0.7 * r * std::sin(a), 2), 200 - 10 * level);
        }
    }
    points.Append(1000, 2000, 206);
    // A plain about it, with a knoll that one contour goes round.
    for (int i = 0; i < 72; ++i) {
        const double a = 2 * std::numbers::pi * i / 72;
        points.Append(Rounded(1000 + 900 * std::cos(a), 2), Rounded(2000 + 800 * std::sin(a), 2),
                      90);
        points.Append(Rounded(1000 + 560 * std::cos(a), 2), Rounded(2000 + 470 * std::sin(a), 2),
                      90);
        if (i % 18 == 0) {
            points.Append(Rounded(1730 + 8 * std::cos(a), 2), Rounded(2000 + 8 * std::sin(a), 2),
                          100);
        }
    }
    return points;
}

/// Lines fifty metres apart with a point every two metres; some of the ground is a wall.
PointSet Profiles(double wall, Chance& chance) {
    PointSet points;
    for (int line = 0; line < 15; ++line) {
        for (int i = 0; i < 300; ++i) {
            const double x = 2 * i + 0.3 * chance.Part();
            const double y = 50 * line + 0.5 * chance.Part();
            const double z = 100 + (x + 0.4 * y > 400 ? wall : 0) + 0.03 * chance.Normal();
            points.Append(Rounded(x, 3), Rounded(y, 3), Rounded(z, 3));
        }
    }
    return points;
}

/// Crests and toes of quarry walls, with a few points on the benches between.
PointSet Quarry(double width, Chance& chance) {
    PointSet points;
    for (int bench = 0; bench < 6; ++bench) {
        for (int i = 0; i < 150; ++i) {
            const double x = 5 * i + chance.Part();
            const double y = 25 * bench + 4 * std::sin(x / 60);
            const double z = 100 + 12 * bench + 0.05 * chance.Normal();
            points.Append(Rounded(x, 3), Rounded(y, 3), Rounded(z, 3));
            points.Append(Rounded(x + 2, 3), Rounded(y - width, 3), Rounded(z - 12, 3));
            if (i % 4 == 0) {
                points.Append(Rounded(x, 3), Rounded(y + 12, 3), Rounded(z, 3));
            }
        }
    }
    return points;
}

TEST(CheckSurvey, FindsNothingInContoursProfilesAndQuarries) {
    Chance chance(11);
    for (const double apart : {2.0, 6.0, 20.0}) {
        EXPECT_EQ(Told(Check(Contours(apart))), "") << apart;
    }
    for (const double wall : {0.0, 12.0}) {
        EXPECT_EQ(Told(Check(Profiles(wall, chance))), "") << wall;
    }
    for (const double width : {0.1, 1.0, 3.0}) {
        EXPECT_EQ(Told(Check(Quarry(width, chance))), "") << width;
    }
}

TEST(CheckSurvey, FindsNothingInTheSamples) {
    for (const char* name : {"davis_hills.dat", "volcano.dat"}) {
        PointSet points;
        ImportWish wish;
        wish.freeList = true;
        const ImportOutcome outcome =
            ImportPoints(std::string(TERRAVO_SAMPLES "/") + name, wish, BadRecords::Refuse, points);
        ASSERT_FALSE(outcome.failure) << name;
        EXPECT_EQ(Told(Check(points, {}, &outcome.report)), "") << name;
    }
}

/// The points nearest to an inner one, itself first.
std::vector<Index> GroupInside(const PointSet& points, std::size_t size, Chance& chance) {
    const double side = points.extentX.max - points.extentX.min;
    Index centre = 0;
    do {
        centre = chance.Number(points.count);
    } while (std::abs(points.x[centre] - points.extentX.min - side / 2) > 0.4 * side ||
             std::abs(points.y[centre] - points.extentY.min - side / 2) > 0.4 * side);
    std::vector<Index> near(static_cast<std::size_t>(points.count));
    std::iota(near.begin(), near.end(), 1);
    const auto distance = [&](Index i) {
        return std::hypot(points.x[i] - points.x[centre], points.y[i] - points.y[centre]);
    };
    std::sort(near.begin(), near.end(),
              [&](Index i, Index j) { return distance(i) < distance(j); });
    near.resize(size);
    std::sort(near.begin(), near.end());
    return near;
}

TEST(CheckSurvey, FindsSpikesPitsAndSmallGroupsOfThem) {
    Chance chance(3);
    for (const bool isGrid : {true, false}) {
        const PointSet clean =
            Survey2D(isGrid ? GridPoints(40) : RandomPoints(1600, 5),
                     [&](double u, double v) { return Hills(u, v) + 0.02 * chance.Normal(); });
        for (const double size : {-1000.0, -90.0, 90.0, 1e5}) {
            for (std::size_t members = 1; members <= 5; ++members) {
                PointSet points = clean;
                const std::vector<Index> planted = GroupInside(points, members, chance);
                std::string expected = "warning height-outlier";
                for (const Index i : planted) {
                    points.z[i] += size;
                    expected += " " + std::to_string(i);
                }
                EXPECT_EQ(Told(Check(points)), expected) << isGrid << " " << size;
            }
        }
    }
}

TEST(CheckSurvey, FindsOneWrongPointWhereverItIs) {
    const PointSet clean = Survey2D(GridPoints(10), Hills);
    // The first and the last are corners of one triangle: two neighbours tell of no height.
    for (Index i = 2; i < clean.count; ++i) {
        PointSet points = clean;
        points.z[i] += 1000;
        EXPECT_EQ(Told(Check(points)), "warning height-outlier " + std::to_string(i));
    }
}

TEST(CheckSurvey, FindsSmallErrorsOnSmoothGroundAndSeveralSideBySide) {
    Chance chance(5);
    const PointSet clean = Survey2D(RandomPoints(1600, 9), [&](double u, double v) {
        return 123.45 + 2 * u + 3 * v + 0.01 * chance.Normal();
    });
    const std::vector<Index> pair = GroupInside(clean, 2, chance);
    const std::vector<Index> far = GroupInside(clean, 60, chance);
    // Digits swapped, a decimal point lost beside a small step. With the pair alone, only what is
    // near the large error is looked at again.
    const std::vector<std::pair<Index, double>> cases[] = {
        {{pair[0], 11000}, {pair[1], 0.5}, {far[0], 0.9}, {far[20], -0.3}},
        {{pair[0], 11000}, {pair[1], 0.5}}};
    for (const auto& errors : cases) {
        PointSet points = clean;
        std::vector<Index> planted;
        for (const auto& [place, error] : errors) {
            points.z[place] += error;
            planted.push_back(place);
        }
        std::vector<Index> found;
        for (const Finding& f : Check(points)) {
            EXPECT_EQ(f.kind, FindingKind::HeightOutlier);
            found.insert(found.end(), f.points.begin(), f.points.end());
        }
        std::sort(found.begin(), found.end());
        std::sort(planted.begin(), planted.end());
        EXPECT_EQ(found, planted);
    }
}

TEST(FirstLook, OnAPlaneNothingDeviatesButAWrongHeightByItself) {
    const Survey survey(Survey2D(RandomPoints(300, 6), Hills));
    MeshOrder mesh(survey.Points(), survey.Triangulation().triangles);
    for (Index i = 1; i <= mesh.Count(); ++i) {
        mesh.z[i] = 100 + 0.7 * (mesh.x[i] - 500000) - 0.9 * (mesh.y[i] - 4520000);
    }
    for (const float deviation : FirstLook(mesh).deviation) {
        EXPECT_NEAR(deviation, 0, 1e-6);
    }
    Index inner = 1;
    while (mesh.isOnHull[inner] != 0) {
        ++inner;
    }
    mesh.z[inner] += 7;
    EXPECT_NEAR(FirstLook(mesh).deviation[inner], 7, 1e-6);
}

TEST(FirstLook, RenewedIsAsANewOneDigitForDigit) {
    Chance chance(8);
    for (const Index count : {30, 12000}) {
        const Survey survey(Survey2D(RandomPoints(count, 6), Hills));
        MeshOrder mesh(survey.Points(), survey.Triangulation().triangles);
        FirstLook look(mesh);
        std::vector<Index> changed;
        for (int i = 0; i < 9; ++i) {
            changed.push_back(chance.Number(count));
            mesh.z[changed.back()] += chance.Normal();
        }
        look.Renew(mesh, changed);
        const FirstLook anew(mesh);
        EXPECT_EQ(look.deviation, anew.deviation) << count;
        EXPECT_EQ(look.sizeAbout, anew.sizeAbout) << count;
        EXPECT_EQ(look.roughness, anew.roughness) << count;
    }
}

TEST(CheckSurvey, FindsWhatIsWrongWithPlacesAndColumns) {
    const PointSet clean = Survey2D(GridPoints(20), Hills);
    const struct {
        const char* expected;
        std::function<void(PointSet&)> spoil;
    } cases[] = {
        {"error lone-point 401", [](PointSet& p) { p.Append(0, 0, 0); }},
        {"error lone-point 401; warning lone-point 402",
         [](PointSet& p) {
             p.Append(0, 0, 0);
             p.Append(5000000, 4520000, 300);
         }},
        {"note repeat 7 401", [](PointSet& p) { p.Append(p.x[7], p.y[7], p.z[7]); }},
        {"error repeat-other-height 7 401 402",
         [](PointSet& p) {
             p.Append(p.x[7], p.y[7], p.z[7] + 0.01);
             p.Append(p.x[7], p.y[7], p.z[7]);
         }},
        {"warning near-repeat 30 401",
         [](PointSet& p) { p.Append(p.x[30] + 0.001, p.y[30], p.z[30]); }},
        {"warning near-repeat 30 401",
         [](PointSet& p) { p.Append(p.x[30] + 0.009, p.y[30], p.z[30]); }},
        {"", [](PointSet& p) { p.Append(p.x[30] + 0.02, p.y[30], p.z[30]); }},
        {"error constant-column; error no-part",
         [](PointSet& p) {
             std::fill(p.x.begin(), p.x.end(), 5.0);
             for (Index i = 1; i <= p.count; ++i) {
                 p.y[i] += 0.37 * (i % 20);
             }
         }},
        {"warning constant-column", [](PointSet& p) { std::fill(p.z.begin(), p.z.end(), 100.0); }},
        {"warning running-number",
         [](PointSet& p) {
             for (Index i = 1; i <= p.count; ++i) {
                 p.z[i] = 1000 + i;
             }
         }},
        {"error degrees",
         [](PointSet& p) {
             const PointSet metres = std::exchange(p, {});
             for (Index i = 1; i <= metres.count; ++i) {
                 p.Append(Rounded(11.3 + (metres.x[i] - 500000) / 80000, 7),
                          Rounded(44.5 + (metres.y[i] - 4520000) / 111000, 7), metres.z[i]);
             }
         }},
    };
    EXPECT_EQ(Told(Check(clean)), "");
    for (const auto& [expected, spoil] : cases) {
        PointSet points = clean;
        spoil(points);
        EXPECT_EQ(Told(Check(points)), expected);
    }
}

TEST(CheckSurvey, FindsNearRepeatsWithoutTrianglesByAGivenTolerance) {
    PointSet points;
    for (const int place : {0, 70, 30, 60, 10, 50, 20, 40}) {
        points.Append(2 * place, place, 0.01 * place * place);
    }
    points.Append(60.4, 30.2, 9.1);
    EXPECT_EQ(Told(Check(points)), "error no-part");
    CheckOptions options;
    options.tolerance = 0.5;
    EXPECT_EQ(Told(Check(points, options)), "error no-part; warning near-repeat 3 9");
}

TEST(CheckSurvey, TellsOfMissingHeightsAndLines) {
    PointSet points = Survey2D(GridPoints(6), Hills);
    points.labels.NoteLine(1, 3);
    points.Append(points.x[2], points.y[2], points.z[2]);
    ImportReport report;
    report.voidHeights = 2;
    report.voidLines = {9, 12};
    const std::vector<Finding> findings = Check(points, {}, &report);
    ASSERT_EQ(Told(findings), "warning void-height; note repeat 2 37");
    EXPECT_EQ(findings[0].lines, (std::vector<std::int64_t>{9, 12}));
    EXPECT_EQ(findings[0].count, 2);
    EXPECT_EQ(findings[1].lines, (std::vector<std::int64_t>{4, 39}));
    EXPECT_EQ(findings[1].x, points.x[2]);
    EXPECT_EQ(SentenceOf(findings[1], points.labels, TextCatalogue()),
              "Points 2, 37 have the same place and height; the first is used.");
}

TEST(CheckSurvey, GathersManyFindingsOfAKind) {
    PointSet points = Survey2D(GridPoints(50), Hills);
    for (Index i = 1; i <= 2500; ++i) {
        points.Append(points.x[i], points.y[i], points.z[i]);
    }
    CheckOptions options;
    options.mostOfAKind = 3;
    const std::vector<Finding> findings = Check(points, options);
    ASSERT_EQ(findings.size(), 4U);
    EXPECT_EQ(findings[3].count, 2 * 2497);
    EXPECT_EQ(findings[3].points.size(), Finding::kMostListed);
    EXPECT_EQ(SentenceOf(findings[3], {}, TextCatalogue()),
              "More findings of this kind: 2497, with 4994 points.");
}

TEST(CheckSurvey, EndsWhenItIsStopped) {
    const Survey survey(Survey2D(GridPoints(10), [](double, double) { return 1; }));
    StopToken stop;
    stop.RequestStop();
    EXPECT_TRUE(CheckSurvey(survey.Points(), survey.Triangulation(), nullptr, {}, stop).empty());
    EXPECT_TRUE(CheckSurvey({}, {}, nullptr).empty());
}

TEST(CheckSurvey, TakesHardSetsWithoutTrouble) {
    for (const test::PointCloud& cloud : test::HardClouds(400, 1)) {
        static_cast<void>(Check(test::HillySurvey(cloud.points, true)));
    }
    for (const test::PointCloud& cloud : test::CloudsOfEveryKind(400, 1)) {
        static_cast<void>(Check(test::HillySurvey(cloud.points, false)));
    }
}

} // namespace
} // namespace terravo

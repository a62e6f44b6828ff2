#include "contour/smoothing/SmoothContours.h"
#include "export/SheetSvg.h"
#include "sheet/MakeSheet.h"
#include "sheet/SceneIndex.h"
#include "sheet/SheetCurve.h"
#include "support/FakeTextMeasure.h"
#include "support/Surveys.h"
#include "support/TemporaryFolder.h"
#include "survey/Survey.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

namespace terravo {
namespace {

SheetPoint PlaceOn(std::span<const SheetPoint> controls, double place) {
    const auto last = static_cast<double>(CubicsOf(controls) - 1);
    const double number = std::min(std::floor(place), last);
    const double t = place - number;
    const double s = 1 - t;
    const auto c = controls.subspan(3 * static_cast<std::size_t>(number)).first<4>();
    const double part[] = {s * s * s, 3 * s * s * t, 3 * s * t * t, t * t * t};
    SheetPoint p;
    for (std::size_t k = 0; k < 4; ++k) {
        p.x += part[k] * c[k].x;
        p.y += part[k] * c[k].y;
    }
    return p;
}

double Distance(SheetPoint a, SheetPoint b) {
    return std::hypot(b.x - a.x, b.y - a.y);
}

double DistanceFromSide(SheetPoint p, SheetPoint a, SheetPoint b) {
    const double dx = b.x - a.x;
    const double dy = b.y - a.y;
    const double square = dx * dx + dy * dy;
    const double t = square > 0 ? ((p.x - a.x) * dx + (p.y - a.y) * dy) / square : 0;
    return Distance(p, {a.x + std::clamp(t, 0.0, 1.0) * dx, a.y + std::clamp(t, 0.0, 1.0) * dy});
}

// From the straight pieces of a line, which come nearer and nearer to the end of it.
double FarthestFrom(std::span<const SheetPoint> line, bool closed,
                    std::span<const SheetPoint> controls) {
    constexpr int kSteps = 12;
    double farthest = 0;
    for (std::size_t i = 0; i < kSteps * CubicsOf(controls) + 1; ++i) {
        const SheetPoint p = PlaceOn(controls, static_cast<double>(i) / kSteps);
        double nearest = 1e9;
        for (std::size_t k = 0; k + (closed ? 0 : 1) < line.size(); ++k) {
            nearest = std::min(nearest, DistanceFromSide(p, line[k], line[(k + 1) % line.size()]));
        }
        farthest = std::max(farthest, nearest);
    }
    return farthest;
}

std::vector<SheetPoint> Wander(std::mt19937& chance, std::size_t cubics, bool closed) {
    std::uniform_real_distribution<double> place(0, 10);
    std::vector<SheetPoint> controls;
    for (std::size_t i = 0; i < 3 * cubics + 1; ++i) {
        controls.push_back({place(chance), place(chance)});
    }
    if (closed) {
        controls.back() = controls.front();
    }
    return controls;
}

TEST(SheetCurve, AStretchRunsWhereTheCurveRuns) {
    std::mt19937 chance(2);
    for (int round = 0; round < 200; ++round) {
        const std::size_t cubics = 1 + static_cast<std::size_t>(round) % 5;
        const auto end = static_cast<double>(cubics);
        const bool closed = round % 2 == 0;
        const std::vector<SheetPoint> curve = Wander(chance, cubics, closed);
        std::uniform_real_distribution<double> along(0, end);
        double from = along(chance);
        double to = along(chance);
        if (round % 3 == 0) {
            from = std::floor(from);
        }
        to = to > from ? to : closed ? to + end : end;
        std::vector<SheetPoint> part;
        AppendStretch(curve, from, to, part);
        ASSERT_EQ(part.size() % 3, 1U);
        EXPECT_EQ(static_cast<double>(CubicsOf(part)), std::ceil(to) - std::floor(from));
        EXPECT_LT(Distance(part.front(), PlaceOn(curve, from)), 1e-12);
        EXPECT_LT(Distance(part.back(), PlaceOn(curve, to > end ? to - end : to)), 1e-12);
        const double first = std::min(std::floor(from) + 1, to) - from; // of the first cubic
        EXPECT_LT(Distance(PlaceOn(part, 0.25), PlaceOn(curve, from + first / 4)), 1e-12);

        FlatCurve flat;
        Flatten(curve, closed, 0.01, flat);
        EXPECT_EQ(flat.points.size(), flat.places.size());
        EXPECT_LE(FarthestFrom(flat.points, closed, curve), 0.01);
        for (std::size_t i = 0; i < flat.points.size(); ++i) {
            EXPECT_LT(Distance(flat.points[i], PlaceOn(curve, flat.places[i])), 1e-12);
        }
    }
}

TEST(SheetCurve, TinyCubicsAreLeftOutAndTheEndsStay) {
    std::vector<SheetPoint> controls{{0, 0}};
    for (int i = 1; i <= 3000; ++i) {
        controls.push_back({i * 0.001, std::sin(i * 0.002)});
    }
    const std::vector<SheetPoint> whole = controls;
    LeaveOutTiny(controls, 0.01);
    EXPECT_LT(controls.size(), whole.size() / 2);
    EXPECT_EQ(controls.front(), whole.front());
    EXPECT_EQ(controls.back(), whole.back());
    EXPECT_LT(FarthestFrom(whole, false, controls), 0.015);
    std::vector<SheetPoint> dot(whole.begin(), whole.begin() + 4);
    LeaveOutTiny(dot, 0.01);
    EXPECT_EQ(dot.size(), 4U) << "a whole curve stays";
    EXPECT_TRUE(IsStraight(std::span(dot).first<4>(), 1e-4));
    EXPECT_FALSE(IsStraight(std::span<const SheetPoint, 4>(whole.data() + 1500, 4), 1e-10));
}

// A hilly survey whose lines the frame cuts.
struct SmoothSheetTest : ::testing::Test {
    test::FakeTextMeasure measure;
    TextCatalogue english;
    Survey survey{test::HillySurvey(test::RandomPoints(400, 5), false)};
    LevelRule rule;
    LevelSet levels;
    SheetPlan plan;
    std::optional<SmoothSet> smooth;

    SmoothSheetTest() {
        rule.kind = LevelRuleKind::ByInterval;
        rule.interval = 2;
        const PointSet& points = survey.Points();
        for (const double value : LevelValuesOf(rule, points.extentZ)) {
            levels.Append({value, 0, 1, {}, 0, 10});
        }
        smooth =
            MakeSmoothContours({points, survey.Triangulation().triangles, nullptr, levels}, {});
        plan.labels = SheetLabels::All;
        plan.rotation = 25;
        plan.scale = LayOut(plan, points).scale * 0.3;
    }
    SheetScene Make(const SmoothSet* lines) {
        const PointSet& points = survey.Points();
        const TriangleList& triangles = survey.Triangulation().triangles;
        const ContourSet contours = MakeContourSet(points, triangles, levels).value();
        SheetSource source{points, points.count, triangles, rule,
                           levels, contours,     english,   measure};
        source.smooth = lines;
        return MakeSheet(plan, source);
    }
};

TEST_F(SmoothSheetTest, CurvesAreCutWhereTheirStraightPiecesAre) {
    const SheetScene scene = Make(&*smooth);
    std::size_t cubics = 0;
    std::size_t pieces = 0;
    std::size_t atFrame = 0;
    for (const SheetLine& line : scene.lines) {
        for (const SheetPiece& piece : scene.PiecesOf(line)) {
            ASSERT_EQ(piece.cubics > 0, line.IsContour());
            if (!line.IsContour()) {
                continue;
            }
            const auto vertices = scene.VerticesOf(piece);
            const auto controls = scene.ControlsOf(piece);
            EXPECT_LT(Distance(vertices.front(), controls.front()), 0.011);
            EXPECT_LT(Distance(piece.closed ? vertices.front() : vertices.back(), controls.back()),
                      0.011);
            EXPECT_LT(FarthestFrom(vertices, piece.closed, controls), 0.02);
            atFrame += scene.map.Shrunk(0.011).Contains(controls.front()) ? 0 : 1;
            cubics += piece.cubics;
            ++pieces;
        }
    }
    EXPECT_LE(cubics, smooth->vertices + 2 * pieces) << "one a triangle and those that are cut";
    EXPECT_GT(cubics, 500U);
    EXPECT_GT(atFrame, 10U);
    EXPECT_EQ(Make(nullptr).controls.size(), 0U);
}

TEST_F(SmoothSheetTest, ValuesInterruptTheCurves) {
    const SheetScene scene = Make(&*smooth);
    std::size_t texts = 0;
    std::size_t crossed = 0;
    std::size_t between = 0;
    for (const SheetText& text : scene.texts) {
        if (text.layer != SheetLayer::Labels) {
            continue;
        }
        ++texts;
        const double half = measure.Width(text.text, text.height, false) / 2;
        std::size_t ends = 0;
        bool isCrossed = false;
        for (const SheetLine& line : scene.lines) {
            if (!line.IsContour() || std::fabs(line.level - std::stod(text.text)) > 1e-9) {
                continue;
            }
            for (const SheetPiece& piece : scene.PiecesOf(line)) {
                const auto controls = scene.ControlsOf(piece);
                for (std::size_t i = 0; i < 8 * piece.cubics; ++i) {
                    const SheetPoint p = PlaceOn(controls, static_cast<double>(i) / 8);
                    const double dx = p.x - text.place.x;
                    const double dy = p.y - text.place.y;
                    const double along = dx * std::cos(text.angle) - dy * std::sin(text.angle);
                    const double across = dx * std::sin(text.angle) + dy * std::cos(text.angle);
                    isCrossed = isCrossed || (std::fabs(along) < half - 0.1 &&
                                              std::fabs(across) < text.height / 2 - 0.1);
                }
                for (const SheetPoint end : {controls.front(), controls.back()}) {
                    ends += Distance(end, text.place) < half + text.height ? 1 : 0;
                }
            }
        }
        crossed += isCrossed ? 1 : 0;
        EXPECT_GE(ends, 1U) << text.text;
        between += ends > 1 ? 1 : 0;
    }
    EXPECT_LE(crossed * 20, texts) << "the line coming back, in crowded places";
    EXPECT_GT(texts, 40U);
    EXPECT_GE(between * 10, texts * 9) << "few at the very end of their line";
}

TEST_F(SmoothSheetTest, TheSvgHasCurvesAndNoMoreStraightPiecesThanStraightCubics) {
    const test::TemporaryFolder folder;
    plan.layers = ParseLayers("contours").value();
    plan.labels = SheetLabels::None;
    const auto svg = [&](const SheetScene& scene) {
        WriteSheetSvg(folder.File("a.svg"), scene, "sheet", measure);
        const std::string all = folder.Read("a.svg");
        const std::size_t begin = all.find("<g id=\"contours\"");
        return all.substr(begin, all.find("<g id=\"frame\"") - begin);
    };
    const auto commands = [](const std::string& lines, char command) {
        std::size_t count = 0;
        for (std::size_t at = 0; (at = lines.find(" d=\"", at)) != std::string::npos;) {
            at += 4;
            const std::string path = lines.substr(at, lines.find('"', at) - at);
            count += static_cast<std::size_t>(std::count(path.begin(), path.end(), command));
        }
        return count;
    };
    const SheetScene scene = Make(&*smooth);
    std::size_t straight = 0;
    std::size_t cubics = 0;
    for (const SheetPiece& piece : scene.pieces) {
        cubics += piece.cubics;
        for (std::size_t i = 0; i < piece.cubics; ++i) {
            const auto c = scene.ControlsOf(piece).subspan(3 * i).first<4>();
            straight += FarthestFrom(std::vector{c[0], c[3]}, false, c) < 0.0005 ? 1 : 0;
        }
    }
    const std::string lines = svg(scene);
    EXPECT_LE(commands(lines, 'L'), straight);
    EXPECT_EQ(commands(lines, 'C') + commands(lines, 'L'), cubics);
    EXPECT_GT(commands(lines, 'C'), cubics / 2);
    EXPECT_EQ(commands(svg(Make(nullptr)), 'C'), 0U);
}

TEST_F(SmoothSheetTest, TheIndexHasCurvesAsFineAsAnyLevelAsks) {
    const SheetScene scene = Make(&*smooth);
    SceneIndex index(scene);
    const auto vertices = [&](double finest) {
        std::size_t count = 0;
        index.DetailFor(finest).ForLines(SheetLayer::Contours, {-1e9F, -1e9F, 1e9F, 1e9F},
                                         [&](const SheetLine&, std::span<const IndexPoint> line,
                                             bool) { count += line.size(); });
        return count;
    };
    EXPECT_GT(vertices(0.0005), 3 * vertices(0.008));
    EXPECT_GT(vertices(0.008), vertices(0.5));
}

TEST_F(SmoothSheetTest, TheLegendSaysHowNearToTheSurfaceTheLinesAre) {
    const struct {
        double worst;
        const char* said;
    } cases[] = {{0.1149, "0.12"}, {0.12, "0.12"}, {0.0991, "0.1"},     {2.41, "2.5"},
                 {0, "0"},         {1234, "1300"}, {0.00031, "0.00031"}};
    for (const auto& test : cases) {
        smooth->worst.height = test.worst;
        const SheetScene scene = Make(&*smooth);
        const std::string wanted = std::string("within ") + test.said + " m of the surface";
        EXPECT_TRUE(std::any_of(scene.texts.begin(), scene.texts.end(), [&](const SheetText& text) {
            return text.text == wanted;
        })) << wanted;
    }
}

} // namespace
} // namespace terravo

#include "app/session/SheetMaker.h"

#include "export/SheetSvg.h"
#include "support/FakeTextMeasure.h"
#include "support/Surveys.h"
#include "support/TemporaryFolder.h"
#include "survey/SurfaceHeight.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace terravo {
namespace {

struct MakeSheetTest : ::testing::Test {
    test::FakeTextMeasure measure;
    RunState run;
    Survey survey{test::HillySurvey(test::RandomPoints(3000, 5), false)};
    SurveyContours contours{survey};
    SheetMaker maker{contours, run};
    LevelRule rule;
    SheetPlan plan;

    MakeSheetTest() {
        rule.kind = LevelRuleKind::ByInterval;
        rule.interval = 2;
        for (const SheetLayer layer : SwitchableLayers()) {
            plan.Show(layer, true);
        }
    }
    // A hundredth of a millimetre about: in a sliver that changes the height a lot. Reversed where
    // one of the places is outside.
    Extent HeightsAround(const MapView& view, SheetPoint p, Index& triangle) {
        Extent heights;
        for (const double dx : {-0.01, 0., 0.01}) {
            for (const double dy : {-0.01, 0., 0.01}) {
                const auto z = SurfaceHeight(survey.Points(), survey.Triangulation().triangles,
                                             view.ToPlan({p.x + dx, p.y + dy}), triangle);
                if (!z) {
                    return {};
                }
                heights.Include(*z);
            }
        }
        return heights;
    }
    SheetScene Make() { return maker.Make(plan, rule, measure).value(); }
};

TEST_F(MakeSheetTest, TheContoursLieOnTheSurfaceAtTheirLevels) {
    plan.rotation = 25;
    plan.smoothing.reset();
    const SheetScene scene = Make();
    const MapView view = LayOut(plan, survey.Points()).view;
    std::size_t vertices = 0;
    Index triangle = 1;
    for (const SheetLine& line : scene.lines) {
        if (!line.IsContour()) {
            continue;
        }
        const bool isIndex = std::fabs(std::remainder(line.level, 10)) < 1e-9;
        EXPECT_EQ(line.layer == SheetLayer::IndexContours, isIndex) << line.level;
        for (const SheetPiece& piece : scene.PiecesOf(line)) {
            for (const SheetPoint& p : scene.VerticesOf(piece)) {
                EXPECT_TRUE(scene.map.Shrunk(-1e-6).Contains(p));
                const Extent around = HeightsAround(view, p, triangle);
                if (around.min <= around.max) { // not at the very edge of the surface
                    EXPECT_LE(around.min, line.level + 0.02);
                    EXPECT_GE(around.max, line.level - 0.02);
                    ++vertices;
                }
            }
        }
    }
    EXPECT_GT(vertices, 3000U);
}

// The corners of a text that is centred.
std::array<SheetPoint, 4> CornersOf(const SheetText& text, double width, double by) {
    const double dx = width / 2 + by;
    const double dy = text.height / 2 + by;
    std::array<SheetPoint, 4> corners;
    const std::array<SheetPoint, 4> signs{{{-1, -1}, {1, -1}, {1, 1}, {-1, 1}}};
    for (std::size_t i = 0; i < 4; ++i) {
        const double right = signs[i].x * dx;
        const double down = signs[i].y * dy;
        corners[i] = {text.place.x + right * std::cos(text.angle) + down * std::sin(text.angle),
                      text.place.y - right * std::sin(text.angle) + down * std::cos(text.angle)};
    }
    return corners;
}

TEST_F(MakeSheetTest, ValuesStandOnTheirLinesWhichAreInterruptedBeneath) {
    plan.labels = SheetLabels::All;
    const SheetScene scene = Make();
    EXPECT_EQ(scene.labels.lines,
              scene.labels.labelled + scene.labels.tooShort + scene.labels.noRoom);
    std::size_t texts = 0;
    std::size_t crossed = 0;
    for (const SheetText& text : scene.texts) {
        if (text.layer != SheetLayer::Labels) {
            continue;
        }
        ++texts;
        bool isCrossed = false;
        const double width = measure.Width(text.text, text.height, false);
        for (const SheetPoint& corner : CornersOf(text, width, 0)) {
            EXPECT_TRUE(scene.map.Contains(corner)) << text.text;
        }
        EXPECT_LE(std::fabs(text.angle), std::numbers::pi / 2 + 1e-9) << "never upside down";
        for (const SheetLine& line : scene.lines) {
            if (!line.IsContour() || std::fabs(line.level - std::stod(text.text)) > 1e-9) {
                continue;
            }
            for (const SheetPiece& piece : scene.PiecesOf(line)) {
                for (const SheetPoint& p : scene.VerticesOf(piece)) {
                    const double dx = p.x - text.place.x;
                    const double dy = p.y - text.place.y;
                    const double along = dx * std::cos(text.angle) - dy * std::sin(text.angle);
                    const double across = dx * std::sin(text.angle) + dy * std::cos(text.angle);
                    isCrossed = isCrossed || (std::fabs(along) < width / 2 - 0.1 &&
                                              std::fabs(across) < text.height / 2 - 0.1);
                }
            }
        }
        crossed += isCrossed ? 1 : 0;
    }
    EXPECT_LE(crossed * 20, texts) << "another line, or the line coming back, in crowded places";
    EXPECT_EQ(texts, scene.labels.texts);
    EXPECT_GT(texts, 40U);
}

TEST_F(MakeSheetTest, ShowsOnlyTheLayersOfThePlanAndTheSameEveryTime) {
    const test::TemporaryFolder folder;
    const auto svg = [&] {
        WriteSheetSvg(folder.File("a.svg"), Make(), "sheet", measure);
        return folder.Read("a.svg");
    };
    const std::string all = svg();
    EXPECT_EQ(svg(), all);
    SurveyContours anew(survey);
    EXPECT_EQ(SheetMaker(anew, run).Make(plan, rule, measure)->vertices, Make().vertices);
    for (const SheetLayer layer : SwitchableLayers()) {
        const std::string group = std::string("<g id=\"") + NameOf(layer) + '"';
        const bool hasNames = survey.Points().labels.HasLabels();
        EXPECT_EQ(all.find(group) != std::string::npos,
                  (layer != SheetLayer::Codes || hasNames) && layer != SheetLayer::Breaklines)
            << group;
        plan.Show(layer, false);
        EXPECT_EQ(svg().find(group), std::string::npos) << group;
        plan.Show(layer, true);
    }
}

TEST_F(MakeSheetTest, FollowsTheSurveyAndTheRule) {
    const std::size_t lines = Make().lines.size();
    rule.interval = 1;
    EXPECT_GT(Make().lines.size(), lines);
    std::vector<Index> half;
    for (Index i = 1; i <= 3000; i += 2) {
        half.push_back(i);
    }
    const auto points = [](const SheetScene& scene) { return scene.marks.front().places.size(); };
    plan.layers = ParseLayers("points").value();
    EXPECT_EQ(points(Make()), 3000U);
    survey.SetExcluded(half, true);
    EXPECT_EQ(points(Make()), 1500U);
    StopToken stop;
    stop.RequestStop();
    EXPECT_FALSE(maker.Make(plan, rule, measure, stop));
}

} // namespace
} // namespace terravo

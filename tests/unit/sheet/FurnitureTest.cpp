#include "app/session/SheetMaker.h"
#include "sheet/FitText.h"
#include "sheet/GridLines.h"
#include "sheet/TurnedBox.h"
#include "support/Surveys.h"
#include "util/NumberText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numbers>
#include <random>

namespace terravo {
namespace {

// Every letter has the same width.
class FixedMeasure : public TextMeasure {
public:
    [[nodiscard]] double Width(const std::string& text, double height, bool bold) const override {
        const auto letters = std::count_if(text.begin(), text.end(), [](char c) {
            return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U;
        });
        return static_cast<double>(letters) * height * (bold ? 0.85 : 0.75);
    }
};

constexpr SheetLayer kFurniture[] = {SheetLayer::TitleBlock, SheetLayer::Legend,
                                     SheetLayer::ScaleBar, SheetLayer::NorthArrow};
constexpr double kTiny = 1e-6;

// A survey and its sheet.
struct Made {
    Made(PointSet points, const SheetPlan& plan, const LevelRule& rule, RunState run = {})
        : survey(std::move(points)), layout(LayOut(plan, survey.Points())) {
        SurveyContours contours(survey);
        scene = SheetMaker(contours, run).Make(plan, rule, FixedMeasure()).value();
    }
    explicit Made(PointSet points, const SheetPlan& plan = {})
        : Made(std::move(points), plan, RoundLevels(points.extentZ)) {}

    [[nodiscard]] SheetBox BoxOf(SheetLayer layer) const {
        return layer == SheetLayer::TitleBlock ? layout.titleBlock
               : layer == SheetLayer::Legend   ? layout.legend
               : layer == SheetLayer::ScaleBar ? layout.scaleBar
                                               : layout.northArrow;
    }
    [[nodiscard]] std::vector<const SheetText*> TextsOf(SheetLayer layer) const {
        std::vector<const SheetText*> texts;
        for (const SheetText& text : scene.texts) {
            if (text.layer == layer) {
                texts.push_back(&text);
            }
        }
        return texts;
    }

    Survey survey;
    SheetLayout layout;
    SheetScene scene;
};

// From the base line to the top of a capital.
TurnedBox BoxOf(const SheetText& text) {
    const double half = FixedMeasure().Width(text.text, text.height, text.bold) / 2;
    const double right = text.anchor == TextAnchor::Left    ? half
                         : text.anchor == TextAnchor::Right ? -half
                                                            : 0;
    const double up = text.anchor == TextAnchor::Centre ? 0 : text.height / 2;
    const SheetPoint along{std::cos(text.angle), -std::sin(text.angle)};
    return {{text.place.x + right * along.x + up * along.y,
             text.place.y + right * along.y - up * along.x},
            along,
            half,
            text.height / 2};
}

SheetBox Grown(const SheetBox& box, double by) {
    return box.Shrunk(-by);
}

void ExpectApart(const std::vector<const SheetText*>& texts) {
    for (std::size_t i = 0; i < texts.size(); ++i) {
        for (std::size_t k = 0; k < i; ++k) {
            EXPECT_FALSE(Overlap(BoxOf(*texts[i]).Grown(-kTiny, -kTiny), BoxOf(*texts[k])))
                << texts[i]->text << " and " << texts[k]->text;
        }
    }
}

void ExpectInside(const SheetBox& box, std::span<const SheetPoint> vertices) {
    for (const SheetPoint& p : vertices) {
        EXPECT_TRUE(Grown(box, kTiny).Contains(p)) << p.x << " " << p.y;
    }
}

// Texts and shapes of every box keep inside it, values beside the frame on the paper.
void ExpectTidy(const Made& made) {
    for (const SheetLayer layer : kFurniture) {
        SCOPED_TRACE(NameOf(layer));
        const SheetBox box = made.BoxOf(layer);
        const auto texts = made.TextsOf(layer);
        for (const SheetText* text : texts) {
            EXPECT_TRUE(Contains(Grown(box, kTiny), BoxOf(*text).Bounds())) << text->text;
            EXPECT_GT(text->height, 0.2) << text->text;
        }
        ExpectApart(texts);
        for (const SheetLine& line : made.scene.lines) {
            for (const SheetPiece& piece : made.scene.PiecesOf(line)) {
                if (line.layer == layer) {
                    ExpectInside(box, made.scene.VerticesOf(piece));
                }
            }
        }
        for (const SheetArea& area : made.scene.areas) {
            for (const SheetPiece& piece : made.scene.PiecesOf(area)) {
                if (area.layer == layer) {
                    ExpectInside(box, made.scene.VerticesOf(piece));
                }
            }
        }
    }
    const auto values = made.TextsOf(SheetLayer::Frame);
    EXPECT_FALSE(values.empty());
    ExpectApart(values);
    for (const SheetText* text : values) {
        EXPECT_TRUE(Contains(made.layout.paper.Shrunk(2), BoxOf(*text).Bounds())) << text->text;
        EXPECT_FALSE(Overlap(BoxOf(*text), Upright(made.layout.map))) << text->text;
    }
}

PointSet Hills(double width, double height, Index count = 400) {
    std::mt19937 chance(7);
    std::uniform_real_distribution<double> part(0, 1);
    PointSet points;
    points.sourceName = "hills of the north-western district, second campaign.dat";
    for (Index i = 0; i < count; ++i) {
        const double x = part(chance);
        const double y = part(chance);
        points.Append(2667400 + width * x, 6478700 + height * y,
                      100 + 40 * std::sin(7 * x) * std::cos(5 * y));
        points.labels.Append("P" + std::to_string(1000 + i), i % 3 == 0 ? "" : "TREE");
    }
    return points;
}

TextCatalogue LongWords() {
    TextTable words;
    for (std::size_t i = 0; i < kTextCount; ++i) {
        words.push_back(TextCatalogue()[static_cast<Text>(i)] + " \xC3\x9C"
                                                                "bergangsgel\xC3\xA4nde");
    }
    return TextCatalogue(words);
}

LevelRule ByCount(Index count) {
    LevelRule rule;
    rule.count = count;
    return rule;
}

TEST(Furniture, KeepsInsideItsBoxesOnEveryPaper) {
    RunState longWords;
    longWords.texts = LongWords();
    longWords.decimalSeparator = ',';
    std::size_t round = 0;
    for (const char* paper : {"A4", "A1", "Letter", "80x100", "60x900", "400x410"}) {
        for (const double textHeight : {0.6, 1.8, 20.}) {
            for (const Index levels : {0, 700}) {
                for (const bool landscape : {false, true}) {
                    SheetPlan plan;
                    plan.paper = ParsePaperSize(paper).value();
                    plan.landscape = landscape;
                    plan.textHeight = textHeight;
                    plan.theme = SheetThemes()[round % SheetThemes().size()].name;
                    plan.rotation = round % 3 == 0 ? 37 : 0;
                    if (++round % 2 == 0) {
                        plan.layers.set();
                        plan.texts = {"The whole of the northern district after the flood",
                                      "Project 7, sheets 1 to 12 of the second campaign",
                                      "2024-05-01", "DHHN2016", "A. Surveyor and partners"};
                    }
                    SCOPED_TRACE(std::string(paper) + " " + std::to_string(textHeight) + " " +
                                 std::to_string(levels) + (landscape ? " across" : ""));
                    const PointSet points = Hills(round % 5 == 0 ? 9 : 860, 600, 150);
                    ExpectTidy({points, plan,
                                levels == 0 ? RoundLevels(points.extentZ) : ByCount(levels),
                                round % 4 < 2 ? longWords : RunState()});
                }
            }
        }
    }
}

TEST(Furniture, LegendNamesOnlyWhatIsShown) {
    const auto words = [](const SheetPlan& plan, double relief = 1) {
        std::vector<std::string> all;
        PointSet points = Hills(860, 600);
        for (Index i = 1; i <= points.count; ++i) {
            points.z[i] *= relief;
        }
        points.extentZ = {points.extentZ.min * relief, points.extentZ.max * relief};
        const Made made(points, plan);
        for (const SheetText* text : made.TextsOf(SheetLayer::Legend)) {
            all.push_back(text->text);
        }
        return all;
    };
    SheetPlan plan;
    plan.smoothing.reset();
    EXPECT_EQ(words(plan),
              (std::vector<std::string>{"Legend", "Index contour, every 25 m", "Contour, every 5 m",
                                        "Edge of the survey", "Grid, every 200 m"}));
    EXPECT_EQ(words(plan, 1e-9)[2], "Contour, every 0.000000005 m");
    EXPECT_EQ(words(plan, 0),
              (std::vector<std::string>{"Legend", "Edge of the survey", "Grid, every 200 m"}));
    plan.layers = ParseLayers("bands,legend").value();
    const std::vector<std::string> bands = words(plan);
    ASSERT_GT(bands.size(), 12U);
    EXPECT_EQ(bands[1], "Heights in metres");
    EXPECT_EQ(bands[2], "> 135");
    EXPECT_EQ(bands[3], "130 \xE2\x80\x93 135");
    EXPECT_EQ(bands.back(), "< 65");
}

TEST(Furniture, TitleBlockHasOnlyLinesWithContent) {
    SheetPlan plan;
    plan.texts.author = "A. Surveyor";
    plan.scale = 2500;
    PointSet points = Hills(860, 600);
    points.sourceName = "hills.dat";
    const Made made(points, plan);
    std::string all;
    for (const SheetText* text : made.TextsOf(SheetLayer::TitleBlock)) {
        all += text->text + "|";
    }
    EXPECT_EQ(all, "hills|Scale|1:2500|Contour interval|5 m|Author|A. Surveyor|Points|400|File|"
                   "hills.dat|");
}

TEST(Furniture, TicksStandAtGridLines) {
    for (const double rotation : {0., 30., -75., 45., 180., 270.}) {
        SheetPlan plan;
        plan.rotation = rotation;
        const Made made(Hills(860, 600), plan);
        const double spacing = GridSpacing(made.layout);
        const auto isOnGridLine = [&](SheetPoint p) {
            const PlanPoint at = made.layout.view.ToPlan(p);
            return std::pair(std::fabs(std::remainder(at.x, spacing)) < 1e-6,
                             std::fabs(std::remainder(at.y, spacing)) < 1e-6);
        };
        std::size_t ticks = 0;
        for (const SheetLine& line : made.scene.lines) {
            for (const SheetPiece& piece : made.scene.PiecesOf(line)) {
                const auto ends = made.scene.VerticesOf(piece);
                if (line.layer == SheetLayer::Frame && ends.size() == 2) {
                    const auto [east, north] = isOnGridLine(ends[0]);
                    const auto [eastEnd, northEnd] = isOnGridLine(ends[1]);
                    EXPECT_TRUE((east && eastEnd) || (north && northEnd)) << rotation;
                    EXPECT_TRUE(made.layout.map.Contains(ends[0]));
                    ++ticks;
                }
            }
        }
        EXPECT_GE(ticks, 12U) << rotation;
        for (const SheetText* text : made.TextsOf(SheetLayer::Frame)) {
            const bool isBelow = text->angle == 0;
            const SheetPoint tick{isBelow ? text->place.x : made.layout.map.left - made.layout.tick,
                                  isBelow ? made.layout.map.bottom + made.layout.tick
                                          : text->place.y};
            const PlanPoint at = made.layout.view.ToPlan(tick);
            const bool isEasting = rotation == 0 ? isBelow : text->text[0] == 'E';
            const std::string number = text->text.substr(rotation == 0 ? 0 : 2);
            EXPECT_NEAR(NumberText::LeadingNumber(number), isEasting ? at.x : at.y, 1e-6)
                << rotation << " " << text->text;
        }
    }
}

TEST(Furniture, GridSpacingIsRoundOnThePaper) {
    for (const double side : {0.03, 7., 86., 431., 990., 12345., 4e6}) {
        const Made made(Hills(side, side / 2));
        const double spacing = GridSpacing(made.layout);
        const double onPaper = spacing * made.layout.view.millimetresPerUnit;
        EXPECT_GE(onPaper, 39.999);
        EXPECT_LE(onPaper, 100.001);
        const double lead = spacing / std::pow(10, std::floor(std::log10(spacing) + 1e-9));
        EXPECT_NEAR(std::min({std::fabs(lead - 1), std::fabs(lead - 2), std::fabs(lead - 5)}), 0,
                    1e-9);
    }
    EXPECT_EQ(GridValueText(2667400, 200, '.'), "2667400");
    EXPECT_EQ(GridValueText(0.30000000000000004, 0.1, ','), "0,3");
    EXPECT_EQ(MultiplesWithin(-0.5, 0.5, 0.25).size(), 5U);
    EXPECT_TRUE(MultiplesWithin(1e17, 1e17 + 64, 0.1).empty()) << "not to be told apart";
}

TEST(Furniture, ScaleBarIsTrueToScale) {
    for (const double scale : {1., 250., 1000., 2500., 33333., 500000., 1e7}) {
        SheetPlan plan;
        plan.scale = scale;
        const Made made(Hills(860, 600), plan);
        double left = 1e9;
        double right = 0;
        for (const SheetArea& area : made.scene.areas) {
            for (const SheetPiece& piece : made.scene.PiecesOf(area)) {
                for (const SheetPoint& p : made.scene.VerticesOf(piece)) {
                    if (area.layer == SheetLayer::ScaleBar) {
                        left = std::min(left, p.x);
                        right = std::max(right, p.x);
                    }
                }
            }
        }
        const auto texts = made.TextsOf(SheetLayer::ScaleBar);
        const auto unit = std::find_if(texts.begin(), texts.end(),
                                       [](const SheetText* text) { return text->text[0] == ' '; });
        ASSERT_TRUE(unit != texts.end() && unit != texts.begin());
        const double metres = NumberText::LeadingNumber((*std::prev(unit))->text) *
                              ((*unit)->text == " km" ? 1000 : 1);
        EXPECT_NEAR((right - left) / 1000 * scale, metres, metres * 1e-9) << scale;
        EXPECT_GT(right - left, made.layout.scaleBar.Width() * 0.3) << scale;
        EXPECT_NEAR((*std::prev(unit))->place.x, right, 1e-9);
    }
}

TEST(Furniture, ArrowPointsNorth) {
    for (const double rotation : {0., 30., -100.}) {
        SheetPlan plan;
        plan.rotation = rotation;
        const Made made(Hills(860, 600), plan);
        const auto letter = made.TextsOf(SheetLayer::NorthArrow).at(0);
        const SheetPoint middle = made.layout.northArrow.Middle();
        const SheetPoint a = made.layout.view.ToPaper(2667800, 6479000);
        const SheetPoint b = made.layout.view.ToPaper(2667800, 6479100);
        EXPECT_NEAR(std::atan2(letter->place.y - middle.y, letter->place.x - middle.x),
                    std::atan2(b.y - a.y, b.x - a.x), 1e-6);
    }
}

TEST(FitText, ShrinksThenCuts) {
    const FixedMeasure measure;
    const std::string word = "\xC3\x84\xC3\x84\xC3\x84\xC3\x84 \xC3\x84"; // six letters
    EXPECT_EQ(FitText(measure, word, 2, false, 9).height, 2);
    const FittedText smaller = FitText(measure, word, 2, false, 8);
    EXPECT_EQ(smaller.text, word);
    EXPECT_LE(smaller.width, 8);
    const FittedText cut = FitText(measure, word, 2, false, 6.1);
    EXPECT_EQ(cut.text, "\xC3\x84\xC3\x84\xC3\x84\xC3\x84\xE2\x80\xA6") << "not a blank before it";
    EXPECT_LE(cut.width, 6.1);
    EXPECT_EQ(FitText(measure, word, 2, false, 0.5).text, "");
    EXPECT_EQ(FitText(measure, "a\nb\tc", 2, false, 9).text, "a b c");
}

// Texts beside points overlap nothing, and stand beside points.
TEST(PointTexts, NeverOverlap) {
    PointSet clustered = Hills(100, 60, 3000);
    for (Index i = 1; i <= 300; ++i) {
        clustered.Append(2667400 + 400. * (i % 20), 6478700 + 300. * (i / 20), i);
        clustered.labels.Append("", "");
    }
    for (const PointSet& points :
         {Hills(860, 600, 30), Hills(860, 600, 400), Hills(860, 600, 20000), clustered}) {
        for (const char* layers : {"contours,spot-heights", "contours,points,spot-heights,numbers",
                                   "contours,codes,numbers,spot-heights,hull"}) {
            SheetPlan plan;
            plan.layers = ParseLayers(layers).value();
            plan.rotation = 20;
            const Made made(points, plan);
            std::vector<const SheetText*> texts = made.TextsOf(SheetLayer::Labels);
            const std::size_t labels = texts.size();
            for (const SheetLayer layer :
                 {SheetLayer::SpotHeights, SheetLayer::Numbers, SheetLayer::Codes}) {
                const auto more = made.TextsOf(layer);
                texts.insert(texts.end(), more.begin(), more.end());
            }
            EXPECT_GT(texts.size(), labels + std::min<std::size_t>(points.count / 2, 60));
            for (const SheetText* text : texts) {
                EXPECT_TRUE(Contains(made.layout.map, BoxOf(*text).Bounds())) << text->text;
            }
            ExpectApart(texts);
        }
    }
}

TEST(PointTexts, CoverTheMapEvenlyExtremesFirst) {
    PointSet points = Hills(860, 600, 60000);
    points.z[777] = 999.25;
    points.z[778] = 1.5;
    points.extentZ = {1.5, 999.25};
    SheetPlan plan;
    plan.layers = ParseLayers("spot-heights").value();
    const Made made(points, plan);
    const auto texts = made.TextsOf(SheetLayer::SpotHeights);
    EXPECT_EQ(texts.at(0)->text, "999.250");
    EXPECT_EQ(texts.at(1)->text, "1.500");
    ASSERT_EQ(made.scene.marks.size(), 1U);
    const std::vector<SheetPoint>& dots = made.scene.marks[0].places;
    EXPECT_EQ(dots.size(), texts.size());
    for (double x = 2667450; x < 2668250; x += 50) {
        for (double y = 6478750; y < 6479300; y += 50) {
            const SheetPoint p = made.layout.view.ToPaper(x, y);
            const auto near = std::count_if(dots.begin(), dots.end(), [p](SheetPoint dot) {
                return std::hypot(dot.x - p.x, dot.y - p.y) < 20;
            });
            EXPECT_GE(near, 2) << x << " " << y;
            EXPECT_LE(near, 12) << x << " " << y;
        }
    }
}

TEST(PointTexts, WriteEveryPointOfASparseSurvey) {
    PointSet points;
    for (int i = 0; i < 100; ++i) {
        points.Append(30. * (i % 10), 20. * (i / 10), 100 + i);
        points.labels.Append(i == 0 ? "" : "M" + std::to_string(i), "");
    }
    SheetPlan plan;
    plan.layers = ParseLayers("points,spot-heights,numbers,codes").value();
    const Made made(points, plan);
    EXPECT_EQ(made.TextsOf(SheetLayer::SpotHeights).size(), 100U);
    EXPECT_EQ(made.TextsOf(SheetLayer::Numbers).size(), 100U);
    EXPECT_TRUE(made.TextsOf(SheetLayer::Codes).empty());
    EXPECT_EQ(made.scene.marks.size(), 1U) << "the layer of the points has the dots";
}

} // namespace
} // namespace terravo

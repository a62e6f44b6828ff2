#include "app/session/DifferenceSheet.h"

#include "sheet/SheetLayout.h"
#include "support/FakeTextMeasure.h"
#include "support/Surveys.h"
#include "survey/Survey.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>

namespace terravo {
namespace {

struct DifferenceSheetTest : ::testing::Test {
    test::FakeTextMeasure measure;
    TextCatalogue texts;
    SheetWords words{texts, measure, '.'};
    SheetPlan plan = DifferencePlan(SheetPlan());
    DifferenceSurface difference;

    // The change over a square of 100 m.
    void Change(const std::function<double(double, double)>& height) {
        PointSet points;
        for (int i = 0; i <= 20; ++i) {
            for (int j = 0; j <= 20; ++j) {
                const double x = 5. * i;
                const double y = 5. * j;
                points.Append(x, y, height(x, y));
            }
        }
        const Survey survey(points);
        difference.points = points;
        difference.triangles = survey.Triangulation().triangles;
    }

    SheetScene Make(std::optional<VolumeFigures> volumes = {}) {
        return MakeDifferenceSheet(plan, {difference, "old", "new", volumes}, words).value();
    }

    static bool Has(const SheetScene& scene, SheetLayer layer, const std::string& text) {
        return std::any_of(scene.texts.begin(), scene.texts.end(), [&](const SheetText& each) {
            return each.layer == layer && each.text == text;
        });
    }

    // The fill at a place: that of the last area around it.
    static Colour FillAt(const SheetScene& scene, SheetPoint p) {
        Colour fill = kBlack;
        for (const SheetArea& area : scene.areas) {
            bool isInside = false;
            for (const SheetPiece& piece : scene.PiecesOf(area)) {
                const auto ring = scene.VerticesOf(piece);
                for (std::size_t i = 0; i < ring.size(); ++i) {
                    const SheetPoint a = ring[i];
                    const SheetPoint b = ring[(i + 1) % ring.size()];
                    if ((a.y > p.y) != (b.y > p.y) &&
                        p.x < a.x + (b.x - a.x) * (p.y - a.y) / (b.y - a.y)) {
                        isInside = !isInside;
                    }
                }
            }
            if (isInside && area.layer == SheetLayer::Bands) {
                fill = area.fill;
            }
        }
        return fill;
    }
    Colour FillAt(const SheetScene& scene, double x, double y) {
        return FillAt(scene, LayOut(plan, difference.points).view.ToPaper(x, y));
    }
};

TEST_F(DifferenceSheetTest, CutAndFillHaveTheirHuesAndAHeavyBorder) {
    Change([](double x, double) { return (x - 40) / 10; }); // from -4 to 6
    VolumeFigures volumes;
    volumes.cut = 8000;
    volumes.fill = 18000;
    volumes.net = -10000;
    const SheetScene scene = Make(volumes);
    const auto isWarm = [](Colour colour) { return RedOf(colour) > BlueOf(colour); };
    EXPECT_TRUE(isWarm(FillAt(scene, 5, 52)));
    EXPECT_TRUE(isWarm(FillAt(scene, 38, 52)));
    EXPECT_FALSE(isWarm(FillAt(scene, 42, 52)));
    EXPECT_LT(RedOf(FillAt(scene, 98, 52)), RedOf(FillAt(scene, 42, 52))) << "stronger with height";
    EXPECT_GT(RedOf(FillAt(scene, 22, 52)), RedOf(FillAt(scene, 0.5, 52)));
    for (const SheetLine& line : scene.lines) {
        if (line.IsContour()) {
            EXPECT_EQ(line.layer == SheetLayer::IndexContours, line.level == 0) << line.level;
            EXPECT_EQ(scene.inks[line.ink].width > 0.4, line.level == 0) << line.level;
        }
    }
    const std::string name = "Difference new \xE2\x88\x92 old";
    EXPECT_TRUE(Has(scene, SheetLayer::Legend, name));
    EXPECT_TRUE(Has(scene, SheetLayer::TitleBlock, name));
    EXPECT_TRUE(Has(scene, SheetLayer::Legend, "Cut 8000.00 m\xC2\xB3"));
    EXPECT_TRUE(Has(scene, SheetLayer::Legend, "Fill 18000.00 m\xC2\xB3"));
    EXPECT_TRUE(Has(scene, SheetLayer::Legend,
                    "Net \xE2\x88\x92"
                    "10000.00 m\xC2\xB3"));
    EXPECT_FALSE(Has(scene, SheetLayer::Legend, "unchanged"));
    EXPECT_TRUE(scene.marks.empty());
}

TEST_F(DifferenceSheetTest, UnchangedGroundIsNeitherCutNorFill) {
    Change([](double x, double) { return x < 30 ? x - 30 : x > 70 ? (x - 70) / 2 : 0; });
    const SheetScene scene = Make();
    const Colour unchanged = FillAt(scene, 50, 52);
    EXPECT_GT(std::min({RedOf(unchanged), GreenOf(unchanged), BlueOf(unchanged)}), 245);
    EXPECT_EQ(FillAt(scene, 30.1, 52), unchanged);
    EXPECT_EQ(FillAt(scene, 69.9, 52), unchanged);
    EXPECT_NE(FillAt(scene, 29.9, 52), unchanged);
    EXPECT_NE(FillAt(scene, 70.1, 52), unchanged);
    EXPECT_TRUE(Has(scene, SheetLayer::Legend, "unchanged"));
    std::vector<double> borders;
    const MapView view = LayOut(plan, difference.points).view;
    for (const SheetLine& line : scene.lines) {
        if (line.IsContour() && line.level == 0) {
            borders.push_back(view.ToPlan(scene.VerticesOf(scene.PiecesOf(line)[0])[0]).x);
        }
    }
    std::sort(borders.begin(), borders.end());
    ASSERT_EQ(borders.size(), 2U);
    EXPECT_NEAR(borders[0], 30, 0.1);
    EXPECT_NEAR(borders[1], 70, 0.1);
}

TEST_F(DifferenceSheetTest, OneSidedAndEvenChangesHaveSheetsToo) {
    struct Case {
        const char* name;
        std::function<double(double, double)> height;
        const char* legend; // that stands there, and another that does not
        const char* notThere;
        bool hasLines;
    };
    const Case cases[] = {
        {"none", [](double, double) { return 0.; }, "unchanged", "Fill", false},
        {"noise", [](double x, double) { return 1e-12 * x; }, "unchanged", "Cut", false},
        {"even", [](double, double) { return 0.5; }, "Fill", "Cut", false},
        {"even but for rounding", [](double x, double y) { return 2 + 1e-13 * x * std::sin(y); },
         "Fill", "Cut", false},
        {"sunk", [](double x, double) { return -2 - x / 100; }, "Cut", "Fill", true},
        {"raised here and there", [](double x, double) { return std::max(x - 50, 0.); },
         "unchanged", "Cut", true},
    };
    for (const Case& each : cases) {
        Change(each.height);
        const SheetScene scene = Make();
        EXPECT_TRUE(Has(scene, SheetLayer::Legend, each.legend)) << each.name;
        EXPECT_FALSE(Has(scene, SheetLayer::Legend, each.notThere)) << each.name;
        const bool hasLines = std::any_of(scene.lines.begin(), scene.lines.end(),
                                          [](const SheetLine& line) { return line.IsContour(); });
        EXPECT_EQ(hasLines, each.hasLines) << each.name;
    }
    EXPECT_FALSE(MakeDifferenceSheet(plan, {DifferenceSurface()}, words));
}

} // namespace
} // namespace terravo

#include "sheet/SheetLayout.h"

#include <gtest/gtest.h>

#include <numbers>

namespace terravo {
namespace {

PointSet Rectangle(double width, double height) {
    PointSet points;
    for (const auto& [x, y] : {std::pair(0., 0.), {width, 0.}, {width, height}, {0., height}}) {
        points.Append(520000 + x, 4520000 + y, x + y);
    }
    return points;
}

bool Overlap(const SheetBox& a, const SheetBox& b) {
    return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

TEST(SheetLayout, KeepsEveryBoxOnThePaperAndApart) {
    for (const PaperSize& paper : PaperSizes()) {
        for (const bool landscape : {false, true}) {
            SheetPlan plan;
            plan.paper = paper;
            plan.landscape = landscape;
            const SheetLayout layout = LayOut(plan, Rectangle(300, 200));
            EXPECT_EQ(layout.paper.Width() > layout.paper.Height(), landscape);
            EXPECT_TRUE(layout.remarks.empty());
            const SheetBox boxes[] = {layout.map, layout.titleBlock, layout.legend, layout.scaleBar,
                                      layout.northArrow};
            for (const SheetBox& a : boxes) {
                EXPECT_GT(std::min(a.Width(), a.Height()), 9) << paper.name << landscape;
                EXPECT_TRUE(layout.paper.Contains({a.left, a.top}) &&
                            layout.paper.Contains({a.right, a.bottom}));
                for (const SheetBox& b : boxes) {
                    EXPECT_TRUE(&a == &b || !Overlap(a, b)) << paper.name << landscape;
                }
            }
        }
    }
}

TEST(SheetLayout, FitsAtTheLargestUsualScale) {
    for (const double side : {0.3, 7., 86., 431., 990., 12345., 4e6}) {
        SheetPlan plan;
        const SheetLayout layout = LayOut(plan, Rectangle(side, side / 2));
        EXPECT_EQ(UsualScale(layout.scale), layout.scale);
        EXPECT_LE(side * 1000 / layout.scale, layout.map.Width());
        const double larger = UsualScale(layout.scale * 0.5); // the next one
        EXPECT_GT(side * 1000 / larger, layout.map.Width() * 0.97);
        plan.scale = larger / 2;
        EXPECT_EQ(LayOut(plan, Rectangle(side, side / 2)).remarks.size(), 1U);
    }
    EXPECT_TRUE(LayOut({}, Rectangle(300, 100)).paper.Width() > 250) << "a wide survey lies across";
    EXPECT_TRUE(LayOut({}, Rectangle(100, 300)).paper.Width() < 250);
}

TEST(SheetLayout, IsTrueToScaleWhereverItIsTurned) {
    for (const double rotation : {0., 30., -75., 180.}) {
        SheetPlan plan;
        plan.scale = 500;
        plan.rotation = rotation;
        const MapView view = LayOut(plan, Rectangle(40, 30)).view;
        const SheetPoint a = view.ToPaper(520010, 4520010);
        const SheetPoint b = view.ToPaper(520020, 4520010);
        EXPECT_NEAR(std::hypot(b.x - a.x, b.y - a.y), 20, 1e-9);
        EXPECT_NEAR(std::atan2(a.y - b.y, b.x - a.x),
                    std::remainder(rotation, 360) * std::numbers::pi / 180, 1e-9);
        const PlanPoint back = view.ToPlan(a);
        EXPECT_NEAR(back.x, 520010, 1e-8);
        EXPECT_NEAR(back.y, 4520010, 1e-8);
    }
}

TEST(SheetPlan, UnderstandsPapersAndLayers) {
    EXPECT_EQ(ParsePaperSize("a3")->height, 420);
    EXPECT_EQ(ParsePaperSize("700x500")->width, 500);
    for (const char* wrong : {"", "A9", "x", "10x10", "1x", "1e9x5", "nanx100", "100x100x"}) {
        EXPECT_FALSE(ParsePaperSize(wrong)) << wrong;
    }
    const SheetLayers layers = ParseLayers("contours,Spot-Heights").value();
    EXPECT_TRUE(layers[static_cast<std::size_t>(SheetLayer::SpotHeights)]);
    EXPECT_TRUE(layers[static_cast<std::size_t>(SheetLayer::Frame)]) << "always there";
    EXPECT_FALSE(layers[static_cast<std::size_t>(SheetLayer::Grid)]);
    EXPECT_FALSE(ParseLayers("contours,frame"));
    EXPECT_FALSE(ParseLayers("contours,,grid"));
    EXPECT_EQ(UsualScale(1), 1);
    EXPECT_EQ(UsualScale(2001), 2500);
    EXPECT_EQ(UsualScale(0.3), 0.5);
}

} // namespace
} // namespace terravo

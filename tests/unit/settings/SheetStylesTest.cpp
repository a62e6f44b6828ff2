#include "app/settings/SheetStyles.h"

#include "app/settings/OpeningWindows.h"
#include "support/FakeSettings.h"

#include <gtest/gtest.h>

namespace terravo {
namespace {

// Nothing as it is in a new plan.
SheetPlan Unusual() {
    SheetPlan plan;
    plan.paper = *ParsePaperSize("500x700");
    plan.landscape = true;
    plan.scale = 742.5;
    plan.rotation = -12.25;
    plan.centre = PlanPoint{1, 2};
    plan.Show(SheetLayer::Bands, true);
    plan.Show(SheetLayer::Grid, false);
    plan.theme = "dark";
    plan.indexEvery = 4;
    plan.labels = SheetLabels::All;
    plan.labelSpacing = 77.5;
    plan.labelsUphill = true;
    plan.textHeight = 2.3;
    plan.gridLines = true;
    plan.texts.title = "Quarry; north = up";
    return plan;
}

TEST(SheetStylesTest, KeepsAllOfAPlanButItsPlaceAndItsTexts) {
    FakeSettings settings;
    SheetStyles(settings).Keep("site plan", Unusual());
    SheetStyles(settings).Keep("A plan", SheetPlan());
    const SheetStyles styles(settings);
    EXPECT_EQ(styles.Names(), (std::vector<std::string>{"A plan", "site plan"}));
    SheetPlan plan;
    plan.centre = PlanPoint{8, 9};
    plan.texts.author = "me";
    ASSERT_TRUE(styles.Apply("site plan", plan));
    SheetPlan expected = Unusual();
    expected.centre = PlanPoint{8, 9};
    expected.texts = {};
    expected.texts.author = "me";
    EXPECT_EQ(plan, expected);
    EXPECT_FALSE(styles.Apply("another", plan));
    EXPECT_EQ(plan, expected);
}

TEST(SheetStylesTest, ReplacesAndRemovesByName) {
    FakeSettings settings;
    SheetStyles styles(settings);
    styles.Keep("a", SheetPlan());
    styles.Keep("b", SheetPlan());
    styles.Keep("a", Unusual());
    styles.Keep("", Unusual());
    EXPECT_EQ(SheetStyles(settings).Names(), (std::vector<std::string>{"a", "b"}));
    SheetPlan plan;
    styles.Apply("a", plan);
    EXPECT_EQ(plan.theme, "dark");
    styles.Remove("a");
    EXPECT_EQ(SheetStyles(settings).Names(), std::vector<std::string>{"b"});
    EXPECT_EQ(SheetStyles(settings).Last(), SheetPlan());
    styles.KeepLast(plan);
    EXPECT_EQ(StyleText(SheetStyles(settings).Last()), StyleText(plan));
}

TEST(SheetStylesTest, LeavesAsItIsWhatATextSaysBadlyOrNotAtAll) {
    for (const char* text :
         {"", ";;=;", "paper=huge", "scale=-3;rotation=north", "layers=contours,forest",
          "theme=pink;labels=some", "index=1e9;spacing=nan;height=", "uphill=2;grid=dots", "x=y",
          "scale", "spacing=4", "orientation=upside down"}) {
        EXPECT_EQ(PlanOfStyle(text), SheetPlan()) << text;
    }
    EXPECT_EQ(PlanOfStyle("scale=500;nonsense=1;theme=dark").scale, 500);
}

TEST(OpeningWindowsTest, AreKeptAndShowTheSheetWhereNothingIsKept) {
    FakeSettings settings;
    EXPECT_EQ(LoadOpeningWindows(settings), OpeningWindows::MapAnd3DAndSheet);
    for (const OpeningWindows windows : {OpeningWindows::MapAnd3D, OpeningWindows::MapAndSheet,
                                         OpeningWindows::MapAnd3DAndSheet}) {
        KeepOpeningWindows(settings, windows);
        EXPECT_EQ(LoadOpeningWindows(settings), windows);
    }
}

} // namespace
} // namespace terravo

#include "app/settings/TerrainHabit.h"

#include "support/FakeSettings.h"

#include <gtest/gtest.h>

namespace terravo {
namespace {

TEST(TerrainHabitTest, IsKeptAndWhatCannotBeUnderstoodIsAsUsual) {
    FakeSettings settings;
    EXPECT_EQ(LoadTerrainHabit(settings).plan, TerrainPlan());
    TerrainHabit habit;
    TerrainPlan& plan = habit.plan;
    plan.colouring = TerrainColouring::Aspect;
    plan.theme = "dark";
    for (bool TerrainPlan::*field :
         {&TerrainPlan::smooth, &TerrainPlan::triangles, &TerrainPlan::contours,
          &TerrainPlan::points, &TerrainPlan::lines, &TerrainPlan::plate, &TerrainPlan::legend,
          &TerrainPlan::dark}) {
        plan.*field = !(plan.*field);
    }
    plan.lightAzimuth = 12;
    plan.lightElevation = 34;
    habit.perspective = false;
    habit.factorOf = "/surveys/a.txt";
    habit.factor = 2.5;
    KeepTerrainHabit(settings, habit);
    const TerrainHabit kept = LoadTerrainHabit(settings);
    EXPECT_EQ(kept.plan, plan);
    EXPECT_FALSE(kept.perspective);
    EXPECT_EQ(kept.FactorFor("/surveys/a.txt"), std::optional(2.5));
    EXPECT_FALSE(kept.FactorFor("/surveys/b.txt"));
    EXPECT_FALSE(TerrainHabit().FactorFor(""));

    for (const char* key : {"Colours", "Theme", "LightFrom", "LightHeight", "View", "Factor"}) {
        settings.Set("Terrain", key, "1e9");
    }
    settings.Set("Terrain", "Shown", "contoursx,,legend,");
    const TerrainHabit poor = LoadTerrainHabit(settings);
    TerrainPlan usual;
    usual.smooth = usual.contours = usual.lines = usual.plate = false;
    EXPECT_EQ(poor.plan, usual);
    EXPECT_TRUE(poor.perspective);
    EXPECT_EQ(poor.factor, 1);
}

} // namespace
} // namespace terravo

#include "app/settings/TerrainHabit.h"

#include "sheet/SheetTheme.h"
#include "view3d/terrain/TerrainCamera.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string_view>

namespace terravo {
namespace {

constexpr const char* kSection = "Terrain";
constexpr const char* kColours = "Colours";
constexpr const char* kTheme = "Theme";
constexpr const char* kShown = "Shown";
constexpr const char* kLightFrom = "LightFrom";
constexpr const char* kLightHeight = "LightHeight";
constexpr const char* kView = "View";
constexpr const char* kParallel = "parallel";
constexpr const char* kFactor = "Factor";
constexpr const char* kFactorOf = "FactorOf";

constexpr std::array kColourings{"height", "slope", "aspect", "plain"}; // by their numbers

struct Switch {
    std::string_view name;
    bool TerrainPlan::*field;
};

constexpr std::array kSwitches{
    Switch{"smooth", &TerrainPlan::smooth},     Switch{"triangles", &TerrainPlan::triangles},
    Switch{"contours", &TerrainPlan::contours}, Switch{"points", &TerrainPlan::points},
    Switch{"lines", &TerrainPlan::lines},       Switch{"plate", &TerrainPlan::plate},
    Switch{"legend", &TerrainPlan::legend},     Switch{"dark", &TerrainPlan::dark}};

std::string NamesOf(const TerrainPlan& plan) {
    std::string names;
    for (const Switch& one : kSwitches) {
        if (plan.*one.field) {
            names += (names.empty() ? "" : ",") + std::string(one.name);
        }
    }
    return names;
}

bool Lists(std::string_view names, std::string_view name) {
    while (!names.empty()) {
        const std::size_t end = std::min(names.find(','), names.size());
        if (names.substr(0, end) == name) {
            return true;
        }
        names.remove_prefix(std::min(end + 1, names.size()));
    }
    return false;
}

void ReadNumber(const std::optional<std::string>& text, double low, double high, double& value) {
    double number = 0;
    if (text) {
        const char* last = text->data() + text->size();
        const auto [end, error] = std::from_chars(text->data(), last, number);
        if (error == std::errc() && end == last && number >= low && number <= high) {
            value = number;
        }
    }
}

std::string TextOf(double value) {
    std::array<char, 32> text{};
    return {text.data(), std::to_chars(text.data(), text.data() + text.size(), value).ptr};
}

} // namespace

TerrainHabit LoadTerrainHabit(const SettingsStore& store) {
    TerrainHabit habit;
    TerrainPlan& plan = habit.plan;
    const std::string colours = store.Get(kSection, kColours).value_or("");
    for (std::size_t i = 0; i < kColourings.size(); ++i) {
        if (colours == kColourings[i]) {
            plan.colouring = static_cast<TerrainColouring>(i);
        }
    }
    const std::string theme = store.Get(kSection, kTheme).value_or("");
    if (FindTheme(theme) != nullptr) {
        plan.theme = theme;
    }
    if (const std::optional<std::string> shown = store.Get(kSection, kShown)) {
        for (const Switch& one : kSwitches) {
            plan.*one.field = Lists(*shown, one.name);
        }
    }
    ReadNumber(store.Get(kSection, kLightFrom), 0, 360, plan.lightAzimuth);
    ReadNumber(store.Get(kSection, kLightHeight), 0, 90, plan.lightElevation);
    habit.perspective = store.Get(kSection, kView) != kParallel;
    habit.factorOf = store.Get(kSection, kFactorOf).value_or("");
    ReadNumber(store.Get(kSection, kFactor), TerrainCamera::kLeastExaggeration,
               TerrainCamera::kMostExaggeration, habit.factor);
    return habit;
}

void KeepTerrainHabit(SettingsStore& store, const TerrainHabit& habit) {
    const TerrainPlan& plan = habit.plan;
    store.Set(kSection, kColours, kColourings[static_cast<std::size_t>(plan.colouring)]);
    store.Set(kSection, kTheme, plan.theme);
    store.Set(kSection, kShown, NamesOf(plan));
    store.Set(kSection, kLightFrom, TextOf(plan.lightAzimuth));
    store.Set(kSection, kLightHeight, TextOf(plan.lightElevation));
    store.Set(kSection, kView, habit.perspective ? "perspective" : kParallel);
    store.Set(kSection, kFactorOf, habit.factorOf);
    store.Set(kSection, kFactor, TextOf(habit.factor));
}

} // namespace terravo

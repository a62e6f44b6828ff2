// How the user looked at terrains last.
//
// Data: plain values. Method: kept in the settings as texts; what is there and cannot be understood
// is left at what is usual. A factor of heights suits the survey that it was chosen for, so it is
// kept with that survey's file.
#pragma once

#include "util/SettingsStore.h"
#include "view3d/terrain/TerrainPlan.h"

#include <optional>
#include <string>

namespace terravo {

struct TerrainHabit {
    TerrainPlan plan;
    bool perspective = true;
    std::string factorOf; // path of the file; empty: no factor was chosen
    double factor = 1;

    /// The factor that was chosen for a file.
    [[nodiscard]] std::optional<double> FactorFor(const std::string& file) const {
        return !file.empty() && file == factorOf ? std::optional(factor) : std::nullopt;
    }
};

TerrainHabit LoadTerrainHabit(const SettingsStore& store);
void KeepTerrainHabit(SettingsStore& store, const TerrainHabit& habit);

} // namespace terravo

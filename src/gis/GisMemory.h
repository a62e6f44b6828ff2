// How files that go through GDAL were read, from one run to the next.
//
// Data: in the settings a short list of plans, each with the path of its file. Method: each entry
// is one line of text in which everything but letters, digits and plain marks is written as %XX.
#pragma once

#include "gis/GisPlan.h"
#include "util/SettingsStore.h"

#include <optional>
#include <string>
#include <string_view>

namespace terravo {

/// A plan as one word of ASCII, and back.
/// @return nothing for a text that is no plan.
std::string TextOf(const GisPlan& plan);
std::optional<GisPlan> GisPlanFromText(std::string_view text);

class GisMemory {
public:
    static constexpr std::size_t kMost = 50;
    static constexpr const char* kSection = "GisPlans";

    explicit GisMemory(SettingsStore& store) : store_(store) {}

    /// The plan that was chosen for this file.
    [[nodiscard]] std::optional<GisPlan> Recall(const std::string& path) const;
    /// Keeps a choice; the oldest drops out of a full list.
    void Remember(const std::string& path, const GisPlan& plan);

private:
    SettingsStore& store_;
};

} // namespace terravo

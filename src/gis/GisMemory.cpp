#include "gis/GisMemory.h"

#include "util/EscapedText.h"

#include <algorithm>
#include <charconv>
#include <vector>

namespace terravo {
namespace {

// Height field, target system, degrees, step, then the layers.
constexpr std::size_t kFixedFields = 4;

std::optional<int> PositiveNumber(std::string_view text) {
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && end == text.data() + text.size() && value > 0
               ? std::optional(value)
               : std::nullopt;
}

std::string TextOf(const std::optional<int>& number) {
    return number ? std::to_string(*number) : "-";
}

std::vector<std::string> Entries(const SettingsStore& store) {
    std::vector<std::string> entries;
    for (std::size_t i = 1; i <= GisMemory::kMost; ++i) {
        if (auto entry = store.Get(GisMemory::kSection, std::to_string(i))) {
            entries.push_back(*std::move(entry));
        }
    }
    return entries;
}

bool IsOf(const std::string& entry, const std::string& escapedPath) {
    const std::vector<std::string_view> parts = Split(entry, ' ');
    return parts.size() == 2 && parts[1] == escapedPath;
}

} // namespace

std::string TextOf(const GisPlan& plan) {
    std::string text = Escaped(plan.heightField) + ";" + TextOf(plan.toEpsg) + ";" +
                       (plan.degreesAsTheyAre ? "1" : "0") + ";" + TextOf(plan.rasterStep);
    for (const std::string& layer : plan.layers) {
        text += ";" + Escaped(layer);
    }
    return text;
}

std::optional<GisPlan> GisPlanFromText(std::string_view text) {
    const std::vector<std::string_view> parts = Split(text, ';');
    if (parts.size() < kFixedFields || (parts[2] != "0" && parts[2] != "1")) {
        return std::nullopt;
    }
    GisPlan plan;
    plan.toEpsg = PositiveNumber(parts[1]);
    plan.degreesAsTheyAre = parts[2] == "1";
    plan.rasterStep = PositiveNumber(parts[3]);
    const auto heightField = Unescaped(parts[0]);
    if (!heightField || plan.rasterStep.value_or(1) > kMostRasterStep) {
        return std::nullopt;
    }
    plan.heightField = *heightField;
    for (std::size_t i = kFixedFields; i < parts.size(); ++i) {
        const auto layer = Unescaped(parts[i]);
        if (!layer) {
            return std::nullopt;
        }
        plan.layers.push_back(*layer);
    }
    return plan;
}

std::optional<GisPlan> GisMemory::Recall(const std::string& path) const {
    const std::string name = Escaped(path);
    for (const std::string& entry : Entries(store_)) {
        if (IsOf(entry, name)) {
            return GisPlanFromText(Split(entry, ' ').front());
        }
    }
    return std::nullopt;
}

void GisMemory::Remember(const std::string& path, const GisPlan& plan) {
    const std::string name = Escaped(path);
    std::vector<std::string> entries = Entries(store_);
    std::erase_if(entries, [&name](const std::string& entry) { return IsOf(entry, name); });
    entries.insert(entries.begin(), TextOf(plan) + " " + name);
    for (std::size_t i = 0; i < std::min(entries.size(), kMost); ++i) {
        store_.Set(kSection, std::to_string(i + 1), entries[i]);
    }
}

} // namespace terravo

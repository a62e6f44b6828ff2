// A settings store that is a map.
#pragma once

#include "util/SettingsStore.h"

#include <map>
#include <utility>

namespace terravo {

struct FakeSettings : SettingsStore {
    std::map<std::pair<std::string, std::string>, std::string> values; // by section and key

    [[nodiscard]] std::optional<std::string> Get(const std::string& section,
                                                 const std::string& key) const override {
        const auto found = values.find({section, key});
        return found == values.end() ? std::nullopt : std::optional(found->second);
    }
    void Set(const std::string& section, const std::string& key,
             const std::string& value) override {
        values[{section, key}] = value;
    }
};

} // namespace terravo

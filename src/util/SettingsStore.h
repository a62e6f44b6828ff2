// The memory of one user between two runs: texts under a section and a key.
//
// The program's settings file stands behind it in the windows, a map in the tests.
#pragma once

#include <optional>
#include <string>

namespace terravo {

class SettingsStore {
public:
    virtual ~SettingsStore() = default;
    /// The text kept under a key; nothing when there is none.
    [[nodiscard]] virtual std::optional<std::string> Get(const std::string& section,
                                                         const std::string& key) const = 0;
    virtual void Set(const std::string& section, const std::string& key,
                     const std::string& value) = 0;
};

} // namespace terravo

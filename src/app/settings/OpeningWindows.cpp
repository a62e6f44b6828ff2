#include "app/settings/OpeningWindows.h"

#include <array>

namespace terravo {
namespace {

constexpr const char* kSection = "Opening";
constexpr const char* kKey = "Windows";
constexpr std::array kNames{"classic", "classic+sheet", "sheet"}; // in the order of the choices

} // namespace

OpeningWindows LoadOpeningWindows(const SettingsStore& store) {
    const std::string name = store.Get(kSection, kKey).value_or("");
    for (std::size_t i = 0; i < kNames.size(); ++i) {
        if (name == kNames[i]) {
            return static_cast<OpeningWindows>(i);
        }
    }
    return OpeningWindows::MapAnd3DAndSheet;
}

void KeepOpeningWindows(SettingsStore& store, OpeningWindows windows) {
    store.Set(kSection, kKey, kNames[static_cast<std::size_t>(windows)]);
}

} // namespace terravo

// Which windows open with a file that the user opens.
//
// Data: one choice in the settings. Start-up files of the companion program do not ask it.
#pragma once

#include "util/SettingsStore.h"

namespace terravo {

enum class OpeningWindows : unsigned char {
    MapAnd3D,
    MapAnd3DAndSheet,
    MapAndSheet,
};

/// The choice of the settings; MapAnd3DAndSheet where there is none.
OpeningWindows LoadOpeningWindows(const SettingsStore& store);
void KeepOpeningWindows(SettingsStore& store, OpeningWindows windows);

} // namespace terravo

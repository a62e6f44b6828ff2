// How the user exported last: the format, and for each format what it was to hold.
//
// Data: plain values. Method: kept in the settings as texts; what is there and cannot be understood
// is left at what is usual.
#pragma once

#include "export/vector/MakeVectorContent.h"
#include "export/vector/VectorFormat.h"
#include "util/SettingsStore.h"

#include <string>

namespace terravo {

struct ExportHabit {
    std::string format; // its option; empty: none yet
    VectorWish wish;    // its parts are those of the format
    VectorOptions options;
    bool smooth = false; // lines as on the sheet, where the format takes them
};

/// What was chosen last.
/// @param format  of which the parts are wanted; empty: of the last one.
ExportHabit LoadExportHabit(const SettingsStore& store, const std::string& format = {});

/// Keeps a choice, its parts for its format.
void KeepExportHabit(SettingsStore& store, const ExportHabit& habit);

} // namespace terravo

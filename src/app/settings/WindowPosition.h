// Where a window was when the program ended.
//
// Data: a box in whole logical pixels for the windows; in the settings, texts of single-precision
// numbers in twips, 15 to the logical pixel. Method: every rule is applied in twips, as stored, and
// pixels are rounded down at the end, so that a limit in twips still holds.
#pragma once

#include "util/SettingsStore.h"

#include <functional>
#include <string>

namespace terravo {

inline constexpr int kTwipsPerPixel = 15;

/// Logical pixels.
struct WindowBox {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;

    bool operator==(const WindowBox&) const = default;
};

/// A random whole number between two, both included.
using RandomBetween = std::function<int(int low, int high)>;

/// Keeps the place of a window, unless it is minimised: that place is not where the user put it.
/// @param windowName  the window's own identifier, start of the four keys.
/// @param withSize    keep width and height as well.
void SaveWindowPosition(SettingsStore& store, const std::string& windowName, const WindowBox& box,
                        bool minimised, bool withSize);

/// Whether both edges, or both sides, are kept in a form that RestoreWindowPosition takes.
bool HasSavedPlace(const SettingsStore& store, const std::string& windowName);
bool HasSavedSize(const SettingsStore& store, const std::string& windowName);

/// The place that a window should take. Without a saved place it is a random one near the corner;
/// without a saved size the present one; neither side reaches the size of the screen. A saved text
/// that is no number, a place beyond any screen or a size that is not positive counts as none.
/// @param screenWidth, screenHeight  logical pixels.
WindowBox RestoreWindowPosition(const SettingsStore& store, const std::string& windowName,
                                const WindowBox& currentBox, int screenWidth, int screenHeight,
                                const RandomBetween& random);

} // namespace terravo

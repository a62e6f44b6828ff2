#include "app/settings/WindowPosition.h"

#include "util/NumberText.h"
#include "util/modUtilita.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>
#include <system_error>

namespace terravo {
namespace {

constexpr const char* kSection = "PosizioniForms";

// All in twips.
constexpr int kNearestRandom = 5;
constexpr int kFarthestRandom = 4500;
constexpr double kScreenRest = 4;
constexpr double kFarthestPlace = 32767.0 * kTwipsPerPixel; // window systems reach no further

std::string TwipsText(int pixels) {
    return NumberText::General(static_cast<float>(pixels) * static_cast<float>(kTwipsPerPixel));
}

// Whole twips.
std::optional<double> SavedTwips(const SettingsStore& store, const std::string& key) {
    const std::string text = store.Get(kSection, key).value_or("");
    double value = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), value);
    if (read.ec != std::errc{} || read.ptr != text.data() + text.size() || !std::isfinite(value)) {
        return std::nullopt;
    }
    return modUtilita::RoundHalfEven(value);
}

int PixelsBelow(double twips) {
    return static_cast<int>(std::floor(twips / kTwipsPerPixel));
}

std::optional<double> SavedPlace(const SettingsStore& store, const std::string& key) {
    const std::optional<double> saved = SavedTwips(store, key);
    return saved && std::fabs(*saved) <= kFarthestPlace ? saved : std::nullopt;
}

std::optional<double> SavedSize(const SettingsStore& store, const std::string& key) {
    const std::optional<double> saved = SavedTwips(store, key);
    return saved && *saved > 0 ? saved : std::nullopt;
}

int RestorePlace(const SettingsStore& store, const std::string& key, const RandomBetween& random) {
    const std::optional<double> saved = SavedPlace(store, key);
    return PixelsBelow(saved ? *saved : random(kNearestRandom, kFarthestRandom));
}

int RestoreSize(const SettingsStore& store, const std::string& key, int currentPixels,
                int screenPixels) {
    const double wanted = SavedSize(store, key).value_or(double{kTwipsPerPixel} * currentPixels);
    // Twips on both sides: the rest of 4 is less than a pixel, which rounding down turns into one.
    const double most = static_cast<double>(screenPixels) * kTwipsPerPixel - kScreenRest;
    return PixelsBelow(std::min(wanted, most));
}

} // namespace

void SaveWindowPosition(SettingsStore& store, const std::string& windowName, const WindowBox& box,
                        bool minimised, bool withSize) {
    if (minimised) {
        return;
    }
    store.Set(kSection, windowName + "_Left", TwipsText(box.left));
    store.Set(kSection, windowName + "_Top", TwipsText(box.top));
    if (withSize) {
        store.Set(kSection, windowName + "_Width", TwipsText(box.width));
        store.Set(kSection, windowName + "_Height", TwipsText(box.height));
    }
}

bool HasSavedPlace(const SettingsStore& store, const std::string& windowName) {
    return SavedPlace(store, windowName + "_Left") && SavedPlace(store, windowName + "_Top");
}

bool HasSavedSize(const SettingsStore& store, const std::string& windowName) {
    return SavedSize(store, windowName + "_Width") && SavedSize(store, windowName + "_Height");
}

WindowBox RestoreWindowPosition(const SettingsStore& store, const std::string& windowName,
                                const WindowBox& currentBox, int screenWidth, int screenHeight,
                                const RandomBetween& random) {
    WindowBox box;
    box.left = RestorePlace(store, windowName + "_Left", random);
    box.top = RestorePlace(store, windowName + "_Top", random);
    box.width = RestoreSize(store, windowName + "_Width", currentBox.width, screenWidth);
    box.height = RestoreSize(store, windowName + "_Height", currentBox.height, screenHeight);
    return box;
}

} // namespace terravo

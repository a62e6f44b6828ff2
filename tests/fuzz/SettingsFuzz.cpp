// Settings of any text: places of windows and the files opened last.
//
// Data: a few numbers (screen, present window, limit) and then texts between line feeds, which
// stand under the keys in turn. Method: whatever the texts, the windows fit their screen and the
// list is one that could have been saved; what is saved comes back the same.
#include "app/settings/RecentFiles.h"
#include "app/settings/WindowPosition.h"
#include "fuzz/FuzzInput.h"
#include "support/FakeSettings.h"

#include <algorithm>
#include <cstdlib>

namespace terravo {
namespace {

using fuzz::Require;

constexpr int kFarthestPixel = 32767;
constexpr const char* kWindow = "frm";

int Middle(int low, int high) {
    return (low + high) / 2;
}

void CheckPlace(const FakeSettings& store, fuzz::InputBytes& numbers) {
    const int screenWidth = numbers.Short();
    const int screenHeight = numbers.Short();
    const WindowBox present{0, 0, numbers.Short(), numbers.Short()};
    const WindowBox box =
        RestoreWindowPosition(store, kWindow, present, screenWidth, screenHeight, Middle);
    Require(std::abs(box.left) <= kFarthestPixel && std::abs(box.top) <= kFarthestPixel,
            "a place is within reach of a window system");
    Require(box.width < screenWidth && box.height < screenHeight,
            "no side reaches the size of the screen");

    FakeSettings kept;
    const WindowBox saved{std::max(numbers.Short(), -kFarthestPixel),
                          std::max(numbers.Short(), -kFarthestPixel), 1 + numbers.Byte(),
                          1 + numbers.Byte()};
    SaveWindowPosition(kept, kWindow, saved, false, true);
    Require(RestoreWindowPosition(kept, kWindow, present, 300, 300, Middle) == saved,
            "a place comes back");
}

void CheckRecent(const FakeSettings& store, std::size_t limit) {
    RecentFiles files;
    files.Load(store, RecentFiles::kSection, limit, false);
    const std::vector<std::string>& paths = files.Paths();
    Require(paths.size() <= std::min(limit, RecentFiles::kHighestLimit), "the list has its limit");
    for (std::size_t k = 1; k <= paths.size(); ++k) {
        Require(!paths[k - 1].empty() && std::count(paths.begin(), paths.end(), paths[k - 1]) == 1,
                "every path is there once");
        Require(files.CaptionOf(k) == "&" + std::to_string(k) + " " + paths[k - 1],
                "a caption is a digit and the path");
    }
    FakeSettings kept;
    files.Save(kept);
    RecentFiles again;
    again.Load(kept, RecentFiles::kSection, limit, false);
    Require(again.Paths() == paths, "the list comes back");
    files.Load(store, RecentFiles::kSection, limit, true);
}

} // namespace
} // namespace terravo

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace terravo;
    constexpr std::size_t kNumbers = 15;
    const std::size_t head = std::min(size, kNumbers);
    fuzz::InputBytes numbers(data, head);
    const auto limit = static_cast<std::size_t>(numbers.Byte() % 16);

    FakeSettings store;
    const std::vector<std::string> texts =
        fuzz::SplitAt(fuzz::TextOf(data + head, size - head), '\n');
    for (std::size_t i = 0; i < texts.size(); ++i) {
        if (i < 4) {
            const char* const sides[] = {"_Left", "_Top", "_Width", "_Height"};
            store.Set("PosizioniForms", std::string(kWindow) + sides[i], texts[i]);
        } else {
            store.Set(RecentFiles::kSection, std::to_string(i - 3), texts[i]);
        }
    }
    CheckPlace(store, numbers);
    CheckRecent(store, limit);
    return 0;
}

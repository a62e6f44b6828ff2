// What the program finds at its start: files of settings, language and colours, kept places and
// recent files, command line and clipboard, each of any bytes.
//
// Data: the input is each of the files; its lines are the kept texts in turn, the first the
// argument of the command line and all after it the clipboard; its first bytes are the sizes of
// screen and window. Method: whatever they hold, values are in their ranges, windows fit their
// screen, what a shell takes off and the program puts back cancels out, and what is accepted is a
// file to start with.
#include "app/session/StartUpRules.h"
#include "app/settings/ColourScheme.h"
#include "app/settings/Configuration.h"
#include "app/settings/Language.h"
#include "app/settings/RecentFiles.h"
#include "app/settings/WindowPosition.h"
#include "fuzz/FuzzInput.h"
#include "support/FakeSettings.h"
#include "support/TemporaryFolder.h"
#include "util/PathText.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace terravo {
namespace {

using fuzz::Require;
using Lines = std::vector<std::string>;

void CheckFiles(const std::string& text, const test::TemporaryFolder& folder) {
    Lines lines = fuzz::SplitAt(text, '\n');
    for (std::string& line : lines) {
        line.erase(line.end() - (line.ends_with('\r') ? 1 : 0), line.end());
    }
    const StartUpSettings settings = ReadStartUpSettings(folder.Write("sxconf.cff", text));
    Require(settings.language == (lines.size() > 5 ? lines[5] : std::string()),
            "the sixth line is the language");
    const std::string languageFile = folder.Path() + LanguageFileName(settings.language);
    Require(LoadTextTable(languageFile).empty() || languageFile.find('\0') == std::string::npos,
            "no other file stands in for one that cannot exist");

    const TextTable texts = LoadTextTable(folder.Write("xx_p.trl", text));
    Require(texts.size() == lines.size() - (text.empty() || text.back() == '\n' ? 1 : 0),
            "every line is a text");
    Require(texts.size() < 2 || std::equal(texts.begin() + 1, texts.end(), lines.begin() + 1),
            "a text is its line");

    static_cast<void>(folder.Write("color_menu.cff", text));
    const ColourScheme scheme = ReadColourScheme(folder.Path());
    for (const Colour colour : {scheme.backColour, scheme.foreColour, scheme.accentColour}) {
        Require(colour <= 0xFFFFFF, "a colour has three channels");
    }
    Require(scheme.greyLevel >= 0 && scheme.greyLevel <= 255, "a grey level has eight bits");
}

void CheckPlace(const FakeSettings& store, fuzz::InputBytes numbers) {
    constexpr int kFarthestPixel = 32767;
    const auto middle = [](int low, int high) { return (low + high) / 2; };
    const int width = numbers.Short();
    const int height = numbers.Short();
    const WindowBox present{0, 0, numbers.Short(), numbers.Short()};
    const WindowBox box = RestoreWindowPosition(store, "frm", present, width, height, middle);
    Require(std::abs(box.left) <= kFarthestPixel && std::abs(box.top) <= kFarthestPixel,
            "a place is within reach of a window system");
    Require(box.width < width && box.height < height, "no side reaches the size of the screen");
    FakeSettings kept;
    const WindowBox saved{std::max(numbers.Short(), -kFarthestPixel),
                          std::max(numbers.Short(), -kFarthestPixel), 1 + numbers.Byte(),
                          1 + numbers.Byte()};
    SaveWindowPosition(kept, "frm", saved, false, true);
    Require(RestoreWindowPosition(kept, "frm", present, 300, 300, middle) == saved,
            "a place comes back");
}

void CheckRecent(const FakeSettings& store, std::size_t limit) {
    RecentFiles files;
    files.Load(store, RecentFiles::kSection, limit, false);
    const Lines& paths = files.Paths();
    Require(paths.size() <= std::min(limit, RecentFiles::kHighestLimit), "the list has its limit");
    for (const std::string& path : paths) {
        Require(!path.empty() && std::count(paths.begin(), paths.end(), path) == 1,
                "every path is there once");
    }
    FakeSettings kept;
    files.Save(kept);
    RecentFiles again;
    again.Load(kept, RecentFiles::kSection, limit, false);
    Require(again.Paths() == paths, "the list comes back");
}

void CheckSettings(const Lines& lines, const fuzz::InputBytes& numbers, std::size_t limit) {
    constexpr std::array kSides{"frm_Left", "frm_Top", "frm_Width", "frm_Height"};
    FakeSettings store;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (i < kSides.size()) {
            store.Set("PosizioniForms", kSides[i], lines[i]);
        } else {
            store.Set(RecentFiles::kSection, std::to_string(i - kSides.size() + 1), lines[i]);
        }
    }
    CheckPlace(store, numbers);
    CheckRecent(store, limit);
}

bool IsQuoted(const std::string& text) {
    return text.size() > 1 && text.front() == '"' && text.back() == '"';
}

void CheckCommandLine(const std::string& argument) {
    const std::string raw = RawCommandLine(std::array{argument});
    Require(IsQuoted(raw), "a raw command line is quoted");
    const std::string expected =
        IsQuoted(argument) ? argument.substr(1, argument.size() - 2) : argument;
    const auto accepted = AcceptedStartUpFile("other.qrw", raw);
    Require(accepted.has_value() == IsStartUpFile(expected) &&
                accepted.value_or(expected) == expected,
            "the quotes come off again, and a start-up file is accepted");
    const PathParts parts = SplitPath(argument);
    Require(parts.folder + parts.name == argument, "a path is folder and name");
}

void CheckClipboard(const std::string& text) {
    const std::optional<std::string> path = PathFromClipboard(text);
    Require(!path || *path == text || (FileExists(*path) && path->find('\0') == std::string::npos),
            "an address stands for a file that exists");
    const auto accepted = AcceptedStartUpFile(text, "");
    Require(!accepted || (accepted == path && IsStartUpFile(*accepted)),
            "the accepted file is that of the clipboard");
    Require(ParentStateFor(text) == (accepted ? ParentState::Minimised : ParentState::AsDesigned),
            "the window starts as its clipboard says");
}

} // namespace
} // namespace terravo

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace terravo;
    static const test::TemporaryFolder folder;
    const std::string text = fuzz::TextOf(data, size);
    const Lines lines = fuzz::SplitAt(text, '\n');
    CheckFiles(text, folder);
    CheckSettings(lines, fuzz::InputBytes(data, size), size % 16);
    CheckCommandLine(lines[0]);
    CheckClipboard(text.substr(std::min(lines[0].size() + 1, size)));
    return 0;
}

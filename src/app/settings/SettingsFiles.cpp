#include "app/settings/SettingsFiles.h"

#include "app/settings/Configuration.h"
#include "app/settings/Language.h"
#include "util/AppError.h"
#include "util/OutputFile.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace terravo {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kLanguageLine = 5; // counted from 0
constexpr const char* kLineEnd = "\r\n"; // of the programs that share the file

std::string NameOf(const std::string& prefix) {
    const struct {
        const char* prefix;
        const char* name;
    } known[] = {{"", "English"},     {"de", "Deutsch"},  {"en", "English"},    {"es", "Español"},
                 {"fr", "Français"},  {"it", "Italiano"}, {"nl", "Nederlands"}, {"pl", "Polski"},
                 {"pt", "Português"}, {"ro", "Română"},   {"sl", "Slovenščina"}};
    for (const auto& entry : known) {
        if (prefix == entry.prefix) {
            return entry.name;
        }
    }
    return prefix;
}

// The lines of a file that is to be changed. One that is there and cannot be read must not be
// replaced by a new one.
std::vector<std::string> LinesToKeep(const std::string& path) {
    std::vector<std::string> lines = ReadSmallFile(path);
    std::error_code error;
    const bool isThere = fs::exists(fs::symlink_status(path, error));
    const bool isEmptyFile =
        fs::is_regular_file(path, error) && fs::file_size(path, error) == 0 && !error;
    if (lines.empty() && isThere && !isEmptyFile) {
        throw AppError(ErrorNumber::kDeviceIo, path, path + ": cannot be read, so it is kept");
    }
    return lines;
}

// Without a folder of the user the name alone would lead into the folder of the moment.
std::string PathIn(const std::string& userFolder, const char* name) {
    if (userFolder.empty()) {
        throw AppError(ErrorNumber::kDeviceIo, name, "There is no folder for settings.");
    }
    return userFolder + name;
}

} // namespace

std::string LanguageAtNextStart(const std::string& userFolder) {
    return userFolder.empty() ? std::string()
                              : ReadStartUpSettings(userFolder + "sxconf.cff").language;
}

std::vector<LanguageChoice> LanguageChoices(const std::string& supportFolder) {
    const std::string ending = LanguageFileName("");
    std::vector<LanguageChoice> choices;
    std::error_code error;
    for (fs::directory_iterator entry(supportFolder, error), end; !error && entry != end;
         entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        if (name.ends_with(ending)) {
            const std::string prefix = name.substr(0, name.size() - ending.size());
            choices.push_back({prefix, NameOf(prefix)});
        }
    }
    std::sort(choices.begin(), choices.end(),
              [](const auto& a, const auto& b) { return a.prefix < b.prefix; });
    const auto isEnglish = [](const LanguageChoice& choice) { return choice.prefix == "en"; };
    if (!choices.empty() && choices.front().prefix.empty() &&
        std::any_of(choices.begin(), choices.end(), isEnglish)) {
        choices.erase(choices.begin());
    }
    return choices;
}

ColourScheme LightScheme() {
    ColourScheme scheme;
    scheme.backColour = RGB(240, 240, 236);
    scheme.foreColour = RGB(16, 40, 64);
    scheme.accentColour = RGB(0, 84, 140);
    scheme.greyLevel = 110;
    scheme.greyColour = RGB(scheme.greyLevel, scheme.greyLevel, scheme.greyLevel);
    return scheme;
}

void WriteLanguage(const std::string& userFolder, const std::string& prefix) {
    const std::string path = PathIn(userFolder, "sxconf.cff");
    std::vector<std::string> lines = LinesToKeep(path);
    if (lines.size() <= kLanguageLine) {
        lines.resize(kLanguageLine + 1);
    }
    lines[kLanguageLine] = prefix;
    if (lines.size() == kLanguageLine + 1) {
        lines.emplace_back("0");
    }
    OutputFile file(path);
    for (const std::string& line : lines) {
        file.Append(line + kLineEnd);
    }
    file.Commit();
}

void WriteColourScheme(const std::string& userFolder, const ColourScheme& scheme) {
    const Colour back = scheme.backColour;
    OutputFile file(PathIn(userFolder, "color_menu.cff"));
    const auto number = [](auto value) { return std::to_string(value); };
    file.Append(number(RedOf(back)) + "," + number(GreenOf(back)) + "," + number(BlueOf(back)) +
                kLineEnd);
    file.Append(number(back) + "," + number(scheme.foreColour) + kLineEnd);
    file.Append(number(scheme.accentColour) + kLineEnd);
    file.Append(number(scheme.greyLevel) + kLineEnd);
    file.Commit();
}

} // namespace terravo

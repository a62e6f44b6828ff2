#include "app/settings/Configuration.h"

#include "app/settings/Language.h"
#include "util/NumberText.h"
#include "util/OutputFile.h"
#include "util/modUtilita.h"

#include <exception>
#include <filesystem>
#include <limits>
#include <random>
#include <system_error>

namespace terravo {
namespace {

namespace fs = std::filesystem;

constexpr char kSeparator = static_cast<char>(fs::path::preferred_separator);
constexpr const char* kFolderName = "VORTAK24";

bool EndsInSeparator(const std::string& path) {
    return !path.empty() && (path.back() == '/' || path.back() == '\\');
}

std::string FolderText(const std::string& folder) {
    return folder.empty() || EndsInSeparator(folder) ? folder : folder + kSeparator;
}

std::string WithoutSeparator(std::string folder) {
    while (folder.size() > 1 && EndsInSeparator(folder)) {
        folder.pop_back();
    }
    return folder;
}

void MakeFolder(const std::string& folder) {
    if (!folder.empty() && !IsFolder(folder)) {
        std::error_code ignored;
        fs::create_directories(WithoutSeparator(folder), ignored);
    }
}

// Copies contents and not permissions: a shipped folder may be read-only, the user's copy is not.
void CopyContents(const fs::path& from, const fs::path& to) {
    fs::create_directory(to);
    for (const fs::directory_entry& entry : fs::directory_iterator(from)) {
        const fs::path target = to / entry.path().filename();
        if (entry.is_directory()) {
            CopyContents(entry.path(), target);
        } else if (!entry.is_regular_file() && entry.exists()) {
            continue; // a pipe would be waited for
        } else {
            CopyFileWhole(entry.path().string(), target.string());
        }
    }
}

// All or nothing under the final name: half a copy would look like a finished one ever after.
void CopyFolderWhole(const std::string& from, const std::string& to) {
    const std::string unfinished = to + "." + std::to_string(std::random_device{}()) + ".tmp";
    std::error_code ignored;
    try {
        CopyContents(from, unfinished);
        fs::rename(unfinished, to);
    } catch (const std::exception&) {
        fs::remove_all(unfinished, ignored);
    }
}

void MakeUserFolders(RunState& state, const SystemFolders& folders) {
    state.applicationDataFolder = FolderText(folders.ApplicationDataFolder());
    state.userFolder = SubFolder(state.applicationDataFolder, kFolderName);
    state.supportFolder = SubFolder(state.userFolder, "supporto");
    state.pointsFolder = SubFolder(state.userFolder, "points");
    MakeFolder(state.userFolder);
    const std::string shipped = folders.ProgramSupportFolder();
    if (!state.supportFolder.empty() && !IsFolder(state.supportFolder) && IsFolder(shipped)) {
        CopyFolderWhole(shipped, WithoutSeparator(state.supportFolder));
    }
    MakeFolder(state.pointsFolder);
}

// Looks again after making the folder: somebody may have been faster.
bool HasPrivateFolder(const std::string& folder, SystemFolders& folders) {
    const std::string path = WithoutSeparator(folder);
    if (folders.KindOf(path) == FolderKind::Missing) {
        folders.MakePrivate(path);
    }
    return folders.KindOf(path) == FolderKind::OwnFolder;
}

// The last choice stands even if it cannot be made: nobody else can put a folder there, as they
// can in the common temporary folder, and each drawing tells what is wrong with it.
std::string ChooseWorkFolder(const RunState& state, SystemFolders& folders) {
    const std::string temporary = folders.TemporaryFolder();
    for (const std::string& name :
         {std::string(kFolderName), kFolderName + ("-" + folders.UserIdText())}) {
        std::string folder = SubFolder(temporary, name);
        if (HasPrivateFolder(folder, folders)) {
            return folder;
        }
    }
    std::string own = SubFolder(state.userFolder, "exchange");
    MakeFolder(own);
    return own;
}

std::int16_t Whole16(double value) {
    const std::int32_t whole = modUtilita::RoundHalfEven(value);
    using Limits = std::numeric_limits<std::int16_t>;
    return whole >= Limits::min() && whole <= Limits::max() ? static_cast<std::int16_t>(whole)
                                                            : std::int16_t{0};
}

} // namespace

bool IsFolder(const std::string& path) {
    std::error_code ignored;
    return fs::is_directory(path, ignored);
}

std::string SubFolder(const std::string& folder, const std::string& name) {
    return folder.empty() ? std::string() : FolderText(folder) + name + kSeparator;
}

StartUpSettings ReadStartUpSettings(const std::string& path) {
    StartUpSettings settings;
    const std::vector<std::string> lines = ReadSmallFile(path);
    if (lines.size() > 5) {
        settings.language = lines[5];
    }
    if (lines.size() > 6) {
        settings.number = Whole16(NumberText::LeadingNumber(lines[6]));
    }
    return settings;
}

void StartUpConfiguration(RunState& state, SystemFolders& folders) {
    MakeUserFolders(state, folders);
    state.workFolder = ChooseWorkFolder(state, folders);
    state.texts = TextCatalogue();
    if (!state.userFolder.empty()) {
        const StartUpSettings settings = ReadStartUpSettings(state.userFolder + "sxconf.cff");
        state.texts =
            TextCatalogue(LoadTextTable(state.supportFolder + LanguageFileName(settings.language)));
    }
}

} // namespace terravo

// The folders of a run, the user's language and the texts of the user interface.
//
// Data: folder texts that end in a separator, kept in the RunState; "sxconf.cff" in the user's
// folder. Method: every step ignores its errors, so that a read-only home or a missing file leaves
// the data that depends on it empty and the program starts all the same.
#pragma once

#include "util/RunState.h"

#include <cstdint>
#include <string>

namespace terravo {

enum class FolderKind {
    Missing,   // nothing has the name
    OwnFolder, // a folder of this user, not reached over a link
    Foreign    // a link, a file, or a folder of another user
};

/// Where the system keeps things, and whose they are. Paths go in without a separator at the end:
/// behind one, a link would look like the folder that it leads to.
class SystemFolders {
public:
    virtual ~SystemFolders() = default;
    [[nodiscard]] virtual std::string TemporaryFolder() const = 0;
    [[nodiscard]] virtual std::string ApplicationDataFolder() const = 0;
    /// The shipped folder "supporto"; may be empty.
    [[nodiscard]] virtual std::string ProgramSupportFolder() const = 0;
    [[nodiscard]] virtual FolderKind KindOf(const std::string& path) const = 0;
    /// Makes a folder that only this user can enter; errors show in KindOf alone.
    virtual void MakePrivate(const std::string& path) = 0;
    /// The user's number, as text.
    [[nodiscard]] virtual std::string UserIdText() const = 0;
};

/// True when the path leads to a folder; false on any error.
bool IsFolder(const std::string& path);

/// The folder text of a folder inside another: ends in the platform's separator. Empty when the
/// outer one is, so that no path starts at the root by mistake.
/// @param folder  with or without a separator at its end.
std::string SubFolder(const std::string& folder, const std::string& name);

/// What "sxconf.cff" says.
struct StartUpSettings {
    std::string language;    // sixth line: prefix of the language file's name
    std::int16_t number = 0; // seventh line: for the other programs that share the file
};

/// Reads "sxconf.cff"; what a missing or short file does not say stays empty.
StartUpSettings ReadStartUpSettings(const std::string& path);

/// Finds the folders, makes those that are missing, fills the user's support folder on the first
/// run, and loads the texts in the user's language. Throws nothing.
/// @param[out] state  the five folders and the text table.
///
/// The work folder lies where everybody may write. When somebody else has taken its name, the run
/// uses that name with "-" and the user's number; when that is taken as well, a folder inside the
/// user's own, where nobody else can take one.
void StartUpConfiguration(RunState& state, SystemFolders& folders);

} // namespace terravo

// The point files opened last, most recent first.
//
// Data: full paths; in the settings, the keys "1", "2" and so on of one section. Method: a file
// that is opened moves to the top; letter case of a-z does not make two files of one.
#pragma once

#include "util/SettingsStore.h"

#include <string>
#include <vector>

namespace terravo {

class RecentFiles {
public:
    static constexpr std::size_t kUsualLimit = 5;
    /// Captions hold the position as one digit, which caps every limit.
    static constexpr std::size_t kHighestLimit = 9;
    static constexpr const char* kSection = "PuntiDati";

    /// Puts a path on top; one that is already there moves up, the oldest drops out of a full list.
    /// An empty path changes nothing.
    void Add(const std::string& path, std::size_t limit = kUsualLimit);

    /// Most recent first.
    [[nodiscard]] const std::vector<std::string>& Paths() const { return paths_; }

    /// Menu caption of an entry: "&1 " and the path, which is left as it is: a toolkit that reads
    /// "&" anywhere as a mnemonic needs the path's own ones doubled.
    /// @param k  1-based, at most the number of paths.
    [[nodiscard]] std::string CaptionOf(std::size_t k) const;

    /// Whether the menu shows the heading above the entries.
    [[nodiscard]] bool HeadingVisible() const { return !paths_.empty(); }

    /// Adds the paths kept in the settings, oldest first, so that the order comes out the same.
    /// @param dropMissing  leave out the files that no longer exist.
    void Load(const SettingsStore& store, const std::string& section = kSection,
              std::size_t limit = kUsualLimit, bool dropMissing = true);

    /// Writes the paths to the settings; keys beyond the last path keep what they hold.
    void Save(SettingsStore& store, const std::string& section = kSection) const;

private:
    std::vector<std::string> paths_;
};

} // namespace terravo

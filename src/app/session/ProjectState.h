// The project that a session is at work on.
//
// Data: its file, the source of its points, what of it is saved. Method: plain values; unsaved work
// is what differs from the saved one, so that what was undone or set back is none.
#pragma once

#include "app/project/Project.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

namespace terravo {

/// What a user has done with the points of a file.
struct ProjectWork {
    SurfacePlan surface;
    bool exact = false;
    std::optional<LevelRule> levels; // none: nobody has chosen them
    std::optional<SheetPlan> sheet;  // none: there was none on the screen

    bool operator==(const ProjectWork&) const = default;
};

/// What tells that a file is another one than before.
struct FileLook {
    std::uint64_t bytes = 0; // 0: no regular file
    std::filesystem::file_time_type changed;

    bool operator==(const FileLook&) const = default;
};

struct ProjectState {
    std::string path;     // of the project file, absolute; empty: there is none
    FileLook file;        // of the same, when it was read or written
    ProjectSource source; // of the points; its path is empty where there are none
    std::filesystem::file_time_type changed; // the point file, when it was read
    bool isStartUp = false;
    std::optional<ProjectWork> saved; // none: nothing on the disk is like it
    std::optional<SheetPlan> sheet;
    std::uint64_t sheetRevision = 0;
};

} // namespace terravo

// What keeps unsaved work of the windows over a crash.
//
// Data: in one folder of the user, a project file for each running program with unsaved work, and
// beside it a lock that names the program. Method: the lock goes with its program, however that
// ends, so a file whose lock can be taken is left over from one that did not end properly.
#pragma once

#include "app/project/ProjectServices.h"

#include <QLockFile>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace terravo {

class RecoveryFiles {
public:
    /// @param folder  ends in its separator, made when it is first needed; empty: nothing is kept.
    explicit RecoveryFiles(std::string folder);
    RecoveryFiles(const RecoveryFiles&) = delete;
    RecoveryFiles& operator=(const RecoveryFiles&) = delete;
    /// Leaves what was written: the program may not have ended as it should.
    ~RecoveryFiles();

    /// Writes the work of this program, in the place of what was written before. Throws AppError.
    void Write(const Project& project);
    /// Removes what this program has written.
    void Remove();

    /// Work of programs that ended without removing it; nobody else gets it as long as it is held.
    struct Leftover {
        Project project;
        std::string path;
        std::unique_ptr<QLockFile> lock;
    };
    /// The newest one that has not been handed out; what cannot be read is passed over.
    [[nodiscard]] std::optional<Leftover> TakeLeftover();
    /// Removes one for good.
    static void Drop(Leftover& leftover);

private:
    [[nodiscard]] std::optional<Leftover> Take(const std::string& path);

    std::string folder_;
    std::string own_; // path; empty until it is written
    std::unique_ptr<QLockFile> lock_;
    std::vector<std::string> handedOut_;
};

} // namespace terravo

// Files that appear together or not at all.
//
// Data: for each file its final name and the one that it is written under. Method: every file is
// completed beside its final place; only when all are there do they take their names, which needs
// no room and no time.
#pragma once

#include <string>
#include <vector>

namespace terravo {

class OutputGroup {
public:
    OutputGroup() = default;
    OutputGroup(const OutputGroup&) = delete;
    OutputGroup& operator=(const OutputGroup&) = delete;
    /// Removes what has no final name yet.
    ~OutputGroup();

    /// The name to write a file under for now; its own where it must not be replaced (a pipe, a
    /// device).
    std::string NameFor(const std::string& path);

    /// A text about one of the files, with the name that its reader knows.
    [[nodiscard]] std::string WithFinalNames(std::string text) const;

    /// Gives all files their names. Throws AppError.
    void Commit();

private:
    struct Member {
        std::string path; // as its reader knows it
        std::string finalPath;
        std::string writtenPath;
    };
    std::vector<Member> members_;
};

} // namespace terravo

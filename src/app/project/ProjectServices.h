// What a session asks of the world outside for its projects.
//
// Data: projects, paths, sentences. Method: interfaces; the programs bring the files of
// app/project and message boxes, the tests bring fakes.
#pragma once

#include "app/project/Project.h"
#include "util/StopToken.h"

#include <optional>
#include <string>
#include <vector>

namespace terravo {

/// What came of reading a project file.
struct ProjectReading {
    std::optional<Project> project;   // none: it cannot be read
    std::string fault;                // why, one sentence with the file and the place
    std::vector<std::string> remarks; // what was left out, sentences
};

/// Project files, and the checksums of point files.
class ProjectFiles {
public:
    virtual ~ProjectFiles() = default;
    [[nodiscard]] virtual ProjectReading Read(const std::string& path) = 0;
    /// Whole or not at all. Throws AppError.
    virtual void Write(const std::string& path, const Project& project) = 0;
    /// The SHA-256 checksum of a file, read piece by piece; empty when it cannot be read or when
    /// the reading was stopped.
    [[nodiscard]] virtual std::string ChecksumOf(const std::string& path,
                                                 const StopToken& stop) = 0;
};

enum class SaveAnswer { Save, Discard, Cancel };
enum class RestoreAnswer { Restore, Discard, Later };

/// Questions about projects.
class ProjectQuestions {
public:
    virtual ~ProjectQuestions() = default;
    /// @param name  of the project, or of its points while it has none.
    [[nodiscard]] virtual SaveAnswer AskToSave(const std::string& name) = 0;
    /// Whether to go on in spite of what a sentence says, which ends in a question.
    [[nodiscard]] virtual bool AskToGoOn(const std::string& sentence) = 0;
    [[nodiscard]] virtual RestoreAnswer AskToRestore(const std::string& name) = 0;
};

struct ProjectServices {
    ProjectFiles& files;
    ProjectQuestions& questions;
};

} // namespace terravo

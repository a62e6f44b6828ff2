// A project as the input of terravo-batch.
//
// Data: the options of the call, the project file that they name as input. Method: what the call
// does not say itself, the project says: how its point file is read, what is laid over the points,
// the levels, the sheet.
#pragma once

#include "app/batch/BatchOptions.h"
#include "app/project/Project.h"
#include "survey/Survey.h"

#include <optional>
#include <string>
#include <vector>

namespace terravo {

/// What the summary tells of a project.
struct ProjectFigures {
    std::string file;
    std::string source;               // its point file
    std::optional<bool> checksumOk;   // none: the project has no checksum
    std::vector<std::string> remarks; // sentences
};

struct ProjectInput {
    Project project;
    ProjectFigures figures;
};

/// Reads a project and finds its point file.
/// Throws RunFailure.
ProjectInput OpenProject(const std::string& file, const StopToken& stop);

/// Refuses outputs that would replace the point file of a project.
/// Throws RunFailure.
void RefuseToReplace(const BatchOptions& options, const std::string& source);

/// Reads the project that the options name as input, and gives the options what it says.
/// @param[in,out] options  the input becomes the point file of the project.
/// @return nothing where the input is no project. Throws RunFailure.
std::optional<ProjectInput> OpenProjectInput(BatchOptions& options, const StopToken& stop);

/// Reads the points of a project, and lays its plan over them.
/// @param[in,out] input  gets remarks on what does not fit.
/// @param[out] survey    as it was after a failure.
ImportOutcome ReadProject(ProjectInput& input, const TriangulationWish& wish, Survey& survey,
                          const StopToken& stop);

} // namespace terravo

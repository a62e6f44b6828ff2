// The folders that the outputs of a run go to.
//
// Data: the folders that were made for the run. Method: they are made and looked at before the work
// begins, so that it is not done in vain; a run that writes nothing takes them away again.
#pragma once

#include "app/batch/BatchOptions.h"

#include <filesystem>
#include <vector>

namespace terravo {

class OutputFolders {
public:
    OutputFolders() = default;
    OutputFolders(const OutputFolders&) = delete;
    OutputFolders& operator=(const OutputFolders&) = delete;
    /// Removes what Make has made, unless it holds something by now.
    ~OutputFolders();

    /// Makes a folder and its parents where they are missing.
    /// Throws AppError when that cannot be done.
    void Make(const std::string& folder);

private:
    std::vector<std::filesystem::path> made_; // the outer ones first
};

/// Throws AppError for an output whose folder is missing or cannot be written to.
void CheckOutputFolders(const BatchOptions& options);

} // namespace terravo

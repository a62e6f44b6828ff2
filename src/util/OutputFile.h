// Files written whole or not at all, each when it is complete or several when all are.
//
// Data: bytes appended through one buffer. Method: they go to a new file of another name in the
// same folder, which takes the final name when everything is written; a crash, a full disk or an
// error on the way leaves the old file as it was. The files of a group wait under their other names
// until all are there. A target that is no regular file (a pipe, a device) is written in place,
// since it must not be replaced. Two programs that write the same file at once each write their
// own, and the one that ends last wins.
#pragma once

#include "util/FileHandle.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace terravo {

/// Files of which none appears before all are complete. Naming them takes no room on the disk and
/// hardly any time; a name that the system refuses then leaves those named before it.
class OutputGroup {
public:
    OutputGroup() = default;
    OutputGroup(const OutputGroup&) = delete;
    OutputGroup& operator=(const OutputGroup&) = delete;
    /// Removes what has no final name yet.
    ~OutputGroup();

    /// Has a file removed, where there is one, with the others getting their names.
    void RemoveOnCommit(std::string path) { outdated_.push_back(std::move(path)); }

    /// Gives all files that are complete their names. Throws AppError.
    void Commit();

private:
    friend class OutputFile;

    struct Member {
        std::string path; // as its reader knows it
        std::string finalPath;
        std::string writtenPath;
    };
    std::vector<Member> members_;
    std::vector<std::string> outdated_;
};

/// What a writer is given: the path of a file, and the group that it appears with, if any.
struct OutputTarget {
    std::string path;
    OutputGroup* group = nullptr;

    OutputTarget(std::string filePath, OutputGroup* together = nullptr)
        : path(std::move(filePath)), group(together) {}
    OutputTarget(const char* filePath) : path(filePath) {}
};

class OutputFile {
public:
    enum class Mode {
        Whole, // appears under its name on Commit
        Open   // the same, but the old file is gone from the start: the segments of a drawing
    };

    /// Starts the file. Throws AppError, with the path as source, when it cannot.
    explicit OutputFile(OutputTarget target, Mode mode = Mode::Whole);
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;
    /// Removes what was written unless it was committed.
    ~OutputFile();

    /// As the user has named it.
    [[nodiscard]] const std::string& Path() const { return target_.path; }

    /// Buffer to append to; call Flush now and then.
    std::string& Buffer() { return buffer_; }
    void Append(std::string_view text) {
        buffer_ += text;
        FlushWhenFull();
    }
    /// Writes the buffer out when it holds enough for one write. Throws AppError.
    void FlushWhenFull() {
        if (buffer_.size() >= kEnough) {
            Flush();
        }
    }

    /// Writes the rest and closes the file, so that it can be read back before it gets its name. A
    /// second call does nothing. Throws AppError.
    void Finish();
    /// The file to be read back, or to be replaced by another of its name, after Finish; empty for
    /// what is written in place, which may be a pipe.
    [[nodiscard]] std::string FinishedPath() const {
        return writtenPath_ == finalPath_ ? std::string() : writtenPath_;
    }

    /// Finishes the file where that has not been done, and gives it its final name or leaves that
    /// to its group. Throws AppError.
    void Commit();

private:
    static constexpr std::size_t kEnough = std::size_t{1} << 18;

    void ChoosePlace();
    void ChooseEmptiedPlace();
    void Flush();
    void TakeFinalName();
    [[noreturn]] void Throw(int cause) const;

    OutputTarget target_;
    std::string finalPath_;   // behind any link
    std::string writtenPath_; // until complete; the final one where that must not be replaced
    std::string buffer_;
    FileHandle file_;
};

/// Copies a file under another name, whole or not at all. Throws AppError.
void CopyFileWhole(const std::string& from, const OutputTarget& to);

} // namespace terravo

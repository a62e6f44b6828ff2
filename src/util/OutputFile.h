// A file written whole or not at all.
//
// Data: bytes appended through one buffer. Method: they go to a new file of another name in the
// same folder, which takes the final name when everything is written; a crash, a full disk or an
// error on the way leaves the old file as it was. A target that is no regular file (a pipe, a
// device) is written in place, since it must not be replaced. Two programs that write the same file
// at once each write their own, and the one that ends last wins.
#pragma once

#include <cstddef>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

namespace terravo {

/// Where the bytes of a file end up, behind any link, and the name that it is written under until
/// it is complete: the same where the target must not be replaced (a pipe, a device).
struct OutputPlace {
    std::string finalPath;
    std::string writtenPath;
};
OutputPlace PlaceFor(const std::string& path);

class OutputFile {
public:
    enum class Mode {
        Whole, // appears under its name on Commit
        Open   // the same, but the old file is gone from the start: the segments of a drawing
    };

    /// Starts the file. Throws AppError, with the path as source, when it cannot.
    explicit OutputFile(std::string path, Mode mode = Mode::Whole);
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;
    /// Removes what was written unless it was committed.
    ~OutputFile();

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

    /// Writes the rest, closes the file and gives it its final name. Throws AppError.
    void Commit();

private:
    static constexpr std::size_t kEnough = std::size_t{1} << 18;

    struct CloseFile {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };

    OutputPlace EmptiedPlace(const std::string& path);
    void Flush();
    [[noreturn]] void Throw(int cause) const;

    std::string path_;
    std::string finalPath_; // behind any link
    std::string writtenPath_;
    std::string buffer_;
    std::unique_ptr<std::FILE, CloseFile> file_;
};

/// Copies a file under another name, whole or not at all. Throws AppError.
void CopyFileWhole(const std::string& from, const std::string& to);

} // namespace terravo

// The groups of a DXF file, one after another.
//
// Data: the bytes of a file, seen through a window that moves along it. Method: every group must be
// the one that is asked for; what is not ends the reading with a sentence that names the line.
#pragma once

#include "util/FileHandle.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace terravo {

/// Thrown when a file is not as it has to be.
struct DxfDifference {
    std::string sentence;
};

struct DxfTag {
    int code = 0;
    std::string_view value; // without its line end; until the next tag
};

class DxfTags {
public:
    /// Throws AppError when the file cannot be opened or read; that holds for all members.
    explicit DxfTags(const std::string& path);

    /// The next group, which is not taken.
    const DxfTag& Peek() {
        if (!isPeeked_) {
            Read();
            isPeeked_ = true;
        }
        return tag_;
    }
    /// Takes the next group.
    const DxfTag& Take() {
        Peek();
        isPeeked_ = false;
        return tag_;
    }
    /// Whether the next group is this one; then it is taken.
    bool TakeIf(int code, std::string_view value);

    // Each takes the next group, which must have the code, and throws DxfDifference where it has
    // not or where the value is none of the kind.
    std::string_view Text(int code);
    double Real(int code);
    std::int64_t Integer(int code);
    std::uint64_t Handle(int code);
    /// The value must be this one.
    void Expect(int code, std::string_view value);

    /// Throws unless nothing is left in the file.
    void ExpectEnd();

    /// Throws DxfDifference with the number of the line that was taken last.
    [[noreturn]] void Differ(const std::string& what) const;

private:
    void Read();
    bool Fill();
    std::string_view Line();

    std::string path_;
    FileHandle file_;
    std::vector<char> window_;
    const char* cursor_ = nullptr;
    const char* limit_ = nullptr;
    std::int64_t lines_ = 0; // taken
    DxfTag tag_;
    bool isPeeked_ = false;
    bool hasEnded_ = false; // the file; the window may hold more
};

/// A finite number in plain digits with a period; false for anything else.
bool ReadDxfReal(std::string_view text, double& value);
/// @param base  10 or 16.
bool ReadDxfInteger(std::string_view text, std::int64_t& value, int base = 10);

} // namespace terravo

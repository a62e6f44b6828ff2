// A text file in blocks that end where a line ends.
//
// Data: one buffer, larger than a block only for a line that is. Method: what stands behind the
// last line end of a block goes on at the front of the next.
#pragma once

#include "util/FileHandle.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace terravo {

class LineBlocks {
public:
    static constexpr std::size_t kUsualSize = std::size_t{1} << 18;

    /// @param size  bytes of a block, 1 at least.
    /// Throws AppError when the file cannot be opened.
    explicit LineBlocks(std::string path, std::size_t size = kUsualSize);

    /// The next block, one line at least; only the last of the file may lack a line end. Empty
    /// behind it. Valid until the next call. Throws AppError when the file cannot be read.
    std::string_view Next();

private:
    bool Fill();

    std::string path_;
    FileHandle file_;
    std::size_t size_;
    std::vector<char> buffer_;
    std::size_t used_ = 0;  // bytes in the buffer
    std::size_t given_ = 0; // of these, in the last block
};

} // namespace terravo

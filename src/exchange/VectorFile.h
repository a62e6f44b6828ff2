// A vector file, written whole, read back, and only then given its name.
//
// Data: content, and the format it goes to. Method: the file is finished under another name and
// compared with its content by the format's own reader; one that differs never gets its name.
#pragma once

#include "export/vector/VectorFormat.h"

#include <string>
#include <vector>

namespace terravo {

struct VectorOutcome {
    bool verified = false;            // the file was read back and holds what it should
    std::vector<std::string> remarks; // what had to be changed, a sentence each
};

/// Writes a file.
/// @param content  its parts are those to be written; the format knows each of them.
/// @param verify   reads the file back where the format has a reader and the file is no pipe.
/// Throws AppError when the file cannot be written, when the format cannot hold the content, and
/// when what was read back differs.
VectorOutcome WriteVectorFile(const OutputTarget& target, const VectorFormat& format,
                              const VectorContent& content, const VectorOptions& options,
                              bool verify = true);

} // namespace terravo

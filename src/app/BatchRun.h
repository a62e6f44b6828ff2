// One run of terravo-batch: a point file in, pictures and files out, no window.
//
// Data: the options; a private temporary folder that holds the exchange files of the run and is
// removed. Method: read, triangulate, draw; only when all of it has succeeded are the results put
// under their final names, each whole or not at all.
#pragma once

#include "app/BatchOptions.h"

#include <string>

namespace terravo {

/// @return the exit code; a failure has been told in one sentence on standard error.
int RunBatch(const BatchOptions& options);

/// Folder of the shipped language files: beside the program, else installed beside it, else that
/// of the source tree. Ends in a separator; empty when there is none.
std::string FindSupportFolder();

} // namespace terravo

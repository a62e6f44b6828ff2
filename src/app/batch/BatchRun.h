// One run of terravo-batch: a point file in, pictures and files out, no window.
//
// Data: the options; a private temporary folder that holds the exchange files of the run and is
// removed. Method: read, triangulate, draw; only when all of it has succeeded are the results put
// under their final names, each whole or not at all.
#pragma once

#include "app/batch/BatchOptions.h"

namespace terravo {

/// @return the exit code; a failure has been told in one sentence on standard error.
int RunBatch(const BatchOptions& options);

} // namespace terravo

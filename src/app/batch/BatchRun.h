// One run of terravo-batch: a point file in, pictures and files out, no window.
//
// Data: the options; a private temporary folder that holds the exchange files of the run and is
// removed. Method: read, triangulate, draw; only when all that can be drawn is written do the
// results get their final names, each whole or not at all. A picture that cannot be drawn is left
// out.
#pragma once

#include "app/batch/BatchOptions.h"

namespace terravo {

/// @return the exit code; a failure, or each picture that is missing, has been told in one sentence
///         on standard error.
int RunBatch(const BatchOptions& options);

} // namespace terravo

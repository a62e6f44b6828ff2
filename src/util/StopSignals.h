// The wish of the system or of a terminal that the program ends: interrupt, terminate, hang up.
//
// Data: one flag for the whole program, because a signal knows no object. Method: the handler sets
// the flag and writes a byte to a pipe, nothing more; long work looks at the flag, a window waits
// for the pipe. A second signal of the kind ends the program at once, as if nobody handled it.
#pragma once

namespace terravo::StopSignals {

/// Begins to take the signals.
void Install();

/// Number of the signal that has come, or 0.
int Received();

/// File descriptor that becomes readable when a signal comes; -1 where there is none.
int Descriptor();

} // namespace terravo::StopSignals

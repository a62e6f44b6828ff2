// A sort that takes two more columns along.
//
// Data: three parallel arrays of doubles, one row an index. Method: quicksort in place around a
// middle pivot; every exchange moves whole rows. Rows with equal keys come out in no particular
// order.
#pragma once

#include "util/Array1.h"
#include "util/Services.h"

namespace terravo {

/// Sorts rows low..high by their keys.
/// @param keys, companion1, companion2  cover low..high; sorted together.
/// @param order     0 does nothing, positive sorts ascending, negative descending.
/// @param messages  told when an index lies outside an array; the rows are left as they are then.
void QuickSort3V(Array1<double>& keys, Array1<double>& companion1, Array1<double>& companion2,
                 Index low, Index high, Index order, MessageService& messages);

} // namespace terravo

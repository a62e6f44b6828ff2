// How finely the coordinates of a survey are given.
//
// Data: one coordinate of its points. Method: the shortest text that keeps a value has the decimals
// that its file had, or fewer where they ended in zeros; the most of many points counts.
#pragma once

#include "util/Array1.h"

namespace terravo {

/// Number of decimals of the shortest text that keeps the value; 0 for one that is not finite.
int DecimalsOf(double value);

/// Number of decimals with which values are written in their file, judged by up to 10 000 of them,
/// spread evenly.
/// @param count  of the values that count, from the first on.
int FileDecimals(const Array1<double>& values, Index count);

} // namespace terravo

// Exit codes of terravo-batch.
#pragma once

namespace terravo::ExitCode {

inline constexpr int kDone = 0;
inline constexpr int kPointFile = 1;       // the point file could not be read
inline constexpr int kUsage = 2;           // the command line is wrong
inline constexpr int kNoTriangulation = 3; // the points give no triangles
inline constexpr int kOutput = 4;          // a file could not be written
inline constexpr int kNumeric = 5;         // the arithmetic failed on the way
inline constexpr int kSignalBase = 128;    // and the number of the signal that stopped the run

} // namespace terravo::ExitCode

// Point files: plain text read three numbers at a time as x, y, z.
//
// Data: a text file and the PointSet that it fills. Method: the list reader gives the numbers; the
// set is replaced whole. What a bad file does to the whole program is decided here too, over
// services, so that it is the same from every road that leads to a file.
#pragma once

#include "survey/PointSet.h"
#include "util/NumberListReader.h"
#include "util/RunState.h"
#include "util/Services.h"
#include "util/StopToken.h"

#include <cstdint>
#include <limits>
#include <optional>
#include <string>

namespace terravo {

/// The triangulation numbers twice as many triangles and a hull link holds three times that.
inline constexpr Index kMostPoints = std::numeric_limits<Index>::max() / 6 - 1;

/// Makes room for all points of a file at once, judged by the bytes of those read so far: arrays
/// that grow step by step are copied several times, each time into memory that is new to the
/// process. A wrong estimate does no harm, the arrays still grow.
void MakeRoomForAll(PointSet& points, std::uint64_t bytesRead, std::uint64_t fileSize);

/// Reads all points of a file into the set: name, count, bounds and arrays. The arrays grow only
/// when a point is read, so a file without points leaves them and sets the count to 0.
/// @return what went wrong; the set then holds the points before it, or nothing when the reading
///         was stopped.
std::optional<ReadFailure> ReadPoints(const std::string& path, PointSet& points,
                                      const StopToken& stop = StopToken());

/// Refuses a pipe and a device, for the windows: nothing else happens there while one is waited
/// for.
std::optional<ReadFailure> RefuseDevice(const std::string& path);

/// The same for a file that a user names: a pipe or a device is refused, since nothing else happens
/// while it is waited for, and memory that runs out is a fault of the file.
std::optional<ReadFailure> ReadPointFile(const std::string& path, PointSet& points,
                                         const StopToken& stop = StopToken());

/// Why a file could not be read, in the language of the user: file, line, field, what stands there.
std::string Explain(const ReadFailure& failure, const TextCatalogue& texts);

struct LoadServices {
    MessageService& messages;
    ClipboardService& clipboard;
    ProgramEndService& programEnd;
    LogService& log;
};

/// Reads the point file of the start-up. Any error ends the program at once, after its message and
/// with an empty clipboard: the companion program often starts this one with a path, and a bad
/// file must not leave a half-filled window behind.
/// @return true when no error of any kind occurred; false when the reading was stopped, and else
///         only where the program end is a fake.
bool LoadPointFile(const std::string& path, PointSet& points, const RunState& state,
                   const LoadServices& services, const StopToken& stop = StopToken());

} // namespace terravo

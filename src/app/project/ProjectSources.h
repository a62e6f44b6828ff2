// The point file of a project: where it is, and its points read once more.
//
// Data: the source of a project, the path of the project file. Method: a folder that was moved as a
// whole still fits together, so the way from the project's folder is tried before the place that
// the file once had. Files are told apart by their ending alone.
#pragma once

#include "app/project/Project.h"
#include "survey/import/PointImport.h"

#include <cstddef>
#include <optional>
#include <string>

namespace terravo {

/// Whether a path is that of a project: by its ending, in any case of letters.
bool IsProjectFile(const std::string& path);

/// The way from the folder of a project to a file, both absolute; empty where there is none.
std::string WayFrom(const std::string& projectPath, const std::string& file);

/// The present place of the source, absolute; nothing when it is at neither of its places.
std::optional<std::string> FindSource(const ProjectSource& source, const std::string& projectPath);

/// Reads a file as it was read before.
/// @param[out] points  see ImportPoints.
ImportOutcome ReadAsBefore(const std::string& path, const HowRead& how, PointSet& points,
                           const StopToken& stop = StopToken());

/// How a text was read, of what came of it.
HowRead HowItWasRead(const ImportOutcome& outcome, BadRecords bad);

/// What a plan loses that goes by numbers of points.
struct LostEdits {
    std::size_t excluded = 0;
    std::size_t heights = 0;

    [[nodiscard]] bool Any() const { return excluded + heights > 0; }
};

/// Points that stay in use, whatever is excluded.
inline constexpr Index kFewestInUse = 3;

/// Takes out of a plan what goes by numbers beyond the last point, and all exclusions where fewer
/// than three points would stay in use.
LostEdits DropBeyond(SurfacePlan& plan, Index points);

} // namespace terravo

#include "app/project/ProjectSources.h"

#include "gis/GisImport.h"
#include "util/PathText.h"

#include <algorithm>
#include <filesystem>
#include <string_view>
#include <system_error>

namespace terravo {
namespace {

namespace fs = std::filesystem;

char Lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// Shapefiles may be a folder.
bool IsThere(const std::string& path) {
    std::error_code error;
    return fs::exists(path, error) && !error;
}

} // namespace

bool IsProjectFile(const std::string& path) {
    const std::string_view ending = kProjectEnding;
    return path.size() > ending.size() &&
           std::equal(ending.begin(), ending.end(), path.end() - std::ssize(ending),
                      [](char a, char b) { return a == Lower(b); });
}

std::string WayFrom(const std::string& projectPath, const std::string& file) {
    const fs::path folder = fs::path(projectPath).lexically_normal().parent_path();
    return fs::path(file).lexically_normal().lexically_relative(folder).generic_string();
}

std::optional<std::string> FindSource(const ProjectSource& source, const std::string& projectPath) {
    if (!source.relativePath.empty()) {
        const fs::path folder = fs::path(AbsolutePath(projectPath)).parent_path();
        std::string beside = (folder / source.relativePath).lexically_normal().string();
        if (IsThere(beside)) {
            return beside;
        }
    }
    return IsThere(source.path) ? std::optional(source.path) : std::nullopt;
}

ImportOutcome ReadAsBefore(const std::string& path, const HowRead& how, PointSet& points,
                           const StopToken& stop) {
    switch (how.reader) {
    case SourceReader::Gis:
        return ImportGis(path, how.gis, points, stop).import;
    case SourceReader::Grid: {
        ImportWish wish;
        wish.decimal = how.plan.decimal;
        wish.encoding = how.plan.encoding;
        wish.voids = how.plan.voids;
        return ImportPoints(path, wish, how.bad, points, stop);
    }
    case SourceReader::FreeList:
    case SourceReader::Table:
        break;
    }
    return ImportByPlan(path, how.plan, how.bad, points, stop);
}

HowRead HowItWasRead(const ImportOutcome& outcome, BadRecords bad) {
    HowRead how;
    how.plan = outcome.inspection.plan;
    how.bad = bad;
    if (how.plan.freeList) {
        how.reader = SourceReader::FreeList;
    } else if (outcome.inspection.grid != GridFormat::None) {
        how.reader = SourceReader::Grid;
    }
    return how;
}

LostEdits DropBeyond(SurfacePlan& plan, Index points) {
    LostEdits lost;
    lost.excluded = std::erase_if(plan.excluded, [=](Index point) { return point > points; });
    lost.heights =
        std::erase_if(plan.heights, [=](const ChangedHeight& edit) { return edit.point > points; });
    if (std::ssize(plan.excluded) > points - kFewestInUse) {
        lost.excluded += plan.excluded.size();
        plan.excluded.clear();
    }
    return lost;
}

} // namespace terravo

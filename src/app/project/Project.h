// A project: a survey's file and how it was read, and all that its user has done with it.
//
// Data: plain values. The points themselves stay in their file, which is known by its length and
// its checksum. Method: a project is made of a session, kept in a file and taken up again; lines
// are shared with the plan that they come from, so that making one costs little.
#pragma once

#include "contour/LevelRule.h"
#include "gis/GisPlan.h"
#include "sheet/SheetPlan.h"
#include "survey/import/PointImport.h"
#include "survey/surface/SurfacePlan.h"
#include "triangulation/TriangulatePoints.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace terravo {

enum class SourceReader : unsigned char { Table, FreeList, Grid, Gis };

/// What it takes to read a file again as it was read, without a question.
struct HowRead {
    SourceReader reader = SourceReader::Table;
    ImportPlan plan;                     // of texts
    BadRecords bad = BadRecords::Refuse; // of tables
    GisPlan gis;                         // of files that go through GDAL

    bool operator==(const HowRead&) const = default;
};

struct ProjectSource {
    std::string path;         // absolute
    std::string relativePath; // from the folder of the project; empty where there is none
    std::uint64_t bytes = 0;
    std::string sha256; // of its contents, 64 digits; empty: not known
    Index points = 0;   // that were read
    HowRead howRead;

    bool operator==(const ProjectSource&) const = default;
};

struct Project {
    ProjectSource source;
    SurfacePlan surface;
    TriangulationWish triangulation;
    std::optional<LevelRule> levels; // none: nobody has chosen them
    std::vector<SheetPlan> sheets;
    std::string recovers; // in a recovery file: the project file it belongs to, if there is one
};

/// The format that this program writes, and the newest that it reads.
inline constexpr int kProjectVersion = 1;
/// With its point.
inline constexpr const char* kProjectEnding = ".terravo";

} // namespace terravo

// The profile of a surface along a line on the map.
//
// Data: a polyline in plan; runs of profile points, with a gap where there is no surface. Method:
// each leg is cut with the triangles that it meets; exact signs say which edges it crosses, so
// every crossing is a vertex and two neighbours agree on it.
#pragma once

#include "analysis/MeasuredSurface.h"
#include "analysis/TriangleTree.h"
#include "survey/surface/ShapeSurface.h"
#include "triangulation/exact/ExactSigns.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

namespace terravo {

enum class ProfileMark : unsigned char {
    End,    // the line begins, bends or ends here, within a triangle
    Edge,   // it crosses a side
    Corner, // it goes through a corner
};

struct ProfilePoint {
    double station = 0; // along the line from its beginning, data units
    PlanPoint place;    // data units
    double z = 0;
    ProfileMark mark = ProfileMark::Edge;
    std::size_t line = 0; // of the survey, a breakline or a ring, that is met here, from 1; 0: none
};

using LineNames = std::shared_ptr<const std::vector<std::string>>;

/// Points that follow each other without a gap; stations never decrease.
using ProfileRun = std::vector<ProfilePoint>;

struct Profile {
    double length = 0;            // of the whole line
    std::vector<ProfileRun> runs; // of two points at least; none where the line misses the surface
    LineNames lineNames;          // of the lines that points are on; null: there are no lines
};

/// The name of the line that a point is on; empty where there is none.
std::string LineNameAt(const Profile& profile, const ProfilePoint& point);

/// Sides of triangles that breaklines and rings run along.
struct LineSides {
    std::unordered_map<std::uint64_t, std::size_t> lines; // by side; numbers from 1
    LineNames names;
};

LineSides SidesOfLines(const ShapedSurface& surface);

/// Cuts profiles of one surface.
class SectionCutter {
public:
    /// @param surface  outlives this.
    /// @param lines    with the numbers of its corners.
    explicit SectionCutter(const MeasuredSurface& surface, LineSides lines = {});

    /// @param line  in data units; legs without a length are passed over.
    [[nodiscard]] Profile Cut(std::span<const PlanPoint> line) const;

private:
    const MeasuredSurface& surface_;
    LineSides lines_;
    TriangleTree tree_;
    ExactSigns signs_;
};

/// Whether a line has two places that are apart.
bool HasLength(std::span<const PlanPoint> line);

/// The height of a profile over a station; nothing in a gap. Where a run ends and another begins,
/// that of the run before.
std::optional<double> HeightAtStation(const Profile& profile, double station);

/// The place on a line at a station, and the station of the place on it that is nearest to another:
/// what a section and a map tell each other. The station is kept within the line.
PlanPoint PlaceAtStation(std::span<const PlanPoint> line, double station);
double StationNearest(std::span<const PlanPoint> line, PlanPoint place);

/// Areas in the plane of a section.
struct SectionAreas {
    double cut = 0;    // square data units, where the first lies above the other
    double fill = 0;   // where it lies below
    double length = 0; // over which there are both
};

SectionAreas AreasBetween(const Profile& first, const Profile& second);
SectionAreas AreasAgainst(const Profile& profile, double datum);

} // namespace terravo

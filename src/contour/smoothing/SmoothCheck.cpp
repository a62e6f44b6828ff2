#include "contour/smoothing/SmoothCheck.h"

#include "contour/smoothing/FlattenContours.h"
#include "contour/smoothing/LevelSpacing.h"
#include "contour/smoothing/LineMeeting.h"
#include "contour/smoothing/PlanVector.h"
#include "triangulation/exact/ExactSigns.h"
#include "util/NumberText.h"

#include <algorithm>
#include <array>
#include <limits>
#include <numeric>

namespace terravo {
namespace {

using namespace smoothing;

// A sentence's end: where, and at which level or levels.
std::string Where(PlanPoint place, PlanPoint origin, double level) {
    return " near " + NumberText::General(place.x + origin.x) + ", " +
           NumberText::General(place.y + origin.y) + ", level " + NumberText::General(level);
}

// Heights of the surface, and how far rounding may have changed them.
class SurfaceReader {
public:
    struct Reading {
        double height = 0;
        double doubt = 0;
    };

    SurfaceReader(const SmoothingSource& source, PlanPoint origin)
        : points_(source.points), triangles_(source.triangles), origin_(origin) {}

    /// @param[in,out] near  a triangle, best one near the place; then the one that holds it.
    /// @return nothing outside the surface.
    std::optional<Reading> Read(PlanPoint place, Index& near) const {
        for (Index step = 0; step <= triangles_.count; ++step) {
            const Corners corners = CornersOf(near, place);
            const Index next = NextTowards(corners, near, step);
            if (next == near && IsAbout(corners)) {
                return ReadIn(corners);
            }
            if (next == near || next == 0) {
                break;
            }
            near = next;
        }
        return ReadAnywhere(place, near);
    }

    /// Whether a triangle is so thin that places in it cannot be told from its edges.
    [[nodiscard]] bool IsFlat(Index t) const {
        const Corners corners = CornersOf(t, {});
        double whole = 0;
        double doubt = 0;
        for (int j = 1; j <= 3; ++j) {
            whole += AreaBeside(corners, j);
            doubt = std::max(doubt, DoubtOfArea(corners, j));
        }
        return whole <= kFlat * doubt;
    }

private:
    struct Corner {
        PlanPoint away;  // from the place
        PlanPoint place; // relative to the origin
        double height = 0;

        // Of its coordinates, and of what is near it.
        [[nodiscard]] double Digits() const {
            return kDigits * (std::fabs(place.x) + std::fabs(place.y));
        }
    };
    using Corners = std::array<Corner, 3>;

    static constexpr double kDigits = 8 * std::numeric_limits<double>::epsilon();
    static constexpr double kFlat = 4;

    [[nodiscard]] Corners CornersOf(Index t, PlanPoint place) const {
        Corners corners;
        for (std::size_t j = 0; j < 3; ++j) {
            const Index i = triangles_.table[t].vertices[j];
            const PlanPoint there{points_.x[i] - origin_.x, points_.y[i] - origin_.y};
            corners[j] = {there - place, there, points_.z[i]};
        }
        return corners;
    }

    static const Corner& At(const Corners& corners, int j) {
        return corners[static_cast<std::size_t>(j) - 1];
    }
    static double AreaBeside(const Corners& corners, int j) {
        return Cross(At(corners, j).away, At(corners, NextEdge(j)).away);
    }
    // What the last digits of a place near the edge make of such an area.
    static double DoubtOfArea(const Corners& corners, int j) {
        const Corner& a = At(corners, j);
        const Corner& b = At(corners, NextEdge(j));
        const PlanPoint edge = b.away - a.away;
        return (a.Digits() + b.Digits()) * (std::fabs(edge.x) + std::fabs(edge.y));
    }
    static bool IsBeyond(const Corners& corners, int j) {
        return AreaBeside(corners, j) < -DoubtOfArea(corners, j);
    }

    // The edges are tried in another order at every step, so that a walk does not go in circles.
    // @return the triangle itself where the place is beyond none, 0 where it is beyond the rim.
    [[nodiscard]] Index NextTowards(const Corners& corners, Index t, Index step) const {
        Index next = t;
        for (Index k = 0; k < 3; ++k) {
            const int j = (step + k) % 3 + 1;
            if (IsBeyond(corners, j)) {
                next = TriangleAcross(triangles_, {t, j});
                if (next != 0) {
                    return next;
                }
            }
        }
        return next;
    }

    // Whether the place is in the box of the corners: one in line with a flat triangle need not be.
    static bool IsAbout(const Corners& corners) {
        double digits = 0;
        for (const Corner& corner : corners) {
            digits = std::max(digits, corner.Digits());
        }
        const auto spans = [&](double a, double b, double c) {
            return std::min({a, b, c}) <= digits && std::max({a, b, c}) >= -digits;
        };
        return spans(corners[0].away.x, corners[1].away.x, corners[2].away.x) &&
               spans(corners[0].away.y, corners[1].away.y, corners[2].away.y);
    }

    // For a place to which a walk found no way.
    std::optional<Reading> ReadAnywhere(PlanPoint place, Index& near) const {
        for (near = 1; near <= triangles_.count; ++near) {
            const Corners corners = CornersOf(near, place);
            if (IsAbout(corners) && !IsBeyond(corners, 1) && !IsBeyond(corners, 2) &&
                !IsBeyond(corners, 3)) {
                return ReadIn(corners);
            }
        }
        return std::nullopt;
    }

    static Reading ReadIn(const Corners& corners) {
        double whole = 0;
        double sum = 0;
        double doubt = 0;
        const auto [low, high] =
            std::minmax({corners[0].height, corners[1].height, corners[2].height});
        for (int j = 1; j <= 3; ++j) {
            const double rise = At(corners, NextEdge(NextEdge(j))).height - low;
            const double area = AreaBeside(corners, j);
            whole += area;
            sum += area * rise;
            doubt += DoubtOfArea(corners, j) * rise;
        }
        const double digits = kDigits * (std::fabs(low) + std::fabs(high));
        if (!(whole > 0) || 2 * doubt >= (high - low) * whole) {
            return {std::midpoint(low, high), (high - low) / 2 + digits};
        }
        return {low + sum / whole, 2 * doubt / whole + digits};
    }

    const PointSet& points_;
    const TriangleList& triangles_;
    PlanPoint origin_;
};

// All lines made straight.
struct StraightSet {
    StraightLines lines;
    std::vector<Index> levels; // of each line
    std::vector<Index> near;   // a triangle for each line to begin with
};

StraightSet Straighten(const SmoothSet& smooth, double tolerance, const SurfaceReader& reader) {
    StraightSet straight;
    StraightLines& lines = straight.lines;
    std::vector<std::size_t> pieces;
    for (Index k = 1; k <= smooth.levels.UpperBound(); ++k) {
        const SmoothLevel& level = smooth.levels[k];
        for (const SmoothLine& line : level.lines) {
            const std::size_t first = lines.places.size();
            pieces.clear();
            FlattenLine(level.ControlsOf(line), line.closed, tolerance, lines.places, pieces);
            lines.lines.push_back({first, pieces.size(), line.closed});
            straight.levels.push_back(k);
            const auto edges = level.EdgesOf(line);
            straight.near.push_back(edges.front().triangle);
            for (const std::size_t piece : pieces) {
                lines.isLeftOut.push_back(reader.IsFlat(edges[piece + 1].triangle) ? 1 : 0);
            }
        }
    }
    return straight;
}

class HeightCheck {
public:
    HeightCheck(const SmoothingSource& source, const SmoothSet& smooth, const SurfaceReader& reader)
        : reader_(reader), smooth_(smooth),
          spacings_(SpacingsOf(source.levels, source.points.extentZ)) {}

    std::string FaultOf(const StraightSet& straight) const {
        for (std::size_t i = 0; i < straight.lines.lines.size(); ++i) {
            const StraightLines::Line& line = straight.lines.lines[i];
            Index near = straight.near[i];
            for (std::size_t k = line.first; k < line.first + line.count; ++k) {
                if (straight.lines.isLeftOut[k] != 0) {
                    continue;
                }
                std::string fault = FaultAt(straight.lines.places[k], straight.levels[i], near);
                if (!fault.empty()) {
                    return fault;
                }
            }
        }
        return "";
    }

private:
    std::string FaultAt(PlanPoint place, Index level, Index& near) const {
        const double value = smooth_.levels[level].value;
        const auto reading = reader_.Read(place, near);
        if (!reading) {
            return "A line leaves the surface" + Where(place, smooth_.origin, value) + ".";
        }
        const double off = reading->height - value;
        const LevelSpacing& spacing = spacings_[level];
        const double allowed =
            std::min(smooth_.worst.height,
                     smooth_.worst.interval * (off > 0 ? spacing.above : spacing.below));
        if (std::fabs(off) <= allowed * (1 + kRounding) + reading->doubt) {
            return "";
        }
        return "A line leaves its height by " + NumberText::General(std::fabs(off)) +
               Where(place, smooth_.origin, value) + ".";
    }

    static constexpr double kRounding = 1e-9;

    const SurfaceReader& reader_;
    const SmoothSet& smooth_;
    Array1<LevelSpacing> spacings_;
};

bool IsExaminable(const StraightLines& lines) {
    return std::all_of(lines.places.begin(), lines.places.end(),
                       [](const PlanPoint& p) { return IsWithinReach(p.x) && IsWithinReach(p.y); });
}

std::string FaultOfMeeting(const StraightSet& straight, const SmoothSet& smooth) {
    const std::optional<LineMeeting> meeting = FindMeeting(straight.lines);
    if (!meeting) {
        return "";
    }
    const double value = smooth.levels[straight.levels[meeting->line]].value;
    const double other = smooth.levels[straight.levels[meeting->other]].value;
    const bool isItself = meeting->line == meeting->other;
    const char* what = meeting->isCrossing
                           ? (isItself ? "A line crosses itself" : "Two lines cross")
                           : (isItself ? "A line touches itself" : "Two lines touch");
    return what + Where(meeting->place, smooth.origin, value) +
           (isItself ? "." : " and level " + NumberText::General(other) + ".");
}

} // namespace

std::string SmoothFaultOf(const SmoothingSource& source, const SmoothSet& smooth,
                          double tolerance) {
    const SurfaceReader reader(source, smooth.origin);
    const StraightSet straight = Straighten(smooth, tolerance, reader);
    if (!IsExaminable(straight.lines)) {
        return "A line has coordinates too large or too small to be examined.";
    }
    std::string fault = FaultOfMeeting(straight, smooth);
    return fault.empty() ? HeightCheck(source, smooth, reader).FaultOf(straight) : fault;
}

} // namespace terravo

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

    /// @param size  of the coordinates that places were rounded to, where those are larger than
    ///              what is relative to the origin.
    SurfaceReader(const SmoothingSource& source, PlanPoint origin, double size = 0)
        : points_(source.points), triangles_(source.triangles), origin_(origin), size_(size) {}

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
        PlanPoint away; // from the place
        double height = 0;
        double size = 0; // of its coordinates

        // Of its coordinates, and of what is near it.
        [[nodiscard]] double Digits() const { return kDigits * size; }
    };
    using Corners = std::array<Corner, 3>;

    static constexpr double kDigits = 8 * std::numeric_limits<double>::epsilon();
    static constexpr double kFlat = 4;

    [[nodiscard]] Corners CornersOf(Index t, PlanPoint place) const {
        Corners corners;
        for (std::size_t j = 0; j < 3; ++j) {
            const Index i = triangles_.table[t].vertices[j];
            const PlanPoint there{points_.x[i] - origin_.x, points_.y[i] - origin_.y};
            corners[j] = {there - place, points_.z[i],
                          std::fabs(there.x) + std::fabs(there.y) + size_};
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
    double size_;
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

StraightSet SetOf(const ContourSet& contours, PlanPoint origin, const SurfaceReader& reader) {
    StraightSet straight;
    StraightLines& lines = straight.lines;
    for (Index k = 1; k <= contours.UpperBound(); ++k) {
        for (const ContourLine& line : contours[k].lines) {
            const auto vertices = contours[k].VerticesOf(line);
            lines.lines.push_back({lines.places.size(), vertices.size(), line.closed});
            straight.levels.push_back(k);
            straight.near.push_back(vertices.front().edge.triangle);
            for (std::size_t i = 0; i < vertices.size(); ++i) {
                lines.places.push_back(PlanPoint{vertices[i].x, vertices[i].y} - origin);
                const ContourVertex& next = vertices[i + 1 < vertices.size() ? i + 1 : 0];
                lines.isLeftOut.push_back(reader.IsFlat(next.edge.triangle) ? 1 : 0);
            }
        }
    }
    return straight;
}

class HeightCheck {
public:
    HeightCheck(const SmoothingSource& source, PlanPoint origin, const SmoothError& allowed,
                const SurfaceReader& reader)
        : source_(source), origin_(origin), allowed_(allowed), reader_(reader),
          spacings_(SpacingsOf(source.levels, source.points.extentZ)) {}

    /// @param steps  in which every piece is looked at.
    std::string FaultOf(const StraightSet& straight, int steps, const StopToken& stop) const {
        const auto count = static_cast<double>(straight.lines.lines.size());
        for (std::size_t i = 0; i < straight.lines.lines.size(); ++i) {
            if (!stop.GoesOn("examine", static_cast<double>(i) / count)) {
                return "";
            }
            const StraightLines::Line& line = straight.lines.lines[i];
            Index near = straight.near[i];
            for (std::size_t k = line.first; k < line.first + line.count; ++k) {
                if (straight.lines.isLeftOut[k] != 0) {
                    continue;
                }
                const bool isEnd = k + 1 == line.first + line.count;
                const PlanPoint place = straight.lines.places[k];
                const PlanPoint next = straight.lines.places[isEnd ? line.first : k + 1];
                const int looks = isEnd && !line.closed ? 1 : steps;
                std::string fault = FaultAlong(place, next, looks, straight.levels[i], near);
                if (!fault.empty()) {
                    return fault;
                }
            }
        }
        return "";
    }

private:
    std::string FaultAlong(PlanPoint place, PlanPoint next, int steps, Index level,
                           Index& near) const {
        for (int i = 0; i < steps; ++i) {
            const double part = static_cast<double>(i) / steps;
            std::string fault = FaultAt(place + part * (next - place), level, near);
            if (!fault.empty()) {
                return fault;
            }
        }
        return "";
    }

    std::string FaultAt(PlanPoint place, Index level, Index& near) const {
        const double value = source_.levels[level].value;
        const auto reading = reader_.Read(place, near);
        if (!reading) {
            return "A line leaves the surface" + Where(place, origin_, value) + ".";
        }
        const double off = reading->height - value;
        const LevelSpacing& spacing = spacings_[level];
        const double allowed = std::min(
            allowed_.height, allowed_.interval * (off > 0 ? spacing.above : spacing.below));
        if (std::fabs(off) <= allowed * (1 + kRounding) + reading->doubt) {
            return "";
        }
        return "A line leaves its height by " + NumberText::General(std::fabs(off)) +
               Where(place, origin_, value) + ".";
    }

    static constexpr double kRounding = 1e-9;

    const SmoothingSource& source_;
    PlanPoint origin_;
    SmoothError allowed_;
    const SurfaceReader& reader_;
    Array1<LevelSpacing> spacings_;
};

bool IsExaminable(const StraightLines& lines) {
    return std::all_of(lines.places.begin(), lines.places.end(),
                       [](const PlanPoint& p) { return IsWithinReach(p.x) && IsWithinReach(p.y); });
}

std::string FaultOfMeeting(const StraightSet& straight, const SmoothingSource& source,
                           PlanPoint origin, const StopToken& stop) {
    const std::optional<LineMeeting> meeting = FindMeeting(straight.lines, stop);
    if (!meeting) {
        return "";
    }
    const double value = source.levels[straight.levels[meeting->line]].value;
    const double other = source.levels[straight.levels[meeting->other]].value;
    const bool isItself = meeting->line == meeting->other;
    const char* what = meeting->isCrossing
                           ? (isItself ? "A line crosses itself" : "Two lines cross")
                           : (isItself ? "A line touches itself" : "Two lines touch");
    return what + Where(meeting->place, origin, value) +
           (isItself ? "." : " and level " + NumberText::General(other) + ".");
}

std::string FaultOf(const StraightSet& straight, const SmoothingSource& source, PlanPoint origin,
                    const SurfaceReader& reader, const SmoothError& allowed, int steps,
                    const StopToken& stop) {
    if (!IsExaminable(straight.lines)) {
        return "A line has coordinates too large or too small to be examined.";
    }
    std::string fault = FaultOfMeeting(straight, source, origin, stop);
    return fault.empty()
               ? HeightCheck(source, origin, allowed, reader).FaultOf(straight, steps, stop)
               : fault;
}

} // namespace

std::string SmoothFaultOf(const SmoothingSource& source, const SmoothSet& smooth, double tolerance,
                          const StopToken& stop) {
    const SurfaceReader reader(source, smooth.origin);
    return FaultOf(Straighten(smooth, tolerance, reader), source, smooth.origin, reader,
                   smooth.worst, 1, stop);
}

std::string StraightFaultOf(const SmoothingSource& source, const ContourSet& lines,
                            PlanPoint origin, const SmoothError& allowed, const StopToken& stop) {
    constexpr int kSteps = 8;
    const SurfaceReader reader(source, origin, std::fabs(origin.x) + std::fabs(origin.y));
    return FaultOf(SetOf(lines, origin, reader), source, origin, reader, allowed, kSteps, stop);
}

} // namespace terravo

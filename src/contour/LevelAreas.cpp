#include "contour/LevelAreas.h"

#include "contour/CornerPrefetch.h"
#include "contour/LevelReach.h"
#include "contour/TriangleCut.h"
#include "plot2d/PixelSurface.h"
#include "util/QuickSort3V.h"
#include "util/Stopwatch.h"
#include "util/modUtilita.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <numeric>
#include <optional>
#include <span>
#include <type_traits>
#include <vector>

namespace terravo {
namespace {

constexpr Index kProgressStride = 8192;

// What painting needs of a point when no level cuts its triangle. Small for pixels, because the
// corners of triangles lie anywhere in the list: a million of them stay within reach of the
// processor.
template <class Place>
struct MapPoint {
    using Coordinate = std::conditional_t<std::is_same_v<Place, PixelPoint>, std::int16_t, double>;

    Coordinate x = 0; // pixels
    Coordinate y = 0;
    Index band = 0; // the level just below a point that is surely between two; otherwise 0
};

// The level just below a height that lies between two, farther from both than rounding can move a
// mean of such heights; otherwise 0.
Index BandOf(double z, const LevelReach::Span& reached, const LevelSet& levels) {
    const Index k = reached.below;
    if (k != reached.upTo || k < 1 || k >= levels.UpperBound()) {
        return 0;
    }
    const double low = levels[k].value;
    const double high = levels[k + 1].value;
    const double margin =
        8 * std::numeric_limits<double>::epsilon() * std::max(std::fabs(low), std::fabs(high));
    return low + margin < z && z < high - margin ? k : 0;
}

template <class Surface>
std::vector<MapPoint<typename Surface::Place>>
MapPointsOf(const Surface& surface, const LevelSet& levels, const PointSet& points,
            const LevelReach& reach) {
    using Point = MapPoint<typename Surface::Place>;
    using Coordinate = typename Point::Coordinate;
    constexpr Coordinate kFarthest = std::numeric_limits<Coordinate>::max();
    const auto isNear = [](auto place) { return -kFarthest <= place && place <= kFarthest; };
    std::vector<Point> mapPoints(static_cast<std::size_t>(points.count) + 1);
    for (Index i = 1; i <= points.count; ++i) {
        const auto place = Surface::PlaceAt(surface.ToPixels(points.x[i], points.y[i]));
        if (isNear(place.x) && isNear(place.y)) {
            mapPoints[static_cast<std::size_t>(i)] = {
                static_cast<Coordinate>(place.x), static_cast<Coordinate>(place.y),
                BandOf(points.z[i], reach.OfPoint(i), levels)};
        }
    }
    return mapPoints;
}

// A piece of a band: corners in any order, with their heights. Its buffers serve piece after piece.
struct BandPolygon {
    Array1<double> x;
    Array1<double> y;
    Array1<double> z;

    void Clear() {
        x.Clear();
        y.Clear();
        z.Clear();
    }
    void Append(const SpacePoint& corner) {
        x.Append(corner.x);
        y.Append(corner.y);
        z.Append(corner.z);
    }
    [[nodiscard]] Index CornerCount() const { return x.UpperBound(); }
};

struct CutSegment {
    SpacePoint first;
    SpacePoint second;
    double level = 0;
};

using Corners = std::array<SpacePoint, 3>;

double Mean(const Array1<double>& values) {
    return std::accumulate(values.begin(), values.end(), 0.0) / values.UpperBound();
}

template <class Surface>
void FillInColour(Surface& surface, std::span<const typename Surface::Place> corners,
                  Colour colour) {
    PaintTools tools;
    tools.penColour = colour;
    tools.brush = colour;
    surface.FillPolygon(corners, tools);
}

// True when the corners make the same picture in any order. Fractions show every order.
bool IsOrderFree(std::span<const PixelPosition> corners) {
    return corners.size() <= 3;
}

bool IsOrderFree(std::span<const PixelPoint> corners) {
    if (corners.size() <= 3) {
        return true;
    }
    const auto [left, right] = std::minmax_element(
        corners.begin(), corners.end(), [](PixelPoint p, PixelPoint q) { return p.x < q.x; });
    const auto [top, bottom] = std::minmax_element(
        corners.begin(), corners.end(), [](PixelPoint p, PixelPoint q) { return p.y < q.y; });
    return std::int64_t{right->x} - left->x <= 1 && std::int64_t{bottom->y} - top->y <= 1;
}

// Puts the corners in order about their mean.
void SortCorners(BandPolygon& polygon, MessageService& messages) {
    const Index n = polygon.CornerCount();
    const double cx = Mean(polygon.x);
    const double cy = Mean(polygon.y);
    thread_local Array1<double> angles;
    angles.Resize(n);
    for (Index i = 1; i <= n; ++i) {
        angles[i] = modUtilita::PolarAngle(polygon.y[i] - cy, polygon.x[i] - cx);
    }
    QuickSort3V(angles, polygon.x, polygon.y, 1, n, 1, messages);
}

// Chooses the colour of a piece and fills it; the buffers serve piece after piece.
template <class Surface>
class PieceFiller {
public:
    PieceFiller(Surface& surface, const LevelSet& levels, std::optional<Colour> colourBelow,
                MessageService& messages)
        : surface_(surface), levels_(levels), colourBelow_(colourBelow), messages_(messages) {}

    void FillBandPolygon(BandPolygon& polygon) {
        FindCorners(polygon);
        if (!IsOrderFree(std::span<const Place>(corners_))) {
            SortCorners(polygon, messages_);
            FindCorners(polygon);
        }
        FillInColour(surface_, corners_, BandColour(levels_, Mean(polygon.z), colourBelow_));
    }

private:
    using Place = typename Surface::Place;

    void FindCorners(const BandPolygon& polygon) {
        corners_.clear();
        for (Index i = 1; i <= polygon.CornerCount(); ++i) {
            corners_.push_back(Surface::PlaceAt(surface_.ToPixels(polygon.x[i], polygon.y[i])));
        }
    }

    Surface& surface_;
    const LevelSet& levels_;
    std::optional<Colour> colourBelow_;
    MessageService& messages_;
    std::vector<Place> corners_;
};

// Divides and paints one triangle after the other; keeps the buffers between them.
template <class Surface>
class BandPainter {
public:
    BandPainter(Surface& surface, const LevelSet& levels, const ContourInput& input,
                const ShownSurface& shown, MessageService& messages)
        : surface_(surface), levels_(levels), points_(shown.points), triangles_(shown.triangles),
          reach_(points_, levels), mapPoints_(MapPointsOf(surface, levels, points_, reach_)),
          filler_(surface, levels, input.colourBelow, messages) {}

    void Paint(Index t) {
        PrefetchCorners(triangles_, t, mapPoints_);
        const Triangle& triangle = triangles_.table[t];
        const Index band = BandOf(triangle);
        if (band != 0) {
            FillInColour(
                surface_,
                std::array{PlaceOf(triangle, 1), PlaceOf(triangle, 2), PlaceOf(triangle, 3)},
                levels_[band].colour);
        } else {
            PaintPieces(triangle);
        }
    }

private:
    using Place = typename Surface::Place;

    [[nodiscard]] const MapPoint<Place>& MapPointOf(const Triangle& triangle, int vertex) const {
        return mapPoints_[static_cast<std::size_t>(triangle.Vertex(vertex))];
    }

    [[nodiscard]] Place PlaceOf(const Triangle& triangle, int vertex) const {
        const MapPoint<Place>& point = MapPointOf(triangle, vertex);
        return {point.x, point.y};
    }

    // The band of all three corners; 0 when they have none in common.
    [[nodiscard]] Index BandOf(const Triangle& triangle) const {
        const Index band = MapPointOf(triangle, 1).band;
        return band == MapPointOf(triangle, 2).band && band == MapPointOf(triangle, 3).band ? band
                                                                                            : 0;
    }

    void PaintPieces(const Triangle& triangle) {
        const Corners corners = CornersOf(triangle);
        FindSegments(reach_.Of(triangle), corners);
        if (segments_.empty()) {
            polygon_.Clear();
            for (const SpacePoint& corner : corners) {
                polygon_.Append(corner);
            }
            Fill();
            return;
        }
        PaintLowest(corners);
        PaintMiddle(corners);
        PaintHighest(corners);
    }

    [[nodiscard]] Corners CornersOf(const Triangle& triangle) const {
        Corners corners;
        for (std::size_t j = 0; j < 3; ++j) {
            const Index i = triangle.vertices[j];
            corners[j] = {points_.x[i], points_.y[i], points_.z[i]};
        }
        return corners;
    }

    void FindSegments(const LevelReach::Span& reached, const Corners& corners) {
        segments_.clear();
        for (Index k = reached.below + 1; k <= reached.upTo; ++k) {
            const double level = levels_[k].value;
            const CutPoints cut = CutTriangleByPlane(corners, Plane::AtLevel(level));
            if (cut.Count() == 2) {
                segments_.push_back({cut[1], cut[2], level});
            }
        }
    }

    template <class Condition>
    void StartWith(const CutSegment& segment, const Corners& corners, Condition belongs) {
        polygon_.Clear();
        AppendSegment(segment);
        AppendCorners(corners, belongs);
    }

    void AppendSegment(const CutSegment& segment) {
        polygon_.Append(segment.first);
        polygon_.Append(segment.second);
    }

    template <class Condition>
    void AppendCorners(const Corners& corners, Condition belongs) {
        for (const SpacePoint& corner : corners) {
            if (belongs(corner.z)) {
                polygon_.Append(corner);
            }
        }
    }

    void PaintLowest(const Corners& corners) {
        const double level = segments_.front().level;
        StartWith(segments_.front(), corners, [level](double z) { return z < level; });
        if (polygon_.CornerCount() > 2) {
            Fill();
        }
    }

    void PaintMiddle(const Corners& corners) {
        for (std::size_t s = 0; s + 1 < segments_.size(); ++s) {
            const double low = segments_[s].level;
            const double high = segments_[s + 1].level;
            polygon_.Clear();
            AppendSegment(segments_[s]);
            AppendSegment(segments_[s + 1]);
            AppendCorners(corners, [low, high](double z) { return low < z && z < high; });
            Fill();
        }
    }

    void PaintHighest(const Corners& corners) {
        const double level = segments_.back().level;
        StartWith(segments_.back(), corners, [level](double z) { return z > level; });
        if (polygon_.CornerCount() > 2) {
            Fill();
        }
    }

    void Fill() { filler_.FillBandPolygon(polygon_); }

    Surface& surface_;
    const LevelSet& levels_;
    const PointSet& points_;
    const TriangleList& triangles_;
    LevelReach reach_;
    std::vector<MapPoint<Place>> mapPoints_; // of point i at i
    PieceFiller<Surface> filler_;
    std::vector<CutSegment> segments_;
    BandPolygon polygon_;
};

// Paints all triangles; false when the stop request ended it.
template <class Surface>
bool PaintBands(Surface& surface, const LevelSet& levels, const ContourInput& input,
                const ShownSurface& shown, MessageService& messages) {
    BandPainter<Surface> painter(surface, levels, input, shown, messages);
    for (Index t = 1; t <= shown.triangles.count; ++t) {
        painter.Paint(t);
        const bool goesOn =
            t % kProgressStride == 0
                ? input.stop.GoesOn("areas", static_cast<double>(t) / shown.triangles.count)
                : !input.stop.IsStopRequested();
        if (!goesOn) {
            return false;
        }
    }
    return true;
}

} // namespace

Colour BandColour(const LevelSet& levels, double meanHeight,
                  const std::optional<Colour>& colourBelow) {
    const auto above = std::upper_bound(
        levels.begin(), levels.end(), meanHeight,
        [](double height, const LevelRecord& level) { return height < level.value; });
    const Colour top = levels[levels.UpperBound()].colour;
    if (above == levels.begin()) {
        return colourBelow.value_or(top);
    }
    return above == levels.end() ? top : std::prev(above)->colour;
}

ContourReport DrawLevelAreas(DrawSurface& surface, LevelSet& levels, const ContourInput& input,
                             MessageService& messages) {
    const auto body = [&](const ShownSurface& made, ContourReport& report) {
        Stopwatch watch;
        if (made.ierr < 0) {
            throw TriangulationError(made.ierr, input.run);
        }
        WithPlaces(surface, [&](auto& places) {
            report.stopped = !PaintBands(places, levels, input, made, messages);
        });
        DrawTriangleOverlay(surface, input, made);
        report.draw = watch.Lap();
    };
    return RunContourRoutine(levels, input, body);
}

} // namespace terravo

#include "contour/LevelAreas.h"

#include "contour/LevelReach.h"
#include "util/AppError.h"
#include "util/QuickSort3V.h"
#include "util/Stopwatch.h"
#include "util/modUtilita.h"

#include <algorithm>
#include <array>
#include <exception>
#include <numeric>
#include <vector>

namespace terravo {
namespace {

constexpr Index kProgressStride = 8192;

struct CutSegment {
    SpacePoint first;
    SpacePoint second;
    double level = 0;
};

using Corners = std::array<SpacePoint, 3>;

// Divides and paints one triangle after the other; keeps the buffers between them.
class BandPainter {
public:
    BandPainter(DrawSurface& surface, const LevelSet& levels, const PointSet& points,
                MessageService& messages)
        : surface_(surface), levels_(levels), points_(points), messages_(messages),
          reach_(points, levels) {}

    void Paint(const Triangle& triangle) {
        const Corners corners = CornersOf(triangle);
        FindSegments(triangle, corners);
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

private:
    [[nodiscard]] Corners CornersOf(const Triangle& triangle) const {
        Corners corners;
        for (std::size_t j = 0; j < 3; ++j) {
            const Index i = triangle.vertices[j];
            corners[j] = {points_.x[i], points_.y[i], points_.z[i]};
        }
        return corners;
    }

    void FindSegments(const Triangle& triangle, const Corners& corners) {
        segments_.clear();
        const LevelReach::Span span = reach_.Of(triangle);
        for (Index k = span.below + 1; k <= span.upTo; ++k) {
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

    void Fill() { FillBandPolygon(surface_, polygon_, levels_, messages_); }

    DrawSurface& surface_;
    const LevelSet& levels_;
    const PointSet& points_;
    MessageService& messages_;
    LevelReach reach_;
    std::vector<CutSegment> segments_;
    BandPolygon polygon_;
};

double Mean(const Array1<double>& values) {
    return std::accumulate(values.begin(), values.end(), 0.0) / values.UpperBound();
}

} // namespace

Colour BandColour(const LevelSet& levels, double meanHeight) {
    const auto above = std::upper_bound(
        levels.begin(), levels.end(), meanHeight,
        [](double height, const LevelRecord& level) { return height < level.value; });
    return above == levels.begin() || above == levels.end() ? levels[levels.UpperBound()].colour
                                                            : std::prev(above)->colour;
}

void FillBandPolygon(DrawSurface& surface, BandPolygon& polygon, const LevelSet& levels,
                     MessageService& messages) {
    const Index n = polygon.CornerCount();
    const double cx = Mean(polygon.x);
    const double cy = Mean(polygon.y);
    const Colour colour = BandColour(levels, Mean(polygon.z));
    thread_local Array1<double> angles;
    angles.Resize(n);
    for (Index i = 1; i <= n; ++i) {
        angles[i] = modUtilita::PolarAngle(polygon.y[i] - cy, polygon.x[i] - cx);
    }
    QuickSort3V(angles, polygon.x, polygon.y, 1, n, 1, messages);
    thread_local std::vector<PixelPoint> corners;
    corners.clear();
    for (Index i = 1; i <= n; ++i) {
        corners.push_back(surface.ToPixelPoint(polygon.x[i], polygon.y[i]));
    }
    PaintTools tools;
    tools.penColour = colour;
    tools.brush = colour;
    surface.FillPolygon(corners, tools);
}

std::string DrawLevelAreas(DrawSurface& surface, LevelSet& levels, const ContourInput& input,
                           RunState& state, MessageService& messages, ContourReport* report) {
    const auto body = [&](const KeptTriangulation::Result& kept, ContourReport& spent) {
        Stopwatch watch;
        if (kept.ierr < 0) {
            throw TriangulationError(kept.ierr, state);
        }
        const TriangleList& triangles = kept.triangles;
        BandPainter painter(surface, levels, input.points, messages);
        for (Index t = 1; t <= triangles.count; ++t) {
            painter.Paint(triangles.table[t]);
            if (input.progress && t % kProgressStride == 0) {
                input.progress("areas", static_cast<double>(t) / triangles.count);
            }
            if (input.stopRequested) {
                break;
            }
        }
        DrawTriangleOverlay(surface, input, triangles);
        spent.draw += watch.Lap();
    };
    return RunContourRoutine(levels, input, state, report, body);
}

} // namespace terravo

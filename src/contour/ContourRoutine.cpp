#include "contour/ContourRoutine.h"

#include "contour/CornerPrefetch.h"
#include "plot2d/PixelSurface.h"
#include "triangulation/modDelaunay2D.h"
#include "util/Stopwatch.h"

#include <algorithm>
#include <array>
#include <exception>
#include <span>
#include <vector>

namespace terravo {
namespace {

constexpr const char* kSource = "DELLIV_Lines";
constexpr Colour kOverlayColour = kWhite;

void RequireLevels(Index count, const ContourInput& input) {
    if (count < input.fewestLevels) {
        throw AppError(ErrorNumber::kDrawing, kSource,
                       input.run.texts[Text::TooFewLevels] + " NLiv = " + std::to_string(count));
    }
}

void DrawEdge(DrawSurface& surface, const PointSet& points, const Triangle& triangle, int edge) {
    const Index from = triangle.Vertex(edge);
    const Index to = triangle.Vertex(NextEdge(edge));
    surface.Line(points.x[from], points.y[from], points.x[to], points.y[to], kOverlayColour);
}

// Where the points lie in the picture. Each is the corner of six triangles on average.
template <class Surface>
std::vector<typename Surface::Place> PlacesOf(const Surface& surface, const PointSet& points) {
    std::vector<typename Surface::Place> places(static_cast<std::size_t>(points.count) + 1);
    for (Index i = 1; i <= points.count; ++i) {
        places[static_cast<std::size_t>(i)] =
            Surface::PlaceAt(surface.ToPixels(points.x[i], points.y[i]));
    }
    return places;
}

// Hands over many triangles at a time, as outlines.
template <class Surface>
class TriangleOutlines {
public:
    using Corners = std::array<typename Surface::Place, 3>;

    explicit TriangleOutlines(Surface& surface) : surface_(surface) {
        tools_.penColour = kOverlayColour;
        tools_.penStyle = surface.DrawStyle();
    }

    void Add(const Corners& triangle) {
        corners_.insert(corners_.end(), triangle.begin(), triangle.end());
        if (corners_.size() == 3 * kTogether) {
            Draw();
        }
    }

    void Draw() {
        if (!corners_.empty()) {
            surface_.FillPolyPolygon(corners_, std::span(threes_).first(corners_.size() / 3),
                                     tools_);
            corners_.clear();
        }
    }

private:
    static constexpr std::size_t kTogether = 1024;

    Surface& surface_;
    PaintTools tools_;
    const std::vector<std::int32_t> threes_ = std::vector<std::int32_t>(kTogether, 3);
    std::vector<typename Surface::Place> corners_;
};

template <class Surface>
void DrawTriangles(Surface& surface, const PointSet& points, const TriangleList& triangles) {
    const auto places = PlacesOf(surface, points);
    const auto placeOf = [&](const Triangle& triangle, int vertex) {
        return places[static_cast<std::size_t>(triangle.Vertex(vertex))];
    };
    const auto isInPicture = [&surface](typename Surface::Place p) {
        return p.x >= 0 && p.x < surface.PixelWidth() && p.y >= 0 && p.y < surface.PixelHeight();
    };
    TriangleOutlines<Surface> outlines(surface);
    for (Index t = 1; t <= triangles.count; ++t) {
        PrefetchCorners(triangles, t, places);
        const Triangle& triangle = triangles.table[t];
        const typename TriangleOutlines<Surface>::Corners corners{
            placeOf(triangle, 1), placeOf(triangle, 2), placeOf(triangle, 3)};
        if (std::all_of(corners.begin(), corners.end(), isInPicture)) {
            outlines.Add(corners);
        } else {
            for (int j = 1; j <= 3; ++j) {
                DrawEdge(surface, points, triangle, j);
            }
        }
    }
    outlines.Draw();
}

void DrawHull(DrawSurface& surface, const PointSet& points, const TriangleList& triangles) {
    for (Index t = 1; t <= triangles.count; ++t) {
        const Triangle& triangle = triangles.table[t];
        for (int j = 1; j <= 3; ++j) {
            if (triangle.Neighbour(j) < 0) {
                DrawEdge(surface, points, triangle, j);
            }
        }
    }
}

} // namespace

const std::string& TriangulationAdvice(Index ierr, const RunState& run) {
    return run.texts[ierr == modDelaunay2D::Ierr::kOutOfReach ? Text::CoordinateOutOfReach
                                                              : Text::NoTriangulationAdvice];
}

AppError TriangulationError(Index ierr, const RunState& run) {
    return {ErrorNumber::kDrawing, kSource,
            run.texts[Text::NoTriangulation] + " IERR = " + std::to_string(ierr) + "\n" +
                TriangulationAdvice(ierr, run)};
}

void DrawTriangleOverlay(DrawSurface& surface, const ContourInput& input,
                         const ShownSurface& shown) {
    surface.SetDrawWidth(1);
    if (input.showTriangles) {
        WithPlaces(surface,
                   [&](auto& places) { DrawTriangles(places, shown.points, shown.triangles); });
    }
    if (input.showPerimeter) {
        DrawHull(surface, shown.points, shown.triangles);
    }
}

ContourReport
RunContourRoutine(const LevelSet& levels, const ContourInput& input,
                  const std::function<void(const ShownSurface&, ContourReport&)>& body) {
    ContourReport report;
    report.levelCount = levels.UpperBound();
    try {
        RequireLevels(report.levelCount, input);
        Stopwatch watch;
        const ShownSurface made = input.survey.Surface(input.stop);
        report.triangulate = watch.Lap();
        if (made.ierr == modDelaunay2D::Ierr::kStopped) {
            report.stopped = true;
        } else {
            body(made, report);
        }
    } catch (const AppError& error) {
        report.error = error.what();
        report.errorNumber = error.number();
    } catch (const std::exception& error) {
        report.error = error.what();
        report.errorNumber = ErrorNumber::kDrawing;
    }
    return report;
}

} // namespace terravo

#include "contour/ContourRoutine.h"

#include "contour/CornerPrefetch.h"
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

void RequireLevels(Index count, const RunState& run) {
    if (count < kFewestLevels) {
        throw AppError(ErrorNumber::kDrawing, kSource,
                       run.texts[Text::TooFewLevels] + " NLiv = " + std::to_string(count));
    }
}

void DrawEdge(DrawSurface& surface, const PointSet& points, const Triangle& triangle, int edge) {
    const Index from = triangle.Vertex(edge);
    const Index to = triangle.Vertex(NextEdge(edge));
    surface.Line(points.x[from], points.y[from], points.x[to], points.y[to], kOverlayColour);
}

// Where the points lie in the picture. Each is the corner of six triangles on average.
std::vector<PixelPoint> PixelsOf(const DrawSurface& surface, const PointSet& points) {
    std::vector<PixelPoint> pixels(static_cast<std::size_t>(points.count) + 1);
    for (Index i = 1; i <= points.count; ++i) {
        pixels[static_cast<std::size_t>(i)] = surface.ToPixelPoint(points.x[i], points.y[i]);
    }
    return pixels;
}

void DrawTriangles(DrawSurface& surface, const PointSet& points, const TriangleList& triangles) {
    constexpr std::size_t kTogether = 1024;
    const std::vector<PixelPoint> pixels = PixelsOf(surface, points);
    const auto isInPicture = [&surface](PixelPoint p) {
        return p.x >= 0 && p.x < surface.PixelWidth() && p.y >= 0 && p.y < surface.PixelHeight();
    };
    PaintTools tools;
    tools.penColour = kOverlayColour;
    tools.penStyle = surface.DrawStyle();
    const std::vector<std::int32_t> threes(kTogether, 3);
    std::vector<PixelPoint> corners;
    const auto drawCollected = [&] {
        surface.FillPolyPolygon(corners, std::span(threes).first(corners.size() / 3), tools);
        corners.clear();
    };
    for (Index t = 1; t <= triangles.count; ++t) {
        PrefetchCorners(triangles, t, pixels);
        const Triangle& triangle = triangles.table[t];
        const std::array<PixelPoint, 3> places{
            pixels[static_cast<std::size_t>(triangle.Vertex(1))],
            pixels[static_cast<std::size_t>(triangle.Vertex(2))],
            pixels[static_cast<std::size_t>(triangle.Vertex(3))]};
        if (std::all_of(places.begin(), places.end(), isInPicture)) {
            corners.insert(corners.end(), places.begin(), places.end());
            if (corners.size() == 3 * kTogether) {
                drawCollected();
            }
        } else {
            for (int j = 1; j <= 3; ++j) {
                DrawEdge(surface, points, triangle, j);
            }
        }
    }
    if (!corners.empty()) {
        drawCollected();
    }
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

AppError TriangulationError(Index ierr, const RunState& run) {
    return {ErrorNumber::kDrawing, kSource,
            run.texts[Text::NoTriangulation] + " IERR = " + std::to_string(ierr) + "\n" +
                run.texts[Text::NoTriangulationAdvice]};
}

void DrawTriangleOverlay(DrawSurface& surface, const ContourInput& input,
                         const TriangleList& triangles) {
    surface.SetDrawWidth(1);
    if (input.showTriangles) {
        DrawTriangles(surface, input.survey.Points(), triangles);
    }
    if (input.showPerimeter) {
        DrawHull(surface, input.survey.Points(), triangles);
    }
}

ContourReport
RunContourRoutine(const LevelSet& levels, const ContourInput& input,
                  const std::function<void(const TriangulationOutcome&, ContourReport&)>& body) {
    ContourReport report;
    report.levelCount = levels.UpperBound();
    try {
        RequireLevels(report.levelCount, input.run);
        Stopwatch watch;
        const TriangulationOutcome& made = input.survey.Triangulation(input.stop);
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

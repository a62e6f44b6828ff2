#include "contour/ContourRoutine.h"

#include "util/Stopwatch.h"

#include <exception>

namespace terravo {
namespace {

constexpr const char* kSource = "DELLIV_Lines";
constexpr Colour kOverlayColour = kWhite;

// Records the number of levels in the run state.
void RecordLevelCount(const LevelSet& levels, RunState& state) {
    const Index n = levels.UpperBound();
    state.lastLevelCount = n;
    if (n < kFewestLevels) {
        throw AppError(ErrorNumber::kDrawing, kSource,
                       state.Text(TextIndex::kTooFewLevels) + " NLiv = " + std::to_string(n));
    }
}

} // namespace

AppError TriangulationError(Index ierr, const RunState& state) {
    return {ErrorNumber::kDrawing, kSource,
            state.Text(TextIndex::kNoTriangulation) + " IERR = " + std::to_string(ierr) + "\n" +
                state.Text(TextIndex::kNoTriangulationAdvice)};
}

void DrawTriangleOverlay(DrawSurface& surface, const ContourInput& input,
                         const TriangleList& triangles) {
    surface.SetDrawWidth(1);
    const auto drawEdges = [&](bool hullOnly) {
        for (Index t = 1; t <= triangles.count; ++t) {
            const Triangle& triangle = triangles.table[t];
            for (int j = 1; j <= 3; ++j) {
                if (hullOnly && triangle.Neighbour(j) >= 0) {
                    continue;
                }
                const Index from = triangle.Vertex(j);
                const Index to = triangle.Vertex(NextEdge(j));
                surface.Line(input.points.x[from], input.points.y[from], input.points.x[to],
                             input.points.y[to], kOverlayColour);
            }
        }
    };
    if (input.showTriangles) {
        drawEdges(false);
    }
    if (input.showPerimeter) {
        drawEdges(true);
    }
}

std::string RunContourRoutine(
    const LevelSet& levels, const ContourInput& input, RunState& state, ContourReport* report,
    const std::function<void(const KeptTriangulation::Result&, ContourReport&)>& body) {
    ContourReport unused;
    ContourReport& spent = report != nullptr ? *report : unused;
    try {
        Stopwatch watch;
        RecordLevelCount(levels, state);
        const KeptTriangulation::Result& kept =
            input.triangulation.For(input.points, input.progress);
        spent.triangulate += watch.Lap();
        body(kept, spent);
    } catch (const AppError& error) {
        spent.errorNumber = error.number();
        return error.what();
    } catch (const std::exception& error) {
        spent.errorNumber = ErrorNumber::kDrawing;
        return error.what();
    }
    return {};
}

} // namespace terravo

#include "contour/LevelLines.h"

#include "contour/LevelLabels.h"
#include "triangulation/modDelaunay2D.h"
#include "util/Stopwatch.h"

#include <algorithm>

namespace terravo {
namespace {

void DrawPieces(DrawSurface& surface, const LevelRecord& level,
                const std::vector<LevelPiece>& pieces) {
    const bool endIsMissing = level.width == 1 && surface.LeavesOutLastPixel();
    for (const LevelPiece& piece : pieces) {
        if (!piece.isSegment) {
            surface.PSet(piece.x1, piece.y1, level.colour);
            continue;
        }
        surface.Line(piece.x1, piece.y1, piece.x2, piece.y2, level.colour);
        if (endIsMissing) {
            surface.PSet(piece.x2, piece.y2, level.colour);
        }
    }
}

void PlaceLabels(LevelLabels& labels, Index k, const std::vector<LevelPiece>& pieces) {
    for (const LevelPiece& piece : pieces) {
        if (piece.isSegment) {
            labels.PlaceLabel(k, piece.x2, piece.y2);
        }
    }
}

std::int64_t CountSegments(const std::vector<LevelPiece>& pieces) {
    return std::count_if(pieces.begin(), pieces.end(),
                         [](const LevelPiece& piece) { return piece.isSegment; });
}

// Cuts, draws and hands on the levels; the report says when it was stopped.
void DrawLevels(DrawSurface& surface, LevelSet& levels, const ContourInput& input,
                const ShownSurface& shown, LevelLabels& labels, const LevelSink& sink,
                ContourReport& report) {
    Stopwatch watch;
    LevelCutter cutter(shown.points, shown.triangles, levels);
    for (Index k = 1; k <= levels.UpperBound() && !report.stopped; ++k) {
        LevelRecord& level = levels[k];
        level.width = std::max(level.width, 1);
        surface.SetDrawWidth(level.width);
        const std::vector<LevelPiece>& pieces = cutter.Cut(k);
        report.segments += CountSegments(pieces);
        report.cut += watch.Lap();
        DrawPieces(surface, level, pieces);
        if (labels.AreOn()) {
            PlaceLabels(labels, k, pieces);
        }
        report.draw += watch.Lap();
        if (sink) {
            sink(level.value, pieces);
        }
        report.write += watch.Lap();
        report.stopped =
            !input.stop.GoesOn("contour", static_cast<double>(k) / levels.UpperBound());
    }
}

} // namespace

ContourReport DrawLevelLines(DrawSurface& surface, LevelSet& levels, const ContourInput& input,
                             const LevelSink& sink) {
    const auto body = [&](const ShownSurface& made, ContourReport& report) {
        if (made.ierr != modDelaunay2D::Ierr::kDone) {
            throw TriangulationError(made.ierr, input.run);
        }
        const FontGuard fontGuard(surface);
        LevelLabels labels(surface, levels);
        DrawLevels(surface, levels, input, made, labels, sink, report);
        if (!report.stopped) {
            Stopwatch watch;
            if (labels.AreOn()) {
                labels.DrawLabels();
            }
            DrawTriangleOverlay(surface, input, made);
            report.draw += watch.Lap();
        }
    };
    return RunContourRoutine(levels, input, body);
}

} // namespace terravo

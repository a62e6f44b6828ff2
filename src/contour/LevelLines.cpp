#include "contour/LevelLines.h"

#include "contour/LevelCut.h"
#include "contour/LevelLabels.h"
#include "util/Stopwatch.h"

#include <algorithm>

namespace terravo {
namespace {

void DrawPieces(DrawSurface& surface, const LevelRecord& level,
                const std::vector<LevelPiece>& pieces) {
    for (const LevelPiece& piece : pieces) {
        if (!piece.isSegment) {
            surface.PSet(piece.x1, piece.y1, level.colour);
            continue;
        }
        surface.Line(piece.x1, piece.y1, piece.x2, piece.y2, level.colour);
        if (level.width == 1) {
            // A line leaves out its last pixel.
            surface.PSet(piece.x2, piece.y2, level.colour);
        }
    }
}

void WritePieces(SegmentFile& segments, const LevelRecord& level,
                 const std::vector<LevelPiece>& pieces) {
    for (const LevelPiece& piece : pieces) {
        if (piece.isSegment) {
            segments.WriteSegment(piece.x1, piece.y1, piece.x2, piece.y2, level.value);
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

// Cuts, draws and writes the levels; false when the stop request ended it.
bool DrawLevels(DrawSurface& surface, LevelSet& levels, const ContourInput& input,
                const TriangleList& triangles, LevelLabels& labels, SegmentFile& segments,
                ContourReport& report) {
    Stopwatch watch;
    LevelCutter cutter(input.points, triangles, levels);
    for (Index k = 1; k <= levels.UpperBound(); ++k) {
        LevelRecord& level = levels[k];
        level.width = std::max(level.width, 1);
        surface.SetDrawWidth(level.width);
        const std::vector<LevelPiece>& pieces = cutter.Cut(k);
        report.cut += watch.Lap();
        DrawPieces(surface, level, pieces);
        if (labels.AreOn()) {
            PlaceLabels(labels, k, pieces);
        }
        report.draw += watch.Lap();
        WritePieces(segments, level, pieces);
        report.write += watch.Lap();
        if (input.progress) {
            input.progress("contour", static_cast<double>(k) / levels.UpperBound());
        }
        if (input.stopRequested) {
            return false;
        }
    }
    return true;
}

} // namespace

std::string DrawLevelLines(DrawSurface& surface, LevelSet& levels, const ContourInput& input,
                           SegmentFile& segments, RunState& state, ContourReport* report) {
    const auto body = [&](const KeptTriangulation::Result& kept, ContourReport& spent) {
        Stopwatch watch;
        if (kept.ierr != modDelaunay2D::Ierr::kDone) {
            throw TriangulationError(kept.ierr, state);
        }
        const FontGuard fontGuard(surface);
        LevelLabels labels(surface, levels);
        spent.stopped =
            !DrawLevels(surface, levels, input, kept.triangles, labels, segments, spent);
        if (!spent.stopped) {
            watch.Lap();
            if (labels.AreOn()) {
                labels.DrawLabels();
            }
            DrawTriangleOverlay(surface, input, kept.triangles);
            spent.draw += watch.Lap();
        }
    };
    return RunContourRoutine(levels, input, state, report, body);
}

} // namespace terravo

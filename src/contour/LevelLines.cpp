#include "contour/LevelLines.h"

#include "contour/LevelCut.h"
#include "contour/LevelLabels.h"
#include "util/AppError.h"
#include "util/Stopwatch.h"

#include <algorithm>
#include <exception>

namespace terravo {
namespace {

constexpr const char* kSource = "DELLIV_Lines";
constexpr Colour kOverlayColour = 0xFFFFFF;

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

const TriangleList& PrepareContours(const LevelSet& levels, const ContourInput& input,
                                    RunState& state) {
    const Index n = levels.UpperBound();
    state.lastLevelCount = n;
    if (n < kFewestLevels) {
        throw AppError(ErrorNumber::kDrawing, kSource,
                       state.Text(TextIndex::kTooFewLevels) + " NLiv = " + std::to_string(n));
    }
    const KeptTriangulation::Result& kept = input.triangulation.For(input.points, input.progress);
    if (kept.ierr != modDelaunay2D::Ierr::kDone) {
        throw AppError(ErrorNumber::kDrawing, kSource,
                       state.Text(TextIndex::kNoTriangulation) +
                           " IERR = " + std::to_string(kept.ierr) + "\n" +
                           state.Text(TextIndex::kNoTriangulationAdvice));
    }
    return kept.triangles;
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

std::string DrawLevelLines(DrawSurface& surface, LevelSet& levels, const ContourInput& input,
                           SegmentFile& segments, RunState& state, ContourReport* report) {
    ContourReport unused;
    ContourReport& spent = report != nullptr ? *report : unused;
    try {
        Stopwatch watch;
        const TriangleList& triangles = PrepareContours(levels, input, state);
        spent.triangulate += watch.Lap();
        const FontGuard fontGuard(surface);
        LevelLabels labels(surface, levels);
        if (DrawLevels(surface, levels, input, triangles, labels, segments, spent)) {
            watch.Lap();
            if (labels.AreOn()) {
                labels.DrawLabels();
            }
            DrawTriangleOverlay(surface, input, triangles);
            spent.draw += watch.Lap();
        }
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

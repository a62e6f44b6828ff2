// Whole maps of hard points: frame, lines, areas, exchange files and their exports.
//
// Data: a few bytes of options, then points, see FuzzPoints.h. Method: the map is drawn in both
// modes on pixels in memory. What has been written must export without a complaint, and the pieces
// of any levels must be those of a search through all triangles.
#include "app/session/ContourMap.h"
#include "contour/LevelCut.h"
#include "export/QrzWriter.h"
#include "fuzz/FuzzPoints.h"
#include "fuzz/PixelSurface.h"
#include "support/FakeServices.h"
#include "support/TemporaryFolder.h"

namespace terravo {
namespace {

using fuzz::Require;

SpacePoint PointAt(const PointSet& points, Index i) {
    return {points.x[i], points.y[i], points.z[i]};
}

bool IsSame(double a, double b) {
    return !(a < b) && !(a > b);
}

// Levels at heights of the points and between them, in the order that the points have.
LevelSet LevelsOf(const PointSet& points, Index most) {
    LevelSet levels;
    for (Index i = 1; i <= points.count && levels.UpperBound() < most; ++i) {
        const double other = points.z[points.count + 1 - i];
        levels.Append({i % 3 == 0 ? points.z[i] / 2 + other / 2 : points.z[i], 0, 1, {}, 0, 10});
    }
    return levels;
}

void CheckCut(const PointSet& points, const TriangleList& triangles, const LevelSet& levels) {
    LevelCutter cutter(points, triangles, levels);
    for (Index k = 1; k <= levels.UpperBound(); ++k) {
        const std::vector<LevelPiece>& pieces = cutter.Cut(k);
        std::size_t next = 0;
        for (Index t = 1; t <= triangles.count; ++t) {
            const auto& corners = triangles.table[t].vertices;
            const CutPoints cut =
                CutTriangleByPlane({PointAt(points, corners[0]), PointAt(points, corners[1]),
                                    PointAt(points, corners[2])},
                                   Plane::AtLevel(levels[k].value));
            if (cut.Count() != 1 && cut.Count() != 2) {
                continue;
            }
            Require(next < pieces.size() && pieces[next].isSegment == (cut.Count() == 2) &&
                        IsSame(pieces[next].x1, cut[1].x) && IsSame(pieces[next].y1, cut[1].y),
                    "the pieces of a level are those of all its triangles");
            ++next;
        }
        Require(next == pieces.size(), "a level has no other pieces");
    }
}

struct Bench {
    test::TemporaryFolder folder;
    RunState state;
    FakeMessages messages;
    FakeClock clock;

    Bench() {
        state.workFolder = folder.Path();
        state.qrzExportPath = folder.File("out.qrz");
    }
};

void CheckExports(Bench& bench, bool hasSegments, bool hasMesh) {
    FakeClipboard clipboard;
    FakeLog log;
    if (hasSegments) {
        QrzWriter::WriteQrzLevels(bench.state, clipboard, log);
        Require(log.lines.empty() || log.lines[0].find("the first level is 0") != std::string::npos,
                "the segments of a map are exported" + (log.lines.empty() ? "" : log.lines[0]));
    }
    log.lines.clear();
    if (hasMesh) {
        QrzWriter::WriteQrzTriangles(bench.state, clipboard, bench.messages, log);
        Require(log.lines.empty(),
                "the triangles of a map are exported" + (log.lines.empty() ? "" : log.lines[0]));
    }
}

} // namespace
} // namespace terravo

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace terravo;
    static Bench bench;
    bench.messages.boxes.clear();
    fuzz::InputBytes bytes(data, size);
    fuzz::PixelSurface surface(1 + bytes.Byte(), 1 + bytes.Byte());
    ContourMap map(bench.state, bench.messages, bench.clock);
    const int switches = bytes.Byte();
    map.options.levelCount = bytes.Byte() % 24;
    map.options.showTriangles = (switches & 1) != 0;
    map.options.showPerimeter = (switches & 2) != 0;
    map.options.showLevelValues = (switches & 4) != 0;
    map.points = fuzz::TakePoints(bytes);
    map.PointsChanged();

    map.options.mode = MapMode::Areas;
    map.DrawContourMap(surface);
    map.options.mode = MapMode::Lines;
    map.DrawContourMap(surface);
    const bool drawn = bench.state.lastDrawError.empty();
    CheckExports(bench, drawn, map.TriangulateAndShow3D());
    const KeptTriangulation::Result& kept = map.Triangulation();
    if (kept.ierr == 0) {
        CheckCut(map.points, kept.triangles, LevelsOf(map.points, 12));
    }
    return 0;
}

// Whole maps of hard points: frame, lines, areas, exchange files and their exports.
//
// Data: a few bytes of options, then points, see FuzzPoints.h. Method: the map is drawn in both
// modes on pixels in memory. What has been written must export without a complaint, and the pieces
// of any levels must be those of a search through all triangles.
#include "app/session/ContourMap.h"
#include "contour/LevelCut.h"
#include "export/MeshFile.h"
#include "export/QrzWriter.h"
#include "export/SegmentFile.h"
#include "fuzz/FuzzPoints.h"
#include "support/CheckContours.h"
#include "support/FakeServices.h"
#include "support/MemorySurface.h"
#include "support/TemporaryFolder.h"
#include "triangulation/modDelaunay2D.h"
#include "util/AppError.h"

namespace terravo {
namespace {

using fuzz::Require;

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
        Require(test::ArePiecesOf(points, triangles, levels[k].value, cutter.Cut(k)),
                "the pieces of a level are those of all its triangles");
    }
}

struct Bench {
    test::TemporaryFolder folder;
    RunState state;
    FakeMessages messages;
    FakeClock clock;
};

bool DrawLines(const Bench& bench, const ContourMap& map, DrawSurface& surface,
               const MapOptions& options) {
    SegmentFile segments(bench.folder.File(kSegmentFileName));
    const MapReport report =
        map.Draw(surface, options, StopToken(),
                 [&segments](double level, const auto& pieces) { segments.Write(level, pieces); });
    segments.Close();
    return report.contours.error.empty();
}

void CheckExports(const Bench& bench, Index levelCount, const Survey& survey) {
    const std::string path = bench.folder.File("out.qrz");
    try {
        QrzWriter::WriteQrzLevels(bench.folder.File(kSegmentFileName), levelCount, path);
        const std::string mesh = bench.folder.File(kMeshFileName);
        WriteMeshFile(mesh, survey.Points(), survey.Triangulation().triangles);
        QrzWriter::WriteQrzTriangles(mesh, path);
    } catch (const AppError& error) {
        Require(false, std::string("what was drawn is exported: ") + error.what());
    }
}

} // namespace
} // namespace terravo

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace terravo;
    static Bench bench;
    bench.messages.boxes.clear();
    fuzz::InputBytes bytes(data, size);
    MemorySurface surface(1 + bytes.Byte(), 1 + bytes.Byte());
    const int switches = bytes.Byte();
    MapOptions options;
    options.levels = RuleByCount(bytes.Byte() % 24);
    options.showTriangles = (switches & 1) != 0;
    options.showPerimeter = (switches & 2) != 0;
    options.showLevelValues = (switches & 4) != 0;
    const Survey survey(fuzz::TakePoints(bytes));
    const ContourMap map(survey, bench.state, bench.messages, bench.clock);

    options.mode = MapMode::Areas;
    map.Draw(surface, options);
    options.mode = MapMode::Lines;
    if (DrawLines(bench, map, surface, options)) {
        CheckExports(bench, options.levels.count, survey);
    }
    if (survey.Triangulation().ierr == modDelaunay2D::Ierr::kDone) {
        CheckCut(survey.Points(), survey.Triangulation().triangles, LevelsOf(survey.Points(), 12));
    }
    return 0;
}

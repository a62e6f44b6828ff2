// Writing the vector files of the companion CAD program from the exchange files.
//
// Data: the exchange files of a map with 10 levels, in a temporary folder and so in the system's
// file cache. Method: whole exports to a file that does not exist yet, which means reading the
// exchange file as well; the removal of the file written before is left out. The rate counts the
// bytes written over the time on the wall.
#include "BenchData.h"
#include "BenchMap.h"
#include "BenchRun.h"
#include "contour/SegmentFile.h"
#include "export/MeshFile.h"
#include "export/QrzWriter.h"
#include "plot2d/RasterSurface.h"

#include <QGuiApplication>

#include <filesystem>

namespace terravo::bench {
namespace {

constexpr Index kLevelCount = 10;

// The map with both of its exchange files on the disk.
BenchMap& MapWithFiles(Index count) {
    BenchMap& kept = KeptMap(count);
    if (!std::filesystem::exists(kept.folder.File(kMeshFileName))) {
        RasterSurface surface(1200, 900);
        kept.map.options.levelCount = kLevelCount;
        kept.map.DrawContourMap(surface);
        kept.map.TriangulateAndShow3D();
    }
    return kept;
}

struct Fakes {
    FakeClipboard clipboard;
    FakeMessages messages;
    FakeLog log;
};

void WriteTriangles(RunState& runState, Fakes& fakes) {
    QrzWriter::WriteQrzTriangles(runState, fakes.clipboard, fakes.messages, fakes.log);
}

void WriteLevels(RunState& runState, Fakes& fakes) {
    QrzWriter::WriteQrzLevels(runState, fakes.clipboard, fakes.log);
}

using Writer = void (*)(RunState& runState, Fakes& fakes);

void Export(benchmark::State& state, Index count, Writer write, const char* sourceName) {
    BenchMap& kept = MapWithFiles(count);
    RunState& runState = kept.runState;
    runState.qrzExportPath = kept.folder.File("export.qrz");
    runState.lastQrzExportPath.clear();
    Fakes fakes;
    for (auto _ : state) {
        write(runState, fakes);
        state.PauseTiming();
        if (runState.lastQrzExportPath != runState.qrzExportPath || !kept.messages.boxes.empty()) {
            state.SkipWithError("nothing was exported");
            break;
        }
        const auto bytes = std::filesystem::file_size(runState.qrzExportPath);
        state.counters["bytes"] = static_cast<double>(bytes);
        std::filesystem::remove(runState.qrzExportPath);
        runState.lastQrzExportPath.clear();
        state.ResumeTiming();
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.counters["bytes"].value) *
                            state.iterations());
    state.counters["read"] =
        static_cast<double>(std::filesystem::file_size(kept.folder.File(sourceName)));
}

void Register(Index count) {
    const auto add = [&](const char* what, Writer write, const char* sourceName) {
        const std::string name = BenchName("export", what, std::to_string(count));
        benchmark::RegisterBenchmark(name.c_str(), Export, count, write, sourceName)
            ->UseRealTime()
            ->Unit(benchmark::kMillisecond);
    };
    add("triangles", WriteTriangles, kMeshFileName);
    add("levels", WriteLevels, kSegmentFileName);
}

} // namespace
} // namespace terravo::bench

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    for (const auto count : terravo::bench::kSizes) {
        terravo::bench::Register(count);
    }
    return terravo::bench::RunBenchmarks(argc, argv);
}

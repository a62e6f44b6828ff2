// Writing the vector files of the companion CAD program from the exchange files.
//
// Data: the exchange files of a map with 10 levels, in a temporary folder and so in the system's
// file cache. Method: whole exports to a file that does not exist yet, which means reading the
// exchange file as well; the removal of the file written before is left out. The rate counts the
// bytes written over the time on the wall.
#include "BenchData.h"
#include "BenchMap.h"
#include "BenchRun.h"
#include "export/MeshFile.h"
#include "export/QrzWriter.h"
#include "export/SegmentFile.h"
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
        MapOptions options;
        options.levels = RuleByCount(kLevelCount);
        kept.Draw(surface, options);
        WriteMeshFile(kept.folder.File(kMeshFileName), kept.survey.Points(),
                      kept.survey.Triangulation().triangles);
    }
    return kept;
}

using Writer = void (*)(const std::string& from, const OutputTarget& to);

void WriteLevels(const std::string& from, const OutputTarget& to) {
    QrzWriter::WriteQrzLevels(from, kLevelCount, to);
}

void Export(benchmark::State& state, Index count, Writer write, const char* sourceName) {
    const BenchMap& kept = MapWithFiles(count);
    const std::string source = kept.folder.File(sourceName);
    const std::string target = kept.folder.File("export.qrz");
    for (auto _ : state) {
        write(source, target);
        state.PauseTiming();
        state.counters["bytes"] = static_cast<double>(std::filesystem::file_size(target));
        std::filesystem::remove(target);
        state.ResumeTiming();
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.counters["bytes"].value) *
                            state.iterations());
    state.counters["read"] = static_cast<double>(std::filesystem::file_size(source));
}

void Register(Index count) {
    const auto add = [&](const char* what, Writer write, const char* sourceName) {
        const std::string name = BenchName("export", what, std::to_string(count));
        benchmark::RegisterBenchmark(name.c_str(), Export, count, write, sourceName)
            ->UseRealTime()
            ->Unit(benchmark::kMillisecond);
    };
    add("triangles", QrzWriter::WriteQrzTriangles, kMeshFileName);
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

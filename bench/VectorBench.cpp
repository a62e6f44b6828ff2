// Writing files for CAD and GIS, and reading them back to compare them.
//
// Data: random points on a smooth terrain with millimetres; their triangles, and the joined lines
// of 50 levels with every digit. Method: whole files in the temporary folder, which should lie in
// memory (TMPDIR=/dev/shm); the removal of the file written before is left out. The content is made
// before the clock starts. The rate counts the bytes of the file over processor time, that of the
// system included.
#include "BenchData.h"
#include "BenchRun.h"
#include "exchange/VectorFormats.h"
#include "export/vector/DecimalRounding.h"
#include "export/vector/MakeVectorContent.h"
#include "plot2d/ColourScale.h"
#include "support/TemporaryFolder.h"
#include "survey/Survey.h"

#include <filesystem>
#include <map>

namespace terravo::bench {
namespace {

constexpr Index kLevelCount = 50;

struct Subject {
    std::string name;
    const VectorFormat* format = nullptr;
    VectorOptions options;
    VectorPart part = VectorPart::Triangles;
    Index points = 0;
};

// As instruments write them.
PointSet InMillimetres(const PointSet& points) {
    const DecimalRounding round(3);
    PointSet rounded;
    for (Index i = 1; i <= points.count; ++i) {
        rounded.Append(round(points.x[i]), round(points.y[i]), round(points.z[i]));
    }
    return rounded;
}

const Survey& KeptTriangulation(Index count) {
    static std::map<Index, Survey> kept;
    const auto [place, isNew] =
        kept.try_emplace(count, InMillimetres(KeptSurvey(Layout::Random, count)));
    if (isNew) {
        static_cast<void>(place->second.Triangulation());
    }
    return place->second;
}

const VectorContent& KeptContent(Index count, VectorPart part) {
    static std::map<std::pair<Index, VectorPart>, VectorContent> kept;
    const auto [place, isNew] = kept.try_emplace({count, part});
    if (isNew) {
        const Survey& survey = KeptTriangulation(count);
        const PointSet& points = survey.Points();
        const TriangleList& triangles = survey.Triangulation().triangles;
        const LevelRule rule = RuleByCount(kLevelCount);
        const LevelSet levels =
            MakeLevelSet(rule, points.extentZ, ColourScale::MakePalette(ColourScale::kPlanColours),
                         LevelRequest());
        const ContourSet contours = *MakeContourSet(points, triangles, levels);
        VectorWish wish;
        wish.parts.Add(part);
        place->second = MakeVectorContent(SourceOf(survey.Surface(), rule, levels, contours), wish);
    }
    return place->second;
}

void WriteTo(const std::string& path, const Subject& subject) {
    std::vector<std::string> remarks;
    OutputFile file(path);
    subject.format->write(file, KeptContent(subject.points, subject.part), subject.options,
                          remarks);
    file.Commit();
}

void CountBytes(benchmark::State& state, std::uintmax_t bytes) {
    state.counters["bytes"] = static_cast<double>(bytes);
    state.SetBytesProcessed(static_cast<std::int64_t>(bytes) * state.iterations());
}

void Write(benchmark::State& state, const Subject& subject) {
    const test::TemporaryFolder folder;
    const std::string path = folder.File("content");
    KeptContent(subject.points, subject.part);
    std::uintmax_t bytes = 0;
    for (auto _ : state) {
        WriteTo(path, subject);
        state.PauseTiming();
        bytes = std::filesystem::file_size(path);
        std::filesystem::remove(path);
        state.ResumeTiming();
    }
    CountBytes(state, bytes);
}

void Check(benchmark::State& state, const Subject& subject) {
    const test::TemporaryFolder folder;
    const std::string path = folder.File("content");
    WriteTo(path, subject);
    for (auto _ : state) {
        if (subject.format->check(path, KeptContent(subject.points, subject.part),
                                  subject.options)) {
            state.SkipWithError("the file differs from its content");
            return;
        }
    }
    CountBytes(state, std::filesystem::file_size(path));
}

void RegisterOne(const Subject& subject) {
    const auto add = [&](const char* what, auto function) {
        const std::string name =
            BenchName("vector", subject.name,
                      subject.part == VectorPart::Triangles ? "triangles" : "contours", what,
                      std::to_string(subject.points));
        benchmark::RegisterBenchmark(name.c_str(), function, subject)
            ->Unit(benchmark::kMillisecond);
    };
    add("write", Write);
    if (subject.format->check != nullptr) {
        add("check", Check);
    }
}

// With all sizes and parts that the format knows.
void Register(Subject subject) {
    for (const VectorPart part : {VectorPart::Triangles, VectorPart::Contours}) {
        if (subject.format->known.Has(part)) {
            subject.part = part;
            for (const Index points : {100000, 1000000}) {
                subject.points = points;
                RegisterOne(subject);
            }
        }
    }
}

} // namespace
} // namespace terravo::bench

int main(int argc, char** argv) {
    using namespace terravo;
    for (const VectorFormat& format : VectorFormats()) {
        // The others are GDAL's work.
        if (format.write == nullptr || format.option == "gpkg") {
            continue;
        }
        bench::Subject subject{std::string(format.option), &format, {}, {}, 0};
        bench::Register(subject);
        if (format.option == "dxf") {
            subject.name = "dxf r12";
            subject.options.dxfVersion = DxfVersion::R12;
            bench::Register(subject);
        }
    }
    return bench::RunBenchmarks(argc, argv);
}

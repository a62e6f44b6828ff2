// Reading a point file, against the least that any reader must do.
//
// Data: point files in a temporary folder, in the system's file cache after the first run. Method:
// "ours" reads the file into a point set; "loop" runs std::from_chars over the same bytes already
// in memory and keeps only the sum; "load+loop" also loads the file with one fread first.
#include "BenchData.h"
#include "BenchRun.h"
#include "support/TemporaryFolder.h"
#include "survey/PointFile.h"
#include "survey/import/PointImport.h"

#include <charconv>
#include <cstdio>
#include <filesystem>
#include <memory>

namespace terravo::bench {
namespace {

struct Sum {
    double value = 0;
    Index numbers = 0;
};

// One separator follows every number.
Sum SumNumbers(const std::string& text) {
    Sum sum;
    const char* const end = text.data() + text.size();
    for (const char* p = text.data(); p < end;) {
        double value = 0;
        const auto read = std::from_chars(p, end, value);
        if (read.ec != std::errc{}) {
            break;
        }
        sum.value += value;
        ++sum.numbers;
        p = read.ptr + 1;
    }
    return sum;
}

std::string LoadFile(const std::string& path) {
    std::string text(std::filesystem::file_size(path), '\0');
    std::FILE* const file = std::fopen(path.c_str(), "rb");
    if (file == nullptr) {
        return {};
    }
    text.resize(std::fread(text.data(), 1, text.size(), file));
    std::fclose(file);
    return text;
}

void CountBytes(benchmark::State& state, const std::string& path) {
    state.SetBytesProcessed(static_cast<std::int64_t>(std::filesystem::file_size(path)) *
                            state.iterations());
}

void Ours(benchmark::State& state, const std::string& path, Index count) {
    for (auto _ : state) {
        PointSet points;
        const auto failure = ReadPoints(path, points);
        if (failure || points.count != count) {
            state.SkipWithError("the file was not read whole");
            break;
        }
        benchmark::DoNotOptimize(points.extentZ.max);
    }
    CountBytes(state, path);
}

// With the look at the file that users' files get.
void Inspected(benchmark::State& state, const std::string& path, Index count) {
    for (auto _ : state) {
        PointSet points;
        const ImportOutcome outcome = ImportPoints(path, {}, BadRecords::Refuse, points);
        if (outcome.failure || points.count != count) {
            state.SkipWithError("the file was not read whole");
            break;
        }
        benchmark::DoNotOptimize(points.extentZ.max);
    }
    CountBytes(state, path);
}

void CheckSum(benchmark::State& state, const Sum& sum, Index count) {
    if (sum.numbers != 3 * count) {
        state.SkipWithError("the text was not read whole");
    }
}

void Loop(benchmark::State& state, const std::string& path, Index count) {
    const std::string text = LoadFile(path);
    Sum sum;
    for (auto _ : state) {
        sum = SumNumbers(text);
        benchmark::DoNotOptimize(sum.value);
    }
    CheckSum(state, sum, count);
    CountBytes(state, path);
}

void LoadAndLoop(benchmark::State& state, const std::string& path, Index count) {
    Sum sum;
    for (auto _ : state) {
        sum = SumNumbers(LoadFile(path));
        benchmark::DoNotOptimize(sum.value);
    }
    CheckSum(state, sum, count);
    CountBytes(state, path);
}

// The same lines with a header, a number before each and a code behind it.
std::string WithLabels(const std::string& text) {
    std::string labelled = "Point,Easting,Northing,Elevation,Code\n";
    std::size_t number = 0;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = text.find('\n', begin);
        labelled += std::to_string(++number) + "," + text.substr(begin, end - begin) + ",TREE\n";
        begin = end + 1;
    }
    return labelled;
}

void RegisterLabelled(const test::TemporaryFolder& folder) {
    for (const Index count : kSizes) {
        const std::string size = std::to_string(count);
        const std::string path = folder.Write(
            "labelled" + size + ".dat",
            WithLabels(PointText(KeptSurvey(Layout::Random, count), Digits::Millimetres)));
        benchmark::RegisterBenchmark(BenchName("read", "mm", "labelled", size).c_str(), Inspected,
                                     path, count)
            ->Unit(benchmark::kMillisecond);
    }
}

void Register(const test::TemporaryFolder& folder) {
    for (const auto& [digits, form] :
         {std::pair(Digits::Millimetres, "mm"), std::pair(Digits::Full, "full")}) {
        for (const Index count : kSizes) {
            const std::string size = std::to_string(count);
            const std::string path = folder.Write(
                form + size + ".dat", PointText(KeptSurvey(Layout::Random, count), digits));
            const auto add = [&](const char* who, auto* run) {
                benchmark::RegisterBenchmark(BenchName("read", form, who, size).c_str(), run, path,
                                             count)
                    ->Unit(benchmark::kMillisecond);
            };
            add("ours", Ours);
            add("inspected", Inspected);
            add("loop", Loop);
            add("load+loop", LoadAndLoop);
        }
    }
}

} // namespace
} // namespace terravo::bench

int main(int argc, char** argv) {
    const terravo::test::TemporaryFolder folder;
    terravo::bench::Register(folder);
    terravo::bench::RegisterLabelled(folder);
    return terravo::bench::RunBenchmarks(argc, argv);
}

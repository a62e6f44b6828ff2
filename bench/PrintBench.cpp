// Printing numbers: the lines of the exchange files, against the standard library's formatting.
//
// Data: ten thousand points, with millimetres and with every digit of the double. Method: three
// numbers a line into a string that is reused; "snprintf" and "to_chars" print the same numbers to
// 15 significant digits, without zones and without the form of ours.
#include "BenchData.h"
#include "BenchRun.h"
#include "util/NumberText.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>

namespace terravo::bench {
namespace {

constexpr Index kCount = 10000;

void AppendOurs(std::string& out, double x, double y, double z) {
    NumberText::AppendPrintedLine(out, x, y, z);
}

void AppendWithSnprintf(std::string& out, double x, double y, double z) {
    std::array<char, 128> line{};
    const int length =
        std::snprintf(line.data(), line.size(), " %.15G  %.15G  %.15G \r\n", x, y, z);
    out.append(line.data(), static_cast<std::size_t>(length));
}

void AppendWithToChars(std::string& out, double x, double y, double z) {
    std::array<char, 40> text{};
    for (const double value : {x, y, z}) {
        const auto written = std::to_chars(text.data(), text.data() + text.size(), value,
                                           std::chars_format::general, 15);
        out += ' ';
        out.append(text.data(), written.ptr);
        out += ' ';
    }
    out += "\r\n";
}

using AppendLine = void (*)(std::string& out, double x, double y, double z);

void Print(benchmark::State& state, AppendLine append, double perUnit) {
    PointSet points = MakeSurvey(Layout::Random, kCount);
    if (perUnit > 0) {
        for (Array1<double>* values : {&points.x, &points.y, &points.z}) {
            for (double& value : *values) {
                value = std::round(value * perUnit) / perUnit;
            }
        }
    }
    std::string out;
    for (auto _ : state) {
        out.clear();
        for (Index i = 1; i <= points.count; ++i) {
            append(out, points.x[i], points.y[i], points.z[i]);
        }
        benchmark::DoNotOptimize(out.data());
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(out.size()) * state.iterations());
    state.SetItemsProcessed(3 * std::int64_t{kCount} * state.iterations());
}

void Register(const char* form, double perUnit) {
    const auto add = [&](const char* who, AppendLine append) {
        benchmark::RegisterBenchmark(BenchName("print", form, who).c_str(), Print, append, perUnit)
            ->Unit(benchmark::kMillisecond);
    };
    add("ours", AppendOurs);
    add("snprintf", AppendWithSnprintf);
    add("to_chars", AppendWithToChars);
}

} // namespace
} // namespace terravo::bench

int main(int argc, char** argv) {
    terravo::bench::Register("mm", 1000);
    terravo::bench::Register("full", 0);
    return terravo::bench::RunBenchmarks(argc, argv);
}

// What every benchmark program does around its measurements.
#pragma once

#include <benchmark/benchmark.h>

#include <string>

namespace terravo::bench {

/// Runs what has been registered, under the options of the benchmark library.
/// @return exit code of the program: 1 for an unknown option, 0 otherwise.
int RunBenchmarks(int argc, char** argv);

/// "subject/variant/.../count".
template <class... Parts>
std::string BenchName(const Parts&... parts) {
    std::string name;
    ((name += name.empty() ? "" : "/", name += parts), ...);
    return name;
}

} // namespace terravo::bench

// Seconds since a moment, for the times that the summary and the benchmarks report.
#pragma once

#include <chrono>

namespace terravo {

class Stopwatch {
public:
    /// Seconds since the start or the last call.
    double Lap() {
        const auto now = std::chrono::steady_clock::now();
        const double seconds = std::chrono::duration<double>(now - start_).count();
        start_ = now;
        return seconds;
    }

private:
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

} // namespace terravo

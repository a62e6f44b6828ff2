// Processor seconds of this process since a moment: unlike the time on the wall they do not grow
// while other programs have the processor.
#pragma once

#include <ctime>

namespace terravo::bench {

class CpuStopwatch {
public:
    /// Seconds since the start or the last call.
    double Lap() {
        const std::clock_t now = std::clock();
        const double seconds = static_cast<double>(now - start_) / CLOCKS_PER_SEC;
        start_ = now;
        return seconds;
    }

private:
    std::clock_t start_ = std::clock();
};

} // namespace terravo::bench

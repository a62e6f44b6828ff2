#include "util/SystemServices.h"

#include <chrono>
#include <cstdio>
#include <ctime>

namespace terravo {

void StderrLog::Write(const std::string& line) {
    std::fprintf(stderr, "terravo: %s\n", line.c_str());
}

double SystemClock::SecondsOfDay() const {
    using namespace std::chrono;
    const auto now = system_clock::now();
    const std::time_t whole = system_clock::to_time_t(now);
    const std::tm* local = std::localtime(&whole);
    if (local == nullptr) {
        return 0;
    }
    const double fraction = duration<double>(now - time_point_cast<seconds>(now)).count();
    return local->tm_hour * 3600 + local->tm_min * 60 + local->tm_sec + fraction;
}

} // namespace terravo

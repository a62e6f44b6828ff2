// Services that need nothing but the standard library: standard error and the time of day.
#pragma once

#include "util/Services.h"

namespace terravo {

class StderrLog : public LogService {
public:
    void Write(const std::string& line) override;
};

class SystemClock : public ClockService {
public:
    [[nodiscard]] double SecondsOfDay() const override;
};

} // namespace terravo

// A failed run of terravo-batch: the sentence for the user and the exit code.
#pragma once

#include "app/batch/ExitCode.h"
#include "util/StopSignals.h"

#include <stdexcept>
#include <string>

namespace terravo {

class RunFailure : public std::runtime_error {
public:
    RunFailure(int exitCode, const std::string& sentence)
        : std::runtime_error(sentence), exitCode_(exitCode) {}
    [[nodiscard]] int exitCode() const { return exitCode_; }

private:
    int exitCode_;
};

/// Ends a run that a signal has asked to stop, between two pieces of its work.
inline void EndWhenStopped() {
    if (StopSignals::Received() != 0) {
        throw RunFailure(ExitCode::kSignalBase + StopSignals::Received(),
                         "stopped; no file has been written.");
    }
}

} // namespace terravo

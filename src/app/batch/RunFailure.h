// A failed run of terravo-batch: the sentence for the user and the exit code.
#pragma once

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

} // namespace terravo

// Long work seen from outside: how far it has come, and the wish that it ends.
//
// Data: one flag; a function that is told of progress. Method: whoever starts the work keeps the
// token and hands it down; routines look at it between their steps and leave their results as they
// were documented to for work that was stopped. The flag may be set from any thread.
#pragma once

#include <atomic>
#include <functional>
#include <string_view>
#include <utility>

namespace terravo {

class StopToken {
public:
    /// Told now and then of the stage of the work and of the part done, 0 to 1.
    using Report = std::function<void(std::string_view stage, double done)>;

    /// For work that nobody watches.
    StopToken() = default;
    explicit StopToken(Report report) : report_(std::move(report)) {}

    void RequestStop() { requested_ = true; }
    /// Before new work: forgets a wish that came too late for the work before.
    void Reset() { requested_ = false; }
    [[nodiscard]] bool IsStopRequested() const { return requested_; }

    /// Tells how far the work has come. The wish may arise while it is told.
    /// @return whether the work is to go on.
    [[nodiscard]] bool GoesOn(std::string_view stage, double done) const {
        if (report_) {
            report_(stage, done);
        }
        return !requested_;
    }

private:
    Report report_;
    std::atomic<bool> requested_{false};
};

} // namespace terravo

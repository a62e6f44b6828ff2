#include "app/session/PlanHistory.h"

#include <utility>

namespace terravo {

void PlanHistory::Clear(SurfacePlan plan) {
    states_.clear();
    states_.push_back({std::move(plan), {}});
    present_ = 0;
    saved_ = 0;
}

void PlanHistory::Add(SurfacePlan plan, std::string step) {
    states_.resize(present_ + 1);
    if (saved_ && *saved_ > present_) {
        saved_.reset();
    }
    states_.push_back({std::move(plan), std::move(step)});
    ++present_;
}

std::string PlanHistory::UndoName() const {
    return CanUndo() ? states_[present_].step : std::string();
}

std::string PlanHistory::RedoName() const {
    return CanRedo() ? states_[present_ + 1].step : std::string();
}

const SurfacePlan& PlanHistory::Undo() {
    present_ -= CanUndo() ? 1 : 0;
    return Present();
}

const SurfacePlan& PlanHistory::Redo() {
    present_ += CanRedo() ? 1 : 0;
    return Present();
}

} // namespace terravo

// What a user has done to a surface, step by step, to be undone and done again.
//
// Data: the plan after each step, and the step's name; which of them is the present one and which
// is the one in the project file. Method: there is no limit: plans share their lines, so that a
// step costs little. A new step takes the place of those that were undone.
#pragma once

#include "survey/surface/SurfacePlan.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace terravo {

class PlanHistory {
public:
    /// Forgets all steps: this is the plan now, and the one that is saved.
    void Clear(SurfacePlan plan = {});

    /// A step was made.
    /// @param step  its name, as "Undo %1" says it.
    void Add(SurfacePlan plan, std::string step);

    [[nodiscard]] const SurfacePlan& Present() const { return states_[present_].plan; }

    [[nodiscard]] bool CanUndo() const { return present_ > 0; }
    [[nodiscard]] bool CanRedo() const { return present_ + 1 < states_.size(); }
    /// The name of the step that would be undone or done again; empty when there is none.
    [[nodiscard]] std::string UndoName() const;
    [[nodiscard]] std::string RedoName() const;

    /// Goes one step back or forward, where there is one.
    /// @return the plan that is the present one then.
    const SurfacePlan& Undo();
    const SurfacePlan& Redo();

    /// The present plan has been saved.
    void MarkSaved() { saved_ = present_; }
    [[nodiscard]] bool IsSaved() const { return saved_ == present_; }

private:
    struct State {
        SurfacePlan plan;
        std::string step; // that led to it
    };

    std::vector<State> states_{1};
    std::size_t present_ = 0;
    std::optional<std::size_t> saved_ = 0; // none: it can no longer be come back to
};

} // namespace terravo

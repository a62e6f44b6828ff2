// The questions about projects, as message boxes in the language of the user.
#pragma once

#include "app/project/ProjectServices.h"
#include "util/RunState.h"

namespace terravo {

class ProjectQuestionBoxes : public ProjectQuestions {
public:
    /// @param state  its texts; outlives the object.
    explicit ProjectQuestionBoxes(const RunState& state) : state_(state) {}

    [[nodiscard]] SaveAnswer AskToSave(const std::string& name) override;
    [[nodiscard]] bool AskToGoOn(const std::string& sentence) override;
    [[nodiscard]] RestoreAnswer AskToRestore(const std::string& name) override;

private:
    const RunState& state_;
};

} // namespace terravo

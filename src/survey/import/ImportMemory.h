// The plans that were chosen for files, from one run to the next.
//
// Data: in the settings a short list of choices: the file, its shape as an inspection sees it, the
// plan. Method: a file is recognised by its path and shape, else by its shape alone. Each entry is
// one line of text in which everything but letters, digits and plain marks is written as %XX.
#pragma once

#include "survey/import/Inspection.h"
#include "util/SettingsStore.h"

#include <optional>
#include <string>
#include <string_view>

namespace terravo {

/// A plan as one word of ASCII, and back.
/// @return nothing for a text that is no plan.
std::string TextOf(const ImportPlan& plan);
std::optional<ImportPlan> PlanFromText(std::string_view text);

/// What files of one kind have in common, one word of ASCII: separator, decimal sign, header lines,
/// the words of the last of them, and what the columns hold.
/// @param inspection  of the file, with no wish.
std::string ShapeOf(const std::string& path, const Inspection& inspection);

class ImportMemory {
public:
    static constexpr std::size_t kMost = 50;
    static constexpr const char* kSection = "ImportPlans";

    explicit ImportMemory(SettingsStore& store) : store_(store) {}

    /// The plan that was chosen for this file, if it still has the same shape; else the last one
    /// chosen for a file of its shape, with the encoding of this one.
    [[nodiscard]] std::optional<ImportPlan> Recall(const std::string& path,
                                                   const Inspection& inspection) const;
    /// The plan that was chosen for this very file, if it still has the same shape.
    [[nodiscard]] std::optional<ImportPlan> RecallOwn(const std::string& path,
                                                      const Inspection& inspection) const;
    /// Keeps a choice; the oldest drops out of a full list.
    /// @param inspection  of the file, with no wish.
    void Remember(const std::string& path, const Inspection& inspection, const ImportPlan& plan);

private:
    SettingsStore& store_;
};

} // namespace terravo

// What the user wants a file for CAD and GIS to be, asked for in the dialog and kept as a habit.
//
// Data: the settings; levels in words. Method: whoever writes the file gives the levels and lets
// them be chosen anew.
#pragma once

#include "app/session/Session.h"
#include "app/settings/ExportHabit.h"

#include <QString>

#include <functional>
#include <optional>

class QWidget;

struct VectorChoice {
    const terravo::VectorFormat& format;
    terravo::VectorWish wish;
    terravo::VectorOptions options;

    /// Writes files as chosen.
    [[nodiscard]] terravo::Session::VectorWrite Writer() const;
};

/// @param levels     those in force, in words.
/// @param askLevels  has others chosen; none: lines are at these levels, as they are cut.
/// @return nothing where the user cancels.
std::optional<VectorChoice> AskForVector(const terravo::RunState& state, terravo::Session& session,
                                         const std::function<QString()>& levels,
                                         const std::function<void()>& askLevels, QWidget* parent);

// What the axonometric picture of a run shows, and how it is looked at.
#pragma once

#include "app/batch/BatchOptions.h"
#include "survey/Survey.h"
#include "util/Services.h"
#include "view3d/ViewData.h"
#include "view3d/ViewParameters.h"

#include <string>

namespace terravo {

/// The data of the survey as the kind shows them.
/// @param messages  hears of points that cannot be shown.
/// Throws RunFailure for a surface of points that form no regular grid.
ViewData DataFor3D(View3DKind kind, const std::string& pointFile, const Survey& survey,
                   MessageService& messages);

ViewParameters ParametersOf(const View3DOptions& chosen);

} // namespace terravo

// The proof of a surface, on demand.
//
// Data: a survey with its plan. Method: without constraints the triangulation is looked at as a
// whole; with them the triangles, marks and lines by exact signs, and the visible part against the
// hidden one.
#pragma once

#include "survey/Survey.h"

#include <optional>
#include <string>

namespace terravo {

/// Looks at the surface of a survey as it is now.
/// @return the first fault as a sentence, or nothing.
std::optional<std::string> VerifySurface(const Survey& survey);

} // namespace terravo

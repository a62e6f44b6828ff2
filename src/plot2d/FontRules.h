// The rules by which a system replaces and changes fonts.
#pragma once

#include <string>

namespace terravo {

/// From now on the fonts of a family that the program has brought along are drawn as they are: no
/// rule of the system or of the user puts another family first or hints them another way.
void KeepFromFontRules(const std::string& family);

} // namespace terravo

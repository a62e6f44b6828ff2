// The vector formats that other programs read.
//
// Data: one entry a format. Method: menus, options, help and tests are made from the entries.
#pragma once

#include "export/vector/VectorFormat.h"

#include <span>
#include <string_view>

namespace terravo {

/// All of them, in the order of menus and help.
std::span<const VectorFormat> VectorFormats();

/// The format of that option; null when there is none.
const VectorFormat* VectorFormatOf(std::string_view option);

} // namespace terravo

// How far a long command has come, told to whoever shows it, and whether it is to go on.
#pragma once

#include <functional>
#include <string_view>

namespace terravo {

/// Called now and then with the name of the stage and the part done, 0 to 1. May be empty.
/// @return false to ask for the end of the work.
using ProgressCallback = std::function<bool(std::string_view stage, double done)>;

} // namespace terravo

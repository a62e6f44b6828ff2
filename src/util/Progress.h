// How far a long command has come, told to whoever shows it.
#pragma once

#include <functional>
#include <string_view>

namespace terravo {

/// Called now and then with the name of the stage and the part done, 0 to 1. May be empty.
using ProgressCallback = std::function<void(std::string_view stage, double done)>;

} // namespace terravo

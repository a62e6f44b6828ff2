// Independent pieces of work on as many threads as there are cores.
//
// Data: none of its own. Method: the caller and helpers take the next piece that nobody has taken,
// so the result must not depend on who does which.
#pragma once

#include <functional>

namespace terravo {

/// Calls work(0) .. work(count - 1), each once, on the calling thread and others, and waits for
/// all. When pieces throw, the pieces not yet begun are left out and the first exception goes on
/// here.
void InParallel(int count, const std::function<void(int piece)>& work);

} // namespace terravo

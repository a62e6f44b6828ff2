// Who is asked what is to be read of a file that goes through GDAL.
//
// Data: what the file holds and the plan that the question begins with. Method: an interface,
// implemented by a dialog in the windows and by fakes in the tests.
#pragma once

#include "gis/GisPlan.h"

#include <optional>
#include <string>

namespace terravo {

class GisDialogService {
public:
    virtual ~GisDialogService() = default;
    /// Asks which layers are to be read and how.
    /// @param begin  what was chosen for this file before, or what is proposed.
    /// @return nothing when the user cancels, else a plan without a fault.
    virtual std::optional<GisPlan> Ask(const std::string& path, const GisSource& source,
                                       const GisPlan& begin) = 0;
};

} // namespace terravo

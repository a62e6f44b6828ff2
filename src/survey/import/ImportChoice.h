// What somebody chooses for a file whose reading is not certain, and who is asked for it.
//
// Data: a plan and what becomes of records that do not fit it. Method: an interface, implemented
// by a dialog in the windows and by fakes in the tests.
#pragma once

#include "survey/import/Inspection.h"
#include "survey/import/PointImport.h"

#include <optional>
#include <string>

namespace terravo {

struct ImportChoice {
    ImportPlan plan;
    BadRecords bad = BadRecords::Refuse;

    bool operator==(const ImportChoice&) const = default;
};

class ImportDialogService {
public:
    virtual ~ImportDialogService() = default;
    /// Asks how a file is to be read.
    /// @param inspection  of the file: the doubt, the candidates, the plan it begins with. A doubt
    ///                    without a kind is shown as it is: a sentence in the user's language, such
    ///                    as why the reading of a whole file failed.
    /// @param remembered  the plan it begins with instead: what was chosen for this file, or one
    ///                    like it, before.
    /// @return nothing when the user cancels. The plan has easting, northing and height once each,
    ///         or is a free list; records beyond the head of the file may still not fit it.
    virtual std::optional<ImportChoice> Ask(const std::string& path, const Inspection& inspection,
                                            const std::optional<ImportPlan>& remembered) = 0;
};

} // namespace terravo

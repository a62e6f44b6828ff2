// What the status bar says of the place under the pointer.
//
// Data: the survey. Method: its position with the decimals of the file, but no finer than a
// ten-millionth of the extent, and the height of the surface there. What it has to know of the
// survey is found out once after every change.
#pragma once

#include "survey/Survey.h"

#include <cstdint>
#include <string>

namespace terravo {

class PointerText {
public:
    explicit PointerText(const Survey& survey) : survey_(survey) {}

    /// "x: 12.5   y: 30.0   z: 101.25   P7 TREE"; without z outside the triangles, and where they
    /// have not been made; with name and code of a point that is near.
    /// @param reach      how far in x and in y a point may be, of its corners' triangle.
    /// @param separator  of decimals.
    [[nodiscard]] std::string At(PlanPoint place, PlanPoint reach, char separator);

private:
    void LookAgain();
    [[nodiscard]] std::string LabelNear(PlanPoint place, PlanPoint reach,
                                        const ShownSurface& shown) const;

    const Survey& survey_;
    std::uint64_t version_ = 0;
    bool looked_ = false;
    std::string planPattern_;
    std::string heightPattern_;
    Index triangle_ = 1;
};

} // namespace terravo

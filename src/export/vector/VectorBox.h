// The box around all that is written of some content.
//
// Data: the lowest and the highest of each coordinate. Method: the lists of the parts that are
// asked for are walked once.
#pragma once

#include "export/vector/VectorContent.h"

#include <algorithm>
#include <limits>

namespace terravo {

struct VectorBox {
    static constexpr double kNone = std::numeric_limits<double>::infinity();
    SpacePoint low{kNone, kNone, kNone};
    SpacePoint high{-kNone, -kNone, -kNone};

    void Include(const SpacePoint& p) {
        low = {std::min(low.x, p.x), std::min(low.y, p.y), std::min(low.z, p.z)};
        high = {std::max(high.x, p.x), std::max(high.y, p.y), std::max(high.z, p.z)};
    }
    [[nodiscard]] bool IsEmpty() const { return low.x > high.x; }
    /// Whether the plan could be longitude and latitude.
    [[nodiscard]] bool IsWithinDegrees() const {
        return low.x >= -180 && high.x <= 180 && low.y >= -90 && high.y <= 90;
    }
};

/// The box of contours at their levels, of bands at their lower ones, of triangles, points and
/// lines, as far as they are asked for.
VectorBox BoxOf(const VectorContent& content);

} // namespace terravo

#include "app/session/PointerText.h"

#include "survey/FileDecimals.h"
#include "survey/SurfaceHeight.h"
#include "util/NumberText.h"

#include <algorithm>
#include <cmath>

namespace terravo {
namespace {

constexpr double kFinestPart = 1e-7; // of the extent

std::string Pattern(int decimals, double width) {
    const int most =
        width > 0 ? static_cast<int>(std::ceil(-std::log10(width * kFinestPart))) : decimals;
    return "#0." + std::string(static_cast<std::size_t>(std::clamp(most, 0, decimals)), '0');
}

} // namespace

void PointerText::LookAgain() {
    if (looked_ && version_ == survey_.Version()) {
        return;
    }
    looked_ = true;
    version_ = survey_.Version();
    const PointSet& points = survey_.Points();
    const double width =
        std::max(points.extentX.max - points.extentX.min, points.extentY.max - points.extentY.min);
    planPattern_ = Pattern(
        std::max(FileDecimals(points.x, points.count), FileDecimals(points.y, points.count)),
        width);
    heightPattern_ =
        Pattern(FileDecimals(points.z, points.count), points.extentZ.max - points.extentZ.min);
}

// The walk has ended in a triangle that holds the place or is at the hull beside it.
std::string PointerText::LabelNear(PlanPoint place, PlanPoint reach,
                                   const ShownSurface& shown) const {
    const PointSet& points = shown.points;
    if (!points.labels.HasLabels() || triangle_ > shown.triangles.count) {
        return {};
    }
    for (const Index corner : shown.triangles.table[triangle_].vertices) {
        if (std::fabs(points.x[corner] - place.x) <= reach.x &&
            std::fabs(points.y[corner] - place.y) <= reach.y) {
            return points.labels.NameAndCode(corner);
        }
    }
    return {};
}

std::string PointerText::At(PlanPoint place, PlanPoint reach, char separator) {
    LookAgain();
    std::string text = "x: " + NumberText::FormatScreen(place.x, planPattern_, separator) +
                       "   y: " + NumberText::FormatScreen(place.y, planPattern_, separator);
    if (const std::optional<ShownSurface> shown = survey_.KnownSurface()) {
        const std::optional<double> height =
            SurfaceHeight(shown->points, shown->triangles, place, triangle_);
        if (height) {
            text += "   z: " + NumberText::FormatScreen(*height, heightPattern_, separator);
        }
        const std::string label = LabelNear(place, reach, *shown);
        text += label.empty() ? "" : "   " + label;
    }
    return text;
}

} // namespace terravo

#include "view3d/AxonometricView.h"

#include "util/modUtilita.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace terravo {
namespace {

double Wide(float value) {
    return static_cast<double>(value);
}

} // namespace

void AxonometricView::Show(ViewData data) {
    data_ = std::make_shared<const ViewData>(std::move(data));
    hasData_ = true;
    isDrawn_ = false;
}

void AxonometricView::SetStandardView(StandardView view, int outerHeight) {
    switch (view) {
    case StandardView::XY: {
        const double width = (Wide(parameters_.rayx) * std::cos(Wide(parameters_.alfa)) + 1) *
                             drawing_.projection.Frame().LengthX();
        const std::int32_t pixels = std::max(modUtilita::RoundHalfEven(width), 1);
        parameters_.rayx = static_cast<float>(0.8 * outerHeight / pixels);
        parameters_.alfa = kHalfPi;
        break;
    }
    case StandardView::ZX:
        parameters_.rayx = 0;
        parameters_.alfa = kHalfPi;
        break;
    case StandardView::ZY:
        parameters_.rayx = 1000;
        parameters_.alfa = 0;
        break;
    }
}

void AxonometricView::DragAxisEnd(double userX, double userZ) {
    const Frame3D& frame = drawing_.projection.Frame();
    const double dx = (userX - frame.extents.xmin) * frame.scale.perX;
    const double dz = (userZ - frame.extents.zmin) * frame.scale.perZ;
    // Adding zero makes a negative zero positive: exactly to the left is +180 degrees.
    parameters_.alfa = static_cast<float>(std::atan2(dz + 0.0, dx));
    parameters_.rayx = static_cast<float>(std::hypot(dx, dz) / frame.LengthX());
}

UserPosition AxonometricView::NearAxisEnd(double right, double up) const {
    const Frame3D& frame = drawing_.projection.Frame();
    const double length = Wide(parameters_.rayx) * frame.LengthX();
    const double alfa = Wide(parameters_.alfa);
    return {frame.extents.xmin + (length * std::cos(alfa) + right) / frame.scale.perX,
            frame.extents.zmin + (length * std::sin(alfa) + up) / frame.scale.perZ};
}

std::optional<Message> AxonometricView::Redraw(DrawSurface& surface, bool full,
                                               const RunState& run) {
    const FrameMeasures& kept = drawing_.projection.Measures();
    auto result = Rendering::Redraw(surface, *data_, parameters_, full ? nullptr : &kept, run);
    if (auto* const failure = std::get_if<Message>(&result)) {
        isDrawn_ = false;
        return std::move(*failure);
    }
    drawing_ = std::get<Drawing3D>(std::move(result));
    parameters_.rayx = drawing_.projection.Frame().rayx;
    isDrawn_ = true;
    return std::nullopt;
}

std::optional<NearestPoint> AxonometricView::FindNearest(PixelPoint pixel) const {
    return isDrawn_ ? terravo::FindNearest(*data_, drawing_, pixel) : std::nullopt;
}

} // namespace terravo

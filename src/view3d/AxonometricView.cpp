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
    Show(std::make_shared<const ViewData>(std::move(data)));
}

void AxonometricView::Show(std::shared_ptr<const ViewData> data) {
    data_ = std::move(data);
    hasData_ = true;
    isDrawn_ = false;
}

void AxonometricView::SetStandardView(StandardView view, int outerHeight) {
    switch (view) {
    case StandardView::XY:
        parameters_.rayx = LengthSeenFromAbove(outerHeight);
        parameters_.alfa = kHalfPi;
        break;
    case StandardView::ZX:
        parameters_.rayx = 0;
        parameters_.alfa = kHalfPi;
        break;
    case StandardView::ZY:
        parameters_.rayx = 1000;
        parameters_.alfa = 0;
        break;
    case StandardView::Initial:
        parameters_.rayx = ViewParameters{}.rayx;
        parameters_.alfa = kFirstSlant;
        break;
    }
}

// The width is what the axes fill in any view that leans to the right and is not too high, and not
// what they fill now: the view from above would otherwise depend on the one before, and on itself.
float AxonometricView::LengthSeenFromAbove(int outerHeight) const {
    constexpr double kPartOfHeight = 0.8;
    const std::int32_t width = modUtilita::RoundHalfEven(drawing_.projection.Frame().roomWidth);
    return static_cast<float>(kPartOfHeight * outerHeight / (width > 0 ? width : outerHeight));
}

void AxonometricView::HoldAxes() {
    const Frame3D& frame = drawing_.projection.Frame();
    if (isDrawn_) {
        parameters_.held = {frame.scale.originX, frame.scale.originY, frame.LengthX()};
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
    const SurfaceSize size{surface.PixelWidth(), surface.PixelHeight()};
    const bool keeps = !full && measuredOn_ == size;
    const FrameMeasures& kept = drawing_.projection.Measures();
    auto result = Rendering::Redraw(surface, *data_, parameters_, keeps ? &kept : nullptr, run);
    if (auto* const failure = std::get_if<Message>(&result)) {
        isDrawn_ = false;
        measuredOn_.reset();
        return std::move(*failure);
    }
    measuredOn_ = size;
    drawing_ = std::get<Drawing3D>(std::move(result));
    parameters_.rayx = drawing_.projection.Frame().rayx;
    isDrawn_ = true;
    return std::nullopt;
}

std::optional<NearestPoint> AxonometricView::FindNearest(PixelPoint pixel) const {
    return isDrawn_ ? terravo::FindNearest(*data_, drawing_, pixel) : std::nullopt;
}

} // namespace terravo

#include "view3d/View3D.h"

#include "util/NumberText.h"
#include "util/modUtilita.h"

#include <utility>

namespace terravo {
namespace {

constexpr float kOneDegree = 0.017453292F;
// 359.95 degrees, from where the label would show 360.0. Adding single-precision degrees misses the
// full turn by a hair, so the full turn itself would be one tick late.
constexpr float kFullTurn = 6.2823126F;

} // namespace

View3D::View3D(const RunState& run, MessageService& messages, View3DDisplay& display)
    : run_(run), messages_(messages), display_(display) {}

void View3D::Triangoli(Array1<double> x, Array1<double> y, Array1<double> z, Table<Index> corners,
                       const std::string& title, const SpaceExtents* extents) {
    view_.Triangoli(std::move(x), std::move(y), std::move(z), std::move(corners), title, extents);
    ShowNewData();
}

void View3D::Punti(Array1<double> x, Array1<double> y, Array1<double> z, const std::string& title,
                   const SpaceExtents* extents) {
    view_.Punti(std::move(x), std::move(y), std::move(z), title, messages_, extents);
    ShowNewData();
}

void View3D::Superficie(Array1<double> x, Array1<double> y, Table<double> z,
                        const std::string& title) {
    view_.Superficie(std::move(x), std::move(y), std::move(z), title);
    ShowNewData();
}

void View3D::ShowTriangles(const PointSet& points, const TriangleList& triangles,
                           const std::string& title) {
    // The count governs: after an empty file the arrays are still those of the file before.
    const auto used = [&points](Array1<double> values) {
        values.Resize(points.count);
        return values;
    };
    Triangoli(used(points.x), used(points.y), used(points.z), TriangleTable(triangles), title);
}

void View3D::ShowNewData() {
    hasData_ = true;
    Redraw(true);
    ShowControls();
    PlaceAxisLabels();
}

void View3D::Redraw(bool full) {
    if (hasData_) {
        isDrawn_ = Rendering::Redraw(display_.Surface3D(), view_, full, colour_, run_, messages_);
    }
}

void View3D::ToggleRotation() {
    view_.rotating = !view_.rotating;
    view_.theta = 0;
    display_.ShowReadOut(std::nullopt);
    ShowControls();
    // The first turned picture comes with the first tick.
    if (!view_.rotating) {
        Redraw(false);
    }
}

void View3D::Tick() {
    view_.theta += kOneDegree;
    if (view_.theta >= kFullTurn) {
        view_.theta = 0;
    }
    ShowControls();
    Redraw(false);
}

void View3D::TogglePause() {
    paused_ = !paused_;
    ShowControls();
}

void View3D::StepAngle(int degrees) {
    int wrapped = degrees >= 360 ? 0 : degrees;
    if (degrees < 0) {
        wrapped = 359;
    }
    view_.theta = static_cast<float>(wrapped / kDegreesPerRadian);
    ShowControls();
    Redraw(false);
}

void View3D::SetColour(bool colour) {
    colour_ = colour;
    Redraw(false);
}

void View3D::SetStandardView(StandardView view) {
    view_.SetStandardView(view, display_.OuterHeight());
    ShowControls();
    Redraw(true);
}

void View3D::BeginDrag() {
    display_.ShowReadOut(std::nullopt);
}

void View3D::Drag(double userX, double userZ) {
    if (!hasData_) {
        return;
    }
    view_.DragAxisEnd(userX, userZ);
    display_.ShowReadOut(std::nullopt);
    Redraw(true);
    ShowControls();
}

void View3D::PlaceAxisLabels() {
    const std::optional<PixelPoint> pointer = display_.PointerPixel();
    if (!pointer || !isDrawn_) {
        return;
    }
    const NearestPoint nearest = view_.FindNearest(*pointer);
    if (!nearest.found) {
        return;
    }
    const auto text = [this](double value) {
        return NumberText::FormatScreen(value, "#0.000", run_.decimalSeparator) + " ";
    };
    display_.ShowReadOut(
        View3DReadOut{text(nearest.x), text(nearest.y), text(nearest.z), nearest.pixel});
}

void View3D::LeaveArea() {
    display_.ShowReadOut(std::nullopt);
}

void View3D::ShowControls() {
    const auto format = [this](double value, const char* pattern) {
        return NumberText::FormatScreen(value, pattern, run_.decimalSeparator);
    };
    const double degrees = static_cast<double>(view_.theta) * kDegreesPerRadian;
    View3DControls controls;
    controls.rotateCaption = view_.rotating ? "&Stop" : run_.texts[Text::Rotate];
    controls.rotateEnabled = !paused_;
    controls.pauseCaption = paused_ ? "Co&nt." : run_.texts[Text::Pause];
    controls.pauseEnabled = view_.rotating;
    controls.stepUsable = paused_;
    controls.timerOn = view_.rotating && !paused_;
    controls.thetaDegrees = modUtilita::RoundHalfEven(degrees);
    controls.theta = format(degrees, "#0.0");
    controls.rayx = format(static_cast<double>(view_.rayx), "#0.000");
    controls.alfa = format(static_cast<double>(view_.alfa) * kDegreesPerRadian, "#0.000");
    display_.ShowControls(controls);
}

} // namespace terravo

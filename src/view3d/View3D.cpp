#include "view3d/View3D.h"

#include "util/NumberText.h"
#include "util/modUtilita.h"
#include "view3d/RegularGrid.h"

#include <cmath>
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
    Show(ViewData::Triangoli(std::move(x), std::move(y), std::move(z), std::move(corners), title,
                             extents));
}

void View3D::Punti(Array1<double> x, Array1<double> y, Array1<double> z, const std::string& title,
                   const SpaceExtents* extents) {
    Show(ViewData::Punti(std::move(x), std::move(y), std::move(z), title, messages_, extents));
}

void View3D::Superficie(Array1<double> x, Array1<double> y, Table<double> z,
                        const std::string& title) {
    Show(ViewData::Superficie(std::move(x), std::move(y), std::move(z), title));
}

void View3D::ShowTriangles(const PointSet& points, const TriangleList& triangles,
                           const std::string& title) {
    // The count governs: after an empty file the arrays are still those of the file before.
    const auto used = [&points](Array1<double> values) {
        values.Resize(points.count);
        return values;
    };
    labels_ = points.labels.HasLabels() ? points.labels : PointLabels();
    Triangoli(used(points.x), used(points.y), used(points.z), TriangleTable(triangles), title);
}

void View3D::Show(ViewData data) {
    source_ = std::make_shared<const ViewData>(std::move(data));
    isGrid_ =
        source_->mode != ViewMode::Surface &&
        FindRegularGrid(source_->X, source_->Y, source_->Z, source_->PointCount()).has_value();
    view_.ReleaseAxes();
    ShowKind();
}

void View3D::ShowKind() {
    view_.Show(DataAs(wanted_));
    Redraw(true);
    ShowControls();
    PlaceAxisLabels();
}

bool View3D::CanShow(ViewMode kind) const {
    if (source_ == nullptr) {
        return false;
    }
    const bool hasPoints = source_->mode != ViewMode::Surface;
    return kind == source_->mode || (kind == ViewMode::Points && hasPoints) ||
           (kind == ViewMode::Surface && isGrid_);
}

std::shared_ptr<const ViewData> View3D::DataAs(ViewMode kind) const {
    if (kind == source_->mode || !CanShow(kind)) {
        return source_;
    }
    return std::make_shared<const ViewData>(kind == ViewMode::Points
                                                ? ViewData::PointsOf(*source_, messages_)
                                                : *ViewData::SurfaceOf(*source_));
}

void View3D::SetKind(ViewMode kind) {
    wanted_ = kind;
    if (source_ != nullptr) {
        ShowKind();
    }
}

void View3D::Redraw(bool full) {
    if (!view_.HasData()) {
        return;
    }
    owesFull_ = owesFull_ || full;
    owesPicture_ = display_.IsMinimised();
    if (owesPicture_) {
        return;
    }
    full = std::exchange(owesFull_, false);
    const auto failure = view_.Redraw(display_.Surface3D(), full, run_);
    ShowMark();
    if (failure) {
        Report(*failure);
    }
}

void View3D::SetMark(const std::optional<SpacePoint>& place) {
    mark_ = place;
    ShowMark();
}

void View3D::ShowMark() {
    if (!mark_ || !view_.IsDrawn()) {
        display_.ShowMark(std::nullopt);
        return;
    }
    const double divisor = std::pow(10.0, view_.Data().zExponent);
    display_.ShowMark(view_.Drawing().projection.Project(mark_->x, mark_->y, mark_->z / divisor));
}

void View3D::CatchUp() {
    if (owesPicture_) {
        Redraw(false);
    }
}

// While its box is open the window may want to draw again.
void View3D::Report(const Message& failure) {
    if (reporting_) {
        return;
    }
    if (view_.Parameters().rotating) {
        Rest();
        ShowControls();
    }
    reporting_ = true;
    messages_.ShowCritical(failure.text, failure.title);
    reporting_ = false;
}

void View3D::TurnTo(float theta, bool rotating) {
    ViewParameters parameters = view_.Parameters();
    parameters.theta = theta;
    parameters.rotating = rotating;
    view_.SetParameters(parameters);
}

void View3D::Rest() {
    paused_ = false;
    TurnTo(0, false);
    display_.ShowReadOut(std::nullopt);
}

void View3D::ToggleRotation() {
    const bool rotating = !view_.Parameters().rotating;
    TurnTo(0, rotating);
    display_.ShowReadOut(std::nullopt);
    ShowControls();
    // The first turned picture comes with the first tick.
    if (!rotating) {
        Redraw(false);
    }
}

void View3D::Tick() {
    const float next = view_.Parameters().theta + kOneDegree;
    TurnTo(next >= kFullTurn ? 0 : next, view_.Parameters().rotating);
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
    TurnTo(static_cast<float>(wrapped / kDegreesPerRadian), view_.Parameters().rotating);
    ShowControls();
    Redraw(false);
}

void View3D::SetColour(bool colour) {
    ViewParameters parameters = view_.Parameters();
    parameters.colour = colour;
    view_.SetParameters(parameters);
    Redraw(false);
}

void View3D::SetStandardView(StandardView view) {
    view_.ReleaseAxes();
    if (view == StandardView::Initial) {
        Rest();
    }
    view_.SetStandardView(view, display_.OuterHeight());
    ShowControls();
    Redraw(true);
}

void View3D::BeginDrag() {
    view_.HoldAxes();
    display_.ShowReadOut(std::nullopt);
}

void View3D::Drag(double userX, double userZ) {
    dragged_ = true;
    PutAxisEnd({userX, userZ});
}

void View3D::EndDrag() {
    view_.ReleaseAxes();
    if (std::exchange(dragged_, false)) {
        Redraw(true);
    }
}

void View3D::MoveAxisEnd(double right, double up) {
    PutAxisEnd(view_.NearAxisEnd(right, up));
}

void View3D::PutAxisEnd(UserPosition place) {
    if (!view_.IsDrawn()) {
        return;
    }
    view_.DragAxisEnd(place.x, place.y);
    display_.ShowReadOut(std::nullopt);
    Redraw(true);
    ShowControls();
}

void View3D::PlaceAxisLabels() {
    EndDrag();
    const std::optional<PixelPoint> pointer = display_.PointerPixel();
    const std::optional<NearestPoint> nearest =
        pointer ? view_.FindNearest(*pointer) : std::nullopt;
    if (!nearest) {
        return;
    }
    const auto text = [this](double value) {
        return NumberText::FormatScreen(value, "#0.000", run_.decimalSeparator) + " ";
    };
    display_.ShowReadOut(View3DReadOut{
        text(nearest->x), text(nearest->y), text(nearest->z),
        nearest->point > 0 ? labels_.NameAndCode(nearest->point) : std::string(), nearest->pixel});
}

void View3D::LeaveArea() {
    display_.ShowReadOut(std::nullopt);
}

void View3D::ShowControls() {
    const auto format = [this](double value, const char* pattern) {
        return NumberText::FormatScreen(value, pattern, run_.decimalSeparator);
    };
    const ViewParameters& view = view_.Parameters();
    const double degrees = static_cast<double>(view.theta) * kDegreesPerRadian;
    View3DControls controls;
    controls.rotateCaption = view.rotating ? "&Stop" : run_.texts[Text::Rotate];
    controls.rotateEnabled = !paused_;
    controls.pauseCaption = paused_ ? "Co&nt." : run_.texts[Text::Pause];
    controls.pauseEnabled = view.rotating;
    controls.stepUsable = paused_;
    controls.timerOn = view.rotating && !paused_;
    controls.thetaDegrees = modUtilita::RoundHalfEven(degrees);
    controls.theta = format(degrees, "#0.0");
    controls.rayx = format(static_cast<double>(view.rayx), "#0.000");
    controls.alfa = format(static_cast<double>(view.alfa) * kDegreesPerRadian, "#0.000");
    controls.kind = source_ != nullptr ? view_.Data().mode : wanted_;
    controls.canShowPoints = CanShow(ViewMode::Points);
    controls.canShowSurface = CanShow(ViewMode::Surface);
    controls.canShowTriangles = CanShow(ViewMode::Triangles);
    display_.ShowControls(controls);
}

} // namespace terravo

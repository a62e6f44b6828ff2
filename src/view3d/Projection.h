// From places in the data's space to places in the axonometric picture.
//
// Data: the frame of a drawing, what was measured of a frame, and how the user looks at it. Method:
// a place is turned about the middle of the plan extent while the view rotates, and projected by
// two linear maps relative to the start of the axes, in doubles. A value: drawings make one and
// hand it out. Fields said to be single precision are floats on purpose.
#pragma once

#include "plot2d/DrawSurface.h"
#include "view3d/Frame3D.h"
#include "view3d/ViewParameters.h"

#include <cmath>

namespace terravo {

struct PlanPlace {
    double x = 0;
    double y = 0;
};

/// Turns a place about a centre.
/// @param theta  radians, counter-clockwise.
PlanPlace RotatePoint(double x, double y, double theta, double cx, double cy);

/// What follows from a frame. New data, another view or a drag renew it; a turn or another colour
/// keeps it.
struct FrameMeasures {
    float sinAlfa = std::sin(kFirstSlant);
    float cosAlfa = std::cos(kFirstSlant);
    double centreX = 0; ///< of the plan extent
    double centreY = 0;
    float xRange = 0;
    float halfX = 0; ///< of the ranges
    float halfY = 0;
    float zRange = 0;
    float slantX = 0; ///< user units of the picture for each unit of y
    float slantZ = 0;
};

/// @param alfa  slant of the y axis that the frame was drawn with, radians.
FrameMeasures MeasureFrame(const Frame3D& frame, float alfa);

class Projection {
public:
    Projection() = default;
    Projection(const ViewParameters& parameters, const Frame3D& frame,
               const FrameMeasures& measures);

    [[nodiscard]] const ViewParameters& Parameters() const { return parameters_; }
    [[nodiscard]] const Frame3D& Frame() const { return frame_; }
    [[nodiscard]] const FrameMeasures& Measures() const { return measures_; }

    /// Where a place falls on the surface, turned first while the view rotates.
    [[nodiscard]] PixelPosition Project(double x, double y, double z) const;

    /// The same at the lowest height of the frame in the surface's user units, never turned.
    [[nodiscard]] UserPosition ToUser(double x, double y) const;

private:
    ViewParameters parameters_;
    Frame3D frame_;
    FrameMeasures measures_;
    double sine_ = 0; // of the rotation
    double cosine_ = 1;
};

} // namespace terravo

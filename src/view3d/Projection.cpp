#include "view3d/Projection.h"

namespace terravo {
namespace {

double Wide(float value) {
    return static_cast<double>(value);
}

PlanPlace Turned(double x, double y, double sine, double cosine, double cx, double cy) {
    return {(x - cx) * cosine - (y - cy) * sine + cx, (y - cy) * cosine + (x - cx) * sine + cy};
}

} // namespace

PlanPlace RotatePoint(double x, double y, double theta, double cx, double cy) {
    return Turned(x, y, std::sin(theta), std::cos(theta), cx, cy);
}

FrameMeasures MeasureFrame(const Frame3D& frame, float alfa) {
    const SpaceExtents& e = frame.extents;
    const PixelCoefficients c = frame.Coefficients();
    FrameMeasures m;
    m.sinAlfa = std::sin(alfa);
    m.cosAlfa = std::cos(alfa);
    m.centreX = (e.xmin + e.xmax) / 2;
    m.centreY = (e.ymin + e.ymax) / 2;
    m.xRange = static_cast<float>(e.xmax - e.xmin);
    m.halfX = m.xRange / 2;
    m.halfY = static_cast<float>(e.ymax - e.ymin) / 2;
    m.zRange = static_cast<float>(e.zmax - e.zmin);
    const float ratio = m.xRange / (2 * m.halfY);
    m.slantX = ratio * frame.rayx * m.cosAlfa;
    m.slantZ = ratio * frame.rayx * m.sinAlfa * (-c.Ax / c.Az);
    return m;
}

Projection::Projection(const ViewParameters& parameters, const Frame3D& frame,
                       const FrameMeasures& measures)
    : parameters_(parameters), frame_(frame), measures_(measures),
      sine_(std::sin(Wide(parameters.theta))), cosine_(std::cos(Wide(parameters.theta))) {}

PixelPosition Projection::Project(double x, double y, double z) const {
    if (parameters_.rotating) {
        const PlanPlace turned = Turned(x, y, sine_, cosine_, measures_.centreX, measures_.centreY);
        x = turned.x;
        y = turned.y;
    }
    const SpaceExtents& start = frame_.extents;
    const AxisScale& scale = frame_.scale;
    const double along = scale.perY * (y - start.ymin);
    return {scale.originX + scale.perX * (x - start.xmin) + along * Wide(measures_.cosAlfa),
            scale.originY - scale.perZ * (z - start.zmin) - along * Wide(measures_.sinAlfa)};
}

UserPosition Projection::ToUser(double x, double y) const {
    const double back = y - frame_.extents.ymin;
    return {x + back * Wide(measures_.slantX), frame_.extents.zmin + back * Wide(measures_.slantZ)};
}

} // namespace terravo

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
    const PixelCoefficients& c = frame.coefficients;
    FrameMeasures m;
    m.sinAlfa = std::sin(alfa);
    m.cosAlfa = std::cos(alfa);
    m.centreX = (Wide(e.xmin) + Wide(e.xmax)) / 2;
    m.centreY = (Wide(e.ymin) + Wide(e.ymax)) / 2;
    m.xRange = e.xmax - e.xmin;
    m.halfX = m.xRange / 2;
    m.halfY = (e.ymax - e.ymin) / 2;
    m.zRange = e.zmax - e.zmin;
    const float ratio = m.xRange / (e.ymax - e.ymin);
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
    const PixelCoefficients& c = frame_.coefficients;
    const double along = Wide(c.Ay) * y + Wide(c.By);
    return {along * Wide(measures_.cosAlfa) + (Wide(c.Ax) * x + Wide(c.Bx)),
            Wide(c.Az) * z + Wide(c.Bz) - along * Wide(measures_.sinAlfa)};
}

UserPosition Projection::ToUser(double x, double y) const {
    const double back = y - Wide(frame_.extents.ymin);
    return {x + back * Wide(measures_.slantX),
            Wide(frame_.extents.zmin) + back * Wide(measures_.slantZ)};
}

} // namespace terravo

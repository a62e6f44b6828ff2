// Cutting one triangle in space by a plane.
//
// Data: three corners, the plane a x + b y + c z + d = 0, and a short list of cut points. Method:
// corners exactly on the plane are cut points themselves, tested without tolerance; edges whose
// ends lie strictly on opposite sides give one point each. So no cut point is listed twice.
#pragma once

#include "triangulation/SpaceLine.h"

#include <array>
#include <cassert>
#include <cstddef>

namespace terravo {

/// Plane a x + b y + c z + d = 0.
struct Plane {
    double a = 0;
    double b = 0;
    double c = 0;
    double d = 0;

    /// The level plane at a height.
    static Plane AtLevel(double value) { return {0, 0, 1, -value}; }

    [[nodiscard]] double ValueAt(const SpacePoint& p) const {
        return a * p.x + b * p.y + c * p.z + d;
    }
};

/// None to three cut points, numbered from 1.
class CutPoints {
public:
    [[nodiscard]] int Count() const { return count_; }
    const SpacePoint& operator[](int i) const {
        assert(i >= 1 && i <= count_);
        return points_[static_cast<std::size_t>(i) - 1];
    }
    void Append(const SpacePoint& point) { points_[static_cast<std::size_t>(count_++)] = point; }

private:
    int count_ = 0;
    std::array<SpacePoint, 3> points_{};
};

/// Appends the point where the edge P-Q meets the plane, if any: P when sP is exactly 0, else Q
/// when sQ is, else the point between ends of opposite sign.
/// @param sP, sQ  values of the plane at the two ends.
void CutEdgeByPlane(const SpacePoint& p, const SpacePoint& q, double sP, double sQ, CutPoints& cut);

/// The points that the triangle shares with the plane: two for a cut or an edge in the plane, one
/// for a corner that touches it, three for a triangle lying in it, else none.
CutPoints CutTriangleByPlane(const std::array<SpacePoint, 3>& corners, const Plane& plane);

} // namespace terravo

// The two geometric tests on which the triangulation decides.
//
// Data: plan coordinates as doubles. Method: signs of small determinants against a tolerance scaled
// by the smallest magnitude involved, so that nearly every decision is taken on the exact sign of
// the computed value. The headers define them because they are called a few times for each point.
#pragma once

#include "util/modUtilita.h"

#include <cmath>

namespace terravo::modGeometria {

/// Relative tolerance of the plan tests: 100 times the spacing of doubles at 1.
inline constexpr double kTolerance = 2.220446049250313E-14;

/// Tells on which side of the directed line a -> b, moved parallel to its left by dv, point u lies.
/// @return +1 to the right, -1 to the left, 0 on the line. With dv = 0 the tolerance vanishes and
///         only an exactly zero determinant gives 0.
inline int SideOfLine(double xu, double yu, double xa, double ya, double xb, double yb, double dv) {
    const double dx = xb - xa;
    const double dy = yb - ya;
    const double dxu = xu - xa;
    const double dyu = yu - ya;
    const double tolerance =
        kTolerance * modUtilita::MinOfList({std::fabs(dx), std::fabs(dy), std::fabs(dxu),
                                            std::fabs(dyu), std::fabs(dv)});
    double t = dy * dxu - dyu * dx;
    if (!modUtilita::IsExactly(dv, 0.0)) {
        t += dv * std::sqrt(dx * dx + dy * dy);
    }
    if (std::fabs(t) <= tolerance) {
        return 0;
    }
    return static_cast<int>(modUtilita::SignOf(1.0, t));
}

/// Chooses the diagonal of a quadrilateral whose corners 0, 1, 2, 3 run counter-clockwise by the
/// empty-circle rule.
/// @return +1 for the diagonal 0-2, -1 for 1-3, 0 when the corners lie on one circle.
inline int DiagonalChoice(double x0, double y0, double x1, double y1, double x2, double y2,
                          double x3, double y3) {
    const double dx10 = x1 - x0;
    const double dy10 = y1 - y0;
    const double dx12 = x1 - x2;
    const double dy12 = y1 - y2;
    const double dx30 = x3 - x0;
    const double dy30 = y3 - y0;
    const double dx32 = x3 - x2;
    const double dy32 = y3 - y2;
    double tola = kTolerance * modUtilita::MinOfList({std::fabs(dx10), std::fabs(dy10),
                                                      std::fabs(dx30), std::fabs(dy30)});
    const double tolb = kTolerance * modUtilita::MinOfList({std::fabs(dx12), std::fabs(dy12),
                                                            std::fabs(dx32), std::fabs(dy32)});
    // Unnormalised cosines of the angles at corners 0 and 2: opposite angles that are both acute
    // or both obtuse decide without the sine of their sum.
    const double ca = dx10 * dx30 + dy10 * dy30;
    const double cb = dx12 * dx32 + dy12 * dy32;
    if (ca > tola && cb > tolb) {
        return -1;
    }
    if (ca < -tola && cb < -tolb) {
        return 1;
    }
    tola = modUtilita::MinOfList({tola, tolb});
    const double s = (dx10 * dy30 - dx30 * dy10) * cb + (dx32 * dy12 - dx12 * dy32) * ca;
    if (s > tola) {
        return -1;
    }
    return s < -tola ? 1 : 0;
}

} // namespace terravo::modGeometria

// The two signs on which a triangulation decides, without an error.
//
// Data: bounds and a step, made for a set of points once. Method: three tiers. A value in doubles
// that exceeds a bound for the whole set has the right sign; else one that exceeds a bound for the
// points at hand; else the sign is computed exactly: in whole numbers where all coordinates are
// multiples of one power of two that is not too small for them, in expansions elsewhere.
//
// With u = 2^-53, a turn is off by at most (3 + 16 u) u and a circle by (10 + 96 u) u times the sum
// of the magnitudes of its products. Where no difference of coordinates exceeds w and h, those sums
// are below 2 w h and 6 w h (w^2 + h^2); the factors 2.01 and 6.01 cover the rounding of the bound.
#pragma once

#include "triangulation/TriangleList.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

namespace terravo {

/// True for a coordinate whose products of four neither overflow nor lose bits: zero, or of a
/// magnitude from 2^-200 to 2^250.
bool IsWithinReach(double coordinate);

class ExactSigns {
public:
    /// @param points  whose coordinates are all within reach.
    explicit ExactSigns(const Array1<PlanPoint>& points);

    /// Takes in a point that comes later, before a sign with it is asked for.
    void Admit(PlanPoint point);

    /// +1 when c lies to the left of a -> b, -1 to the right, 0 on the line.
    [[nodiscard]] int Turn(PlanPoint a, PlanPoint b, PlanPoint c) const {
        const double left = (a.x - c.x) * (b.y - c.y);
        const double right = (a.y - c.y) * (b.x - c.x);
        const double value = left - right;
        if (value > turnBound_) {
            return 1;
        }
        if (value < -turnBound_) {
            return -1;
        }
        const double bound = kTurnError * (std::fabs(left) + std::fabs(right));
        return value > bound ? 1 : value < -bound ? -1 : ExactTurn(a, b, c);
    }

    /// +1 when d lies inside the circle through a, b, c, which run counter-clockwise, -1 outside, 0
    /// on it.
    [[nodiscard]] int Circle(PlanPoint a, PlanPoint b, PlanPoint c, PlanPoint d) const {
        const double ax = a.x - d.x;
        const double ay = a.y - d.y;
        const double bx = b.x - d.x;
        const double by = b.y - d.y;
        const double cx = c.x - d.x;
        const double cy = c.y - d.y;
        const double value = (ax * ax + ay * ay) * (bx * cy - cx * by) +
                             (bx * bx + by * by) * (cx * ay - ax * cy) +
                             (cx * cx + cy * cy) * (ax * by - bx * ay);
        if (value > circleBound_) {
            return 1;
        }
        if (value < -circleBound_) {
            return -1;
        }
        const double farX = std::max({std::fabs(ax), std::fabs(bx), std::fabs(cx)});
        const double farY = std::max({std::fabs(ay), std::fabs(by), std::fabs(cy)});
        const double bound = CircleBound(farX, farY);
        return value > bound ? 1 : value < -bound ? -1 : ExactCircle(a, b, c, d);
    }

private:
    static constexpr double kHalfUlp = std::numeric_limits<double>::epsilon() / 2;
    static constexpr double kTurnError = (3 + 16 * kHalfUlp) * kHalfUlp;
    static constexpr double kCircleError = (10 + 96 * kHalfUlp) * kHalfUlp;

    static double CircleBound(double width, double height) {
        return 6.01 * kCircleError * width * height * (width * width + height * height);
    }
    void Widen(PlanPoint point);
    void SetBounds();
    void SetStep();
    [[nodiscard]] std::int64_t Steps(double coordinate) const {
        return static_cast<std::int64_t>(coordinate * stepsPerUnit_);
    }
    [[nodiscard, gnu::cold, gnu::noinline]] int ExactTurn(PlanPoint a, PlanPoint b,
                                                          PlanPoint c) const;
    [[nodiscard, gnu::cold, gnu::noinline]] int ExactCircle(PlanPoint a, PlanPoint b, PlanPoint c,
                                                            PlanPoint d) const;

    PlanPoint low_{std::numeric_limits<double>::infinity(),
                   std::numeric_limits<double>::infinity()};
    PlanPoint high_{-std::numeric_limits<double>::infinity(),
                    -std::numeric_limits<double>::infinity()};
    int stepExponent_ = std::numeric_limits<int>::max(); // all coordinates are multiples of 2 to it
    double stepsPerUnit_ = 0;                            // 0: whole numbers do not serve
    double turnBound_ = 0;
    double circleBound_ = 0;
};

} // namespace terravo

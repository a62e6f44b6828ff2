#include "contour/smoothing/ErrorMeter.h"

#include <algorithm>

namespace terravo::smoothing {
namespace {

using Heights = std::array<double, 4>; // of the control points

double HeightAt(const Heights& h, double t) {
    const double s = 1 - t;
    return s * s * (s * h[0] + 3 * t * h[1]) + t * t * (3 * s * h[2] + t * h[3]);
}

// Where the derivative may be 0: none, one or two places within the piece, else its ends.
std::array<double, 2> ExtremesOf(const Heights& h) {
    const double a = h[3] - h[0] + 3 * (h[1] - h[2]);
    const double b = h[0] - 2 * h[1] + h[2];
    const double c = h[1] - h[0];
    const double root = b * b - a * c;
    if (!(root >= 0)) {
        return {0, 1};
    }
    const double q = -(b + std::copysign(std::sqrt(root), b));
    const auto within = [](double t) { return t > 0 && t < 1 ? t : 0; };
    return {within(q / a), within(c / q)};
}

} // namespace

SmoothError Larger(const SmoothError& a, const SmoothError& b) {
    return {std::max(a.height, b.height), std::max(a.interval, b.interval)};
}

void ErrorMeter::Take(std::span<const PlanPoint, 4> controls, const Slider& from, double fromPart,
                      const Slider& to, double toPart) {
    Heights h{};
    h[0] = (fromPart - from.raw) * from.rise;
    h[3] = (toPart - to.raw) * to.rise;
    if (IsFlat(from, to)) { // the piece is straight
        Include(h[0]);
        Include(h[3]);
        return;
    }
    // Inner control points by their coordinates along the first edge and the chord.
    const PlanPoint chord = controls[3] - controls[0];
    const double area = Cross(from.along, chord);
    for (const std::size_t i : {std::size_t{1}, std::size_t{2}}) {
        const PlanPoint away = controls[i] - controls[0];
        h[i] = h[0] +
               (Cross(away, chord) * from.rise + Cross(from.along, away) * (h[3] - h[0])) / area;
    }
    const auto [least, most] = std::minmax_element(h.begin(), h.end());
    if (*most <= worst_.interval * spacing_.above && -*least <= worst_.interval * spacing_.below &&
        std::max(*most, -*least) <= worst_.height) {
        return;
    }
    Include(h[0]);
    Include(h[3]);
    for (const double t : ExtremesOf(h)) {
        Include(HeightAt(h, t));
    }
}

void ErrorMeter::Include(double height) {
    worst_.height = std::max(worst_.height, std::fabs(height));
    worst_.interval =
        std::max(worst_.interval, height > 0 ? height / spacing_.above : -height / spacing_.below);
}

} // namespace terravo::smoothing

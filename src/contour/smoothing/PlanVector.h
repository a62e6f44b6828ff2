// Arithmetic of plan vectors.
//
// Data: places and differences of places, both as PlanPoint. Method: plain formulas.
#pragma once

#include "triangulation/TriangleList.h"

#include <cmath>

namespace terravo::smoothing {

inline PlanPoint operator+(PlanPoint a, PlanPoint b) {
    return {a.x + b.x, a.y + b.y};
}
inline PlanPoint operator-(PlanPoint a, PlanPoint b) {
    return {a.x - b.x, a.y - b.y};
}
inline PlanPoint operator-(PlanPoint a) {
    return {-a.x, -a.y};
}
inline PlanPoint operator*(double factor, PlanPoint a) {
    return {factor * a.x, factor * a.y};
}
inline double Dot(PlanPoint a, PlanPoint b) {
    return a.x * b.x + a.y * b.y;
}
/// Positive when b points to the left of a.
inline double Cross(PlanPoint a, PlanPoint b) {
    return a.x * b.y - a.y * b.x;
}
inline double Length(PlanPoint a) {
    return std::sqrt(Dot(a, a));
}
/// Of length 1; zero stays zero.
inline PlanPoint Unit(PlanPoint a) {
    const double length = Length(a);
    return length > 0 ? (1 / length) * a : PlanPoint{};
}
inline PlanPoint LeftOf(PlanPoint a) {
    return {-a.y, a.x};
}

} // namespace terravo::smoothing

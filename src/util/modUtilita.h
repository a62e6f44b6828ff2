// Small numeric helpers shared by the whole core.
//
// Data: plain numbers and lists. Method: one pure function each, with the tie and sign rules that
// the triangulation and the drawing rely on.
#pragma once

#include <cstdint>
#include <initializer_list>

namespace terravo::modUtilita {

/// Smallest element of the list; the first one wins ties.
/// @param list  at least one element.
inline double MinOfList(std::initializer_list<double> list) {
    const double* smallest = list.begin();
    for (const double* item = list.begin(); item != list.end(); ++item) {
        if (*item < *smallest) {
            smallest = item;
        }
    }
    return *smallest;
}

/// |a| with the sign of b; b = 0 counts as positive, whatever the sign bit of the zero.
inline double SignOf(double a, double b) {
    const double magnitude = a < 0 ? -a : a;
    return b >= 0 ? magnitude : -magnitude;
}

/// Angle of the vector with x component b and y component a, radians in [0, 2 pi); 0 when b is not
/// a number.
double PolarAngle(double a, double b);

/// Nearest integer, halves to the even neighbour. Values beyond 32 bits give the nearest 32-bit
/// integer, not-a-number gives 0.
std::int32_t RoundHalfEven(double value);

/// True when the two numbers are the same number. For comparisons that are meant without tolerance.
constexpr bool IsExactly(double a, double b) {
    return a <= b && a >= b;
}

} // namespace terravo::modUtilita

// How the user looks at an axonometric picture.
//
// Data: the length and slant of the y axis, the angle of rotation, the colours. Method: plain
// values that a drawing reads; they outlive the data set. The floats are single precision on
// purpose.
#pragma once

#include <optional>

namespace terravo {

enum class StandardView { XY, ZX, ZY, Initial };

inline constexpr float kHalfPi = 1.5707964F;
inline constexpr double kDegreesPerRadian = 57.29577951308238;
inline constexpr float kFirstSlant = 0.5235988F; ///< of the y axis, radians

/// Where the axes lay when a drag of the y axis began, pixels.
struct HeldAxes {
    double originX = 0;
    double originY = 0;
    double lengthX = 0; ///< of the drawn x axis
};

struct ViewParameters {
    float rayx = 1.0F;        ///< length of the drawn y axis in lengths of the drawn x axis
    float alfa = kFirstSlant; ///< of the drawn y axis above the horizontal, radians
    float theta = 0;          ///< of the rotation, radians, 0 to below 2 pi
    bool rotating = false;    ///< theta shows, also while the rotation pauses
    bool colour = true;       ///< false: every mark is grey
    /// While set, the picture keeps these instead of fitting the surface: the end of the y axis is
    /// measured against them, and would run away if its own last place moved them.
    std::optional<HeldAxes> held;
};

} // namespace terravo

// Places on a drawing area, counted in device pixels from its top-left corner, y downwards.
#pragma once

#include "util/modUtilita.h"

#include <cstdint>

namespace terravo {

/// A pixel.
struct PixelPoint {
    std::int32_t x = 0;
    std::int32_t y = 0;

    bool operator==(const PixelPoint&) const = default;
};

/// A place between pixels; the centre of a pixel has whole numbers.
struct PixelPosition {
    double x = 0;
    double y = 0;

    bool operator==(const PixelPosition&) const = default;
};

/// The pixel of a place, halves to even; of a place far outside the nearest that integers can
/// count.
inline PixelPoint NearestPixel(PixelPosition place) {
    return {modUtilita::RoundHalfEven(place.x), modUtilita::RoundHalfEven(place.y)};
}

} // namespace terravo

// Places on a drawing area, counted in device pixels from its top-left corner, y downwards.
#pragma once

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
};

} // namespace terravo

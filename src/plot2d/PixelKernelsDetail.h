// What the pixel algorithms share: painting one pixel or one span, limits, exact division.
#pragma once

#include "plot2d/PixelKernels.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace terravo::PixelKernels::Detail {

// Beyond this, products of coordinates would leave 64 bits and sums 32 bits.
inline constexpr int kFarPixel = 1 << 24;
inline constexpr std::uint32_t kColourBits = 0x00FFFFFFU;

struct CopyOp {
    std::uint32_t word;
    void operator()(std::uint32_t& pixel) const { pixel = word; }
};

// Xor, not-xor and invert are one operation with different masks.
struct XorOp {
    std::uint32_t mask;
    void operator()(std::uint32_t& pixel) const { pixel ^= mask; }
};

inline std::uint32_t XorMask(const Paint& paint) {
    switch (paint.op) {
    case RasterOp::Xor:
        return paint.word & kColourBits;
    case RasterOp::NotXor:
        return ~paint.word & kColourBits;
    default:
        return kColourBits;
    }
}

template <class Body>
void WithOperation(const Paint& paint, Body&& body) {
    if (paint.op == RasterOp::Copy) {
        body(CopyOp{paint.word});
    } else {
        body(XorOp{XorMask(paint)});
    }
}

inline std::uint32_t* PixelAt(const PixelBuffer& buffer, int x, int y) {
    return buffer.pixels + static_cast<std::ptrdiff_t>(y) * buffer.stride + x;
}

// Pixels x0..x1 of row y, both included.
template <class Op>
void PaintSpan(const PixelBuffer& buffer, int y, int x0, int x1, Op op) {
    if (y < 0 || y >= buffer.height) {
        return;
    }
    const int first = std::max(x0, 0);
    const int last = std::min(x1, buffer.width - 1);
    if (first > last) {
        return;
    }
    std::uint32_t* const row = PixelAt(buffer, 0, y);
    for (std::uint32_t* pixel = row + first; pixel <= row + last; ++pixel) {
        op(*pixel);
    }
}

// Inclusive limits of the pixels that a walk may visit.
struct Window {
    int left;
    int top;
    int right;
    int bottom;

    [[nodiscard]] bool Holds(PixelPoint p) const {
        return p.x >= left && p.x <= right && p.y >= top && p.y <= bottom;
    }
};

inline PixelPoint Limited(PixelPoint p) {
    return {std::clamp(p.x, -kFarPixel, kFarPixel), std::clamp(p.y, -kFarPixel, kFarPixel)};
}

inline std::int64_t FloorDivide(std::int64_t numerator, std::int64_t denominator) {
    const std::int64_t quotient = numerator / denominator;
    return quotient * denominator > numerator ? quotient - 1 : quotient;
}

inline std::int64_t CeilDivide(std::int64_t numerator, std::int64_t denominator) {
    return -FloorDivide(-numerator, denominator);
}

} // namespace terravo::PixelKernels::Detail

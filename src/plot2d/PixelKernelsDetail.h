// What the pixel algorithms share: painting one pixel or one span, the steps of a line, limits,
// exact division.
#pragma once

#include "plot2d/PixelKernels.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

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

// The steps of a line: `count` pixels from (x, y), each one step along the major axis, and one
// along the minor axis whenever the error term reaches zero.
struct Walk {
    int x = 0;
    int y = 0;
    int count = 0;
    int skipped = 0; // pixels cut off before the first one; keeps the dashes in phase
    bool xIsMajor = true;
    int majorStep = 1;
    int minorStep = 1;
    int error = 0;
    int errorStep = 0;
    int errorTurn = 0;
};

// The whole walk from a to b without the last pixel. After k steps the minor coordinate has moved
// by floor((2 k minor + major - tie) / (2 major)): the nearest pixel, and at a tie the one with the
// smaller coordinate, in either direction.
inline Walk WholeWalk(PixelPoint a, PixelPoint b) {
    const int dx = b.x - a.x;
    const int dy = b.y - a.y;
    const int lengthX = std::abs(dx);
    const int lengthY = std::abs(dy);
    Walk walk;
    walk.x = a.x;
    walk.y = a.y;
    walk.xIsMajor = lengthX >= lengthY;
    const int major = walk.xIsMajor ? lengthX : lengthY;
    const int minor = walk.xIsMajor ? lengthY : lengthX;
    const int stepX = dx < 0 ? -1 : 1;
    const int stepY = dy < 0 ? -1 : 1;
    walk.majorStep = walk.xIsMajor ? stepX : stepY;
    walk.minorStep = walk.xIsMajor ? stepY : stepX;
    walk.count = major;
    const int tie = walk.minorStep > 0 ? 1 : 0;
    walk.error = -major - tie;
    walk.errorStep = 2 * minor;
    walk.errorTurn = 2 * major;
    return walk;
}

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

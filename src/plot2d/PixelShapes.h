// Small shapes in one colour, outline and inside alike: what a map is made of, by the million.
//
// Data: the corners of one closed polygon in device pixels, all inside the buffer. Method:
// where an outline goes down once and up once, its pixels in a row enclose the inside, so the row
// is one span from the first to the last of them. Triangles of a few pixels come as bit masks from
// a table, which the general routines have painted.
#pragma once

#include "plot2d/PixelKernelsDetail.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace terravo::PixelKernels::Detail {

/// The smallest window that holds the corners, of which there is at least one.
inline Window BoundsOf(std::span<const PixelPoint> corners) {
    Window bounds{corners[0].x, corners[0].y, corners[0].x, corners[0].y};
    for (const PixelPoint& corner : corners.subspan(1)) {
        bounds.left = std::min(bounds.left, corner.x);
        bounds.top = std::min(bounds.top, corner.y);
        bounds.right = std::max(bounds.right, corner.x);
        bounds.bottom = std::max(bounds.bottom, corner.y);
    }
    return bounds;
}

/// True when no side of the window is longer than this many pixels.
inline bool Fits(const Window& window, int side) {
    return std::max(window.right - window.left, window.bottom - window.top) < side;
}

/// The corners of a polygon, each followed by a different one. Polygons of a map have few corners.
class DistinctCorners {
public:
    static constexpr std::size_t kMost = 8;

    /// Takes kMost corners at most.
    explicit DistinctCorners(std::span<const PixelPoint> corners) {
        for (const PixelPoint& corner : corners) {
            if (count_ == 0 || !(corner == corners_[count_ - 1])) {
                corners_[count_++] = corner;
            }
        }
        while (count_ > 1 && corners_[count_ - 1] == corners_[0]) {
            --count_;
        }
    }

    [[nodiscard]] std::size_t Count() const { return count_; }
    [[nodiscard]] PixelPoint At(std::size_t i) const { return corners_[i]; }
    [[nodiscard]] PixelPoint After(std::size_t i) const {
        return corners_[i + 1 == count_ ? 0 : i + 1];
    }

    /// True when the outline goes down once and up once, as that of every convex polygon does. Of
    /// two pixels in one row the right one counts as lower.
    [[nodiscard]] bool AreMonotone() const {
        int reversals = 0;
        bool wentDown = StepGoesDown(count_ - 1);
        for (std::size_t i = 0; i < count_; ++i) {
            const bool goesDown = StepGoesDown(i);
            reversals += goesDown != wentDown ? 1 : 0;
            wentDown = goesDown;
        }
        return reversals == 2;
    }

private:
    [[nodiscard]] bool StepGoesDown(std::size_t i) const {
        const PixelPoint from = At(i);
        const PixelPoint to = After(i);
        return to.y > from.y || (to.y == from.y && to.x > from.x);
    }

    std::array<PixelPoint, kMost> corners_;
    std::size_t count_ = 0;
};

/// First and last pixel of a shape in one row.
struct RowSpan {
    int first = kFarPixel;
    int last = -kFarPixel;
};

/// Takes the pixels of the line from a to b, both included, into the rows; rows[0] is row `top`.
inline void WidenRows(RowSpan* rows, int top, PixelPoint a, PixelPoint b) {
    const Walk walk = WholeWalk(a, b);
    int x = walk.x;
    int y = walk.y;
    int error = walk.error;
    for (int left = walk.count; left >= 0; --left) {
        RowSpan& row = rows[y - top];
        row.first = std::min(row.first, x);
        row.last = std::max(row.last, x);
        error += walk.errorStep;
        const int turns = ~(error >> 31);
        error -= walk.errorTurn & turns;
        x += walk.xIsMajor ? walk.majorStep : walk.minorStep & turns;
        y += walk.xIsMajor ? walk.minorStep & turns : walk.majorStep;
    }
}

/// Fills a monotone polygon and paints its edges. Its bounds lie in the buffer.
inline void FillMonotone(const PixelBuffer& buffer, const DistinctCorners& corners,
                         const Window& bounds, std::uint32_t word) {
    constexpr std::size_t kFewRows = 64;
    const auto count = static_cast<std::size_t>(bounds.bottom - bounds.top) + 1;
    std::array<RowSpan, kFewRows> few;
    std::vector<RowSpan> many;
    RowSpan* rows = few.data();
    if (count > kFewRows) {
        many.resize(count);
        rows = many.data();
    }
    for (std::size_t i = 0; i < corners.Count(); ++i) {
        WidenRows(rows, bounds.top, corners.At(i), corners.After(i));
    }
    for (std::size_t row = 0; row < count; ++row) {
        std::uint32_t* const start = PixelAt(buffer, 0, bounds.top + static_cast<int>(row));
        std::fill(start + rows[row].first, start + rows[row].last + 1, word);
    }
}

/// The pixels of every triangle in a square of 4 x 4 pixels: bit 4 * y + x for pixel (x, y).
class TriangleMasks {
public:
    static constexpr int kSide = 4;

    /// Paints all of them with `paint(buffer, corners, word)` and notes the pixels that changed.
    template <class Painter>
    explicit TriangleMasks(Painter paint) {
        constexpr int kPixels = kSide * kSide;
        const auto pixel = [](int place) { return PixelPoint{place % kSide, place / kSide}; };
        for (std::size_t key = 0; key < masks_.size(); ++key) {
            const auto place = static_cast<int>(key);
            const std::array<PixelPoint, 3> corners{pixel(place % kPixels),
                                                    pixel(place / kPixels % kPixels),
                                                    pixel(place / kPixels / kPixels)};
            std::array<std::uint32_t, kPixels> picture{};
            paint(PixelBuffer{picture.data(), kSide, kSide, kSide}, corners, 1U);
            unsigned mask = 0;
            for (unsigned bit = 0; bit < kPixels; ++bit) {
                mask |= picture[bit] << bit;
            }
            masks_[key] = static_cast<std::uint16_t>(mask);
        }
    }

    /// Paints the triangle of these three corners, whose bounds fit the square.
    void Paint(const PixelBuffer& buffer, std::span<const PixelPoint> corners, const Window& bounds,
               std::uint32_t word) const {
        const auto place = [&bounds](PixelPoint corner) {
            return static_cast<std::size_t>((corner.y - bounds.top) * kSide + corner.x -
                                            bounds.left);
        };
        const std::size_t key =
            place(corners[0]) | place(corners[1]) << 4U | place(corners[2]) << 8U;
        std::uint32_t* const origin = PixelAt(buffer, bounds.left, bounds.top);
        for (unsigned mask = masks_[key]; mask != 0; mask &= mask - 1) {
            const int bit = std::countr_zero(mask);
            origin[(bit / kSide) * static_cast<std::ptrdiff_t>(buffer.stride) + bit % kSide] = word;
        }
    }

private:
    std::array<std::uint16_t, 4096> masks_{};
};

} // namespace terravo::PixelKernels::Detail

// Integer pixel algorithms: lines, points, rectangles, polygons, discs, seed fill.
//
// Data: a PixelBuffer of 32-bit words 0xffRRGGBB that the caller owns, and pixels in its device
// coordinates; every routine clips to the buffer and takes any coordinates. Method: each routine is
// a template on the pixel operation, so that the inner loops neither branch on the raster
// operation nor call through a pointer. Lines follow Bresenham's error term with one rule for ties
// whatever the direction, so a line and its reverse share their pixels.
#pragma once

#include "plot2d/Colour.h"
#include "plot2d/PixelPoint.h"

#include <cstdint>
#include <span>

namespace terravo::PixelKernels {

/// A picture in memory. Row y starts at pixels + y * stride; stride counts words.
struct PixelBuffer {
    std::uint32_t* pixels = nullptr;
    int width = 0;
    int height = 0;
    int stride = 0;
};

/// What painting does to a pixel.
enum class RasterOp {
    Copy,   ///< the new colour
    Xor,    ///< old xor new
    NotXor, ///< not (old xor new)
    Invert, ///< not old; the new colour plays no part
};

/// How a pixel is painted: the operation and its 0xffRRGGBB word.
struct Paint {
    std::uint32_t word = 0;
    RasterOp op = RasterOp::Copy;
};

/// The raster operation of a draw mode; see DrawModes.
RasterOp RasterOpFromDrawMode(int drawMode);

/// The pixel word of a colour.
constexpr std::uint32_t ToPixelWord(Colour colour) {
    return 0xFF000000U | static_cast<std::uint32_t>(RedOf(colour)) << 16U |
           static_cast<std::uint32_t>(GreenOf(colour)) << 8U |
           static_cast<std::uint32_t>(BlueOf(colour));
}

/// The on and off pixels along a thin line: bit k of `bits` is pixel k, repeated after `length`
/// pixels. Length 0 is a solid line.
struct DashPattern {
    std::uint32_t bits = 0;
    int length = 0;
};

/// The pattern of a draw style; see DrawStyles.
DashPattern DashPatternForStyle(int drawStyle);

/// Cuts the segment a-b to the square -limit..limit, before its ends become integers.
/// @return false when nothing is left or a coordinate is not finite; a and b are then unspecified.
bool ClipSegment(PixelPosition& a, PixelPosition& b, double limit);

/// One-pixel line from a up to, but without, b: the runs of a path then paint no pixel twice. The
/// caller sets the last pixel when it wants it. The pixels between the ends are the same for both
/// directions.
void DrawLine(const PixelBuffer& buffer, PixelPoint a, PixelPoint b, const Paint& paint,
              DashPattern dashes = {});

/// Line of `width` pixels with round ends, both ends included, every pixel painted once.
void DrawWideLine(const PixelBuffer& buffer, PixelPoint a, PixelPoint b, int width,
                  const Paint& paint);

/// A disc of `width` pixels across, one pixel for width 1.
void SetPoint(const PixelBuffer& buffer, PixelPoint centre, int width, const Paint& paint);

/// The outermost pixels of the disc of 2 * radius + 1 pixels across.
void DrawCircle(const PixelBuffer& buffer, PixelPoint centre, int radius, const Paint& paint);

/// The rectangle with these corners, both included, in any order.
void FillRect(const PixelBuffer& buffer, PixelPoint a, PixelPoint b, const Paint& paint);

/// The inside of closed polygons by the even-odd rule, taken together. A pixel on a left or upper
/// edge is inside, one on a right or lower edge is not, so polygons that share an edge neither
/// overlap nor leave a gap.
/// @param counts  corners of each polygon, which follow each other in `points`; a count that is
///     negative or runs beyond `points` ends the list.
void FillPolygons(const PixelBuffer& buffer, std::span<const PixelPoint> points,
                  std::span<const std::int32_t> counts, const Paint& paint);

/// Copies one word to the inside of a closed polygon and to all of its edges: the pixels of
/// FillPolygons and of DrawLine from every corner to the next.
void FillWithOutline(const PixelBuffer& buffer, std::span<const PixelPoint> corners,
                     std::uint32_t word);

/// The same for the edges alone.
void DrawOutline(const PixelBuffer& buffer, std::span<const PixelPoint> corners,
                 std::uint32_t word);

/// Paints the pixels that can be reached from the seed by steps left, right, up and down without
/// crossing pixels of the border word.
/// @return false when the seed lies outside or on the border.
bool FloodFill(const PixelBuffer& buffer, PixelPoint seed, std::uint32_t borderWord,
               const Paint& paint);

} // namespace terravo::PixelKernels

#include "plot2d/PixelSurface.h"

#include <algorithm>
#include <iterator>

namespace terravo {
namespace {

PixelKernels::Paint PaintFor(Colour colour, int drawMode) {
    return {PixelKernels::ToPixelWord(colour), PixelKernels::RasterOpFromDrawMode(drawMode)};
}

// True when every pixel gets the pen's colour, however often it is painted.
bool IsPlain(const Pen& pen) {
    return pen.width == 1 && pen.style == DrawStyles::kSolid &&
           PixelKernels::RasterOpFromDrawMode(pen.mode) == PixelKernels::RasterOp::Copy;
}

// Calls `visit` with the corners of each polygon.
template <class Visit>
void ForEachPolygon(std::span<const PixelPoint> corners, std::span<const std::int32_t> counts,
                    Visit visit) {
    std::size_t start = 0;
    for (const std::int32_t count : counts) {
        const auto size = static_cast<std::size_t>(count);
        visit(corners.subspan(start, size));
        start += size;
    }
}

} // namespace

void PixelSurface::FillPolygon(std::span<const PixelPoint> corners, const PaintTools& tools) {
    const auto count = static_cast<std::int32_t>(corners.size());
    Paint(corners, std::span(&count, 1), tools.brush, OutlinePen(tools));
}

void PixelSurface::FillPolyPolygon(std::span<const PixelPoint> corners,
                                   std::span<const std::int32_t> counts, const PaintTools& tools) {
    CheckCounts(corners.size(), counts);
    Paint(corners, counts, tools.brush, OutlinePen(tools));
}

void PixelSurface::FillDisc(PixelPoint centre, int radius, const PaintTools& tools) {
    PaintDisc(centre, radius, tools.brush, tools.penColour, DrawMode());
}

void PixelSurface::Stroke(PixelPoint a, PixelPoint b, const Pen& pen) {
    const PixelKernels::Paint paint = PaintFor(pen.colour, pen.mode);
    if (pen.width > 1) {
        PixelKernels::DrawWideLine(Buffer(), a, b, pen.width, paint);
    } else {
        PixelKernels::DrawLine(Buffer(), a, b, paint, PixelKernels::DashPatternForStyle(pen.style));
    }
}

void PixelSurface::StrokePixels(PixelPosition a, PixelPosition b, const Pen& pen) {
    Stroke(NearestPixel(a), NearestPixel(b), pen);
}

void PixelSurface::SetPixels(PixelPosition centre, const Pen& pen) {
    PixelKernels::SetPoint(Buffer(), NearestPixel(centre), pen.width,
                           PaintFor(pen.colour, pen.mode));
}

void PixelSurface::FillPixelRect(PixelPosition a, PixelPosition b, Colour colour, int drawMode) {
    PixelKernels::FillRect(Buffer(), NearestPixel(a), NearestPixel(b), PaintFor(colour, drawMode));
}

void PixelSurface::PaintPixelPolygons(std::span<const PixelPosition> corners,
                                      std::span<const std::int32_t> counts,
                                      std::optional<Colour> inside, const Pen& pen) {
    rounded_.clear();
    std::transform(corners.begin(), corners.end(), std::back_inserter(rounded_), NearestPixel);
    Paint(rounded_, counts, inside, pen);
}

void PixelSurface::Paint(std::span<const PixelPoint> corners, std::span<const std::int32_t> counts,
                         std::optional<Colour> inside, const Pen& pen) {
    const bool oneColour = !inside || (counts.size() == 1 && inside == pen.colour);
    if (oneColour && IsPlain(pen)) {
        PaintInOneColour(corners, counts, pen.colour, inside.has_value());
        return;
    }
    if (inside) {
        PixelKernels::FillPolygons(Buffer(), corners, counts, PaintFor(*inside, pen.mode));
    }
    ForEachPolygon(corners, counts, [&](std::span<const PixelPoint> polygon) {
        for (std::size_t i = 0; i < polygon.size(); ++i) {
            Stroke(polygon[i], polygon[i + 1 == polygon.size() ? 0 : i + 1], pen);
        }
    });
}

void PixelSurface::PaintInOneColour(std::span<const PixelPoint> corners,
                                    std::span<const std::int32_t> counts, Colour colour,
                                    bool filled) {
    const PixelKernels::PixelBuffer buffer = Buffer();
    const std::uint32_t word = PixelKernels::ToPixelWord(colour);
    ForEachPolygon(corners, counts, [&](std::span<const PixelPoint> polygon) {
        if (filled) {
            PixelKernels::FillWithOutline(buffer, polygon, word);
        } else {
            PixelKernels::DrawOutline(buffer, polygon, word);
        }
    });
}

void PixelSurface::FillPixelDisc(PixelPosition centre, int radius, std::optional<Colour> inside,
                                 Colour rim, int drawMode) {
    PaintDisc(NearestPixel(centre), radius, inside, rim, drawMode);
}

void PixelSurface::PaintDisc(PixelPoint centre, int radius, std::optional<Colour> inside,
                             Colour rim, int drawMode) {
    const PixelKernels::PixelBuffer buffer = Buffer();
    if (inside) {
        const int across = 2 * std::max(radius, 0) + 1;
        PixelKernels::SetPoint(buffer, centre, across, PaintFor(*inside, drawMode));
    }
    PixelKernels::DrawCircle(buffer, centre, radius, PaintFor(rim, drawMode));
}

void PixelSurface::FloodPixels(PixelPoint seed, Colour border, Colour colour, int drawMode) {
    PixelKernels::FloodFill(Buffer(), seed, PixelKernels::ToPixelWord(border),
                            PaintFor(colour, drawMode));
}

} // namespace terravo

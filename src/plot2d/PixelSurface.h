// A drawing surface that paints pixels in memory.
//
// Data: the words of a picture, which a derived class owns. Method: places are rounded to whole
// pixels, halves to even, and painted by PixelKernels. A map rounds each of its points once and
// hands over the pixels, since a point is the corner of six triangles on average.
#pragma once

#include "plot2d/DrawSurface.h"
#include "plot2d/PixelKernels.h"

#include <vector>

namespace terravo {

class PixelSurface : public DrawSurface {
public:
    using Place = PixelPoint;
    [[nodiscard]] static Place PlaceAt(PixelPosition place) { return NearestPixel(place); }

    [[nodiscard]] bool LeavesOutLastPixel() const override { return true; }

    /// Those of DrawSurface, and for corners and centres that are pixels already.
    using DrawSurface::FillDisc;
    using DrawSurface::FillPolygon;
    using DrawSurface::FillPolyPolygon;
    void FillPolygon(std::span<const PixelPoint> corners, const PaintTools& tools);
    void FillPolyPolygon(std::span<const PixelPoint> corners, std::span<const std::int32_t> counts,
                         const PaintTools& tools);
    void FillDisc(PixelPoint centre, int radius, const PaintTools& tools);

protected:
    using DrawSurface::DrawSurface;

    /// The pixels that drawing goes to now; asked for before each change of them.
    virtual PixelKernels::PixelBuffer Buffer() = 0;

    void StrokePixels(PixelPosition a, PixelPosition b, const Pen& pen) override;
    void SetPixels(PixelPosition centre, const Pen& pen) override;
    void FillPixelRect(PixelPosition a, PixelPosition b, Colour colour, int drawMode) override;
    void PaintPixelPolygons(std::span<const PixelPosition> corners,
                            std::span<const std::int32_t> counts, std::optional<Colour> inside,
                            const Pen& pen) override;
    void FillPixelDisc(PixelPosition centre, int radius, std::optional<Colour> inside, Colour rim,
                       int drawMode) override;
    void FloodPixels(PixelPoint seed, Colour border, Colour colour, int drawMode) override;

private:
    void PaintDisc(PixelPoint centre, int radius, std::optional<Colour> inside, Colour rim,
                   int drawMode);
    void Stroke(PixelPoint a, PixelPoint b, const Pen& pen);
    void Paint(std::span<const PixelPoint> corners, std::span<const std::int32_t> counts,
               std::optional<Colour> inside, const Pen& pen);
    void PaintInOneColour(std::span<const PixelPoint> corners, std::span<const std::int32_t> counts,
                          Colour colour, bool filled);

    std::vector<PixelPoint> rounded_; // corners of one call
};

/// Calls `work` with the surface as a PixelSurface where it is one, and as it is elsewhere: what is
/// written once for both hands over each its `Place`.
template <class Work>
void WithPlaces(DrawSurface& surface, const Work& work) {
    if (auto* const pixels = dynamic_cast<PixelSurface*>(&surface)) {
        work(*pixels);
    } else {
        work(surface);
    }
}

} // namespace terravo

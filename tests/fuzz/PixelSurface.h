// A drawing surface that paints pixels in memory and measures text without a font.
//
// Data: one word a pixel, in a block of exactly that size, so that a write beside it shows under
// the sanitizers. Method: the pixel routines of the program, chosen as its own surface does.
#pragma once

#include "plot2d/DrawSurface.h"
#include "plot2d/PixelKernels.h"

#include <vector>

namespace terravo::fuzz {

class PixelSurface : public DrawSurface {
public:
    PixelSurface(int width, int height)
        : DrawSurface(width, height, kDotsPerInch),
          words_(static_cast<std::size_t>(PixelWidth()) * static_cast<std::size_t>(PixelHeight())) {
    }

protected:
    void StrokePixels(PixelPoint a, PixelPoint b, const Pen& pen) override {
        if (pen.width > 1) {
            PixelKernels::DrawWideLine(Buffer(), a, b, pen.width, PaintOf(pen.colour, pen.mode));
        } else {
            PixelKernels::DrawLine(Buffer(), a, b, PaintOf(pen.colour, pen.mode),
                                   PixelKernels::DashPatternForStyle(pen.style));
        }
    }
    void SetPixels(PixelPoint centre, const Pen& pen) override {
        PixelKernels::SetPoint(Buffer(), centre, pen.width, PaintOf(pen.colour, pen.mode));
    }
    void FillPixelRect(PixelPoint a, PixelPoint b, Colour colour, int drawMode) override {
        PixelKernels::FillRect(Buffer(), a, b, PaintOf(colour, drawMode));
    }
    void FillPixelPolygons(std::span<const PixelPoint> corners,
                           std::span<const std::int32_t> counts, Colour colour,
                           int drawMode) override {
        PixelKernels::FillPolygons(Buffer(), corners, counts, PaintOf(colour, drawMode));
    }
    void PaintPixelPolygons(std::span<const PixelPoint> corners,
                            std::span<const std::int32_t> counts, std::optional<Colour> inside,
                            const Pen& pen) override {
        if (counts.size() == 1 && inside == pen.colour) {
            PixelKernels::FillWithOutline(Buffer(), corners, PixelKernels::ToPixelWord(*inside));
        } else {
            DrawSurface::PaintPixelPolygons(corners, counts, inside, pen);
        }
    }
    void FillPixelDisc(PixelPoint centre, int radius, std::optional<Colour> /*inside*/, Colour rim,
                       int drawMode) override {
        PixelKernels::DrawCircle(Buffer(), centre, radius, PaintOf(rim, drawMode));
    }
    void FloodPixels(PixelPoint seed, Colour border, Colour colour, int drawMode) override {
        PixelKernels::FloodFill(Buffer(), seed, PixelKernels::ToPixelWord(border),
                                PaintOf(colour, drawMode));
    }
    void DrawTextPixels(PixelPoint /*topLeft*/, std::string_view /*utf8*/, const Font& /*font*/,
                        Colour /*colour*/, std::optional<Colour> /*background*/) override {}
    [[nodiscard]] TextSize MeasurePixels(std::string_view utf8, const Font& font) const override {
        return {static_cast<int>(utf8.size()) * font.pixelSize / 2, font.pixelSize};
    }
    void RefreshPixels() override {}

private:
    [[nodiscard]] PixelKernels::PixelBuffer Buffer() {
        return {words_.data(), PixelWidth(), PixelHeight(), PixelWidth()};
    }
    static PixelKernels::Paint PaintOf(Colour colour, int drawMode) {
        return {PixelKernels::ToPixelWord(colour), PixelKernels::RasterOpFromDrawMode(drawMode)};
    }

    std::vector<std::uint32_t> words_;
};

} // namespace terravo::fuzz

// A surface of pixels for tests: it keeps them in memory and measures text without a font.
//
// Data: one word a pixel, in a block of exactly that size, so that a write beside it shows under
// the sanitizers. Method: the pixel routines of the program; texts leave no trace.
#pragma once

#include "plot2d/PixelSurface.h"

#include <vector>

namespace terravo {

class MemorySurface : public PixelSurface {
public:
    MemorySurface(int width, int height)
        : PixelSurface(width, height, kDotsPerInch),
          words_(static_cast<std::size_t>(PixelWidth()) * static_cast<std::size_t>(PixelHeight())) {
    }

    /// The pixels row by row; 0 where nothing was painted.
    [[nodiscard]] const std::vector<std::uint32_t>& Words() const { return words_; }

protected:
    PixelKernels::PixelBuffer Buffer() override {
        return {words_.data(), PixelWidth(), PixelHeight(), PixelWidth()};
    }
    void DrawTextPixels(PixelPosition /*topLeft*/, std::string_view /*utf8*/, const Font& /*font*/,
                        Colour /*colour*/, std::optional<Colour> /*background*/) override {}
    [[nodiscard]] TextSize MeasurePixels(std::string_view utf8, const Font& font) const override {
        return {static_cast<int>(utf8.size()) * font.pixelSize / 2, font.pixelSize};
    }
    void RefreshPixels() override {}

private:
    std::vector<std::uint32_t> words_;
};

} // namespace terravo

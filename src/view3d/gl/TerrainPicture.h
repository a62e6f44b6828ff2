// Pictures of a terrain, of any size, without a window.
//
// Data: pixels, from the upper left corner, red, green, blue. Method: drawn at twice the size in
// tiles, so that a picture may be larger than the graphics can draw at once, and averaged, which
// smooths its edges.
#pragma once

#include "view3d/gl/TerrainRenderer.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace terravo {

struct TerrainPixels {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> bytes; // three a pixel

    [[nodiscard]] std::uint8_t* At(int x, int y) {
        return bytes.data() + 3 * (static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                                   static_cast<std::size_t>(x));
    }
};

/// Draws in the context of now. Throws AppError kDrawing where the graphics has not the memory.
/// @param view  not in motion.
TerrainPixels DrawTerrainPicture(TerrainRenderer& renderer, const TerrainShot& view);

/// A context of OpenGL that needs no window and no display.
class OffscreenGl {
public:
    /// Makes it and has it current. Throws AppError kDrawing with a sentence where there is none.
    OffscreenGl();
    OffscreenGl(const OffscreenGl&) = delete;
    OffscreenGl& operator=(const OffscreenGl&) = delete;
    ~OffscreenGl();

private:
    void* display_ = nullptr;
    void* context_ = nullptr;
};

} // namespace terravo

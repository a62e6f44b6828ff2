#include "view3d/gl/TerrainPicture.h"

#include "util/AppError.h"

#include <algorithm>

namespace terravo {
namespace {

constexpr int kOver = 2; // a pixel is the mean of so many by so many

// A frame buffer of colours and depths.
class Canvas {
public:
    Canvas(int width, int height)
        : frame_(gl::MakeFrameBuffer()), colours_(gl::MakeRenderBuffer()),
          depths_(gl::MakeRenderBuffer()) {
        glGetIntegerv(GL_FRAMEBUFFER_BINDING, &before_);
        Attach(colours_, GL_RGBA8, GL_COLOR_ATTACHMENT0, width, height);
        Attach(depths_, GL_DEPTH_COMPONENT24, GL_DEPTH_ATTACHMENT, width, height);
        if (glCheckFramebufferStatus(GL_FRAMEBUFFER) != GL_FRAMEBUFFER_COMPLETE) {
            throw AppError(ErrorNumber::kDrawing, "TerrainPicture",
                           "OpenGL has no room for a picture of this size.");
        }
    }
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;
    ~Canvas() { glBindFramebuffer(GL_FRAMEBUFFER, static_cast<GLuint>(before_)); }

private:
    void Attach(const gl::RenderBuffer& part, GLenum form, GLenum place, int width, int height) {
        glBindRenderbuffer(GL_RENDERBUFFER, part.Number());
        glRenderbufferStorage(GL_RENDERBUFFER, form, width, height);
        glBindFramebuffer(GL_FRAMEBUFFER, frame_.Number());
        glFramebufferRenderbuffer(GL_FRAMEBUFFER, place, GL_RENDERBUFFER, part.Number());
    }

    gl::FrameBuffer frame_;
    gl::RenderBuffer colours_;
    gl::RenderBuffer depths_;
    GLint before_ = 0;
};

// Rows of OpenGL begin at the bottom.
void TakeMeans(const std::vector<std::uint8_t>& drawn, const TerrainTile& tile,
               TerrainPixels& pixels) {
    const int width = tile.width / kOver;
    const int height = tile.height / kOver;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            std::uint8_t* pixel = pixels.At(tile.left / kOver + x, tile.top / kOver + y);
            for (int channel = 0; channel < 3; ++channel) {
                int sum = 0;
                for (int dy = 0; dy < kOver; ++dy) {
                    for (int dx = 0; dx < kOver; ++dx) {
                        const int row = tile.height - 1 - (y * kOver + dy);
                        const auto at =
                            static_cast<std::size_t>(row) * static_cast<std::size_t>(tile.width) +
                            static_cast<std::size_t>(x * kOver + dx);
                        sum += drawn[4 * at + static_cast<std::size_t>(channel)];
                    }
                }
                pixel[channel] =
                    static_cast<std::uint8_t>((sum + kOver * kOver / 2) / (kOver * kOver));
            }
        }
    }
}

} // namespace

TerrainPixels DrawTerrainPicture(TerrainRenderer& renderer, const TerrainShot& view) {
    constexpr int kTile = 2048; // pixels as they are drawn
    TerrainPixels pixels{view.width, view.height, {}};
    pixels.bytes.resize(3 * static_cast<std::size_t>(view.width) *
                        static_cast<std::size_t>(view.height));
    TerrainShot large = view;
    large.width *= kOver;
    large.height *= kOver;
    large.pixelRatio *= kOver;
    const Canvas canvas(std::min(kTile, large.width), std::min(kTile, large.height));
    std::vector<std::uint8_t> drawn;
    for (int top = 0; top < large.height; top += kTile) {
        for (int left = 0; left < large.width; left += kTile) {
            const TerrainTile tile{left, top, std::min(kTile, large.width - left),
                                   std::min(kTile, large.height - top)};
            renderer.Draw(large, tile);
            drawn.resize(4 * static_cast<std::size_t>(tile.width) *
                         static_cast<std::size_t>(tile.height));
            glPixelStorei(GL_PACK_ALIGNMENT, 4);
            glReadPixels(0, 0, tile.width, tile.height, GL_RGBA, GL_UNSIGNED_BYTE, drawn.data());
            TakeMeans(drawn, tile, pixels);
        }
    }
    if (glGetError() != GL_NO_ERROR) {
        throw AppError(ErrorNumber::kDrawing, "TerrainPicture",
                       "OpenGL could not draw the terrain.");
    }
    return pixels;
}

} // namespace terravo

// A terrain drawn by OpenGL.
//
// Data: buffers filled from a terrain's content. Method: plate, surface, then what lies on it, a
// little nearer to the eye; the same calls for a window and for a picture without one. OpenGL 3.3
// core; the context it was made in is current in every call.
#pragma once

#include "view3d/gl/GlObjects.h"
#include "view3d/terrain/TerrainContent.h"
#include "view3d/terrain/TerrainPlan.h"

#include <array>
#include <optional>

namespace terravo {

/// A part of a larger picture, pixels from its upper left corner.
struct TerrainTile {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
};

struct TerrainShot {
    const TerrainPlan& plan;
    const TerrainCamera& camera;
    int width = 0; // of the whole picture
    int height = 0;
    double pixelRatio = 1;          // of the widths of lines and points
    bool isMoving = false;          // a coarser picture will do
    std::optional<SpacePoint> mark; // relative to the frame
};

class TerrainRenderer {
public:
    /// Throws AppError where the graphics cannot run its programs.
    TerrainRenderer();

    /// Takes another terrain; the content is not looked at later, the triangles are while their
    /// sides are drawn for the first time.
    void Load(const TerrainContent& content);
    /// The sides of the triangles, loaded when they are first wanted.
    void LoadSides(std::span<const std::uint32_t> sides);
    [[nodiscard]] bool HasSides() const { return sideCount_ > 0; }
    [[nodiscard]] bool IsLoaded() const { return cornerCount_ > 0; }

    /// Draws into the frame buffer of now, whose size is that of the tile.
    void Draw(const TerrainShot& view, const TerrainTile& tile);

private:
    struct LineBuffer {
        gl::VertexArray array;
        gl::Buffer buffer;
        GLsizei count = 0;
    };

    void DrawSurface(const TerrainShot& view);
    void DrawSides(const TerrainShot& view);
    void DrawLines(const TerrainShot& view, const TerrainTile& tile);
    void DrawPoints(const TerrainShot& view);
    void DrawMark(const TerrainShot& view);
    void DrawPlate(const TerrainShot& view, const TerrainTile& tile);
    void DrawStrip(const LineBuffer& lines, const TerrainShot& view, const TerrainTile& tile,
                   Colour ink, double width, double nearer);
    static LineBuffer MakeLines();
    static void FillLines(LineBuffer& lines, std::span<const TerrainSegment> segments);

    gl::Program surface_;
    gl::Program sides_;
    gl::Program lines_;
    gl::Program plain_;
    gl::Program points_;
    gl::VertexArray meshArray_;
    gl::Buffer vertices_;
    gl::Buffer corners_;
    gl::Buffer coarse_;
    gl::Buffer sideBuffer_;
    gl::Buffer pointBuffer_;
    gl::VertexArray looseArray_; // of a few places that change with every picture
    gl::Buffer loose_;
    gl::Texture palette_;
    std::array<LineBuffer, kTerrainLines> lineBuffers_;
    LineBuffer plateLines_;
    std::optional<TerrainPlan> paletteOf_;
    GLsizei cornerCount_ = 0;
    GLsizei coarseCount_ = 0;
    GLsizei sideCount_ = 0;
    GLsizei pointCount_ = 0;
    TerrainFrame frame_;
    double usualSide_ = 0;
    std::array<float, 16> matrix_{}; // of the tile
};

} // namespace terravo

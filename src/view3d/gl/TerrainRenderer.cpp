#include "view3d/gl/TerrainRenderer.h"

#include "view3d/gl/TerrainShaders.h"
#include "view3d/terrain/TerrainPalette.h"
#include "view3d/terrain/TerrainPlate.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace terravo {
namespace {

constexpr double kRadians = std::numbers::pi / 180;

std::array<float, 3> Channels(Colour colour) {
    constexpr float kFull = 255;
    return {static_cast<float>(RedOf(colour)) / kFull, static_cast<float>(GreenOf(colour)) / kFull,
            static_cast<float>(BlueOf(colour)) / kFull};
}

// The part of the picture that a tile is, stretched over the whole cube.
std::array<float, 16> TileMatrix(const TerrainShot& view, const TerrainTile& tile) {
    std::array<float, 16> matrix = view.camera.Matrix();
    const double stretchX = static_cast<double>(view.width) / tile.width;
    const double stretchY = static_cast<double>(view.height) / tile.height;
    const double shiftX = (view.width - 2.0 * tile.left - tile.width) / tile.width;
    const double shiftY = -(view.height - 2.0 * tile.top - tile.height) / tile.height;
    for (std::size_t column = 0; column < 4; ++column) {
        const float divisor = matrix[4 * column + 3];
        matrix[4 * column] = static_cast<float>(stretchX * matrix[4 * column] + shiftX * divisor);
        matrix[4 * column + 1] =
            static_cast<float>(stretchY * matrix[4 * column + 1] + shiftY * divisor);
    }
    return matrix;
}

void SetMatrix(const gl::Program& program, const std::array<float, 16>& matrix) {
    glUseProgram(program.Number());
    glUniformMatrix4fv(gl::PlaceOf(program, "matrix"), 1, GL_FALSE, matrix.data());
}

void SetInk(const gl::Program& program, Colour ink) {
    glUniform3fv(gl::PlaceOf(program, "ink"), 1, Channels(ink).data());
}

void SetFloat(const gl::Program& program, const char* name, double value) {
    glUniform1f(gl::PlaceOf(program, name), static_cast<float>(value));
}

void FillElements(const gl::Buffer& buffer, std::span<const std::uint32_t> numbers) {
    glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, buffer.Number());
    glBufferData(GL_ELEMENT_ARRAY_BUFFER, static_cast<GLsizeiptr>(numbers.size_bytes()),
                 numbers.data(), GL_STATIC_DRAW);
}

struct LineStyle {
    TerrainLine kind;
    Colour onLight;
    Colour onDark;
    double width; // pixels
    double nearer;
};

constexpr std::array kLineStyles{
    LineStyle{TerrainLine::Contour, RGB(70, 50, 35), RGB(40, 30, 22), 1.0, 0.0005},
    LineStyle{TerrainLine::IndexContour, RGB(60, 40, 25), RGB(30, 22, 15), 2.2, 0.0006},
    LineStyle{TerrainLine::Rim, RGB(40, 40, 40), RGB(225, 225, 225), 1.6, 0.0007},
    LineStyle{TerrainLine::Breakline, RGB(170, 20, 60), RGB(255, 90, 120), 2.4, 0.0008}};

} // namespace

TerrainRenderer::TerrainRenderer()
    : surface_(gl::MakeProgram(gl::kSurfaceVertex, gl::kSurfaceFragment)),
      sides_(gl::MakeProgram(gl::kSideVertex, gl::kSideFragment)),
      lines_(gl::MakeProgram(gl::kLineVertex, gl::kLineFragment)),
      plain_(gl::MakeProgram(gl::kSurfaceVertex, gl::kPlainFragment)),
      points_(gl::MakeProgram(gl::kPointVertex, gl::kPointFragment)),
      meshArray_(gl::MakeVertexArray()), vertices_(gl::MakeBuffer()), corners_(gl::MakeBuffer()),
      coarse_(gl::MakeBuffer()), sideBuffer_(gl::MakeBuffer()), pointBuffer_(gl::MakeBuffer()),
      looseArray_(gl::MakeVertexArray()), loose_(gl::MakeBuffer()), palette_(gl::MakeTexture()),
      plateLines_(MakeLines()) {
    for (LineBuffer& lines : lineBuffers_) {
        lines = MakeLines();
    }
    glBindVertexArray(looseArray_.Number());
    glBindBuffer(GL_ARRAY_BUFFER, loose_.Number());
    glEnableVertexAttribArray(0);
    glVertexAttribPointer(0, 3, GL_FLOAT, GL_FALSE, 3 * sizeof(float), nullptr);
    glBindVertexArray(0);
}

void TerrainRenderer::Load(const TerrainContent& content) {
    glBindVertexArray(meshArray_.Number());
    gl::Fill(vertices_, std::span<const TerrainVertex>(content.mesh.vertices));
    glEnableVertexAttribArray(0);
    glVertexAttribPointer(0, 3, GL_FLOAT, GL_FALSE, sizeof(TerrainVertex), nullptr);
    glEnableVertexAttribArray(1);
    glVertexAttribPointer(1, 4, GL_BYTE, GL_TRUE, sizeof(TerrainVertex),
                          reinterpret_cast<const void*>(offsetof(TerrainVertex, normal)));
    FillElements(corners_, content.mesh.corners);
    FillElements(coarse_, content.coarse);
    FillElements(pointBuffer_, content.points);
    glBindVertexArray(0);
    cornerCount_ = static_cast<GLsizei>(content.mesh.corners.size());
    coarseCount_ = static_cast<GLsizei>(content.coarse.size());
    pointCount_ = static_cast<GLsizei>(content.points.size());
    sideCount_ = 0;
    for (std::size_t k = 0; k < kTerrainLines; ++k) {
        FillLines(lineBuffers_[k], content.lines[k]);
    }
    frame_ = content.frame;
    usualSide_ = content.usualSide;
}

void TerrainRenderer::LoadSides(std::span<const std::uint32_t> sides) {
    glBindVertexArray(meshArray_.Number());
    FillElements(sideBuffer_, sides);
    glBindVertexArray(0);
    sideCount_ = static_cast<GLsizei>(sides.size());
}

void TerrainRenderer::Draw(const TerrainShot& view, const TerrainTile& tile) {
    matrix_ = TileMatrix(view, tile);
    glViewport(0, 0, tile.width, tile.height);
    const auto ground = Channels(view.plan.dark ? RGB(34, 37, 42) : RGB(244, 244, 242));
    glClearColor(ground[0], ground[1], ground[2], 1);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    if (!IsLoaded()) {
        return;
    }
    glDisable(GL_BLEND);
    glDisable(GL_CULL_FACE);
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_LEQUAL);
    glEnable(GL_PROGRAM_POINT_SIZE);
    if (view.plan.plate) {
        DrawPlate(view, tile);
    }
    DrawSurface(view);
    if (view.plan.triangles && HasSides() && !(view.isMoving && coarseCount_ > 0)) {
        DrawSides(view);
    }
    DrawLines(view, tile);
    if (view.plan.points && !(view.isMoving && coarseCount_ > 0)) {
        DrawPoints(view);
    }
    DrawMark(view);
    glBindVertexArray(0);
    glUseProgram(0);
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_PROGRAM_POINT_SIZE);
}

void TerrainRenderer::DrawSurface(const TerrainShot& view) {
    const TerrainPlan& plan = view.plan;
    glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_2D, palette_.Number());
    if (!paletteOf_ || paletteOf_->colouring != plan.colouring || paletteOf_->theme != plan.theme) {
        std::array<std::uint8_t, 4 * kTerrainColours> bytes{};
        const TerrainPalette palette = MakeTerrainPalette(plan);
        for (std::size_t i = 0; i < palette.size(); ++i) {
            bytes[4 * i] = static_cast<std::uint8_t>(RedOf(palette[i]));
            bytes[4 * i + 1] = static_cast<std::uint8_t>(GreenOf(palette[i]));
            bytes[4 * i + 2] = static_cast<std::uint8_t>(BlueOf(palette[i]));
            bytes[4 * i + 3] = 255;
        }
        glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, kTerrainColours, 1, 0, GL_RGBA, GL_UNSIGNED_BYTE,
                     bytes.data());
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
        paletteOf_ = plan;
    }
    SetMatrix(surface_, matrix_);
    glUniform1i(gl::PlaceOf(surface_, "palette"), 0);
    glUniform1i(gl::PlaceOf(surface_, "colouring"), static_cast<GLint>(plan.colouring));
    glUniform1i(gl::PlaceOf(surface_, "smoothed"), plan.smooth ? 1 : 0);
    SetFloat(surface_, "exaggeration", view.camera.Exaggeration());
    SetFloat(surface_, "halfHeight", std::max(frame_.reach.z, 1e-30));
    SetFloat(surface_, "steepest", kSteepest * kRadians);
    const double azimuth = plan.lightAzimuth * kRadians;
    const double elevation = plan.lightElevation * kRadians;
    glUniform3f(gl::PlaceOf(surface_, "toLight"),
                static_cast<float>(std::sin(azimuth) * std::cos(elevation)),
                static_cast<float>(std::cos(azimuth) * std::cos(elevation)),
                static_cast<float>(std::sin(elevation)));
    glBindVertexArray(meshArray_.Number());
    const bool isCoarse = view.isMoving && coarseCount_ > 0;
    glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, (isCoarse ? coarse_ : corners_).Number());
    glEnable(GL_POLYGON_OFFSET_FILL);
    glPolygonOffset(1, 1);
    glDrawElements(GL_TRIANGLES, isCoarse ? coarseCount_ : cornerCount_, GL_UNSIGNED_INT, nullptr);
    glDisable(GL_POLYGON_OFFSET_FILL);
    glBindTexture(GL_TEXTURE_2D, 0);
}

void TerrainRenderer::DrawSides(const TerrainShot& view) {
    const double atTarget = usualSide_ * view.camera.PixelsPerUnit();
    const double pixels =
        (view.camera.IsPerspective() ? atTarget * view.camera.Distance() : atTarget) /
        view.pixelRatio;
    SetMatrix(sides_, matrix_);
    SetInk(sides_, RGB(20, 20, 20));
    SetFloat(sides_, "pixels", pixels);
    glBindVertexArray(meshArray_.Number());
    glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, sideBuffer_.Number());
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glDepthMask(GL_FALSE);
    glDrawElements(GL_LINES, sideCount_, GL_UNSIGNED_INT, nullptr);
    glDepthMask(GL_TRUE);
    glDisable(GL_BLEND);
}

// In motion only the few heavy lines of a large terrain are drawn.
void TerrainRenderer::DrawLines(const TerrainShot& view, const TerrainTile& tile) {
    constexpr GLsizei kMostInMotion = 30000;
    for (const LineStyle& style : kLineStyles) {
        const bool isContour =
            style.kind == TerrainLine::Contour || style.kind == TerrainLine::IndexContour;
        const LineBuffer& lines = lineBuffers_[static_cast<std::size_t>(style.kind)];
        const bool isLeftOut = view.isMoving && lines.count > kMostInMotion;
        if ((isContour ? view.plan.contours : view.plan.lines) && !isLeftOut) {
            DrawStrip(lines, view, tile, view.plan.dark ? style.onDark : style.onLight, style.width,
                      style.nearer);
        }
    }
}

void TerrainRenderer::DrawPoints(const TerrainShot& view) {
    SetMatrix(points_, matrix_);
    SetInk(points_, view.plan.dark ? RGB(250, 250, 240) : RGB(20, 20, 40));
    SetFloat(points_, "width", 4 * view.pixelRatio);
    glBindVertexArray(meshArray_.Number());
    glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, pointBuffer_.Number());
    glDrawElements(GL_POINTS, pointCount_, GL_UNSIGNED_INT, nullptr);
}

// Seen through the ground as well, so that a mark cannot be lost behind a hill.
void TerrainRenderer::DrawMark(const TerrainShot& view) {
    if (!view.mark) {
        return;
    }
    const std::array place{static_cast<float>(view.mark->x), static_cast<float>(view.mark->y),
                           static_cast<float>(view.mark->z)};
    SetMatrix(points_, matrix_);
    glBindVertexArray(looseArray_.Number());
    gl::Fill(loose_, std::span<const float>(place));
    glDisable(GL_DEPTH_TEST);
    for (const auto& [width, ink] : {std::pair(15.0, kWhite), std::pair(11.0, kRed)}) {
        SetInk(points_, ink);
        SetFloat(points_, "width", width * view.pixelRatio);
        glDrawArrays(GL_POINTS, 0, 1);
    }
    glEnable(GL_DEPTH_TEST);
}

void TerrainRenderer::DrawPlate(const TerrainShot& view, const TerrainTile& tile) {
    const TerrainPlate plate = MakeTerrainPlate(frame_, view.camera.Exaggeration());
    std::array<float, 12> fan{};
    for (std::size_t k = 0; k < 4; ++k) {
        fan[3 * k] = static_cast<float>(plate.corners[k].x);
        fan[3 * k + 1] = static_cast<float>(plate.corners[k].y);
        fan[3 * k + 2] = static_cast<float>(plate.corners[k].z);
    }
    SetMatrix(plain_, matrix_);
    SetInk(plain_, view.plan.dark ? RGB(58, 62, 68) : RGB(226, 226, 222));
    glBindVertexArray(looseArray_.Number());
    gl::Fill(loose_, std::span<const float>(fan));
    glEnable(GL_POLYGON_OFFSET_FILL);
    glPolygonOffset(2, 2);
    glDrawArrays(GL_TRIANGLE_FAN, 0, 4);
    glDisable(GL_POLYGON_OFFSET_FILL);
    FillLines(plateLines_, plate.grid);
    DrawStrip(plateLines_, view, tile, view.plan.dark ? RGB(95, 100, 108) : RGB(170, 170, 165), 1,
              0.0001);
}

void TerrainRenderer::DrawStrip(const LineBuffer& lines, const TerrainShot& view,
                                const TerrainTile& tile, Colour ink, double width, double nearer) {
    constexpr double kRoom = 2; // pixels between two lines
    if (lines.count == 0) {
        return;
    }
    SetMatrix(lines_, matrix_);
    SetInk(lines_, ink);
    SetFloat(lines_, "width", width * view.pixelRatio);
    SetFloat(lines_, "nearer", nearer);
    SetFloat(lines_, "room", (kRoom + width) * view.pixelRatio);
    glUniform2f(gl::PlaceOf(lines_, "size"), static_cast<float>(tile.width),
                static_cast<float>(tile.height));
    glBindVertexArray(lines.array.Number());
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glDrawArraysInstanced(GL_TRIANGLE_STRIP, 0, 4, lines.count);
    glDisable(GL_BLEND);
}

TerrainRenderer::LineBuffer TerrainRenderer::MakeLines() {
    LineBuffer lines{gl::MakeVertexArray(), gl::MakeBuffer()};
    glBindVertexArray(lines.array.Number());
    glBindBuffer(GL_ARRAY_BUFFER, lines.buffer.Number());
    for (const GLuint end : {0U, 1U}) {
        glEnableVertexAttribArray(end);
        glVertexAttribPointer(end, 3, GL_FLOAT, GL_FALSE, sizeof(TerrainSegment),
                              reinterpret_cast<const void*>(end * 3 * sizeof(float)));
        glVertexAttribDivisor(end, 1);
    }
    glEnableVertexAttribArray(2);
    glVertexAttribPointer(2, 3, GL_FLOAT, GL_FALSE, sizeof(TerrainSegment),
                          reinterpret_cast<const void*>(offsetof(TerrainSegment, uphill)));
    glVertexAttribDivisor(2, 1);
    glBindVertexArray(0);
    return lines;
}

void TerrainRenderer::FillLines(LineBuffer& lines, std::span<const TerrainSegment> segments) {
    gl::Fill(lines.buffer, segments);
    lines.count = static_cast<GLsizei>(segments.size());
}

} // namespace terravo

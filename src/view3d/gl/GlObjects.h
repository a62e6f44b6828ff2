// Things of the graphics that are given back when their owner goes.
//
// Data: numbers of buffers, programs, textures, frame buffers. Method: whoever makes or drops one
// has the same context current.
#pragma once

#include <epoxy/gl.h>

#include <span>
#include <string>
#include <utility>

namespace terravo::gl {

/// A number that the graphics gave out, and how it is given back.
template <void (*Drop)(GLuint)>
class Owned {
public:
    Owned() = default;
    explicit Owned(GLuint number) : number_(number) {}
    Owned(Owned&& other) noexcept : number_(std::exchange(other.number_, 0)) {}
    Owned& operator=(Owned&& other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }
    Owned(const Owned&) = delete;
    Owned& operator=(const Owned&) = delete;
    ~Owned() {
        if (number_ != 0) {
            Drop(number_);
        }
    }
    [[nodiscard]] GLuint Number() const { return number_; }

private:
    GLuint number_ = 0;
};

inline void DropBuffer(GLuint n) {
    glDeleteBuffers(1, &n);
}
inline void DropArray(GLuint n) {
    glDeleteVertexArrays(1, &n);
}
inline void DropTexture(GLuint n) {
    glDeleteTextures(1, &n);
}
inline void DropProgram(GLuint n) {
    glDeleteProgram(n);
}
inline void DropFrame(GLuint n) {
    glDeleteFramebuffers(1, &n);
}
inline void DropRender(GLuint n) {
    glDeleteRenderbuffers(1, &n);
}

using Buffer = Owned<DropBuffer>;
using VertexArray = Owned<DropArray>;
using Texture = Owned<DropTexture>;
using Program = Owned<DropProgram>;
using FrameBuffer = Owned<DropFrame>;
using RenderBuffer = Owned<DropRender>;

Buffer MakeBuffer();
VertexArray MakeVertexArray();
Texture MakeTexture();
FrameBuffer MakeFrameBuffer();
RenderBuffer MakeRenderBuffer();

/// Fills a buffer with values that seldom change.
template <class T>
void Fill(const Buffer& buffer, std::span<const T> values) {
    glBindBuffer(GL_ARRAY_BUFFER, buffer.Number());
    glBufferData(GL_ARRAY_BUFFER, static_cast<GLsizeiptr>(values.size_bytes()), values.data(),
                 GL_STATIC_DRAW);
}

/// Compiles and links. Throws AppError with the compiler's words where that fails.
Program MakeProgram(const std::string& vertexSource, const std::string& fragmentSource);

/// The place of a uniform; -1, which setting ignores, where the compiler has dropped it.
inline GLint PlaceOf(const Program& program, const char* name) {
    return glGetUniformLocation(program.Number(), name);
}

} // namespace terravo::gl

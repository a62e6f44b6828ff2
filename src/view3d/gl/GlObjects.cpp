#include "view3d/gl/GlObjects.h"

#include "util/AppError.h"

#include <array>

namespace terravo::gl {
namespace {

// The same for all: make one, own it.
template <class Thing, class Make>
Thing One(Make make) {
    GLuint number = 0;
    make(1, &number);
    return Thing(number);
}

std::string Words(GLuint number, void (*ask)(GLuint, GLsizei, GLsizei*, GLchar*)) {
    std::array<char, 1024> words{};
    ask(number, static_cast<GLsizei>(words.size()), nullptr, words.data());
    return words.data();
}

GLuint Compiled(GLenum kind, const std::string& source) {
    const GLuint shader = glCreateShader(kind);
    const char* text = source.c_str();
    glShaderSource(shader, 1, &text, nullptr);
    glCompileShader(shader);
    GLint good = 0;
    glGetShaderiv(shader, GL_COMPILE_STATUS, &good);
    if (good == 0) {
        const std::string words = Words(shader, glGetShaderInfoLog);
        glDeleteShader(shader);
        throw AppError(ErrorNumber::kDrawing, "TerrainRenderer", "OpenGL: " + words);
    }
    return shader;
}

} // namespace

Buffer MakeBuffer() {
    return One<Buffer>(glGenBuffers);
}
VertexArray MakeVertexArray() {
    return One<VertexArray>(glGenVertexArrays);
}
Texture MakeTexture() {
    return One<Texture>(glGenTextures);
}
FrameBuffer MakeFrameBuffer() {
    return One<FrameBuffer>(glGenFramebuffers);
}
RenderBuffer MakeRenderBuffer() {
    return One<RenderBuffer>(glGenRenderbuffers);
}

Program MakeProgram(const std::string& vertexSource, const std::string& fragmentSource) {
    const GLuint vertex = Compiled(GL_VERTEX_SHADER, vertexSource);
    const GLuint fragment = Compiled(GL_FRAGMENT_SHADER, fragmentSource);
    Program program(glCreateProgram());
    glAttachShader(program.Number(), vertex);
    glAttachShader(program.Number(), fragment);
    glLinkProgram(program.Number());
    glDeleteShader(vertex);
    glDeleteShader(fragment);
    GLint good = 0;
    glGetProgramiv(program.Number(), GL_LINK_STATUS, &good);
    if (good == 0) {
        throw AppError(ErrorNumber::kDrawing, "TerrainRenderer",
                       "OpenGL: " + Words(program.Number(), glGetProgramInfoLog));
    }
    return program;
}

} // namespace terravo::gl

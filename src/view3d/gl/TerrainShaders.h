// The programs that run in the graphics.
//
// Data: text. Method: heights are stretched by the matrix; normals are those of the ground as it
// is, so that slope and aspect do not depend on the stretching, and are stretched for the light.
#pragma once

namespace terravo::gl {

inline constexpr const char* kSurfaceVertex = R"(#version 330 core
layout(location = 0) in vec3 place;
layout(location = 1) in vec4 normal;
uniform mat4 matrix;
out vec3 ground;
out vec3 up;
void main() {
    ground = place;
    up = normal.xyz;
    gl_Position = matrix * vec4(place, 1.0);
})";

inline constexpr const char* kSurfaceFragment = R"(#version 330 core
in vec3 ground;
in vec3 up;
uniform sampler2D palette;
uniform int colouring;   // 0 height, 1 slope, 2 aspect, 3 plain
uniform bool smoothed;
uniform float exaggeration;
uniform vec3 toLight;
uniform float halfHeight; // of the terrain, not stretched
uniform float steepest;   // radians
out vec4 colour;
void main() {
    vec3 n = smoothed ? up : cross(dFdx(ground), dFdy(ground));
    n = normalize(n.z < 0.0 ? -n : n);
    float part = 0.5;
    float certain = 1.0;
    if (colouring == 0) {
        part = ground.z / (2.0 * halfHeight) + 0.5;
    } else if (colouring == 1) {
        part = acos(clamp(n.z, 0.0, 1.0)) / steepest;
    } else if (colouring == 2) {
        part = fract(atan(n.x, n.y) / 6.28318530718 + 1.0);
        certain = smoothstep(0.0, 0.02, length(n.xy)); // level ground faces nowhere
    }
    vec3 base = texture(palette, vec2(clamp(part, 0.0, 1.0) * 255.0 / 256.0 + 0.5 / 256.0, 0.5)).rgb;
    base = mix(vec3(0.75), base, certain);
    vec3 stretched = normalize(vec3(n.xy * exaggeration, n.z));
    float light = max(dot(stretched, toLight), 0.0);
    colour = vec4(min(base * (0.42 + 0.75 * light), vec3(1.0)), 1.0);
})";

// Sides of triangles: the fewer pixels they have, the fainter they are.
inline constexpr const char* kSideVertex = R"(#version 330 core
layout(location = 0) in vec3 place;
uniform mat4 matrix;
uniform float pixels; // of a usual side at depth 1
out float strength;
void main() {
    gl_Position = matrix * vec4(place, 1.0);
    gl_Position.z -= 0.0004 * gl_Position.w;
    strength = clamp((pixels / gl_Position.w - 3.0) / 12.0, 0.0, 0.55);
})";

inline constexpr const char* kSideFragment = R"(#version 330 core
in float strength;
uniform vec3 ink;
out vec4 colour;
void main() {
    colour = vec4(ink, strength);
})";

// A segment is a strip of four corners, as wide as it is to be in pixels. A contour fades where the
// next one as heavy comes near on the picture, and is not drawn where the ground would be nothing
// but lines.
inline constexpr const char* kLineVertex = R"(#version 330 core
layout(location = 0) in vec3 begin;
layout(location = 1) in vec3 end;
layout(location = 2) in vec3 uphill; // to the next contour
uniform mat4 matrix;
uniform vec2 size;    // of the picture, pixels
uniform float width;  // pixels
uniform float nearer; // towards the eye, of the depth
uniform float room;   // pixels between lines that are seen a little, and twice that: whole
out float strength;
// The way of a small step from a place, in pixels.
vec2 onPicture(vec4 place, vec4 step) {
    return (step.xy - place.xy / place.w * step.w) / place.w * size * 0.5;
}
void main() {
    vec4 a = matrix * vec4(begin, 1.0);
    vec4 b = matrix * vec4(end, 1.0);
    strength = 1.0;
    // What lies behind the eye is cut off.
    const float least = 1e-6;
    if (a.w < least && b.w < least) {
        gl_Position = vec4(2.0, 2.0, 2.0, 1.0);
        return;
    }
    if (a.w < least) a = mix(b, a, (b.w - least) / (b.w - a.w));
    if (b.w < least) b = mix(a, b, (a.w - least) / (a.w - b.w));
    vec2 along = (b.xy / b.w - a.xy / a.w) * size;
    float far = length(along);
    along = far > 0.0 ? along / far : vec2(1.0, 0.0);
    vec2 across = vec2(-along.y, along.x);
    if (uphill.z > 0.0) {
        vec2 up = onPicture(a, matrix * vec4(uphill, 0.0));
        vec2 course = onPicture(a, matrix * vec4(normalize(vec2(uphill.y, -uphill.x)), 0.0, 0.0));
        float apart = abs(up.x * course.y - up.y * course.x) / max(length(course), 1e-30);
        strength = clamp(apart / room - 1.0, 0.0, 1.0);
        if (strength == 0.0) {
            gl_Position = vec4(2.0, 2.0, 2.0, 1.0);
            return;
        }
    }
    vec2 side = across * ((gl_VertexID & 2) == 0 ? 1.0 : -1.0);
    vec2 beyond = along * ((gl_VertexID & 1) == 0 ? -0.5 : 0.5); // strips of a bend meet
    vec4 at = (gl_VertexID & 1) == 0 ? a : b;
    at.xy += (side + beyond) * width / size * at.w;
    at.z -= nearer * at.w;
    gl_Position = at;
})";

inline constexpr const char* kLineFragment = R"(#version 330 core
in float strength;
uniform vec3 ink;
out vec4 colour;
void main() {
    colour = vec4(ink, strength);
})";

inline constexpr const char* kPlainFragment = R"(#version 330 core
uniform vec3 ink;
out vec4 colour;
void main() {
    colour = vec4(ink, 1.0);
})";

inline constexpr const char* kPointVertex = R"(#version 330 core
layout(location = 0) in vec3 place;
uniform mat4 matrix;
uniform float width;
void main() {
    gl_Position = matrix * vec4(place, 1.0);
    gl_Position.z -= 0.0008 * gl_Position.w;
    gl_PointSize = width;
})";

inline constexpr const char* kPointFragment = R"(#version 330 core
uniform vec3 ink;
out vec4 colour;
void main() {
    if (length(gl_PointCoord - vec2(0.5)) > 0.5) discard;
    colour = vec4(ink, 1.0);
})";

} // namespace terravo::gl

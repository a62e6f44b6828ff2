#include "view3d/gl/TerrainPicture.h"

#include "util/AppError.h"
#include "util/SharedLibrary.h"

#include <epoxy/egl.h>

#include <array>
#include <cstring>
#include <string>
#include <utility>

namespace terravo {
namespace {

[[noreturn]] void Refuse(const std::string& why) {
    throw AppError(ErrorNumber::kDrawing, "OffscreenGl",
                   "The terrain cannot be drawn: there is no OpenGL 3.3 here, " + why +
                       ". It needs EGL and a graphics driver; on Debian the packages libegl1, "
                       "libgl1 and libgl1-mesa-dri bring one that needs no graphics card.");
}

// The functions of a library that is not there must not be asked for.
void RequireLibraries() {
    std::string reason;
    for (const auto& [file, symbol] :
         {std::pair("libEGL.so.1", "eglInitialize"), std::pair("libGL.so.1", "glClear")}) {
        if (SharedLibrary::SymbolOf(file, symbol, reason) == nullptr) {
            Refuse("a library is missing (" + reason + ")");
        }
    }
}

EGLDisplay DisplayWithoutWindows() {
    const char* extensions = eglQueryString(EGL_NO_DISPLAY, EGL_EXTENSIONS);
    const bool needsNone = extensions != nullptr &&
                           std::strstr(extensions, "EGL_MESA_platform_surfaceless") != nullptr &&
                           std::strstr(extensions, "EGL_EXT_platform_base") != nullptr;
    return needsNone ? eglGetPlatformDisplayEXT(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY,
                                                nullptr)
                     : eglGetDisplay(EGL_DEFAULT_DISPLAY);
}

} // namespace

OffscreenGl::OffscreenGl() {
    RequireLibraries();
    display_ = DisplayWithoutWindows();
    if (display_ == EGL_NO_DISPLAY || eglInitialize(display_, nullptr, nullptr) == EGL_FALSE) {
        Refuse("EGL finds no driver");
    }
    constexpr std::array<EGLint, 13> kConfig{EGL_SURFACE_TYPE,
                                             0,
                                             EGL_RENDERABLE_TYPE,
                                             EGL_OPENGL_BIT,
                                             EGL_RED_SIZE,
                                             8,
                                             EGL_GREEN_SIZE,
                                             8,
                                             EGL_BLUE_SIZE,
                                             8,
                                             EGL_NONE};
    constexpr std::array<EGLint, 7> kVersion{EGL_CONTEXT_MAJOR_VERSION,
                                             3,
                                             EGL_CONTEXT_MINOR_VERSION,
                                             3,
                                             EGL_CONTEXT_OPENGL_PROFILE_MASK,
                                             EGL_CONTEXT_OPENGL_CORE_PROFILE_BIT,
                                             EGL_NONE};
    EGLConfig config = nullptr;
    EGLint count = 0;
    eglBindAPI(EGL_OPENGL_API);
    if (eglChooseConfig(display_, kConfig.data(), &config, 1, &count) == EGL_TRUE && count > 0) {
        context_ = eglCreateContext(display_, config, EGL_NO_CONTEXT, kVersion.data());
    }
    if (context_ == nullptr ||
        eglMakeCurrent(display_, EGL_NO_SURFACE, EGL_NO_SURFACE, context_) == EGL_FALSE) {
        eglTerminate(display_);
        Refuse("the driver only has an older one");
    }
}

OffscreenGl::~OffscreenGl() {
    eglMakeCurrent(display_, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    eglDestroyContext(display_, context_);
    eglTerminate(display_);
}

} // namespace terravo

#pragma once

#include <QOpenGLContext>
#include <QOpenGLExtraFunctions>

#include <map>
#include <memory>
#include <utility>

namespace qor::desktop {

/// The functions of the context that is current. OpenGL 3.3 core uses none beyond these.
using Gl = QOpenGLExtraFunctions;

[[nodiscard]] inline Gl& currentGl() {
    return *QOpenGLContext::currentContext()->extraFunctions();
}

/// The one \p Cache of all contexts that share their objects with the current one; it goes with the
/// last who holds it.
template <class Cache>
[[nodiscard]] std::shared_ptr<Cache> sharedByContexts() {
    static std::map<const QOpenGLContextGroup*, std::weak_ptr<Cache>> caches;
    std::weak_ptr<Cache>& known = caches[QOpenGLContextGroup::currentContextGroup()];
    std::shared_ptr<Cache> cache = known.lock();
    if (!cache)
        known = cache = std::make_shared<Cache>();
    return cache;
}

/// A name that OpenGL gave, taken back with its owner. The context that it came from is current
/// then, or for buffers and textures one that shares its objects.
template <class Kind>
class GlName {
public:
    GlName() = default;

    explicit GlName(Gl& gl) { Kind::make(gl, name_); }

    ~GlName() { reset(); }

    GlName(GlName&& other) noexcept : name_(std::exchange(other.name_, 0)) {}

    GlName& operator=(GlName&& other) noexcept {
        std::swap(name_, other.name_);
        return *this;
    }

    GlName(const GlName&) = delete;
    GlName& operator=(const GlName&) = delete;

    /// 0 for none.
    [[nodiscard]] GLuint name() const { return name_; }

    explicit operator bool() const { return name_ != 0; }

    void reset() {
        if (name_ != 0)
            Kind::unmake(currentGl(), name_);
        name_ = 0;
    }

private:
    GLuint name_ = 0;
};

struct GlBufferKind {
    static void make(Gl& gl, GLuint& name) { gl.glGenBuffers(1, &name); }

    static void unmake(Gl& gl, GLuint name) { gl.glDeleteBuffers(1, &name); }
};

struct GlVertexArrayKind {
    static void make(Gl& gl, GLuint& name) { gl.glGenVertexArrays(1, &name); }

    static void unmake(Gl& gl, GLuint name) { gl.glDeleteVertexArrays(1, &name); }
};

struct GlTextureKind {
    static void make(Gl& gl, GLuint& name) { gl.glGenTextures(1, &name); }

    static void unmake(Gl& gl, GLuint name) { gl.glDeleteTextures(1, &name); }
};

struct GlFramebufferKind {
    static void make(Gl& gl, GLuint& name) { gl.glGenFramebuffers(1, &name); }

    static void unmake(Gl& gl, GLuint name) { gl.glDeleteFramebuffers(1, &name); }
};

struct GlRenderbufferKind {
    static void make(Gl& gl, GLuint& name) { gl.glGenRenderbuffers(1, &name); }

    static void unmake(Gl& gl, GLuint name) { gl.glDeleteRenderbuffers(1, &name); }
};

using GlBuffer = GlName<GlBufferKind>;
using GlVertexArray = GlName<GlVertexArrayKind>;
using GlTexture = GlName<GlTextureKind>;
using GlFramebuffer = GlName<GlFramebufferKind>;
using GlRenderbuffer = GlName<GlRenderbufferKind>;

} // namespace qor::desktop

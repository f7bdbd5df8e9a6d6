#pragma once

#include "workbench/desktop/viewer/gl/GlMath.h"
#include "workbench/desktop/viewer/gl/GlObjects.h"

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace qor::desktop {

/// A vertex and a fragment shader, from the texts in shaders/. Values are set on the program in
/// use. Names that the shaders do not have are ignored, as OpenGL does.
class GlProgram {
public:
    struct Texts {
        std::string_view vertex;
        std::vector<std::string_view> fragment; ///< put together in this order
        std::string_view define = {};           ///< a word for #ifdef in all of them
    };

    /// Throws std::runtime_error with the compiler's words.
    GlProgram(Gl& gl, const Texts& texts);
    ~GlProgram();
    GlProgram(const GlProgram&) = delete;
    GlProgram& operator=(const GlProgram&) = delete;

    void use() const;

    void set(const char* name, int value);
    void set(const char* name, float value);
    void set(const char* name, const Float2& value);
    void set(const char* name, const Float3& value);
    void set(const char* name, const Float4& value);
    void set(const char* name, const Matrix4& value);

private:
    void attach(GLenum kind, const std::string& text);
    [[nodiscard]] GLint place(const char* name);

    Gl& gl_;
    GLuint name_;
    std::unordered_map<std::string, GLint> places_;
};

} // namespace qor::desktop

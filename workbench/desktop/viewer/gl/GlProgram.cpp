#include "workbench/desktop/viewer/gl/GlProgram.h"

#include <QFile>

#include <stdexcept>

namespace qor::desktop {

namespace {

std::string textOf(std::string_view file) {
    QFile resource(QStringLiteral(":/qor/shaders/%1")
                       .arg(QLatin1String(file.data(), static_cast<qsizetype>(file.size()))));
    if (!resource.open(QIODevice::ReadOnly))
        throw std::runtime_error("no shader " + std::string(file));
    return resource.readAll().toStdString();
}

std::string headOf(const GlProgram::Texts& texts) {
    std::string head = "#version 330 core\n";
    if (!texts.define.empty())
        head += "#define " + std::string(texts.define) + "\n";
    return head;
}

} // namespace

GlProgram::GlProgram(Gl& gl, const Texts& texts) : gl_(gl), name_(gl.glCreateProgram()) {
    attach(GL_VERTEX_SHADER, headOf(texts) + textOf(texts.vertex));
    std::string fragment = headOf(texts);
    for (const std::string_view file : texts.fragment)
        fragment += textOf(file);
    attach(GL_FRAGMENT_SHADER, fragment);
    gl_.glLinkProgram(name_);
    GLint linked = 0;
    gl_.glGetProgramiv(name_, GL_LINK_STATUS, &linked);
    if (linked != 0)
        return;
    char log[1024] = {};
    gl_.glGetProgramInfoLog(name_, sizeof log, nullptr, log);
    gl_.glDeleteProgram(name_);
    throw std::runtime_error("shaders do not link: " + std::string(log));
}

GlProgram::~GlProgram() {
    gl_.glDeleteProgram(name_);
}

void GlProgram::attach(GLenum kind, const std::string& text) {
    const GLuint shader = gl_.glCreateShader(kind);
    const char* lines = text.c_str();
    gl_.glShaderSource(shader, 1, &lines, nullptr);
    gl_.glCompileShader(shader);
    GLint compiled = 0;
    gl_.glGetShaderiv(shader, GL_COMPILE_STATUS, &compiled);
    char log[1024] = {};
    if (compiled == 0)
        gl_.glGetShaderInfoLog(shader, sizeof log, nullptr, log);
    else
        gl_.glAttachShader(name_, shader);
    gl_.glDeleteShader(shader); // goes with the program that it is attached to
    if (compiled != 0)
        return;
    gl_.glDeleteProgram(name_);
    throw std::runtime_error("a shader does not compile: " + std::string(log));
}

void GlProgram::use() const {
    gl_.glUseProgram(name_);
}

GLint GlProgram::place(const char* name) {
    const auto [found, isNew] = places_.try_emplace(name, -1);
    if (isNew)
        found->second = gl_.glGetUniformLocation(name_, name);
    return found->second;
}

void GlProgram::set(const char* name, int value) {
    gl_.glUniform1i(place(name), value);
}

void GlProgram::set(const char* name, float value) {
    gl_.glUniform1f(place(name), value);
}

void GlProgram::set(const char* name, const Float2& value) {
    gl_.glUniform2fv(place(name), 1, value.data());
}

void GlProgram::set(const char* name, const Float3& value) {
    gl_.glUniform3fv(place(name), 1, value.data());
}

void GlProgram::set(const char* name, const Float4& value) {
    gl_.glUniform4fv(place(name), 1, value.data());
}

void GlProgram::set(const char* name, const Matrix4& value) {
    gl_.glUniformMatrix4fv(place(name), 1, GL_FALSE, value.data());
}

} // namespace qor::desktop

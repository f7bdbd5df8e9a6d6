#include "workbench/desktop/viewer/gl/SurfacePainter.h"

#include <algorithm>

namespace qor::desktop {

namespace {

/// Whether all of a box lies beyond one side of what is seen.
bool isOutside(const Qor3DBoundingBox& box, const QorMathPoint& origin, const Matrix4& matrix) {
    std::array<int, 6> beyond{};
    for (const double x : {box.low.x, box.high.x})
        for (const double y : {box.low.y, box.high.y})
            for (const double z : {box.low.z, box.high.z}) {
                const Float3 p = toFloats(QorMathPoint{x, y, z} - origin);
                const auto row = [&](std::size_t i) {
                    return matrix[i] * p[0] + matrix[4 + i] * p[1] + matrix[8 + i] * p[2] +
                           matrix[12 + i];
                };
                const float w = row(3);
                for (std::size_t axis = 0; axis < 3; ++axis) {
                    beyond[2 * axis] += row(axis) < -w ? 1 : 0;
                    beyond[2 * axis + 1] += row(axis) > w ? 1 : 0;
                }
            }
    constexpr int corners = 8;
    return std::find(beyond.begin(), beyond.end(), corners) != beyond.end();
}

} // namespace

SurfacePainter::SurfacePainter(Gl& gl)
    : gl_(gl)
    , plain_(gl, {"mesh.vert", {"lighting.glsl", "mesh.frag"}})
    , textured_(gl, {"mesh.vert", {"lighting.glsl", "mesh.frag"}, "TEXTURES"})
    , edges_(gl, {"edge.vert", {"edge.frag"}})
    , lines_(gl, {"line.vert", {"line.frag"}})
    , depths_(gl, {"depth.vert", {"depth.frag"}}) {
    gl.glGetFloatv(GL_ALIASED_LINE_WIDTH_RANGE, lineWidths_.data());
}

void SurfacePainter::begin(GlProgram& program, const SceneBuffers& scene, const View& view) const {
    program.use();
    program.set("viewProjection", view.camera.viewProjection);
    program.set("eye", view.camera.eye);
    program.set("clip", view.clip);
    program.set("highlightColor", linearOf(view.look.highlight));
    view.lighting.apply(program, scene.origin());
}

void SurfacePainter::drawSolid(const SceneBuffers& scene, const View& view) {
    gl_.glEnable(GL_POLYGON_OFFSET_FILL); // makes room for the edges
    gl_.glPolygonOffset(1.0F, 1.0F);
    gl_.glDisable(GL_BLEND);
    drawSurfaces(scene, view, false);
    gl_.glDisable(GL_POLYGON_OFFSET_FILL);
}

void SurfacePainter::drawClear(const SceneBuffers& scene, const View& view) {
    gl_.glEnable(GL_BLEND);
    gl_.glBlendFunc(GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
    gl_.glDepthMask(GL_FALSE);
    drawSurfaces(scene, view, true);
    gl_.glDepthMask(GL_TRUE);
}

void SurfacePainter::drawSurfaces(const SceneBuffers& scene, const View& view, bool clear) {
    for (GlProgram* program : {&plain_, &textured_}) {
        bool begun = false;
        for (const Batch& batch : scene.batches()) {
            const bool mine = batch.surface.isClear() == clear &&
                              batch.surface.hasTextures() == (program == &textured_);
            if (!mine || isOutside(batch.box, scene.origin(), view.camera.viewProjection))
                continue;
            if (!begun)
                begin(*program, scene, view);
            begun = true;
            batch.surface.apply(*program, gl_);
            program->set("hasNormals", batch.mesh->normals != 0 ? 1 : 0);
            drawTriangles(batch);
        }
    }
}

void SurfacePainter::drawTriangles(const Batch& batch) const {
    constexpr GLuint normal = 1;
    constexpr GLuint color = 4;
    // What a mesh lacks has one value for all vertices.
    gl_.glVertexAttrib3f(normal, 0.0F, 0.0F, 0.0F);
    gl_.glVertexAttrib4f(color, 1.0F, 1.0F, 1.0F, 1.0F);
    gl_.glBindVertexArray(batch.array.name());
    gl_.glDrawElementsInstanced(GL_TRIANGLES, batch.mesh->triangleIndices, GL_UNSIGNED_INT, nullptr,
                                batch.instances);
}

void SurfacePainter::setLineWidth(float deviceIndependent, const ViewerLook& look) const {
    gl_.glLineWidth(
        std::clamp(deviceIndependent * look.pixelRatio, lineWidths_[0], lineWidths_[1]));
}

void SurfacePainter::drawEdges(const SceneBuffers& scene, const View& view) {
    gl_.glEnable(GL_BLEND);
    gl_.glBlendFunc(GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
    constexpr float edgeWidth = 0.9F;
    setLineWidth(edgeWidth, view.look);
    edges_.use();
    edges_.set("viewProjection", view.camera.viewProjection);
    edges_.set("pixelsByMm", view.camera.pixelsByMm / view.look.pixelRatio);
    edges_.set("highlightEdgeColor", view.look.highlightEdge);
    for (const Batch& batch : scene.batches()) {
        if (batch.mesh->edgeIndices == 0 ||
            isOutside(batch.box, scene.origin(), view.camera.viewProjection))
            continue;
        edges_.set("spacing", batch.mesh->edgeSpacing);
        edges_.set("edgeColor", batch.surface.isDark() ? view.look.edgeOnDark : view.look.edge);
        gl_.glBindVertexArray(batch.array.name());
        gl_.glDrawElementsInstanced(
            GL_LINES, batch.mesh->edgeIndices, GL_UNSIGNED_INT,
            reinterpret_cast<const void*>(batch.mesh->edgeOffset), // NOLINT: OpenGL's way
            batch.instances);
    }
}

void SurfacePainter::drawLines(const SceneBuffers& scene, const View& view) {
    constexpr float dash = 5.0F; // device-independent pixels
    gl_.glEnable(GL_BLEND);
    gl_.glBlendFunc(GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
    lines_.use();
    lines_.set("viewProjection", view.camera.viewProjection);
    lines_.set("halfSize", view.camera.halfSize);
    for (const LineBatch& batch : scene.lines()) {
        setLineWidth(batch.thickness, view.look);
        lines_.set("dash", batch.dashed ? dash * view.look.pixelRatio : 0.0F);
        gl_.glBindVertexArray(batch.array.name());
        gl_.glDrawArrays(GL_LINES, 0, batch.count);
    }
}

void SurfacePainter::drawDepths(const SceneBuffers& scene, const Matrix4& viewProjection) {
    depths_.use();
    depths_.set("viewProjection", viewProjection);
    for (const Batch& batch : scene.batches())
        if (!batch.surface.isClear())
            drawTriangles(batch);
}

} // namespace qor::desktop

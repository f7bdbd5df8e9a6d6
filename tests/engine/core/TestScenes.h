#pragma once

#include "workbench/engine/core/Render.h"

/// Small scenes whose pictures are known beforehand.
namespace qor::engine::testing {

/// A sphere around the origin, of latitude and longitude triangles, with normals unless \p smooth
/// is false.
MeshPtr sphere(float radius, int segments, bool smooth = true);
/// corner, corner + u, corner + u + v, corner + v, with texture coordinates; faces cross(u, v).
MeshPtr quad(const Vec3& corner, const Vec3& u, const Vec3& v);
/// The box between two corners, flat.
MeshPtr box(const Vec3& lower, const Vec3& upper);

/// Nothing but the Lambertian lobe.
Material diffuse(const Color& albedo);
/// A perfect mirror of a metal.
Material mirror(const Color& reflectance);
Material glass(float ior);

/// Instances of \p meshes, the first with material 0, and so on.
AssemblyPtr assemblyOf(const std::vector<MeshPtr>& meshes);
/// A scene of \p meshes and the material of each.
Scene sceneOf(const std::vector<MeshPtr>& meshes, const std::vector<Material>& materials);

/// Adds something see-through that nobody sees: paths are then followed one by one.
void goTheLongWay(Scene& scene);

/// A constant environment.
Environment constant(float radiance);
/// Looks at the origin from \p eye.
Camera lookFrom(const Vec3& eye, float fovDeg = 40.0F);
/// A square picture of \p size with \p samples in each pixel.
RenderOptions plainOptions(int size, int samples);

/// The picture, or a failed test.
Image rendered(const Scene& scene, const Camera& camera, const RenderOptions& options);
/// Mean over all pixels of the squared relative errors of luminance.
double relativeError(const Image& image, const Image& reference);
/// Mean of one channel over a rectangle of pixels.
double meanOf(const Image& image, int x0, int y0, int x1, int y1, int channel = 0);

} // namespace qor::engine::testing

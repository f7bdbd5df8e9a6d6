#include "workbench/import/shape/Tessellation.h"

#include "workbench/import/shape/FaceTriangles.h"

#include <BRepBndLib.hxx>
#include <BRepMesh_IncrementalMesh.hxx>
#include <Bnd_Box.hxx>
#include <IMeshTools_Parameters.hxx>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace qor::import {

using document::Mesh;
using document::none;

namespace {

constexpr double smallestDeflectionMm = 1e-6;

double deflectionFor(const TopoDS_Shape& shape, const ImportSettings& settings) {
    if (settings.deflectionMm > 0)
        return settings.deflectionMm;
    Bnd_Box box;
    BRepBndLib::Add(shape, box);
    if (box.IsVoid() || box.IsOpen())
        return 0.1;
    const double diagonal = std::sqrt(box.SquareExtent());
    return std::max(smallestDeflectionMm, diagonal * relativeDeflection);
}

void makeTriangles(const TopoDS_Shape& shape, const ImportSettings& settings) {
    IMeshTools_Parameters parameters;
    parameters.Deflection = deflectionFor(shape, settings);
    parameters.Angle = settings.angleDeg * std::numbers::pi / 180;
    parameters.InParallel = true;
    parameters.AllowQualityDecrease = true;
    const BRepMesh_IncrementalMesh mesher(shape, parameters);
}

// A face with the index of its material.
struct Painted {
    const TopoDS_Face* face;
    std::int32_t material;
};

std::vector<Painted> sortedByMaterial(const StyledPart& part, const MaterialOf& materialOf) {
    std::vector<Painted> painted;
    painted.reserve(part.faces.size());
    for (const StyledFace& styled : part.faces)
        painted.push_back({&styled.face, styled.color ? materialOf(*styled.color) : none});
    std::stable_sort(painted.begin(), painted.end(),
                     [](const Painted& a, const Painted& b) { return a.material < b.material; });
    return painted;
}

void extendGroups(Mesh& mesh, std::int32_t material) {
    const auto end = static_cast<std::uint32_t>(mesh.indices.size());
    const std::uint32_t begin =
        mesh.groups.empty() ? 0 : mesh.groups.back().firstIndex + mesh.groups.back().indexCount;
    if (begin == end)
        return;
    if (mesh.groups.empty() || mesh.groups.back().material != material)
        mesh.groups.push_back({begin, end - begin, material});
    else
        mesh.groups.back().indexCount += end - begin;
}

} // namespace

Mesh tessellate(const TopoDS_Shape& shape,
                const StyledPart& part,
                const ImportSettings& settings,
                const MaterialOf& materialOf,
                ImportReport& report) {
    report.inLibrary([&] { makeTriangles(shape, settings); });
    Mesh mesh;
    FaceTriangles faces(mesh, report);
    for (const Painted& painted : sortedByMaterial(part, materialOf)) {
        faces.append(*painted.face);
        extendGroups(mesh, painted.material);
    }
    if (faces.missing() > 0)
        report.warn(std::to_string(faces.missing()) + " faces of a part could not be meshed");
    return mesh;
}

} // namespace qor::import

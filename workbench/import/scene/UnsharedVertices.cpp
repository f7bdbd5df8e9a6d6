#include "workbench/import/scene/UnsharedVertices.h"

#include <vector>

namespace qor::import {

namespace {

template <typename T>
void spread(T*& values, const std::vector<unsigned>& from) {
    if (values == nullptr)
        return;
    // Assimp's meshes own plain arrays.
    auto* spreadValues = new T[from.size()];
    for (std::size_t i = 0; i < from.size(); ++i)
        spreadValues[i] = values[from[i]];
    delete[] values;
    values = spreadValues;
}

} // namespace

void unshareVertices(aiMesh& mesh) {
    std::vector<unsigned> from;
    for (unsigned f = 0; f < mesh.mNumFaces; ++f) {
        aiFace& face = mesh.mFaces[f];
        for (unsigned i = 0; i < face.mNumIndices; ++i) {
            from.push_back(face.mIndices[i] < mesh.mNumVertices ? face.mIndices[i] : 0);
            face.mIndices[i] = static_cast<unsigned>(from.size() - 1);
        }
    }
    spread(mesh.mVertices, from);
    for (auto& colors : mesh.mColors)
        spread(colors, from);
    for (auto& coordinates : mesh.mTextureCoords)
        spread(coordinates, from);
    mesh.mNumVertices = static_cast<unsigned>(from.size());
}

} // namespace qor::import

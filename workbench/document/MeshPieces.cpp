#include "workbench/document/MeshPieces.h"

#include <algorithm>
#include <utility>

namespace qor::document {

namespace {

constexpr std::uint32_t unused = 0xFFFFFFFFU;

/// Copies the vertices that it is asked for into a mesh of its own, each once.
class Extractor {
public:
    explicit Extractor(const Mesh& source)
        : source_(source), numbers_(source.vertexCount(), unused) {}

    /// Begins a new mesh.
    void begin() {
        for (const std::uint32_t vertex : taken_)
            numbers_[vertex] = unused;
        taken_.clear();
    }

    [[nodiscard]] bool has(std::uint32_t vertex) const { return numbers_[vertex] != unused; }

    std::uint32_t numberOf(std::uint32_t vertex) {
        if (!has(vertex)) {
            numbers_[vertex] = static_cast<std::uint32_t>(taken_.size());
            taken_.push_back(vertex);
        }
        return numbers_[vertex];
    }

    void copyVertices(QorMesh::Data& data) const {
        data.positions = gather(source_.positions, 3);
        data.normals = gather(source_.normals, 3);
        data.textureUv = gather(source_.uv0, 2);
        data.textureUv2 = gather(source_.uv1, 2);
        data.colors = gather(source_.colors, 4);
    }

private:
    template <typename T>
    std::vector<T> gather(const std::vector<T>& from, std::size_t width) const {
        std::vector<T> to;
        if (from.empty())
            return to;
        to.reserve(taken_.size() * width);
        for (const std::uint32_t vertex : taken_)
            to.insert(to.end(), from.begin() + static_cast<std::ptrdiff_t>(vertex * width),
                      from.begin() + static_cast<std::ptrdiff_t>((vertex + 1) * width));
        return to;
    }

    const Mesh& source_;
    std::vector<std::uint32_t> numbers_; ///< of a vertex in the mesh that is being made
    std::vector<std::uint32_t> taken_;
};

MeshPiece wholeMesh(Mesh& mesh) {
    QorMesh::Data data{.positions = std::move(mesh.positions),
                       .normals = std::move(mesh.normals),
                       .textureUv = std::move(mesh.uv0),
                       .textureUv2 = std::move(mesh.uv1),
                       .colors = std::move(mesh.colors),
                       .indices = std::move(mesh.indices),
                       .edges = std::move(mesh.edges)};
    const std::int32_t material = mesh.groups.empty() ? none : mesh.groups.front().material;
    return {QorMake<QorMesh>(std::move(data)), material};
}

void takeTriangles(const Mesh& mesh,
                   const MeshGroup& group,
                   Extractor& extractor,
                   QorMesh::Data& data) {
    data.indices.reserve(group.indexCount);
    for (std::uint32_t i = 0; i < group.indexCount; ++i)
        data.indices.push_back(extractor.numberOf(mesh.indices[group.firstIndex + i]));
}

/// Moves the edges that lie in the piece, or all that are left, from \p left to \p data.
void takeEdges(std::vector<std::uint32_t>& left,
               bool all,
               Extractor& extractor,
               QorMesh::Data& data) {
    std::size_t kept = 0;
    for (std::size_t i = 0; i + 1 < left.size(); i += 2) {
        const std::uint32_t from = left[i];
        const std::uint32_t to = left[i + 1];
        if (all || (extractor.has(from) && extractor.has(to))) {
            data.edges.push_back(extractor.numberOf(from));
            data.edges.push_back(extractor.numberOf(to));
        } else {
            left[kept++] = from;
            left[kept++] = to;
        }
    }
    left.resize(kept);
}

std::vector<MeshPiece> split(const Mesh& mesh) {
    Extractor extractor(mesh);
    std::vector<std::uint32_t> edges = mesh.edges;
    std::vector<MeshPiece> pieces;
    for (const MeshGroup& group : mesh.groups) {
        extractor.begin();
        QorMesh::Data data;
        takeTriangles(mesh, group, extractor, data);
        takeEdges(edges, &group == &mesh.groups.back(), extractor, data);
        extractor.copyVertices(data);
        pieces.push_back({QorMake<QorMesh>(std::move(data)), group.material});
    }
    return pieces;
}

template <typename T>
void append(std::vector<T>& to, const std::vector<T>& from) {
    to.insert(to.end(), from.begin(), from.end());
}

void appendShifted(std::vector<std::uint32_t>& to,
                   const std::vector<std::uint32_t>& from,
                   std::uint32_t by) {
    to.reserve(to.size() + from.size());
    std::transform(from.begin(), from.end(), std::back_inserter(to),
                   [by](std::uint32_t index) { return index + by; });
}

void appendPiece(Mesh& mesh, const MeshPiece& piece) {
    const QorMesh::Data& data = piece.mesh->GetData();
    const auto firstVertex = static_cast<std::uint32_t>(mesh.vertexCount());
    const auto firstIndex = static_cast<std::uint32_t>(mesh.indices.size());
    append(mesh.positions, data.positions);
    append(mesh.normals, data.normals);
    append(mesh.uv0, data.textureUv);
    append(mesh.uv1, data.textureUv2);
    append(mesh.colors, data.colors);
    appendShifted(mesh.indices, data.indices, firstVertex);
    appendShifted(mesh.edges, data.edges, firstVertex);
    mesh.groups.push_back(
        {firstIndex, static_cast<std::uint32_t>(data.indices.size()), piece.material});
}

} // namespace

MeshPieces piecesOf(Mesh mesh) {
    MeshPieces result;
    result.name = std::move(mesh.name);
    if (mesh.groups.size() < 2)
        result.pieces.push_back(wholeMesh(mesh));
    else
        result.pieces = split(mesh);
    return result;
}

Mesh meshOf(const MeshPieces& pieces) {
    Mesh mesh;
    mesh.name = pieces.name;
    for (const MeshPiece& piece : pieces.pieces)
        appendPiece(mesh, piece);
    return mesh;
}

} // namespace qor::document

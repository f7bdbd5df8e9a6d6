#include "workbench/document/product/tables/Bytes.h"
#include "workbench/document/product/tables/Database.h"
#include "workbench/document/product/tables/Load.h"
#include "workbench/document/product/tables/RowReader.h"

#include <array>
#include <string>
#include <utility>

namespace qor::document::tables {

namespace {

// A per-vertex or per-triangle array of a mesh: its column, its element and what it may be long.
template <typename T>
struct Stream {
    const char* column;
    std::vector<T> Mesh::*values;
    std::uint64_t perVertex; ///< elements a vertex; 0: as its own rule says
};

constexpr auto floatStreams = std::to_array<Stream<float>>({{"positions", &Mesh::positions, 3},
                                                            {"normals", &Mesh::normals, 3},
                                                            {"uv0", &Mesh::uv0, 2},
                                                            {"uv1", &Mesh::uv1, 2}});
constexpr Stream<std::uint8_t> colorStream{"colors", &Mesh::colors, 4};
constexpr Stream<std::uint32_t> indexStream{"indices", &Mesh::indices, 0};
constexpr Stream<std::uint32_t> edgeStream{"edges", &Mesh::edges, 0};

// What a row of product_mesh claims, before any of its blobs is read.
struct MeshClaim {
    std::uint64_t vertices = 0;
    std::uint64_t triangles = 0;
    std::array<std::uint64_t, 7> bytes{}; ///< of the blobs in the table's order
};

void expectLength(const char* column, std::uint64_t bytes, std::uint64_t expected) {
    if (bytes != expected)
        damaged(std::string("a mesh with ") + std::to_string(bytes) + " bytes of " + column +
                " instead of " + std::to_string(expected));
}

void checkClaim(const MeshClaim& claim) {
    expectLength("positions", claim.bytes[0], claim.vertices * 12);
    constexpr std::array<std::pair<const char*, std::uint64_t>, 4> optional{
        {{"normals", 12}, {"uv0", 8}, {"uv1", 8}, {"colors", 4}}};
    for (std::size_t i = 0; i < optional.size(); ++i)
        if (claim.bytes[i + 1] != 0)
            expectLength(optional[i].first, claim.bytes[i + 1],
                         claim.vertices * optional[i].second);
    expectLength("indices", claim.bytes[5], claim.triangles * 12);
    if (claim.bytes[6] % 8 != 0)
        damaged("a mesh with half an edge");
}

MeshClaim claimOf(const Statement& row) {
    MeshClaim claim;
    claim.vertices = count(row, 2);
    claim.triangles = count(row, 3);
    int column = 4;
    for (std::uint64_t& bytes : claim.bytes)
        bytes = static_cast<std::uint64_t>(row.integer(column++));
    return claim;
}

std::vector<MeshClaim> loadClaims(sqlite3* database, const LoadLimits& limits, Product& product) {
    // length() of a blob column is answered from the row's header, the blob itself is not read.
    Statement select(database,
                     "SELECT id, name, vertices, triangles, length(positions), length(normals), "
                     "length(uv0), length(uv1), length(colors), length(indices), length(edges) "
                     "FROM product_mesh ORDER BY id");
    std::vector<MeshClaim> claims;
    std::uint64_t total = 0;
    while (select.step()) {
        expectRow("product_mesh", select.integer(0), claims.size());
        claims.push_back(claimOf(select));
        checkClaim(claims.back());
        for (const std::uint64_t bytes : claims.back().bytes)
            total += bytes;
        if (total > limits.fileSize)
            damaged("meshes that claim more bytes than the file has");
        product.meshes.emplace_back().name = select.text(1);
    }
    return claims;
}

template <typename T>
class StreamReader {
public:
    StreamReader(sqlite3* database, const Stream<T>& stream)
        : stream_(stream), reader_(database, "product_mesh", stream.column) {}

    void read(std::int64_t row, std::uint64_t bytes, Mesh& mesh) {
        if (bytes == 0)
            return;
        std::vector<T>& values = mesh.*stream_.values;
        values.resize(bytes / sizeof(T));
        reader_.read(row, writableBytesOf(values));
    }

private:
    const Stream<T>& stream_;
    BlobReader reader_;
};

void loadGroups(sqlite3* database, Product& product) {
    Statement select(database, "SELECT mesh, position, first_index, index_count, material "
                               "FROM product_mesh_group ORDER BY mesh, position");
    while (select.step()) {
        const std::int32_t mesh = reference(select, 0);
        if (mesh < 0 || static_cast<std::size_t>(mesh) >= product.meshes.size())
            damaged("a group of no mesh");
        std::vector<MeshGroup>& groups = product.meshes[mesh].groups;
        expectRow("product_mesh_group", select.integer(1), groups.size());
        groups.push_back({count(select, 2), count(select, 3), reference(select, 4)});
    }
}

} // namespace

void loadMeshes(sqlite3* database,
                const LoadLimits& limits,
                const ProductProgress& progress,
                Product& product) {
    const std::vector<MeshClaim> claims = loadClaims(database, limits, product);
    std::array<StreamReader<float>, 4> floats{{{database, floatStreams[0]},
                                               {database, floatStreams[1]},
                                               {database, floatStreams[2]},
                                               {database, floatStreams[3]}}};
    StreamReader colors(database, colorStream);
    StreamReader indices(database, indexStream);
    StreamReader edges(database, edgeStream);
    for (std::size_t i = 0; i < claims.size(); ++i) {
        const auto row = static_cast<std::int64_t>(i);
        Mesh& mesh = product.meshes[i];
        for (std::size_t stream = 0; stream < floats.size(); ++stream)
            floats[stream].read(row, claims[i].bytes[stream], mesh);
        colors.read(row, claims[i].bytes[4], mesh);
        indices.read(row, claims[i].bytes[5], mesh);
        edges.read(row, claims[i].bytes[6], mesh);
        if (progress)
            progress(static_cast<double>(i + 1) / static_cast<double>(claims.size()));
    }
    loadGroups(database, product);
}

} // namespace qor::document::tables

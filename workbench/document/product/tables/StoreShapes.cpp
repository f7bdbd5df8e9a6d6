#include "workbench/document/product/tables/Bytes.h"
#include "workbench/document/product/tables/Database.h"
#include "workbench/document/product/tables/MaterialColumns.h"
#include "workbench/document/product/tables/Store.h"

namespace qor::document::tables {

namespace {

void storeTextureUse(Statement& insert,
                     std::int64_t material,
                     const char* slot,
                     const TextureUse& use) {
    insert.bind(1, material);
    insert.bind(2, std::string_view(slot));
    insert.bind(3, std::int64_t{use.texture});
    insert.bind(4, std::int64_t{use.uvSet});
    insert.bind(5, use.offset[0]);
    insert.bind(6, use.offset[1]);
    insert.bind(7, use.scale[0]);
    insert.bind(8, use.scale[1]);
    insert.bind(9, use.rotation);
    insert.bind(10, static_cast<std::int64_t>(use.wrapU));
    insert.bind(11, static_cast<std::int64_t>(use.wrapV));
    insert.run();
}

std::string materialInsert() {
    std::string sql = "INSERT INTO product_material VALUES(?,?,?,?,?";
    for (std::size_t i = 0; i < materialColumns().size(); ++i)
        sql += ",?";
    return sql + ")";
}

void storeMesh(Statement& insert, std::int64_t id, const Mesh& mesh) {
    insert.bind(1, id);
    insert.bind(2, std::string_view(mesh.name));
    insert.bind(3, static_cast<std::int64_t>(mesh.vertexCount()));
    insert.bind(4, static_cast<std::int64_t>(mesh.triangleCount()));
    insert.bind(5, bytesOf(mesh.positions));
    insert.bind(6, bytesOf(mesh.normals));
    insert.bind(7, bytesOf(mesh.uv0));
    insert.bind(8, bytesOf(mesh.uv1));
    insert.bind(9, bytesOf(mesh.colors));
    insert.bind(10, bytesOf(mesh.indices));
    insert.bind(11, bytesOf(mesh.edges));
    insert.run();
}

void storeGroups(Statement& insert, std::int64_t id, const Mesh& mesh) {
    for (std::size_t i = 0; i < mesh.groups.size(); ++i) {
        const MeshGroup& group = mesh.groups[i];
        insert.bind(1, id);
        insert.bind(2, static_cast<std::int64_t>(i));
        insert.bind(3, std::int64_t{group.firstIndex});
        insert.bind(4, std::int64_t{group.indexCount});
        insert.bindReference(5, group.material);
        insert.run();
    }
}

} // namespace

void storeTextures(sqlite3* database, std::size_t count, ArraySource& arrays) {
    Statement insert(database, "INSERT INTO product_texture VALUES(?,?,?,?,?)");
    for (std::size_t i = 0; i < count; ++i) {
        const Texture& texture = arrays.texture(i);
        insert.bind(1, static_cast<std::int64_t>(i));
        insert.bind(2, std::string_view(texture.name));
        insert.bind(3, std::int64_t{texture.width});
        insert.bind(4, std::int64_t{texture.height});
        insert.bind(5, bytesOf(texture.pixels));
        insert.run();
    }
}

void storeMaterials(sqlite3* database, const Product& product) {
    Statement insert(database, materialInsert());
    Statement insertUse(database,
                        "INSERT INTO product_material_texture VALUES(?,?,?,?,?,?,?,?,?,?,?)");
    for (std::size_t i = 0; i < product.materials.size(); ++i) {
        Material material = product.materials[i];
        insert.bind(1, static_cast<std::int64_t>(i));
        insert.bind(2, std::string_view(material.name));
        insert.bind(3, static_cast<std::int64_t>(material.alphaMode));
        insert.bind(4, std::int64_t{material.doubleSided});
        insert.bind(5, std::int64_t{material.unlit});
        int parameter = 6;
        for (const MaterialColumn& column : materialColumns())
            insert.bind(parameter++, column.value(material));
        insert.run();
        for (std::size_t slot = 0; slot < textureSlotCount; ++slot)
            if (const auto& use = material.textures[slot])
                storeTextureUse(insertUse, static_cast<std::int64_t>(i), textureSlotNames()[slot],
                                *use);
    }
}

void storeMeshes(sqlite3* database,
                 std::size_t count,
                 ArraySource& arrays,
                 const ProductProgress& progress) {
    Statement insert(database, "INSERT INTO product_mesh VALUES(?,?,?,?,?,?,?,?,?,?,?)");
    Statement insertGroup(database, "INSERT INTO product_mesh_group VALUES(?,?,?,?,?)");
    for (std::size_t i = 0; i < count; ++i) {
        const auto id = static_cast<std::int64_t>(i);
        const Mesh& mesh = arrays.mesh(i);
        storeMesh(insert, id, mesh);
        storeGroups(insertGroup, id, mesh);
        if (progress)
            progress(static_cast<double>(i + 1) / static_cast<double>(count));
    }
}

} // namespace qor::document::tables

#include "workbench/document/product/tables/Schema.h"

#include "workbench/document/product/tables/Database.h"
#include "workbench/document/product/tables/MaterialColumns.h"

#include <sqlite3.h>

#include <vector>

namespace qor::document::tables {

namespace {

std::string materialSql() {
    std::string sql = "CREATE TABLE product_material(id INTEGER PRIMARY KEY, name TEXT NOT NULL, "
                      "alpha_mode INTEGER NOT NULL, double_sided INTEGER NOT NULL, "
                      "unlit INTEGER NOT NULL";
    for (const MaterialColumn& column : materialColumns())
        sql += std::string(", ") + column.name + " REAL NOT NULL";
    return sql + ")";
}

// Rows are numbered from 0 by their place in Product's vectors; a NULL reference is `none`. Blobs
// stand last in their rows, so that the short columns are read without touching them. A parent's
// number is below its child's, so that no tree in a file is cyclic; a reference of the table to
// itself would make emptying it quadratic.
std::vector<Table> makeTables() {
    return {
        {"product_info", "CREATE TABLE product_info(key TEXT PRIMARY KEY, value) WITHOUT ROWID"},
        {"product_texture",
         "CREATE TABLE product_texture(id INTEGER PRIMARY KEY, name TEXT NOT NULL, "
         "width INTEGER NOT NULL, height INTEGER NOT NULL, pixels BLOB NOT NULL)"},
        {"product_material", materialSql()},
        {"product_material_texture",
         "CREATE TABLE product_material_texture(material INTEGER NOT NULL REFERENCES "
         "product_material(id), slot TEXT NOT NULL, texture INTEGER NOT NULL REFERENCES "
         "product_texture(id), uv_set INTEGER NOT NULL, offset_u REAL NOT NULL, "
         "offset_v REAL NOT NULL, scale_u REAL NOT NULL, scale_v REAL NOT NULL, "
         "rotation REAL NOT NULL, wrap_u INTEGER NOT NULL, wrap_v INTEGER NOT NULL, "
         "PRIMARY KEY(material, slot)) WITHOUT ROWID"},
        {"product_mesh",
         "CREATE TABLE product_mesh(id INTEGER PRIMARY KEY, name TEXT NOT NULL, "
         "vertices INTEGER NOT NULL, triangles INTEGER NOT NULL, positions BLOB NOT NULL, "
         "normals BLOB NOT NULL, uv0 BLOB NOT NULL, uv1 BLOB NOT NULL, colors BLOB NOT NULL, "
         "indices BLOB NOT NULL, edges BLOB NOT NULL)"},
        {"product_mesh_group",
         "CREATE TABLE product_mesh_group(mesh INTEGER NOT NULL REFERENCES product_mesh(id), "
         "position INTEGER NOT NULL, first_index INTEGER NOT NULL, index_count INTEGER NOT NULL, "
         "material INTEGER REFERENCES product_material(id), PRIMARY KEY(mesh, position)) "
         "WITHOUT ROWID"},
        {"product_part", "CREATE TABLE product_part(id INTEGER PRIMARY KEY, name TEXT NOT NULL, "
                         "mesh INTEGER REFERENCES product_mesh(id), "
                         "material INTEGER REFERENCES product_material(id))"},
        {"product_node",
         "CREATE TABLE product_node(id INTEGER PRIMARY KEY, name TEXT NOT NULL, "
         "parent INTEGER CHECK(parent < id), part INTEGER REFERENCES product_part(id), "
         "material INTEGER REFERENCES product_material(id), visible INTEGER NOT NULL, "
         "transform BLOB)"},
        {"product_camera",
         "CREATE TABLE product_camera(id INTEGER PRIMARY KEY, name TEXT NOT NULL, "
         "node INTEGER REFERENCES product_node(id), perspective INTEGER NOT NULL, "
         "numbers BLOB NOT NULL)"},
        {"product_light", "CREATE TABLE product_light(id INTEGER PRIMARY KEY, name TEXT NOT NULL, "
                          "node INTEGER REFERENCES product_node(id), kind INTEGER NOT NULL, "
                          "numbers BLOB NOT NULL)"},
        {"product_animation",
         "CREATE TABLE product_animation(id INTEGER PRIMARY KEY, name TEXT NOT NULL)"},
        {"product_track",
         "CREATE TABLE product_track(id INTEGER PRIMARY KEY, "
         "animation INTEGER NOT NULL REFERENCES product_animation(id), "
         "node INTEGER NOT NULL REFERENCES product_node(id), target INTEGER NOT NULL, "
         "interpolation INTEGER NOT NULL, times BLOB NOT NULL, key_values BLOB NOT NULL)"},
    };
}

std::string storedSql(sqlite3* database, const char* table) {
    Statement select(
        database,
        "SELECT sql FROM sqlite_schema WHERE name = ?1 COLLATE NOCASE AND type = 'table'");
    select.bind(1, std::string_view(table));
    return select.step() ? select.text(0) : std::string();
}

} // namespace

std::span<const Table> productTables() {
    static const std::vector<Table> tables = makeTables();
    return tables;
}

bool hasProductTables(sqlite3* database) {
    return !storedSql(database, productTables().front().name).empty();
}

void checkProductTables(sqlite3* database) {
    for (const Table& table : productTables())
        if (storedSql(database, table.name) != table.sql)
            throw DatabaseError(SQLITE_CORRUPT, std::string("its table ") + table.name +
                                                    " is missing or not as this program makes it");
}

void resetProductTables(sqlite3* database) {
    if (!hasProductTables(database)) {
        for (const Table& table : productTables())
            execute(database, table.sql);
        return;
    }
    checkProductTables(database);
    const std::span<const Table> tables = productTables();
    for (auto table = tables.rbegin(); table != tables.rend(); ++table)
        execute(database, std::string("DELETE FROM ") + table->name);
}

} // namespace qor::document::tables

#include "workbench/document/file/DocumentTables.h"

#include "workbench/document/product/tables/Database.h"

#include <sqlite3.h>

#include <array>

namespace qor::document {

using tables::Statement;

namespace {

constexpr const char* infoTable = "document_info";

struct TableText {
    const char* name;
    const char* sql;
};

// A file whose stored statements differ was not written by this program. An attribute has a row an
// item: one, or of a list of references one a reference, and one of target 0 for an empty list.
constexpr std::array tableTexts{
    TableText{infoTable, "CREATE TABLE document_info(key TEXT PRIMARY KEY, value) WITHOUT ROWID"},
    TableText{"scene_object",
              "CREATE TABLE scene_object(id INTEGER PRIMARY KEY, kind TEXT NOT NULL, "
              "name TEXT NOT NULL, material INTEGER)"},
    TableText{"scene_attribute",
              "CREATE TABLE scene_attribute(object INTEGER NOT NULL REFERENCES scene_object(id), "
              "position INTEGER NOT NULL, item INTEGER NOT NULL, attribute TEXT NOT NULL, "
              "type INTEGER NOT NULL, a, b, c, PRIMARY KEY(object, position, item)) WITHOUT "
              "ROWID"}};

std::string storedSql(sqlite3* database, const char* table) {
    Statement select(
        database,
        "SELECT sql FROM sqlite_schema WHERE name = ?1 COLLATE NOCASE AND type = 'table'");
    select.bind(1, std::string_view(table));
    return select.step() ? select.text(0) : std::string();
}

void storeInfo(sqlite3* database, const DocumentInfo& info) {
    Statement insert(database, "INSERT INTO document_info VALUES(?,?)");
    const auto put = [&](const char* key, const auto& value) {
        insert.bind(1, std::string_view(key));
        insert.bind(2, value);
        insert.run();
    };
    put("tables_version", std::int64_t{documentTablesVersion});
    put("title", std::string_view(info.title));
    put("saved_at", info.savedAt);
    if (!info.recoveryPath.empty())
        put("recovery_path", std::string_view(info.recoveryPath.native()));
}

/// Rows of scene_attribute.
class AttributeTable {
public:
    explicit AttributeTable(sqlite3* database)
        : insert_(database, "INSERT INTO scene_attribute VALUES(?,?,?,?,?,?,?,?)") {}

    void put(std::int64_t object, std::int64_t position, const SceneAttribute& attribute) {
        begin(object, position, 0, attribute);
        switch (attribute.type) {
        case SceneType::Integer:
        case SceneType::Boolean:
            insert_.bind(6, attribute.integer);
            break;
        case SceneType::Text:
            insert_.bind(6, std::string_view(attribute.text));
            break;
        case SceneType::Real:
        case SceneType::Color:
        case SceneType::Point:
            for (int i = 0; i < 3; ++i)
                insert_.bind(6 + i, attribute.numbers[static_cast<std::size_t>(i)]);
            break;
        case SceneType::Reference:
        case SceneType::References:
            return putReferences(object, position, attribute);
        }
        insert_.run();
    }

private:
    void begin(std::int64_t object,
               std::int64_t position,
               std::int64_t item,
               const SceneAttribute& attribute) {
        insert_.bind(1, object);
        insert_.bind(2, position);
        insert_.bind(3, item);
        insert_.bind(4, std::string_view(attribute.name));
        insert_.bind(5, static_cast<std::int64_t>(attribute.type));
        for (const int column : {6, 7, 8})
            insert_.bindNull(column);
    }

    void
    putReferences(std::int64_t object, std::int64_t position, const SceneAttribute& attribute) {
        std::vector<SceneReference> references = attribute.references;
        if (references.empty())
            references.emplace_back();
        std::int64_t item = 0;
        for (const SceneReference& reference : references) {
            begin(object, position, item++, attribute);
            insert_.bind(6, static_cast<std::int64_t>(reference.target));
            insert_.bindReference(7, reference.index);
            insert_.run();
        }
    }

    Statement insert_;
};

void storeScene(sqlite3* database, const SceneRows& scene) {
    Statement insert(database, "INSERT INTO scene_object VALUES(?,?,?,?)");
    AttributeTable attributes(database);
    std::int64_t id = 0;
    for (const SceneRow& row : scene) {
        insert.bind(1, id);
        insert.bind(2, std::string_view(row.kind));
        insert.bind(3, std::string_view(row.name));
        insert.bindReference(4, row.material);
        insert.run();
        std::int64_t position = 0;
        for (const SceneAttribute& attribute : row.attributes)
            attributes.put(id, position++, attribute);
        ++id;
    }
}

std::optional<std::string> infoText(sqlite3* database, const char* key) {
    Statement select(database, "SELECT value FROM document_info WHERE key = ?1");
    select.bind(1, std::string_view(key));
    if (!select.step())
        return std::nullopt;
    return select.text(0);
}

std::int64_t infoNumber(sqlite3* database, const char* key) {
    Statement select(database, "SELECT value FROM document_info WHERE key = ?1");
    select.bind(1, std::string_view(key));
    return select.step() ? select.integer(0) : 0;
}

} // namespace

void checkDocumentTables(sqlite3* database) {
    for (const TableText& table : tableTexts)
        if (storedSql(database, table.name) != table.sql)
            throw tables::DatabaseError(SQLITE_CORRUPT,
                                        std::string("its table ") + table.name +
                                            " is missing or not as this program makes it");
}

void storeDocumentTables(sqlite3* database, const DocumentInfo& info, const SceneRows& scene) {
    for (const TableText& table : tableTexts)
        tables::execute(database, table.sql);
    storeInfo(database, info);
    storeScene(database, scene);
}

bool hasDocumentTables(sqlite3* database) {
    return !storedSql(database, infoTable).empty();
}

std::int64_t documentTablesVersionOf(sqlite3* database) {
    return infoNumber(database, "tables_version");
}

DocumentInfo loadDocumentInfo(sqlite3* database) {
    DocumentInfo info;
    info.title = infoText(database, "title").value_or("");
    info.recoveryPath = infoText(database, "recovery_path").value_or("");
    info.savedAt = infoNumber(database, "saved_at");
    return info;
}

} // namespace qor::document

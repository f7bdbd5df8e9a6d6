// Any bytes as a document file: its own tables are refused, or give rows whose references lead
// somewhere and whose numbers are numbers.
#include "tests/fuzz/Require.h"
#include "workbench/document/file/DocumentTables.h"
#include "workbench/document/product/tables/Database.h"

#include <sqlite3.h>

#include <cmath>
#include <cstdint>
#include <cstring>

using namespace qor::document;

namespace {

constexpr std::size_t largestInput = std::size_t{1} << 20;
constexpr std::int32_t nodes = 3;
constexpr std::int32_t materials = 2;

sqlite3* openBytes(const std::uint8_t* data, std::size_t size) {
    sqlite3* database = nullptr;
    require(sqlite3_open(":memory:", &database) == SQLITE_OK, "there is memory for a database");
    auto* copy = static_cast<unsigned char*>(sqlite3_malloc64(size + 1));
    std::memcpy(copy, data, size);
    const auto length = static_cast<sqlite3_int64>(size);
    if (sqlite3_deserialize(database, "main", copy, length, length,
                            SQLITE_DESERIALIZE_FREEONCLOSE | SQLITE_DESERIALIZE_READONLY) ==
        SQLITE_OK)
        return database;
    sqlite3_close(database);
    return nullptr;
}

void requireSound(const SceneReference& reference, std::int32_t objects) {
    const bool isNothing = reference.target == SceneReference::Target::Nothing;
    const std::int32_t count = reference.target == SceneReference::Target::Node ? nodes : objects;
    require(isNothing ? reference.index == none : reference.index >= 0 && reference.index < count,
            "a reference leads somewhere");
}

void requireSound(const SceneRows& rows) {
    for (const SceneRow& row : rows) {
        require(row.material >= none && row.material < materials, "a material is there");
        for (const SceneAttribute& attribute : row.attributes) {
            for (const double number : attribute.numbers)
                require(std::isfinite(number), "a number is one");
            if (attribute.type == SceneType::Reference)
                require(attribute.references.size() == 1, "a reference is one");
            for (const SceneReference& reference : attribute.references)
                requireSound(reference, static_cast<std::int32_t>(rows.size()));
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0 || size > largestInput)
        return 0;
    sqlite3* database = openBytes(data, size);
    if (database == nullptr)
        return 0;
    try {
        tables::harden(database);
        if (hasDocumentTables(database)) {
            (void)documentTablesVersionOf(database);
            (void)loadDocumentInfo(database);
        }
        requireSound(loadSceneRows(database, nodes, materials));
    } catch (const tables::DatabaseError&) { // refused
    }
    sqlite3_close(database);
    return 0;
}

// Feeds bytes to the document reader as if they were a document file: whatever they are, it either
// refuses them or gives a product that passes the check.
#include "workbench/document/product/ProductCheck.h"
#include "workbench/document/product/ProductTables.h"

#include <sqlite3.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace {

// Fuzzers grow pages that they never use; a reader that takes long on a small file is a finding of
// its own.
constexpr std::size_t largestInput = std::size_t{1} << 20;

sqlite3* openBytes(const std::uint8_t* data, std::size_t size) {
    sqlite3* database = nullptr;
    if (sqlite3_open(":memory:", &database) != SQLITE_OK)
        std::abort();
    auto* copy = static_cast<unsigned char*>(sqlite3_malloc64(size + 1));
    std::memcpy(copy, data, size);
    const auto length = static_cast<sqlite3_int64>(size);
    const int code =
        sqlite3_deserialize(database, "main", copy, length, length,
                            SQLITE_DESERIALIZE_FREEONCLOSE | SQLITE_DESERIALIZE_READONLY);
    if (code == SQLITE_OK)
        return database;
    sqlite3_close(database);
    return nullptr;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0 || size > largestInput)
        return 0;
    sqlite3* database = openBytes(data, size);
    if (database == nullptr)
        return 0;
    // A damaged header must not hide the tables from the fuzzer, so both doors are tried.
    static_cast<void>(qor::document::checkDocumentHeader(database, "fuzz.qor", true).ok());
    const auto product = qor::document::loadProduct(database, "fuzz.qor", size);
    if (product && qor::document::findFault(product.value()))
        std::abort();
    sqlite3_close(database);
    return 0;
}

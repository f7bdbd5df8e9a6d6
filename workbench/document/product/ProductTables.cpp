#include "workbench/document/product/ProductTables.h"

#include "workbench/document/product/ProductCheck.h"
#include "workbench/document/product/tables/Database.h"
#include "workbench/document/product/tables/Guard.h"
#include "workbench/document/product/tables/InfoKeys.h"
#include "workbench/document/product/tables/Load.h"
#include "workbench/document/product/tables/Schema.h"
#include "workbench/document/product/tables/Store.h"

#include <sqlite3.h>

#include <algorithm>
#include <limits>

namespace qor::document {

using tables::Statement;

namespace {

std::int64_t pragma(sqlite3* database, const char* name) {
    Statement select(database, std::string("PRAGMA ") + name);
    return select.step() ? select.integer(0) : 0;
}

Failure laterVersion(const std::string& name, std::int64_t found, std::int64_t known) {
    return {FaultKind::Input, name + ": it was saved by a later version of this program (format " +
                                  std::to_string(found) + ", this version knows up to " +
                                  std::to_string(known) + ")"};
}

// The first complaint of SQLite's quick check, or nothing.
std::string quickCheckComplaint(sqlite3* database) {
    Statement select(database, "PRAGMA quick_check(1)");
    const std::string answer = select.step() ? select.text(0) : "no answer";
    return answer == "ok" ? std::string() : answer;
}

std::int64_t tablesVersionOf(sqlite3* database) {
    Statement select(database, "SELECT value FROM product_info WHERE key = ?1");
    select.bind(1, std::string_view(tables::info::tablesVersion));
    return select.step() ? select.integer(0) : 0;
}

Result<Done> checkTables(sqlite3* database, const std::string& name) {
    if (!tables::hasProductTables(database))
        return Failure{FaultKind::Input, name + ": the document holds no product"};
    const std::int64_t version = tablesVersionOf(database);
    if (version > productTablesVersion)
        return laterVersion(name, version, productTablesVersion);
    tables::checkProductTables(database);
    return Done{};
}

Product loadAll(sqlite3* database, const tables::LoadLimits& limits, const ReadOptions& options) {
    Product product;
    tables::loadInfo(database, product);
    tables::loadTextures(database, limits, options.withTextures, product);
    tables::loadMaterials(database, product);
    tables::loadMeshes(database, limits, options.progress, product);
    tables::loadTree(database, product);
    tables::loadViews(database, product);
    tables::loadAnimations(database, limits, product);
    return product;
}

void storeAll(sqlite3* database, const Product& product, const ProductProgress& progress) {
    tables::resetProductTables(database);
    tables::storeInfo(database, product);
    tables::storeTextures(database, product);
    tables::storeMaterials(database, product);
    tables::storeMeshes(database, product, progress);
    tables::storeTree(database, product);
    tables::storeViews(database, product);
    tables::storeAnimations(database, product);
}

} // namespace

Result<Done> checkDocumentHeader(sqlite3* database, const std::string& name, bool quickCheck) {
    return tables::guarded(name, [&]() -> Result<Done> {
        if (pragma(database, "application_id") != documentApplicationId)
            return Failure{FaultKind::Input, name + ": it is not a document of this program"};
        const std::int64_t version = pragma(database, "user_version");
        if (version > documentVersion)
            return laterVersion(name, version, documentVersion);
        if (!quickCheck)
            return Done{};
        const std::string complaint = quickCheckComplaint(database);
        if (!complaint.empty())
            return Failure{FaultKind::Input, name + ": the file is damaged: " + complaint};
        return Done{};
    });
}

Result<Product> loadProduct(sqlite3* database,
                            const std::string& name,
                            std::uint64_t sizeLimit,
                            const ReadOptions& options) {
    return tables::guarded(name, [&]() -> Result<Product> {
        const auto longest =
            std::clamp<std::uint64_t>(sizeLimit, 4096, std::numeric_limits<int>::max());
        sqlite3_limit(database, SQLITE_LIMIT_LENGTH, static_cast<int>(longest));
        if (Result<Done> sound = checkTables(database, name); !sound)
            return sound.failure();
        Product product = loadAll(database, {sizeLimit}, options);
        if (const auto fault = findFault(product))
            return Failure{FaultKind::Input, name + ": the file is damaged: " + *fault};
        return product;
    });
}

Result<Done> storeProduct(sqlite3* database,
                          const std::string& name,
                          const Product& product,
                          const ProductProgress& progress) {
    if (const auto fault = findFault(product))
        return Failure{FaultKind::Internal,
                       name + ": not saved, the product is unsound: " + *fault};
    return tables::guarded(name, [&]() -> Result<Done> {
        storeAll(database, product, progress);
        return Done{};
    });
}

} // namespace qor::document

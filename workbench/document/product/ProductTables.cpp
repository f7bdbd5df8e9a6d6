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

/// The arrays of a product that has been checked as a whole.
class OwnArrays : public tables::ArraySource {
public:
    explicit OwnArrays(const Product& product) : product_(product) {}

    [[nodiscard]] const Mesh& mesh(std::size_t index) override { return product_.meshes[index]; }

    [[nodiscard]] const Texture& texture(std::size_t index) override {
        return product_.textures[index];
    }

private:
    const Product& product_;
};

/// Arrays made for the moment, each checked as it comes.
class MadeArrays : public tables::ArraySource {
public:
    MadeArrays(const ProductArrays& arrays, std::size_t materials)
        : arrays_(arrays), materials_(materials) {}

    [[nodiscard]] const Mesh& mesh(std::size_t index) override {
        mesh_ = arrays_.mesh(index);
        expectSound("mesh", index, findMeshFault(mesh_));
        for (const MeshGroup& group : mesh_.groups)
            if (group.material < none || group.material >= static_cast<std::int64_t>(materials_))
                expectSound("mesh", index, "it names a material that is not there");
        return mesh_;
    }

    [[nodiscard]] const Texture& texture(std::size_t index) override {
        texture_ = arrays_.texture(index);
        if (texture_.pixels.size() != std::uint64_t{4} * texture_.width * texture_.height)
            expectSound("texture", index, "its pixels do not fill its size");
        return texture_;
    }

private:
    static void
    expectSound(const char* what, std::size_t index, const std::optional<std::string>& fault) {
        if (fault)
            throw tables::DatabaseError(
                SQLITE_CONSTRAINT, std::string(what) + " " + std::to_string(index) + ": " + *fault);
    }

    const ProductArrays& arrays_;
    std::size_t materials_;
    Mesh mesh_;
    Texture texture_;
};

void storeAll(sqlite3* database,
              const Product& product,
              tables::ArraySource& arrays,
              const ProductProgress& progress) {
    tables::resetProductTables(database);
    tables::storeInfo(database, product);
    tables::storeTextures(database, product.textures.size(), arrays);
    tables::storeMaterials(database, product);
    tables::storeMeshes(database, product.meshes.size(), arrays, progress);
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

namespace {

Result<Done> storeChecked(sqlite3* database,
                          const std::string& name,
                          const Product& product,
                          tables::ArraySource& arrays,
                          const ProductProgress& progress) {
    if (const auto fault = findFault(product))
        return Failure{FaultKind::Internal,
                       name + ": not saved, the product is unsound: " + *fault};
    return tables::guarded(name, [&]() -> Result<Done> {
        storeAll(database, product, arrays, progress);
        return Done{};
    });
}

} // namespace

Result<Done> storeProduct(sqlite3* database,
                          const std::string& name,
                          const Product& product,
                          const ProductProgress& progress) {
    OwnArrays arrays(product);
    return storeChecked(database, name, product, arrays, progress);
}

Result<Done> storeProduct(sqlite3* database,
                          const std::string& name,
                          const Product& product,
                          const ProductArrays& arrays,
                          const ProductProgress& progress) {
    MadeArrays made(arrays, product.materials.size());
    return storeChecked(database, name, product, made, progress);
}

} // namespace qor::document

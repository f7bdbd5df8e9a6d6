#pragma once

#include "workbench/document/product/Product.h"
#include "workbench/document/product/ProductFile.h"

struct sqlite3;

namespace qor::document::tables {

/// Where meshes and textures come from; what it gives lives until the next is asked for.
class ArraySource {
public:
    virtual ~ArraySource() = default;
    [[nodiscard]] virtual const Mesh& mesh(std::size_t index) = 0;
    [[nodiscard]] virtual const Texture& texture(std::size_t index) = 0;
};

// Each fills tables that are empty; all throw DatabaseError.
void storeInfo(sqlite3* database, const Product& product);
void storeTextures(sqlite3* database, std::size_t count, ArraySource& arrays);
void storeMaterials(sqlite3* database, const Product& product);
void storeMeshes(sqlite3* database,
                 std::size_t count,
                 ArraySource& arrays,
                 const ProductProgress& progress);
void storeTree(sqlite3* database, const Product& product);
void storeViews(sqlite3* database, const Product& product);
void storeAnimations(sqlite3* database, const Product& product);

} // namespace qor::document::tables

#pragma once

#include "workbench/document/product/Product.h"
#include "workbench/document/product/ProductFile.h"

#include <cstdint>

struct sqlite3;

namespace qor::document::tables {

/// What the loaders check lengths against.
struct LoadLimits {
    std::uint64_t fileSize = 0; ///< bytes; no claim in the file may be larger
};

// Each fills its part of an empty product; all throw DatabaseError, also for values that no writer
// makes.
void loadInfo(sqlite3* database, Product& product);
void loadTextures(sqlite3* database, const LoadLimits& limits, bool pixels, Product& product);
void loadMaterials(sqlite3* database, Product& product);
void loadMeshes(sqlite3* database,
                const LoadLimits& limits,
                const ProductProgress& progress,
                Product& product);
void loadTree(sqlite3* database, Product& product);
void loadViews(sqlite3* database, Product& product);
void loadAnimations(sqlite3* database, const LoadLimits& limits, Product& product);

} // namespace qor::document::tables

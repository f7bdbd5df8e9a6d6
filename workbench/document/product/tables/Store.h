#pragma once

#include "workbench/document/product/Product.h"
#include "workbench/document/product/ProductFile.h"

struct sqlite3;

namespace qor::document::tables {

// Each fills tables that are empty; all throw DatabaseError.
void storeInfo(sqlite3* database, const Product& product);
void storeTextures(sqlite3* database, const Product& product);
void storeMaterials(sqlite3* database, const Product& product);
void storeMeshes(sqlite3* database, const Product& product, const ProductProgress& progress);
void storeTree(sqlite3* database, const Product& product);
void storeViews(sqlite3* database, const Product& product);
void storeAnimations(sqlite3* database, const Product& product);

} // namespace qor::document::tables

#pragma once

#include "workbench/document/product/Product.h"
#include "workbench/document/product/ProductFile.h"
#include "workbench/document/product/Result.h"

#include <cstdint>
#include <string>

struct sqlite3;

namespace qor::document {

/// In the header of every document file: what `file` and similar tools can tell it by ("QorW").
inline constexpr std::int32_t documentApplicationId = 0x516F7257;
/// Version of the document file as a whole (user_version).
inline constexpr int documentVersion = 1;
/// Version of the product tables, apart from that of the document around them.
inline constexpr int productTablesVersion = 1;

/// The product tables of an open database, for the document room, which keeps its own tables beside
/// them. \p name is what messages call the file. The connection is used on the calling thread and
/// stays the caller's. Replaces whatever product the tables hold, creating them if need be; the
/// caller holds the transaction.
[[nodiscard]] Result<Done> storeProduct(sqlite3* database,
                                        const std::string& name,
                                        const Product& product,
                                        const ProductProgress& progress = {});

/// Where the large arrays of a product come from while it is stored, for products that keep them in
/// another form: each is asked for once, in order, and dropped before the next.
class ProductArrays {
public:
    virtual ~ProductArrays() = default;
    /// In place of Product::meshes[index].
    [[nodiscard]] virtual Mesh mesh(std::size_t index) const = 0;
    /// In place of Product::textures[index].
    [[nodiscard]] virtual Texture texture(std::size_t index) const = 0;
};

/// The same, with meshes and textures from \p arrays; those of \p product give their number only.
[[nodiscard]] Result<Done> storeProduct(sqlite3* database,
                                        const std::string& name,
                                        const Product& product,
                                        const ProductArrays& arrays,
                                        const ProductProgress& progress = {});

/// Reads the product tables of an open database; see readProduct for what is checked. \p sizeLimit
/// is the size of the file in bytes: no value in it can be longer.
[[nodiscard]] Result<Product> loadProduct(sqlite3* database,
                                          const std::string& name,
                                          std::uint64_t sizeLimit,
                                          const ReadOptions& options = {});

/// Refuses files that are no documents, are of a later version or structurally damaged.
[[nodiscard]] Result<Done>
checkDocumentHeader(sqlite3* database, const std::string& name, bool quickCheck);

} // namespace qor::document

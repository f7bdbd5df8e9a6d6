#pragma once

#include "workbench/document/product/Product.h"
#include "workbench/document/product/Result.h"

#include <filesystem>
#include <functional>

namespace qor::document {

/// Told the share done, 0 to 1, while a product is written or read.
using ProductProgress = std::function<void(double fraction)>;

struct ReadOptions {
    /// Leaves the pixels of textures out (their sizes stay 0): for a look at the tree.
    bool withTextures = true;
    /// The quick structural check of the file before anything is read. Off only for files just
    /// written here.
    bool quickCheck = true;
    ProductProgress progress;
};

/// Reads the product tables of a document file. Everything in the result has passed findFault,
/// whatever the file held: no length of the file is trusted, nothing is allocated beyond the file's
/// own size. Fails with the file's name in the text: no such file, not a document, of a later
/// version, damaged, in use. Any thread; the file is not changed.
[[nodiscard]] Result<Product> readProduct(const std::filesystem::path& file,
                                          const ReadOptions& options = {});

/// Writes \p product as a new document file. The file appears under its name by a rename when it is
/// whole and on the disk; on failure, or if the process dies, whatever had that name is as it was.
/// Refuses a product that findFault objects to. Any thread.
[[nodiscard]] Result<Done> writeProduct(const std::filesystem::path& file,
                                        const Product& product,
                                        const ProductProgress& progress = {});

/// The name under which process \p process writes a file that will be \p target: hidden, in the
/// same folder.
[[nodiscard]] std::filesystem::path unfinishedName(const std::filesystem::path& target,
                                                   long process);

/// Removes what processes that no longer run left beside \p target. Failure to remove is not
/// reported.
void removeAbandoned(const std::filesystem::path& target);

} // namespace qor::document

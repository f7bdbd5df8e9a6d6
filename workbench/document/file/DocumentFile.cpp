#include "workbench/document/file/DocumentFile.h"

#include "workbench/document/product/DatabaseFile.h"
#include "workbench/document/product/ProductTables.h"
#include "workbench/document/product/tables/Guard.h"

#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fstream>

namespace qor::document {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view databaseMagic("SQLite format 3\0", 16);

/// Makes the arrays of a product anew from what the viewers share.
class SnapshotArrays : public ProductArrays {
public:
    explicit SnapshotArrays(const DocumentSnapshot& snapshot) : snapshot_(snapshot) {}

    [[nodiscard]] Mesh mesh(std::size_t index) const override {
        return meshOf((*snapshot_.meshes)[index]);
    }

    [[nodiscard]] Texture texture(std::size_t index) const override {
        Texture texture;
        if (index < snapshot_.facts->textures.size())
            texture = snapshot_.facts->textures[index];
        const QorPixelImage& image = *snapshot_.images[index];
        texture.width = static_cast<std::uint32_t>(image.GetWidth());
        texture.height = static_cast<std::uint32_t>(image.GetHeight());
        if (!image.IsEmpty())
            texture.pixels = image.GetChannels() == 4 ? *image.GetPixels() : withAlpha(image);
        return texture;
    }

private:
    static std::vector<std::uint8_t> withAlpha(const QorPixelImage& image) {
        const QorPixelImage::Pixels& rgb = *image.GetPixels();
        std::vector<std::uint8_t> rgba;
        rgba.reserve(rgb.size() / 3 * 4);
        for (std::size_t i = 0; i + 2 < rgb.size(); i += 3)
            rgba.insert(rgba.end(), {rgb[i], rgb[i + 1], rgb[i + 2], 255});
        return rgba;
    }

    const DocumentSnapshot& snapshot_;
};

/// The product of that moment; its meshes and textures give their number only.
Product productOf(const DocumentSnapshot& snapshot) {
    Product product = *snapshot.facts;
    for (std::size_t i = 0; i < product.nodes.size(); ++i)
        product.nodes[i].visible = snapshot.visible[i];
    product.materials = snapshot.materials;
    product.textures.resize(snapshot.images.size());
    return product;
}

void stopIfAsked(const std::stop_token& stop) {
    if (stop.stop_requested())
        throw tables::DatabaseError(SQLITE_INTERRUPT, "cancelled");
}

/// Progress that also looks whether to go on.
ProductProgress stoppable(const ProductProgress& progress, const std::stop_token& stop) {
    return [&progress, &stop](double fraction) {
        stopIfAsked(stop);
        if (progress)
            progress(fraction);
    };
}

Failure laterTables(const fs::path& file, std::int64_t version) {
    return {FaultKind::Input, file.string() +
                                  ": it was saved by a later version of this program (scene " +
                                  std::to_string(version) + ", this version knows up to " +
                                  std::to_string(documentTablesVersion) + ")"};
}

Result<Done> loadAll(sqlite3* database,
                     std::uint64_t size,
                     const fs::path& file,
                     const ReadDocumentOptions& options,
                     LoadedDocument& loaded) {
    const bool isSaved = hasDocumentTables(database);
    if (const std::int64_t version = isSaved ? documentTablesVersionOf(database) : 0;
        version > documentTablesVersion)
        return laterTables(file, version);
    const ReadOptions read{.withTextures = true,
                           .quickCheck = false,
                           .progress = stoppable(options.progress, options.stop)};
    Result<Product> product = loadProduct(database, file.string(), size, read);
    if (!product)
        return product.failure();
    stopIfAsked(options.stop);
    if (isSaved) {
        loaded.scene =
            loadSceneRows(database, product.value().nodes.size(), product.value().materials.size());
        loaded.info = loadDocumentInfo(database);
    }
    loaded.product = ProductReps(std::move(product.value()));
    return Done{};
}

bool hasNoWriteBit(const fs::path& path) {
    struct stat status {};

    return stat(path.c_str(), &status) == 0 && (status.st_mode & 0222) == 0;
}

} // namespace

Result<Done> writeDocument(const fs::path& file,
                           const DocumentSnapshot& snapshot,
                           const ProductProgress& progress,
                           std::stop_token stop) {
    const SnapshotArrays arrays(snapshot);
    return writeDatabase(file, [&](sqlite3* database) -> Result<Done> {
        if (Result<Done> stored = storeProduct(database, file.string(), productOf(snapshot), arrays,
                                               stoppable(progress, stop));
            !stored)
            return stored;
        storeDocumentTables(database, snapshot.info, snapshot.scene);
        stopIfAsked(stop);
        return Done{};
    });
}

Result<LoadedDocument> readDocument(const fs::path& file, const ReadDocumentOptions& options) {
    LoadedDocument loaded;
    const Result<Done> read =
        readDatabase(file, {.quickCheck = options.quickCheck, .stop = options.stop},
                     [&](sqlite3* database, std::uint64_t size) {
                         return loadAll(database, size, file, options, loaded);
                     });
    if (!read)
        return read.failure();
    return loaded;
}

Result<DocumentInfo> readDocumentInfo(const fs::path& file) {
    DocumentInfo info;
    const Result<Done> read =
        readDatabase(file, {.quickCheck = false, .stop = {}},
                     [&](sqlite3* database, std::uint64_t /*size*/) -> Result<Done> {
                         if (hasDocumentTables(database))
                             info = loadDocumentInfo(database);
                         return Done{};
                     });
    if (!read)
        return read.failure();
    return info;
}

std::string whyReadOnly(const fs::path& file) {
    std::error_code error;
    // The superuser may write to all files; one without any write permission is meant to stay.
    if (fs::exists(file, error) && (hasNoWriteBit(file) || access(file.c_str(), W_OK) != 0))
        return "the file is read-only";
    const fs::path folder = file.has_parent_path() ? file.parent_path() : fs::path(".");
    if (!fs::is_directory(folder, error))
        return "the folder " + folder.string() + " does not exist";
    if (hasNoWriteBit(folder) || access(folder.c_str(), W_OK | X_OK) != 0)
        return "the folder " + folder.string() + " is read-only";
    return {};
}

bool looksLikeDocument(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::string head(databaseMagic.size(), '\0');
    stream.read(head.data(), static_cast<std::streamsize>(head.size()));
    return head == databaseMagic;
}

} // namespace qor::document

#include "workbench/document/product/ProductFile.h"

#include "workbench/document/product/DatabaseFile.h"
#include "workbench/document/product/ProductTables.h"

#include <cerrno>
#include <charconv>
#include <csignal>

namespace qor::document {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view unfinishedSuffix = ".unfinished";

fs::path folderOf(const fs::path& file) {
    return file.has_parent_path() ? file.parent_path() : fs::path(".");
}

// The process that wrote \p name for \p target, or 0 if the name is none of unfinishedName().
long writerOf(const std::string& name, const fs::path& target) {
    const std::string head = std::string(".") + target.filename().string() + ".";
    if (name.size() <= head.size() + unfinishedSuffix.size() || !name.starts_with(head) ||
        !name.ends_with(unfinishedSuffix))
        return 0;
    long process = 0;
    const char* first = name.data() + head.size();
    const char* last = name.data() + name.size() - unfinishedSuffix.size();
    const auto [end, error] = std::from_chars(first, last, process);
    return error == std::errc() && end == last && process > 0 ? process : 0;
}

bool runs(long process) {
    return kill(static_cast<pid_t>(process), 0) == 0 || errno == EPERM;
}

} // namespace

Result<Product> readProduct(const fs::path& file, const ReadOptions& options) {
    Product product;
    const Result<Done> read =
        readDatabase(file, {.quickCheck = options.quickCheck, .stop = {}},
                     [&](sqlite3* database, std::uint64_t size) -> Result<Done> {
                         Result<Product> loaded =
                             loadProduct(database, file.string(), size, options);
                         if (!loaded)
                             return loaded.failure();
                         product = std::move(loaded.value());
                         return Done{};
                     });
    if (!read)
        return read.failure();
    return product;
}

Result<Done>
writeProduct(const fs::path& file, const Product& product, const ProductProgress& progress) {
    return writeDatabase(file, [&](sqlite3* database) {
        return storeProduct(database, file.string(), product, progress);
    });
}

fs::path unfinishedName(const fs::path& target, long process) {
    return folderOf(target) / (std::string(".") + target.filename().string() + "." +
                               std::to_string(process) + std::string(unfinishedSuffix));
}

void removeAbandoned(const fs::path& target) {
    std::error_code error;
    for (fs::directory_iterator entry(folderOf(target), error), end; !error && entry != end;
         entry.increment(error)) {
        const long process = writerOf(entry->path().filename().string(), target);
        if (process == 0 || runs(process))
            continue;
        std::error_code ignored;
        fs::remove(entry->path(), ignored);
    }
}

} // namespace qor::document

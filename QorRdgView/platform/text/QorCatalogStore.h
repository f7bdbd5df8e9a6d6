#pragma once

#include "platform/text/QorCatalogFile.h"

#include <sys/types.h>

#include <cstdint>
#include <map>
#include <vector>

/// Enough of a file's state to notice that it has changed.
struct QorFileStamp {
    std::string path;
    ino_t inode = 0;
    std::int64_t size = -1; ///< -1: there is no such file
    std::int64_t modified = 0;
    std::int64_t changed = 0;

    bool operator==(const QorFileStamp&) const = default;
};

/// The catalogs of one kind that were read so far. What each kind reads, and when, stands in
/// QorCatalogs.
class QorCatalogStore {
public:
    /// Lists the files that a catalog may have, best first.
    using FileLister = std::vector<std::string> (*)(const std::string& iName);

    /// \p iFirstOnly: the first file that is there gives the whole catalog.
    QorCatalogStore(FileLister iLister, bool iFirstOnly) : lister(iLister), firstOnly(iFirstOnly) {}

    /// The value, or null; valid until the next call.
    [[nodiscard]] const std::string* Find(std::string_view iCatalog, std::string_view iKey);

    void Clear();

private:
    struct Catalog {
        std::uint64_t checked = 0; ///< the state of QorCatalogs that it was last compared at
        bool settled = false;      ///< no file is so young that a change of it could go unnoticed
        std::size_t digest = 0;    ///< of what the entries were read from
        std::vector<QorFileStamp> files;
        QorCatalogEntries entries;
    };

    [[nodiscard]] Catalog& GetCatalog(std::string_view iName);
    void Compare(const std::string& iName, Catalog& ioCatalog) const;
    void Read(Catalog& ioCatalog) const;

    FileLister lister;
    bool firstOnly;
    std::map<std::string, Catalog, std::less<>> catalogs;
    const std::string* lastName = nullptr; ///< most look-ups are in the catalog of the one before
    Catalog* last = nullptr;
};

/// The state of paths, language and files that catalogs compare themselves with: it grows with
/// Refresh and when QorStartupPath is found changed.
[[nodiscard]] std::uint64_t QorGetCatalogState();
/// The value of QorStartupPath that this state was made for.
[[nodiscard]] const std::string& QorGetCatalogPath();

/// The one store of each kind.
[[nodiscard]] QorCatalogStore& QorGetMessageStore();
[[nodiscard]] QorCatalogStore& QorGetResourceStore();

#include "workbench/document/product/tables/Guard.h"

#include <sqlite3.h>

#include <array>

namespace qor::document::tables {

namespace {

struct Meaning {
    int code;
    FaultKind kind;
    const char* text;
    bool withDetail;
};

constexpr auto meanings = std::to_array<Meaning>({
    {SQLITE_NOTADB, FaultKind::Input, "it is not a document file", false},
    {SQLITE_CORRUPT, FaultKind::Input, "the file is damaged: ", true},
    {SQLITE_TOOBIG, FaultKind::Input, "the file is damaged: it claims more bytes than it has",
     false},
    {SQLITE_MISMATCH, FaultKind::Input, "the file is damaged: ", true},
    {SQLITE_BUSY, FaultKind::Machine, "another program is writing to it", false},
    {SQLITE_LOCKED, FaultKind::Machine, "another program is writing to it", false},
    {SQLITE_FULL, FaultKind::Machine, "the disk is full", false},
    {SQLITE_READONLY, FaultKind::Machine, "it may not be written to", false},
    {SQLITE_CANTOPEN, FaultKind::Machine, "it cannot be opened: ", true},
    {SQLITE_PERM, FaultKind::Machine, "access to it is not allowed", false},
    {SQLITE_IOERR, FaultKind::Machine, "reading or writing it failed: ", true},
    {SQLITE_INTERRUPT, FaultKind::Input, "cancelled", false},
    {SQLITE_NOMEM, FaultKind::Machine, "not enough memory", false},
    {SQLITE_ERROR, FaultKind::Input, "the file is damaged: ", true},
    {SQLITE_CONSTRAINT, FaultKind::Internal, "the product does not fit its tables: ", true},
});

} // namespace

Failure explain(const DatabaseError& error, const std::string& file) {
    for (const Meaning& meaning : meanings)
        if (meaning.code == error.code)
            return {meaning.kind,
                    file + ": " + meaning.text + (meaning.withDetail ? error.what() : "")};
    return {FaultKind::Internal, file + ": " + error.what()};
}

} // namespace qor::document::tables

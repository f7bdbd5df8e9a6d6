#pragma once

#include "workbench/document/Document.h"
#include "workbench/document/file/DocumentLock.h"
#include "workbench/document/session/Operation.h"

namespace qor::document {

// The steps of opening and saving that a worker does, with progress and cancel.

/// The lock of \p file. One that this very program holds is waited for a moment: it may be that of
/// an opening that was just cancelled.
[[nodiscard]] Result<std::shared_ptr<DocumentLock>> takeLock(const std::filesystem::path& file,
                                                             const WorkContext& context);

/// Whether \p file holds a document; else it may be a model. Fails for pipes, devices and folders,
/// and for what is called as documents are but holds none.
[[nodiscard]] Result<bool> holdsDocument(const std::filesystem::path& file);

[[nodiscard]] Result<LoadedDocument>
readWithProgress(const std::filesystem::path& file, bool quickCheck, const WorkContext& context);

[[nodiscard]] Result<Done> writeWithProgress(const std::filesystem::path& file,
                                             const DocumentSnapshot& snapshot,
                                             const WorkContext& context);

/// The document as it is, dated. User-interface thread.
[[nodiscard]] DocumentSnapshot snapshotFor(const Document& document);

} // namespace qor::document

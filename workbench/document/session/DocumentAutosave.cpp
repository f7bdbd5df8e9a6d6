// What DocumentStore does for recovery.
#include "workbench/document/session/DocumentStore.h"
#include "workbench/document/session/StoreSettings.h"
#include "workbench/document/session/StoreWork.h"

#include <algorithm>

namespace qor::document {

bool DocumentStore::isAutosaving(const Document& document) const {
    return std::any_of(entries_.begin(), entries_.end(), [&](const Entry& entry) {
        return entry.document.Get() == &document && entry.autosave;
    });
}

void DocumentStore::beat() {
    const std::chrono::seconds interval = autosaveInterval();
    if (interval.count() <= 0 || loop_.Now() - lastAutosave_ < interval)
        return;
    lastAutosave_ = loop_.Now();
    autosave();
}

void DocumentStore::autosave() {
    for (Entry& entry : entries_)
        if (entry.document->isModified() && !entry.autosave && !entry.save &&
            entry.recoveredChange != entry.document->changeCount())
            autosave(entry);
}

void DocumentStore::autosave(Entry& entry) {
    if (!entry.recovery)
        entry.recovery = RecoveryFile::create(options_.recoveryFolder);
    if (!entry.recovery)
        return;
    auto snapshot = std::make_shared<DocumentSnapshot>(snapshotFor(*entry.document));
    snapshot->info.recoveryPath = entry.document->path();
    auto work = [snapshot, recovery = entry.recovery](const WorkContext& context) {
        return writeDocument(recovery->path(), *snapshot, {}, context.stop());
    };
    auto finish = [this, alive = entry.document,
                   change = entry.document->changeCount()](const Result<Done>& written) {
        Entry* done = find(*alive);
        if (done == nullptr)
            return;
        done->autosave.reset();
        if (!alive->isModified())
            done->recovery.reset(); // it was saved meanwhile
        else if (written)
            done->recoveredChange = change;
    };
    entry.autosave = workers_.run<Done>(std::move(work), {}, std::move(finish));
}

} // namespace qor::document

#pragma once

#include "platform/frame/QorFrmNotify.h"
#include "workbench/document/Document.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

namespace qor::document {

/// What a session of documents needs of the program around it; the program implements it.
/// User-interface thread.
class DocumentHost {
public:
    virtual ~DocumentHost() = default;

    /// Makes an editor of \p document in the current layout with a window whose viewer shows
    /// Document::root(), fits the product into it, and makes it the current one. The editor holds
    /// the document.
    virtual void showDocument(Document& document) = 0;

    /// Asks a person under which name to save \p document, usually in a file dialog, and calls
    /// \p answer once: with nothing when he cancels.
    virtual void askSavePath(Document& document,
                             std::function<void(std::optional<std::filesystem::path>)> answer) = 0;

    /// Tells a person what happened while he did something else, without waiting for an answer.
    virtual void tell(QorNotifyKind kind, const QorUnicodeString& text) = 0;

    /// Long work begins or has ended, whoever asked for it; what a person can do has changed.
    virtual void workChanged() {}
};

} // namespace qor::document

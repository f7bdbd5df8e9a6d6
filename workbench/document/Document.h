#pragma once

#include "platform/component/QorCallbackManager.h"
#include "platform/frame/QorDocument.h"
#include "platform/scene/QorRscContainer.h"
#include "workbench/document/ProductReps.h"
#include "workbench/document/file/DocumentFile.h"

#include <filesystem>
#include <span>
#include <string>

namespace qor::document {

/// A document that is open: a product with its representations, the objects of the scene around it,
/// the file that it was read from. Every window's viewer shows the same root. The class counts as a
/// "QorProduct". User-interface thread only.
class Document : public QorDocument {
    QorDeclareClass(Document)

    /// An empty, untitled document, not modified.
    Document();

    /// A document of what a file or an import gave, not modified. What a model file held besides
    /// its tree becomes objects of the scene.
    explicit Document(LoadedDocument loaded);

    /// The document is whole and has been given its window. Publisher of all events: the document.
    static const QorEventName DOCUMENT_OPENED;
    /// The modified flag, the path or the title is another one.
    static const QorEventName DOCUMENT_MODIFIED;
    /// The document has been saved under its path.
    static const QorEventName DOCUMENT_SAVED;
    /// A save or an import has gone on; comes with a DocumentProgressNotification.
    static const QorEventName DOCUMENT_PROGRESS;
    /// Nodes were added to the product tree.
    static const QorEventName DOCUMENT_TREE_MODIFIED;
    /// Nodes were hidden or shown.
    static const QorEventName DOCUMENT_VISIBILITY_MODIFIED;

    [[nodiscard]] QorCallbackManager* GetCallbackManager() { return &callbacks_; }

    /// What viewers show: the same object as long as the document lives. No reference added.
    [[nodiscard]] Qor3DBagRep* root() const { return product_.root(); }

    [[nodiscard]] const ProductReps& product() const { return product_; }

    /// The shootings, cameras, lights, environments and materials. It publishes their events and
    /// offers the containers' interfaces; a change of an object makes the document modified. No
    /// reference added.
    [[nodiscard]] QorRscContainer* scene() const { return scene_; }

    /// Puts what a model or another document's file gave behind what is there: the product, and
    /// what the scene around it holds, under names that nobody has. Of surroundings that are active
    /// only those of this document stay so, if it has any. The document is modified.
    void merge(LoadedDocument imported);

    /// All that a file holds of the document, as it is now.
    [[nodiscard]] DocumentSnapshot takeSnapshot() const;

    /// From the root node down to \p iObject, if it is a node of the tree; else the object alone.
    [[nodiscard]] QorVar<QorPathElement> BuildPathElement(QorBaseUnknown* iObject) override;

    /// Switches a node on or off; what is below keeps its own switch. The document is modified.
    void setVisible(ProductNode& node, bool visible);

    /// Hides all but \p nodes, what is below them and what they hang on. An empty list hides
    /// nothing and shows nothing.
    void isolate(std::span<ProductNode* const> nodes);

    /// Switches every node on.
    void showAll();

    [[nodiscard]] bool isModified() const { return modified_; }

    /// Whoever changes an object of the document says so here.
    void setModified(bool modified = true);

    /// Grows with every change; a save that was begun at one count and ends at another leaves the
    /// document modified.
    [[nodiscard]] std::uint64_t changeCount() const { return changes_; }

    /// The file that save writes; empty for a document that was never saved.
    [[nodiscard]] const std::filesystem::path& path() const { return path_; }

    void setPath(const std::filesystem::path& path);

    /// Why its file cannot be saved to, in lower case; empty when it can.
    [[nodiscard]] const std::string& readOnlyReason() const { return readOnlyReason_; }

    void setReadOnlyReason(std::string reason);

    /// What a person calls it: the name of its file, or of the model it came from.
    [[nodiscard]] const QorUnicodeString& title() const { return GetName(); }

    void setTitle(const std::string& title);

    /// The length unit of the file that the product came from.
    [[nodiscard]] const SourceUnit& unit() const { return product_.facts().unit; }

    void dispatch(QorEventName event, QorNotification* notification = nullptr);

protected:
    ~Document() override;

private:
    bool switchNode(ProductNode& node, bool visible);
    void visibilityChanged(bool changed);

    QorCallbackManager callbacks_;
    ProductReps product_;
    QorRscContainer* scene_; ///< an extension of this document
    std::filesystem::path path_;
    std::string readOnlyReason_;
    bool modified_ = false;
    std::uint64_t changes_ = 0;
};

using Document_var = QorVar<Document>;

/// What comes with DOCUMENT_PROGRESS.
class DocumentProgressNotification : public QorNotification {
    QorDeclareClass(DocumentProgressNotification)

    /// \p percent from 0 to 100; \p stage a word of the work in hand: "read", "mesh", "write".
    DocumentProgressNotification(int percent, std::string stage);

    [[nodiscard]] int percent() const { return percent_; }

    [[nodiscard]] const std::string& stage() const { return stage_; }

protected:
    ~DocumentProgressNotification() override = default;

private:
    int percent_;
    std::string stage_;
};

} // namespace qor::document

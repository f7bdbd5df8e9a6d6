#include "workbench/document/Document.h"

#include "workbench/document/GraphicMaterials.h"
#include "workbench/document/SceneObjects.h"

#include <set>

namespace qor::document {

const QorEventName Document::DOCUMENT_OPENED("DOCUMENT_OPENED");
const QorEventName Document::DOCUMENT_MODIFIED("DOCUMENT_MODIFIED");
const QorEventName Document::DOCUMENT_SAVED("DOCUMENT_SAVED");
const QorEventName Document::DOCUMENT_PROGRESS("DOCUMENT_PROGRESS");
const QorEventName Document::DOCUMENT_TREE_MODIFIED("DOCUMENT_TREE_MODIFIED");
const QorEventName Document::DOCUMENT_VISIBILITY_MODIFIED("DOCUMENT_VISIBILITY_MODIFIED");

Document::Document() : Document(LoadedDocument{}) {}

Document::Document(LoadedDocument loaded)
    : product_(std::move(loaded.product)), scene_(QorRscContainer::Of(this)) {
    ProductNode::registerInterfaces();
    if (loaded.scene)
        addScene(*scene_, *loaded.scene, product_, {});
    else
        addProductObjects(*scene_, product_);
    if (!loaded.info.title.empty())
        SetName(loaded.info.title);
    scene_->SetChangeListener([this] { setModified(); });
}

Document::~Document() = default;

void Document::merge(LoadedDocument imported) {
    const Product& facts = product_.facts();
    const std::size_t cameras = facts.cameras.size();
    const std::size_t lights = facts.lights.size();
    const std::size_t materials = facts.materials.size();
    const std::size_t nodes = facts.nodes.size();
    product_.append(std::move(imported.product));
    if (imported.scene)
        addScene(*scene_, *imported.scene, product_, {.nodes = nodes, .materials = materials});
    else
        addProductObjects(*scene_, product_, materials, cameras, lights);
    setModified();
    dispatch(DOCUMENT_TREE_MODIFIED);
}

DocumentSnapshot Document::takeSnapshot() const {
    DocumentSnapshot snapshot;
    snapshot.facts = product_.sharedFacts();
    snapshot.meshes = product_.sharedMeshes();
    snapshot.images = product_.images();
    snapshot.info.title = title().Str();
    snapshot.visible.reserve(product_.nodes().size());
    for (const ProductNode_var& node : product_.nodes())
        snapshot.visible.push_back(node->isVisible());
    std::vector<QorVar<QorGraphicMaterial>> materials = product_.materials();
    snapshot.scene = rowsOf(*scene_, materials);
    snapshot.materials.reserve(materials.size());
    for (const QorVar<QorGraphicMaterial>& material : materials)
        snapshot.materials.push_back(materialOf(*material, snapshot.images));
    return snapshot;
}

QorPathElement_var Document::BuildPathElement(QorBaseUnknown* iObject) {
    const auto* leaf = dynamic_cast<const ProductNode*>(iObject);
    if (leaf == nullptr)
        return QorDocument::BuildPathElement(iObject);
    std::vector<ProductNode*> way;
    for (auto* node = product_.nodes()[static_cast<std::size_t>(leaf->id())].Get(); node != nullptr;
         node = node->parent())
        way.push_back(node);
    auto path = QorMake<QorPathElement>();
    for (auto node = way.rbegin(); node != way.rend(); ++node)
        path->AddChildElement(*node);
    return path;
}

void Document::setVisible(ProductNode& node, bool visible) {
    visibilityChanged(switchNode(node, visible));
}

void Document::isolate(std::span<ProductNode* const> nodes) {
    if (nodes.empty())
        return;
    std::set<const ProductNode*> kept(nodes.begin(), nodes.end());
    std::set<const ProductNode*> above;
    for (const ProductNode* node : nodes)
        for (const ProductNode* up = node->parent(); up != nullptr; up = up->parent())
            above.insert(up);
    bool changed = false;
    for (const ProductNode_var& node : product_.nodes()) {
        // Parents come first, so what hangs on a kept node is known to be kept too.
        if (kept.contains(node->parent()))
            kept.insert(node.Get());
        const bool visible = kept.contains(node.Get()) || above.contains(node.Get());
        // Below what is kept every node keeps its own switch.
        if (!visible || above.contains(node.Get()) || !kept.contains(node->parent()))
            changed = switchNode(*node, visible) || changed;
    }
    visibilityChanged(changed);
}

void Document::showAll() {
    bool changed = false;
    for (const ProductNode_var& node : product_.nodes())
        changed = switchNode(*node, true) || changed;
    visibilityChanged(changed);
}

bool Document::switchNode(ProductNode& node, bool visible) {
    if (node.isVisible() == visible)
        return false;
    node.bag()->SetShown(visible);
    return true;
}

void Document::visibilityChanged(bool changed) {
    if (!changed)
        return;
    setModified();
    dispatch(DOCUMENT_VISIBILITY_MODIFIED);
}

void Document::setModified(bool modified) {
    if (modified)
        ++changes_;
    if (modified == modified_)
        return;
    modified_ = modified;
    dispatch(DOCUMENT_MODIFIED);
}

void Document::setPath(const std::filesystem::path& path) {
    path_ = path;
    setTitle(path.stem().string());
}

void Document::setReadOnlyReason(std::string reason) {
    readOnlyReason_ = std::move(reason);
    dispatch(DOCUMENT_MODIFIED);
}

void Document::setTitle(const std::string& title) {
    SetName(title);
    dispatch(DOCUMENT_MODIFIED);
}

void Document::dispatch(QorEventName event, QorNotification* notification) {
    callbacks_.DispatchCallbacks(event, this, notification);
}

DocumentProgressNotification::DocumentProgressNotification(int percent, std::string stage)
    : percent_(percent), stage_(std::move(stage)) {}

namespace {

/// The class between documents and this one: what tells documents of a product from others.
const QorMetaObject& productClass() {
    static const auto* meta = new QorMetaObject("QorProduct", &QorDocument::MetaObject(), nullptr);
    return *meta;
}

} // namespace

QorBaseUnknown* Document::CreateItself() {
    return new Document;
}

const QorMetaObject& Document::MetaObject() {
    static const auto* meta =
        new QorMetaObject("Document", &productClass(), &Document::CreateItself);
    return *meta;
}

const QorMetaObject& Document::GetMetaObject() const {
    return MetaObject();
}

QorImplementClass(DocumentProgressNotification, QorNotification)

} // namespace qor::document

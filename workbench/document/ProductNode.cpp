#include "workbench/document/ProductNode.h"

#include "platform/component/QorExtension.h"
#include "platform/scene/QorIAlias.h"

namespace qor::document {

QorImplementClass(ProductNode, QorBaseUnknown)

namespace {

/// What a node offers through interfaces.
class ProductNodeInterfaces : public QorImplements<QorTie<ProductNode>, QorIAlias> {
public:
    using QorImplements::QorImplements;

    [[nodiscard]] QorUnicodeString GetAlias() const override { return GetTied()->name(); }

    /// Names of the tree are those of the model.
    QorResult SetAlias(const QorUnicodeString& iAlias) override {
        return iAlias == GetAlias() ? S_OK : E_FAIL;
    }

protected:
    ~ProductNodeInterfaces() override = default;
};

} // namespace

void ProductNode::registerInterfaces() {
    [[maybe_unused]] static const bool registered = [] {
        QorExtension::Register(ProductNode::ClassName(), QorIAlias::ClassId(),
                               &QorCreateExtension<ProductNodeInterfaces>);
        return true;
    }();
}

ProductNode::ProductNode(int number, std::string name, std::int32_t part, QorVar<Qor3DBagRep> bag)
    : id_(number), name_(std::move(name)), part_(part), bag_(std::move(bag)) {}

bool ProductNode::isShown() const {
    for (const ProductNode* node = this; node != nullptr; node = node->parent_)
        if (!node->isVisible())
            return false;
    return true;
}

} // namespace qor::document

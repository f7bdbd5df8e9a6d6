#include "workbench/desktop/frame/ProductTreeModel.h"

#include "platform/text/QorMsgCatalog.h"
#include "workbench/desktop/peers/Texts.h"
#include "workbench/desktop/theme/Icon.h"
#include "workbench/desktop/theme/Theme.h"

namespace qor::desktop {

using document::ProductNode;
using document::ProductNode_var;

namespace {

QString nameOf(const ProductNode& node) {
    const QString name = QString::fromStdString(node.name()).simplified();
    if (!name.isEmpty())
        return name;
    return toQt(
        QorMsgCatalog::BuildMessage("QorDesktop", "UnnamedPart", {std::to_string(node.id() + 1)}));
}

QIcon iconOf(const ProductNode& node) {
    static const QIcon part = icon(QStringLiteral("part"));
    static const QIcon assembly = icon(QStringLiteral("assembly"));
    return node.children().empty() ? part : assembly;
}

} // namespace

ProductTreeModel::ProductTreeModel(document::Document& document, QObject* parent)
    : QAbstractItemModel(parent), document_(&document) {
    rebuild();
}

void ProductTreeModel::rebuild() {
    beginResetModel();
    const auto& product = document_->product();
    rows_.assign(product.nodes().size(), 0);
    const auto place = [this](const std::vector<ProductNode*>& sisters) {
        int row = 0;
        for (const ProductNode* node : sisters)
            rows_[static_cast<std::size_t>(node->id())] = row++;
    };
    place(product.roots());
    for (const ProductNode_var& node : product.nodes())
        place(node->children());
    endResetModel();
}

ProductNode* ProductTreeModel::nodeAt(const QModelIndex& index) {
    return static_cast<ProductNode*>(index.internalPointer());
}

QModelIndex ProductTreeModel::indexOf(const ProductNode& node, int column) const {
    return createIndex(rows_[static_cast<std::size_t>(node.id())], column, &node);
}

const std::vector<ProductNode*>& ProductTreeModel::childrenOf(const QModelIndex& parent) const {
    const ProductNode* node = nodeAt(parent);
    return node != nullptr ? node->children() : document_->product().roots();
}

QModelIndex ProductTreeModel::index(int row, int column, const QModelIndex& parent) const {
    if (!hasIndex(row, column, parent))
        return {};
    return createIndex(row, column, childrenOf(parent)[static_cast<std::size_t>(row)]);
}

QModelIndex ProductTreeModel::parent(const QModelIndex& index) const {
    const ProductNode* node = nodeAt(index);
    if (node == nullptr || node->parent() == nullptr)
        return {};
    return indexOf(*node->parent());
}

int ProductTreeModel::rowCount(const QModelIndex& parent) const {
    return parent.column() > NameColumn ? 0 : static_cast<int>(childrenOf(parent).size());
}

int ProductTreeModel::columnCount(const QModelIndex& /*parent*/) const {
    return columnCount_;
}

QVariant ProductTreeModel::data(const QModelIndex& index, int role) const {
    const ProductNode* node = nodeAt(index);
    if (node == nullptr)
        return {};
    if (role == VisibleRole)
        return node->isVisible();
    if (role == ShownRole)
        return node->isShown();
    if (index.column() != NameColumn)
        return {};
    switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole:
        return nameOf(*node);
    case Qt::DecorationRole:
        return iconOf(*node);
    case Qt::ForegroundRole:
        return node->isShown() ? QVariant() : QVariant(Theme::colors().disabled);
    default:
        return {};
    }
}

} // namespace qor::desktop

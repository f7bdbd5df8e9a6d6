#pragma once

#include "workbench/document/Document.h"

#include <QAbstractItemModel>

#include <vector>

namespace qor::desktop {

/// The product tree of a document as Qt's views want it: names and icons in the first column,
/// visibility in the second. It answers from the document's own nodes and copies nothing but their
/// places, so that ten thousand of them cost nothing until they are looked at.
class ProductTreeModel : public QAbstractItemModel {
public:
    enum Column { NameColumn, EyeColumn, columnCount_ };

    /// Roles of the second column: the node's own switch, and whether all above it are on too.
    enum Role { VisibleRole = Qt::UserRole, ShownRole };

    explicit ProductTreeModel(document::Document& document, QObject* parent = nullptr);

    /// The tree itself is another one.
    void rebuild();

    [[nodiscard]] static document::ProductNode* nodeAt(const QModelIndex& index);
    [[nodiscard]] QModelIndex indexOf(const document::ProductNode& node,
                                      int column = NameColumn) const;

    [[nodiscard]] QModelIndex
    index(int row, int column, const QModelIndex& parent = {}) const override;
    [[nodiscard]] QModelIndex parent(const QModelIndex& index) const override;
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

private:
    [[nodiscard]] const std::vector<document::ProductNode*>&
    childrenOf(const QModelIndex& parent) const;

    document::Document_var document_;
    std::vector<int> rows_; ///< by the node's id: its place among its sisters
};

} // namespace qor::desktop

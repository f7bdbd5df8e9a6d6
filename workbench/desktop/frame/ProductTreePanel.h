#pragma once

#include "platform/frame/QorFrmEditor.h"
#include "workbench/desktop/frame/ProductTreeModel.h"

#include <QSortFilterProxyModel>
#include <QWidget>

class QLabel;
class QLineEdit;

namespace qor::desktop {

class ProductTreeView;

/// The product tree beside a viewer: a field to search in, and the tree, whose selection is the
/// editor's. Nothing is kept here but what is open in the tree and what is searched.
class ProductTreePanel
    : public QWidget
    , public QorEventSubscriber {
public:
    /// The document of \p editor is a Document; the editor outlives the panel's use.
    ProductTreePanel(QorFrmEditor& editor, QWidget* parent);

    [[nodiscard]] ProductTreeView& view() const { return *view_; }

private:
    void build();
    void setUpView();
    void fitColumns();
    void listen();
    void search(const QString& text);
    void expandFirst();
    void showMenu(const QPoint& at);
    void toggle(const QModelIndex& index);
    /// From the editor's selection to the tree's, and back.
    void readSelection();
    void writeSelection();
    void selectionModified(QorEventName event,
                           QorBaseUnknown* publisher,
                           QorNotification* notification,
                           QorSubscriberData data,
                           QorCallbackId cookie);
    void treeModified(QorEventName event,
                      QorBaseUnknown* publisher,
                      QorNotification* notification,
                      QorSubscriberData data,
                      QorCallbackId cookie);
    void visibilityModified(QorEventName event,
                            QorBaseUnknown* publisher,
                            QorNotification* notification,
                            QorSubscriberData data,
                            QorCallbackId cookie);

    QorCSO_var selection_;
    document::Document_var document_;
    ProductTreeModel* model_;
    QSortFilterProxyModel* found_;
    QLineEdit* field_;
    ProductTreeView* view_;
    QLabel* nothing_;     ///< says that nothing was found
    bool inStep_ = false; ///< one side is being brought in step with the other
};

} // namespace qor::desktop

#include "workbench/desktop/frame/ProductTreeView.h"

#include "workbench/desktop/frame/ProductTreeModel.h"
#include "workbench/desktop/theme/Paint.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QStyledItemDelegate>

namespace qor::desktop {

namespace {

constexpr int eyeSize = 16;
constexpr int chevronSize = 12;
constexpr int stepIn = 18;
constexpr int rowHeight = 26;

QColor inkOn(const QModelIndex& row, bool selected) {
    const Colors& colors = Theme::colors();
    if (selected)
        return colors.accentText;
    return row.data(ProductTreeModel::ShownRole).toBool() ? colors.muted : colors.disabled;
}

/// The text without the column's own back: the whole row has one.
class NameDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option,
                                 const QModelIndex& index) const override {
        return {QStyledItemDelegate::sizeHint(option, index).width(), rowHeight};
    }

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        const bool selected = option->state.testFlag(QStyle::State_Selected);
        option->state &=
            ~(QStyle::State_Selected | QStyle::State_MouseOver | QStyle::State_HasFocus);
        // The picture is fixed here: that of an open row would be one that is switched on.
        option->icon =
            QIcon(option->icon.pixmap(option->decorationSize, option->widget->devicePixelRatioF(),
                                      selected ? QIcon::Selected : QIcon::Normal));
        if (selected)
            option->palette.setColor(QPalette::Text, Theme::colors().accentText);
    }
};

class EyeDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter,
               const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        const bool visible = index.data(ProductTreeModel::VisibleRole).toBool();
        drawIcon(*painter, option.rect, visible ? QStringLiteral("eye") : QStringLiteral("eye-off"),
                 eyeSize, inkOn(index, option.state.testFlag(QStyle::State_Selected)));
    }
};

} // namespace

ProductTreeView::ProductTreeView(QWidget* parent) : QTreeView(parent) {
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setIndentation(stepIn);
    setFrameShape(QFrame::NoFrame);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setContextMenuPolicy(Qt::CustomContextMenu);
    setExpandsOnDoubleClick(false);
    setMouseTracking(true);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setItemDelegateForColumn(ProductTreeModel::NameColumn, new NameDelegate(this));
    setItemDelegateForColumn(ProductTreeModel::EyeColumn, new EyeDelegate(this));
}

bool ProductTreeView::isOnEye(const QPoint& point) const {
    const QModelIndex index = indexAt(point);
    return index.isValid() && index.column() == ProductTreeModel::EyeColumn;
}

void ProductTreeView::eye(const QModelIndex& index) {
    const auto call = onEye;
    if (call && index.isValid())
        call(index);
}

void ProductTreeView::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && isOnEye(event->pos()))
        eye(indexAt(event->pos()));
    else
        QTreeView::mousePressEvent(event);
}

void ProductTreeView::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && isOnEye(event->pos()))
        eye(indexAt(event->pos()));
    else
        QTreeView::mouseDoubleClickEvent(event);
}

void ProductTreeView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Space && event->modifiers() == Qt::NoModifier)
        eye(currentIndex());
    else
        QTreeView::keyPressEvent(event);
}

/// The back of the whole row, from edge to edge.
void ProductTreeView::drawRow(QPainter* painter,
                              const QStyleOptionViewItem& options,
                              const QModelIndex& index) const {
    constexpr qreal radius = 4.0;
    const Colors& colors = Theme::colors();
    const QRectF row = QRectF(0, options.rect.top(), viewport()->width(), options.rect.height())
                           .adjusted(4, 1, -4, -1);
    const bool selected = selectionModel() != nullptr && selectionModel()->isSelected(index);
    const QPoint mouse = viewport()->mapFromGlobal(QCursor::pos());
    if (selected)
        drawPanel(*painter, row, colors.accent, QColor(), radius);
    else if (viewport()->underMouse() && mouse.y() >= options.rect.top() &&
             mouse.y() <= options.rect.bottom())
        drawPanel(*painter, row, colors.hover, QColor(), radius);
    QTreeView::drawRow(painter, options, index);
    if (hasFocus() && index == currentIndex() && !selected)
        drawRing(*painter, row, radius);
}

/// A chevron alone: it says what can be opened, and the indentation the rest.
void ProductTreeView::drawBranches(QPainter* painter,
                                   const QRect& rect,
                                   const QModelIndex& index) const {
    if (!model()->hasChildren(index))
        return;
    const QRect step(rect.right() - stepIn + 1, rect.top(), stepIn, rect.height());
    const bool selected = selectionModel() != nullptr && selectionModel()->isSelected(index);
    drawIcon(*painter, step, isExpanded(index) ? QStringLiteral("down") : QStringLiteral("right"),
             chevronSize, inkOn(index, selected));
}

} // namespace qor::desktop

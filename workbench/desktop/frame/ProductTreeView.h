#pragma once

#include <QTreeView>

#include <functional>

namespace qor::desktop {

/// The tree's view: rows of one height, an eye at the right of each, no lines.
class ProductTreeView : public QTreeView {
public:
    explicit ProductTreeView(QWidget* parent);

    /// A click on the eye of a row, or the blank key on it.
    std::function<void(const QModelIndex& index)> onEye;

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void
    drawBranches(QPainter* painter, const QRect& rect, const QModelIndex& index) const override;
    void drawRow(QPainter* painter,
                 const QStyleOptionViewItem& options,
                 const QModelIndex& index) const override;

private:
    [[nodiscard]] bool isOnEye(const QPoint& point) const;
    void eye(const QModelIndex& index);
};

} // namespace qor::desktop

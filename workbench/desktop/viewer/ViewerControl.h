#pragma once

#include "platform/vis/QorManipulator.h"

#include <QWidget>

#include <functional>

namespace qor::desktop {

/// The Qt widget of a viewer: takes the mouse, the wheel and keys and hands them on in the words of
/// viewers. What it shows is a child over all of it, or painted by a hook, or a message in words.
/// Knows no viewer; hooks that are unset do nothing.
class ViewerControl : public QWidget {
public:
    explicit ViewerControl(QWidget* parent);

    std::function<bool(const QorMouseEvent& mouse)> onMouse; ///< whether it was used
    std::function<bool(const QKeyEvent& key)> onKey;         ///< whether it was used
    std::function<void()> onGeometry; ///< size or pixel ratio may have changed
    std::function<void(QPainter& painter)> onPaint;

    /// Shows \p content over all of it; it takes no mouse of its own.
    void setContent(QWidget* content);

    /// Hides the content and says \p message instead.
    void showMessage(const QString& message);

    [[nodiscard]] const QString& message() const { return message_; }

    /// Size in device pixels.
    [[nodiscard]] QSize deviceSize() const;

    /// What the layout gives it if it can, device-independent pixels.
    void setNaturalSize(const QSize& size);

    [[nodiscard]] QSize sizeHint() const override { return naturalSize_; }

    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void tell(QMouseEvent& event);
    void paintMessage(QPainter& painter) const;

    QWidget* content_ = nullptr;
    QString message_;
    QSize naturalSize_;
};

} // namespace qor::desktop

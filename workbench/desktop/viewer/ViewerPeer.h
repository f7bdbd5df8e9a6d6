#pragma once

#include "platform/vis/QorViewer.h"
#include "workbench/desktop/peers/WidgetPeer.h"
#include "workbench/desktop/viewer/ViewerControl.h"

#include <QImage>

namespace qor::desktop {

/// What the peers of all viewers share: the mouse, the keyboard, the size and the pointer. The
/// viewer's size is that of its control in device pixels; when somebody else gives it another, the
/// window is asked to grow or shrink by the difference.
class ViewerPeer : public WidgetPeer {
public:
    explicit ViewerPeer(QorDialog& widget);

    [[nodiscard]] bool wantsWidth() const override { return true; }

    [[nodiscard]] bool wantsHeight() const override { return true; }

    /// All that the viewer shows now, in device pixels; null with a \p reason that begins in lower
    /// case.
    [[nodiscard]] virtual QImage picture(QString& reason) = 0;

    /// The peer of \p viewer in this toolkit, or null.
    [[nodiscard]] static ViewerPeer* of(const QorViewer& viewer);

protected:
    [[nodiscard]] QorViewer& viewer() const { return static_cast<QorViewer&>(widget()); }

    [[nodiscard]] ViewerControl& box() const { return *static_cast<ViewerControl*>(control()); }

    void draw(QorAspects aspects) override;

    /// Asks for a drawing; many of them become one.
    virtual void drawLater() = 0;

    /// Tells the viewer, at the next turn of the loop, that an image is on the screen.
    void swapped();

private:
    bool mouse(const QorMouseEvent& event);
    bool key(const QKeyEvent& event);
    void showCursor(const QorMathPoint2D& pixel);
    void followControl();
    void followViewer();

    QSize told_; ///< the size that the viewer was told last
    bool swapWaits_ = false;
};

} // namespace qor::desktop
